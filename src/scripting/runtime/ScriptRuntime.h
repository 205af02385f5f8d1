#pragma once

#include <QString>
#include <QVariant>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include "platform/Export.h"
#include "scripting/runtime/ScriptError.h"
#include "scripting/runtime/ScriptLimits.h"

namespace kelvar {

/// Runs scripts: JavaScript, with the brackets and `@import` of Sketch's plug-ins, and with the
/// classes, functions and constants of `ScriptApi`.
///
/// Scripts reach files, processes and the network only through those classes. The first uncaught
/// exception ends the run, also one from a timer or a delegate's operation. Needs a
/// QCoreApplication, and a QApplication for the panel's classes. Several runtimes may exist at a
/// time. Main thread.
class KELVAR_EXPORT ScriptRuntime {
 public:
  /// Receives each line that a script prints with `print` or `log`.
  using Output = std::function<void(const QString& line)>;

  /// Runtimes that share `limits` are stopped together.
  explicit ScriptRuntime(Output output,
                         std::shared_ptr<ScriptLimits> limits = std::make_shared<ScriptLimits>());
  ~ScriptRuntime();
  ScriptRuntime(const ScriptRuntime&) = delete;
  ScriptRuntime& operator=(const ScriptRuntime&) = delete;

  /// The time for everything from now on. Checked while a script runs and between turns of the
  /// event loop, as is the memory.
  void setTimeout(std::chrono::duration<double> timeout) { limits_->setTimeout(timeout); }
  /// The memory that the process may use, in bytes.
  void setMemoryLimit(size_t limit) { limits_->setMemoryLimit(limit); }
  /// Ends the script soon. Safe from any thread and in a signal handler.
  void interrupt() { limits_->interrupt(); }

  /// These return false after a failure; after the first one they do nothing. `failure` tells why.
  bool evaluateFile(const QString& path);
  bool evaluate(const QString& script, const QString& file);
  /// Calls a function of the script, which must exist.
  bool call(const QString& function, const QVariantList& arguments);
  bool hasFunction(const QString& name);

  void setGlobal(const QString& name, const QVariant& value);

  /// Runs the event loop until nothing is pending: no timer of the script, no request, no queued
  /// work, no visible window.
  bool run();
  /// Whether `run` would wait for something.
  bool isPending() const { return !failure_ && pending().has_value(); }

  /// The first failure.
  const std::optional<ScriptError>& failure() const { return failure_; }
  /// Whether the script was interrupted or exceeded a limit.
  bool isStopped() const { return limits_->exceeded().has_value(); }

 private:
  struct Engine;

  void watchTime(double seconds);
  bool attempt(const std::function<void()>& body);
  void fail(const ScriptError& error);
  ScriptError errorFor(const void* exception) const;
  void defineOutput();
  void defineApi();
  std::optional<QString> pending() const;

  const Output output_;
  const std::shared_ptr<ScriptLimits> limits_;
  std::optional<ScriptError> failure_;
  /// Where the script was when it exceeded a limit.
  ScriptError stoppedAt_;
  int locations_ = 0;
  /// How many calls into the script are nested.
  int depth_ = 0;
  std::unique_ptr<Engine> engine_;
};

}  // namespace kelvar
