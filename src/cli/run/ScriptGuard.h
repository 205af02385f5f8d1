#pragma once

#include <chrono>
#include <cstddef>
#include <memory>

#include "scripting/runtime/ScriptLimits.h"

namespace kelvar::cli {

/// Stops the scripts of a run, from outside if necessary, and ends the programs that they started.
///
/// The runtime stops a script at its limits and at Ctrl-C, but not during a long call of a Kelvar
/// function. A thread therefore ends the whole program if the runtime has not stopped the script
/// one second after the timeout, or at 125% of the memory limit. A second Ctrl-C ends the program
/// immediately. Only one guard may exist at a time, for as long as scripts run.
class ScriptGuard {
 public:
  /// Sets the limits. A timeout of 0 means none.
  ScriptGuard(std::shared_ptr<ScriptLimits> limits, std::chrono::duration<double> timeout,
              size_t memoryLimit);
  /// Does not return if the program is about to be ended.
  ~ScriptGuard();
  ScriptGuard(const ScriptGuard&) = delete;
  ScriptGuard& operator=(const ScriptGuard&) = delete;

  /// Whether Ctrl-C was pressed while a script was running.
  static bool wasInterrupted();

  /// Number of threads that the script engine starts, in addition to the guard's. It aborts if it
  /// cannot start them.
  static constexpr int kEngineThreads = 4;
  /// Address space in bytes that the script engine reserves. It uses almost none of it.
  static constexpr size_t kEngineSpace = size_t{6} << 30;

 private:
  const std::shared_ptr<ScriptLimits> limits_;
};

}  // namespace kelvar::cli
