#include "scripting/runtime/ScriptLimits.h"

#include <unistd.h>

#include <QFile>

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

/// The resident memory of the process, in bytes.
size_t memoryInUse() {
  QFile file(u"/proc/self/statm"_s);
  if (!file.open(QIODevice::ReadOnly)) return 0;
  return file.readAll().split(' ').value(1).toULongLong() * size_t(sysconf(_SC_PAGESIZE));
}

}  // namespace

void ScriptLimits::setTimeout(std::chrono::duration<double> timeout,
                              std::chrono::duration<double> grace) {
  using Clock = std::chrono::steady_clock;
  timeout_ = timeout;
  deadline_ = Clock::now() + std::chrono::duration_cast<Clock::duration>(timeout + grace);
}

void ScriptLimits::setMemoryLimit(size_t limit, size_t grace) {
  memoryLimit_ = limit;
  memoryGrace_ = grace;
}

void ScriptLimits::enter(const QString& file) {
  const std::lock_guard lock(fileMutex_);
  file_ = file;
}

QString ScriptLimits::file() const {
  const std::lock_guard lock(fileMutex_);
  return file_;
}

const std::optional<QString>& ScriptLimits::check() {
  if (!exceeded_) exceeded_ = findExceeded();
  return exceeded_;
}

std::optional<QString> ScriptLimits::findExceeded() const {
  if (isInterrupted_) return u"the script was interrupted"_s;
  if (deadline_ && std::chrono::steady_clock::now() > *deadline_) {
    return u"the script did not end within %1 s"_s.arg(timeout_.count());
  }
  if (memoryLimit_ > 0 && memoryInUse() > memoryLimit_ + memoryGrace_) {
    return u"the script uses more than %1 MB of memory"_s.arg(memoryLimit_ >> 20);
  }
  return std::nullopt;
}

}  // namespace kelvar
