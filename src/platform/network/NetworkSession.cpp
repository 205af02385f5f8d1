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

void NetworkSession::dataTask(const QUrl& address, Completion completion) {
  QMetaObject::invokeMethod(
      manager_,
      [manager = manager_, address, timeout = timeout_.load(), completion = std::move(completion)] {
        (new NetworkTask(manager, completion))->start(address, timeout);
      },
      Qt::QueuedConnection);
}

}  // namespace kelvar

extern "C" KELVAR_EXPORT kelvar::URLSession* kelvarMakeURLSession() {
  return new kelvar::NetworkSession;
}
