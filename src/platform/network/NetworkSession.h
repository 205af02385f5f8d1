#pragma once

#include <QDeadlineTimer>
#include <QThread>
#include <QTimer>
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
  void hurry(std::chrono::milliseconds most) override;
  void setTimeout(std::chrono::milliseconds timeout) override { timeout_ = timeout; }

 private:
  struct Post {
    URLRequest request;
    std::chrono::milliseconds timeout;
    Completion completion;
  };

  void startNextPost();

  QThread thread_;
  /// Lives on the thread, which deletes it, and with it the tasks, its children.
  QObject* const tasks_ = new QObject;
  /// Those that wait for the one under way. On the thread alone. A deque gives back what it no
  /// longer needs.
  std::deque<Post> posts_;
  int posting_ = 0;
  /// While it runs POSTs do not wait for one another. Those of a fast server still arrive in order.
  QTimer* const hurry_ = new QTimer(tasks_);
  /// Then there is still time for the reports that wait for them.
  QDeadlineTimer lookupsEnd_;
  std::atomic<std::chrono::milliseconds> timeout_{std::chrono::seconds(30)};
};

}  // namespace kelvar
