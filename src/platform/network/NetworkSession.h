#pragma once

#include <QNetworkAccessManager>
#include <QThread>
#include <atomic>
#include <deque>

#include "platform/URLSession.h"

namespace kelvar {

/// The URL session on Qt Network. All its work is done on a thread of its own.
class NetworkSession : public URLSession {
 public:
  NetworkSession();
  ~NetworkSession() override;

  void startTask(const URLRequest& request, Completion completion) override;
  void setTimeout(std::chrono::milliseconds timeout) override { timeout_ = timeout; }

 private:
  struct Post {
    URLRequest request;
    std::chrono::milliseconds timeout;
    Completion completion;
  };

  void startNextPost();

  QThread thread_;
  /// Lives on the thread, which deletes it, and with it the tasks.
  QNetworkAccessManager* const manager_;
  /// Those that wait for the one under way. On the thread alone. A deque gives back what it no
  /// longer needs.
  std::deque<Post> posts_;
  bool isPosting_ = false;
  std::atomic<std::chrono::milliseconds> timeout_{std::chrono::minutes(1)};
};

}  // namespace kelvar
