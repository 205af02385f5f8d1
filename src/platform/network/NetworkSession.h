#pragma once

#include <QNetworkAccessManager>
#include <QThread>
#include <atomic>

#include "platform/URLSession.h"

namespace kelvar {

/// The URL session on Qt Network. All its work is done on a thread of its own.
class NetworkSession : public URLSession {
 public:
  NetworkSession();
  ~NetworkSession() override;

  void dataTask(const QUrl& address, Completion completion) override;
  void setTimeout(std::chrono::milliseconds timeout) override { timeout_ = timeout; }

 private:
  QThread thread_;
  /// Lives on the thread, which deletes it, and with it the tasks.
  QNetworkAccessManager* const manager_;
  std::atomic<std::chrono::milliseconds> timeout_{std::chrono::minutes(1)};
};

}  // namespace kelvar
