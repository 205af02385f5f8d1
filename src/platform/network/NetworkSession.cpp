#include "platform/network/NetworkSession.h"

#include "platform/Export.h"
#include "platform/network/NetworkTask.h"

namespace kelvar {

NetworkSession::NetworkSession(MayFollow mayFollow) : mayFollow_(mayFollow) {
  thread_.setObjectName(QStringLiteral("kelvar-network"));
  hurry_->setInterval(std::chrono::milliseconds(50));
  QObject::connect(hurry_, &QTimer::timeout, tasks_, [this] { startNextPost(); });
  tasks_->moveToThread(&thread_);
  QObject::connect(&thread_, &QThread::finished, tasks_, &QObject::deleteLater);
  thread_.start();
}

NetworkSession::~NetworkSession() {
  thread_.quit();
  thread_.wait();
}

void NetworkSession::startTask(const URLRequest& request, Completion completion) {
  const auto start = [this, post = Post{request, timeout_.load(), std::move(completion)}] {
    if (post.request.method != "POST") {
      auto* const task = new NetworkTask(tasks_, post.request, mayFollow_, post.completion);
      task->start(post.timeout);
      if (hurry_->isActive()) task->hurry(lookupsEnd_);
      return;
    }
    posts_.push_back(post);
    if (posting_ == 0) startNextPost();
  };
  QMetaObject::invokeMethod(tasks_, start, Qt::QueuedConnection);
}

void NetworkSession::hurry(std::chrono::milliseconds limit) {
  const auto start = [this, limit] {
    hurry_->start();
    lookupsEnd_ = QDeadlineTimer(limit / 2);
    for (QObject* const child : tasks_->children()) {
      if (auto* const task = dynamic_cast<NetworkTask*>(child)) task->hurry(lookupsEnd_);
    }
  };
  QMetaObject::invokeMethod(tasks_, start, Qt::QueuedConnection);
}

void NetworkSession::startNextPost() {
  if (posts_.empty()) return;
  ++posting_;
  const Post post = std::move(posts_.front());
  posts_.pop_front();
  const auto complete = [this, completion = post.completion](const URLResponse& answer) {
    completion(answer);
    --posting_;
    // Queued: tasks that fail before they begin would recurse.
    const auto goOn = [this] {
      if (posting_ == 0 || hurry_->isActive()) startNextPost();
    };
    QMetaObject::invokeMethod(tasks_, goOn, Qt::QueuedConnection);
  };
  (new NetworkTask(tasks_, post.request, mayFollow_, complete))->start(post.timeout);
}

}  // namespace kelvar

extern "C" KELVAR_EXPORT kelvar::URLSession* kelvarMakeURLSession(
    kelvar::URLSession::MayFollow mayFollow) {
  return new kelvar::NetworkSession(mayFollow);
}
