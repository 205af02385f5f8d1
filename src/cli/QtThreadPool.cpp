#include <dlfcn.h>

#include <QThread>
#include <QThreadPool>

#include "pixels/threads/spawnThreadOrRunInline.h"

/// In the place of Qt's own, which is asked for where the system has the threads. Qt shares out
/// large images among the pool's threads and waits forever for one that it could not start; where
/// there is no pool, it does the work on the thread that asks.
QThreadPool* QThreadPool::globalInstance() {
  using Function = QThreadPool* (*)();
  static const auto qtsOwn =
      reinterpret_cast<Function>(::dlsym(RTLD_NEXT, "_ZN11QThreadPool14globalInstanceEv"));
  static const bool hasThreads = kelvar::canHaveThreads(QThread::idealThreadCount());
  return hasThreads && qtsOwn ? qtsOwn() : nullptr;
}
