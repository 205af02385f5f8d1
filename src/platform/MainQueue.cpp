#include "platform/MainQueue.h"

#include <QCoreApplication>

#include "platform/Log.h"
#include "platform/PendingWork.h"

namespace kelvar {

void MainQueue::async(std::function<void()> work) {
  QCoreApplication* const application = QCoreApplication::instance();
  if (!application) return logLine(u"MainQueue: there is no QCoreApplication: work is dropped");
  QMetaObject::invokeMethod(
      application, [work = std::move(work), pending = PendingWork::begin()] { work(); },
      Qt::QueuedConnection);
}

}  // namespace kelvar
