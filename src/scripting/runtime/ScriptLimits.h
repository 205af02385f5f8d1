#pragma once

#include <QString>
#include <atomic>
#include <chrono>
#include <mutex>
#include <optional>

#include "platform/Export.h"

namespace kelvar {

/// What a script may use, and whether it was interrupted. One thread, except for `interrupt` and
/// the script's file.
class KELVAR_EXPORT ScriptLimits {
 public:
  /// The time for everything from now on. `grace` is added to it, but not to the reason given.
  void setTimeout(std::chrono::duration<double> timeout, std::chrono::duration<double> grace = {});
  /// The memory that the process may use, in bytes; with a grace as well.
  void setMemoryLimit(size_t limit, size_t grace = 0);
  /// Safe from any thread and in a signal handler.
  void interrupt() { isInterrupted_ = true; }

  /// The file that was last entered, as the engine cannot always say where a script is: not while
  /// it goes to the end of its stack again and again. Safe from any thread.
  void enter(const QString& file);
  QString file() const;

  /// Why the script has to stop, if it has to. The first reason stays.
  const std::optional<QString>& check();
  /// What `check` last returned.
  const std::optional<QString>& exceeded() const { return exceeded_; }

 private:
  std::optional<QString> findExceeded() const;

  std::optional<std::chrono::steady_clock::time_point> deadline_;
  std::chrono::duration<double> timeout_{0};
  size_t memoryLimit_ = 0;
  size_t memoryGrace_ = 0;
  std::atomic<bool> isInterrupted_ = false;
  std::optional<QString> exceeded_;
  mutable std::mutex fileMutex_;
  QString file_;
};

}  // namespace kelvar
