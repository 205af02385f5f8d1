// Debian's Qt is not built for ThreadSanitizer, so the sanitizer does not see that Qt's event
// queues, semaphores and thread ends synchronize, and reports races. These wrappers tell it. They
// are linked into tests built with -fsanitize=thread and interpose Qt's own functions.

#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>

#include <QDeadlineTimer>
#include <QObject>
#include <QSemaphore>
#include <QThread>

namespace {

/// Synchronizes the end of work with threads that wait for it.
char ended;

/// Work that is queued for another thread.
class QueuedWork : public QtPrivate::QSlotObjectBase {
 public:
  explicit QueuedWork(QSlotObjectBase* work) : QSlotObjectBase(&act), work_(work) {
    __tsan_release(this);
  }

 private:
  static void act(int operation, QSlotObjectBase* self, QObject* receiver, void** arguments,
                  bool*) {
    __tsan_acquire(self);
    auto* const queued = static_cast<QueuedWork*>(self);
    if (operation == Call) {
      queued->work_->call(receiver, arguments);
      __tsan_release(&ended);
      __tsan_release(self);
    } else if (operation == Destroy) {
      queued->work_->destroyIfLastRef();
      delete queued;
    }
  }

  QSlotObjectBase* const work_;
};

template <class Function>
Function* qtFunction(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

bool QMetaObject::invokeMethodImpl(QObject* object, QtPrivate::QSlotObjectBase* work,
                                   Qt::ConnectionType type, void* result) {
  static auto* const invoke =
      qtFunction<bool(QObject*, QtPrivate::QSlotObjectBase*, Qt::ConnectionType, void*)>(
          "_ZN11QMetaObject16invokeMethodImplEP7QObjectPN9QtPrivate15QSlotObjectBaseEN2Qt14"
          "ConnectionTypeEPv");
  const bool done = invoke(object, new QueuedWork(work), type, result);
  if (type == Qt::BlockingQueuedConnection) __tsan_acquire(&ended);
  return done;
}

bool QThread::wait(QDeadlineTimer deadline) {
  static auto* const wait =
      qtFunction<bool(QThread*, QDeadlineTimer)>("_ZN7QThread4waitE14QDeadlineTimer");
  const bool done = wait(this, deadline);
  if (done) __tsan_acquire(&ended);
  return done;
}

void QSemaphore::acquire(int count) {
  static auto* const acquire = qtFunction<void(QSemaphore*, int)>("_ZN10QSemaphore7acquireEi");
  acquire(this, count);
  __tsan_acquire(this);
}

void QSemaphore::release(int count) {
  static auto* const release = qtFunction<void(QSemaphore*, int)>("_ZN10QSemaphore7releaseEi");
  __tsan_release(this);
  release(this, count);
}
