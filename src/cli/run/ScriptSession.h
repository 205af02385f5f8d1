#pragma once

#include <QString>
#include <QVariantMap>
#include <chrono>
#include <memory>
#include <optional>
#include <vector>

#include "cli/run/ScriptGuard.h"
#include "scripting/runtime/ScriptRuntime.h"

namespace kelvar::cli {

/// The scripts of one run: each is evaluated once, in a runtime of its own, and all share the
/// limits. After the first failure nothing runs any more. Main thread.
class ScriptSession {
 public:
  /// `timeout` is for all of them together; 0 is none.
  ScriptSession(ScriptRuntime::Output output, std::chrono::duration<double> timeout);
  ~ScriptSession();

  /// Evaluates a script unless that has been done, with `context` as its global variable. Like the
  /// two below, returns false after a failure.
  bool open(const QString& script, const QVariantMap& context);
  /// Calls a function, which must exist, of an open script.
  bool call(const QString& script, const QString& function, const QVariantMap& context);
  /// Runs the event loop until nothing is pending in any of them.
  bool wait();

  bool hasFunction(const QString& script, const QString& function);

  const std::optional<ScriptError>& failure() const { return failure_; }
  /// Ends the guard: no script runs from now on, and what they started is ended if one was stopped.
  void close();

 private:
  ScriptRuntime* find(const QString& script) const;
  bool note(const ScriptRuntime& runtime);

  const ScriptRuntime::Output output_;
  const std::shared_ptr<ScriptLimits> limits_ = std::make_shared<ScriptLimits>();
  std::unique_ptr<ScriptGuard> guard_;
  struct Script {
    QString path;
    std::unique_ptr<ScriptRuntime> runtime;
  };
  std::vector<Script> scripts_;
  std::optional<ScriptError> failure_;
};

}  // namespace kelvar::cli
