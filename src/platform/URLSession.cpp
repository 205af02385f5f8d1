#include "platform/URLSession.h"

#include <QCoreApplication>
#include <memory>
#include <mutex>

#include "platform/LibraryBeside.h"

namespace kelvar {
namespace {

std::mutex sessionMutex;
std::unique_ptr<URLSession> session;

void endSession() {
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

}  // namespace kelvar
