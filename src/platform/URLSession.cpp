#include "platform/URLSession.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>
#include <memory>
#include <mutex>

#include "platform/LibraryBeside.h"
#include "platform/Log.h"

namespace kelvar {
namespace {

std::mutex sessionMutex;
std::unique_ptr<URLSession> session;

int reportsUnderWay() { return PendingWork::count(PendingWork::Kind::Report); }

void endSession() {
  const int dropped = reportsUnderWay();
  if (dropped > 0) {
    logLine(u"URLSession: the program ends, %@ unsent reports are dropped",
            {QString::number(dropped)});
  }
  std::unique_ptr<URLSession> ended;
  const std::scoped_lock lock(sessionMutex);
  ended.swap(session);
}

std::unique_ptr<URLSession> makeSession() {
  const auto make = reinterpret_cast<URLSession* (*)()>(
      functionBeside(KELVAR_NETWORK_LIBRARY, "kelvarMakeURLSession"));
  return std::unique_ptr<URLSession>(make ? make() : nullptr);
}

}  // namespace

URLSession* URLSession::shared() {
  const std::scoped_lock lock(sessionMutex);
  if (!session) {
    session = makeSession();
    if (session) qAddPostRoutine(endSession);
  }
  return session.get();
}

void URLSession::finishReports(std::chrono::milliseconds most) {
  const QDeadlineTimer end(most);
  {
    const std::scoped_lock lock(sessionMutex);
    if (session) session->hurry(most);
  }
  // Of a report's end the event loop is not told.
  QTimer look;
  look.start(std::chrono::milliseconds(10));
  for (bool isOver = false; !isOver && !end.hasExpired();) {
    const bool wasOver = reportsUnderWay() == 0;
    QCoreApplication::processEvents(wasOver ? QEventLoop::AllEvents
                                            : QEventLoop::WaitForMoreEvents);
    // What was queued by the last one may have started others.
    isOver = wasOver && reportsUnderWay() == 0;
  }
}

}  // namespace kelvar
