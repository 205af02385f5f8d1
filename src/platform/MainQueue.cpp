#include "platform/MainQueue.h"

#include <QCoreApplication>

#include "platform/Log.h"

namespace kelvar {

void MainQueue::async(std::function<void()> work, PendingTasks::Kind kind) {
  QCoreApplication* const application = QCoreApplication::instance();
  if (!application) return logLine(u"MainQueue: there is no QCoreApplication: work is dropped");
  QMetaObject::invokeMethod(
      application, [work = std::move(work), pending = PendingTasks::acquire(kind)] { work(); },
      Qt::QueuedConnection);
}

}  // namespace kelvar
