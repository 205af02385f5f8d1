#pragma once

#include <QDeadlineTimer>
#include <QThread>
#include <QTimer>
#include <atomic>
#include <deque>

#include "platform/network/URLSession.h"

namespace kelvar {

/// `URLSession` implemented with Qt Network. All its work is done on its own thread.
class NetworkSession : public URLSession {
 public:
  explicit NetworkSession(MayFollow mayFollow);
  ~NetworkSession() override;

  void startTask(const URLRequest& request, Completion completion) override;
  void hurry(std::chrono::milliseconds limit) override;
  void setTimeout(std::chrono::milliseconds timeout) override { timeout_ = timeout; }

 private:
  struct Post {
    URLRequest request;
    std::chrono::milliseconds timeout;
    Completion completion;
  };

  void startNextPost();

  const MayFollow mayFollow_;
  QThread thread_;
  /// Lives on the thread, which deletes it together with its children, the tasks.
  QObject* const tasks_ = new QObject;
  /// POSTs that wait for the one in progress. Used on the thread only. A deque, because it frees
  /// memory that it no longer needs.
  std::deque<Post> posts_;
  int posting_ = 0;
  /// While it is active, POSTs do not wait for one another. If the server is fast, they still
  /// arrive in order.
  QTimer* const hurry_ = new QTimer(tasks_);
  /// Deadline for requests that reports wait for; early enough for the reports to be sent
  /// afterward.
  QDeadlineTimer lookupsEnd_;
  std::atomic<std::chrono::milliseconds> timeout_{std::chrono::seconds(30)};
};

}  // namespace kelvar
