#include "platform/URLSession.h"

#include <dlfcn.h>

#include <QCoreApplication>
#include <memory>
#include <mutex>

#include "platform/Log.h"

namespace kelvar {
namespace {

std::mutex sessionMutex;
std::unique_ptr<URLSession> session;

void endSession() {
  std::unique_ptr<URLSession> ended;
  const std::scoped_lock lock(sessionMutex);
  ended.swap(session);
}

/// The library lies beside the one that this code is in.
std::string libraryPath() {
  Dl_info here{};
  dladdr(reinterpret_cast<const void*>(&libraryPath), &here);
  const std::string file = here.dli_fname ? here.dli_fname : "";
  return file.substr(0, file.rfind('/') + 1) + KELVAR_NETWORK_LIBRARY;
}

std::unique_ptr<URLSession> makeSession() {
  void* const library = dlopen(libraryPath().c_str(), RTLD_NOW | RTLD_LOCAL);
  const auto make =
      library ? reinterpret_cast<URLSession* (*)()>(dlsym(library, "kelvarMakeURLSession"))
              : nullptr;
  if (make) return std::unique_ptr<URLSession>(make());
  logLine(u"URLSession: no network: %@", {QString::fromLocal8Bit(dlerror())});
  return nullptr;
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
