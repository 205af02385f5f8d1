#include "platform/network/NetworkSession.h"

#include "platform/Export.h"
#include "platform/network/NetworkTask.h"

namespace kelvar {

NetworkSession::NetworkSession() : manager_(new QNetworkAccessManager) {
  thread_.setObjectName(QStringLiteral("kelvar-network"));
  manager_->moveToThread(&thread_);
  QObject::connect(&thread_, &QThread::finished, manager_, &QObject::deleteLater);
  thread_.start();
}

NetworkSession::~NetworkSession() {
  thread_.quit();
  thread_.wait();
}

void NetworkSession::startTask(const URLRequest& request, Completion completion) {
  const auto start = [this, post = Post{request, timeout_.load(), std::move(completion)}] {
    if (post.request.method != "POST") {
      (new NetworkTask(manager_, post.request, post.completion))->start(post.timeout);
      return;
    }
    posts_.push_back(post);
    startNextPost();
  };
  QMetaObject::invokeMethod(manager_, start, Qt::QueuedConnection);
}

void NetworkSession::startNextPost() {
  if (isPosting_ || posts_.empty()) return;
  isPosting_ = true;
  const Post post = std::move(posts_.front());
  posts_.pop_front();
  const auto complete = [this, completion = post.completion](const URLAnswer& answer) {
    completion(answer);
    isPosting_ = false;
    // Not at once: tasks that fail before they begin would be piled upon one another.
    QMetaObject::invokeMethod(
        manager_, [this] { startNextPost(); }, Qt::QueuedConnection);
  };
  (new NetworkTask(manager_, post.request, complete))->start(post.timeout);
}

}  // namespace kelvar

extern "C" KELVAR_EXPORT kelvar::URLSession* kelvarMakeURLSession() {
  return new kelvar::NetworkSession;
}
