#include "platform/network/URLSession.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>
#include <memory>
#include <mutex>
#include <optional>

#include "pixels/threads/spawnThreadOrRunInline.h"
#include "platform/Log.h"
#include "platform/SharedLibrary.h"

namespace kelvar {
namespace {

std::mutex sessionMutex;
std::unique_ptr<URLSession> session;
/// Set while `finishReports` waits.
std::optional<QDeadlineTimer> ending;

int reportsUnderWay() { return PendingTasks::count(PendingTasks::Kind::Report); }

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

/// The call that sent the request has ended, so a refusal is part of the answer alone.
Result<void> mayFollow(const QUrl& target) {
  const RefusalScope scope;
  return Permissions::check(Permissions::Kind::Network, target.toString(QUrl::RemoveUserInfo));
}

std::unique_ptr<URLSession> makeSession() {
  // Qt Network has a thread of its own, beside ours.
  if (!canHaveThreads(2)) {
    logLine(u"Nothing can be fetched: the system cannot start more threads");
    return nullptr;
  }
  const auto make = reinterpret_cast<URLSession* (*)(URLSession::MayFollow)>(
      resolveSymbol(KELVAR_NETWORK_LIBRARY, "kelvarMakeURLSession"));
  return std::unique_ptr<URLSession>(make ? make(mayFollow) : nullptr);
}

}  // namespace

URLSession* URLSession::shared() {
  const std::scoped_lock lock(sessionMutex);
  if (!session) {
    session = makeSession();
    if (session) qAddPostRoutine(endSession);
    if (session && ending) session->hurry(std::chrono::milliseconds(ending->remainingTime()));
  }
  return session.get();
}

void URLSession::finishReports(std::chrono::milliseconds limit) {
  const QDeadlineTimer end(limit);
  {
    const std::scoped_lock lock(sessionMutex);
    ending = end;
    if (session) session->hurry(limit);
  }
  // The event loop is not notified when a report ends.
  QTimer look;
  look.start(std::chrono::milliseconds(10));
  while (reportsUnderWay() > 0 && !end.hasExpired()) {
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  const std::scoped_lock lock(sessionMutex);
  ending.reset();
}

}  // namespace kelvar
