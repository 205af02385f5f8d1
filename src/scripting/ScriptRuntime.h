#pragma once

#include <QHash>
#include <QSet>
#include <QStringList>
#include <QVariant>
#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include "platform/Export.h"

namespace kelvar {

/// Runs scripts: JavaScript, with brackets and `@import` as the host's plug-ins write them, and
/// with the classes, functions and constants of the catalogue.
///
/// Scripts reach files, processes and the network only through those classes. Whatever is uncaught
/// ends the running, also in what a timer or a delegate's operation calls later. Needs a
/// QCoreApplication, and a QApplication for the classes of the panel. Main thread; one runtime at a
/// time need not be the only one.
class KELVAR_EXPORT ScriptRuntime {
 public:
  /// What a script has not caught.
  struct Failure {
    QString message;
    /// Where it was thrown; empty and 0 when that is not known.
    QString file;
    int line = 0;
    /// That line of the file.
    QString text;
  };

  /// Takes a line that a script prints with `print` or `log`.
  using Output = std::function<void(const QString& line)>;

  explicit ScriptRuntime(Output output);
  ~ScriptRuntime();
  ScriptRuntime(const ScriptRuntime&) = delete;
  ScriptRuntime& operator=(const ScriptRuntime&) = delete;

  /// How long everything may take, from now on. Checked while a script runs and between its turns.
  void setTimeout(std::chrono::duration<double> timeout);
  /// How much memory the process may have, in bytes.
  void setMemoryLimit(size_t limit);
  /// Ends what is running soon. Safe from any thread and in a signal handler.
  void interrupt() { isInterrupted_ = true; }

  /// These return false after a failure, and do nothing any more after the first.
  bool evaluateFile(const QString& path);
  bool evaluate(const QString& script, const QString& file);
  /// Calls a function of the script's. Missing, it is a failure.
  bool call(const QString& function, const QVariantList& arguments);
  bool hasFunction(const QString& name);

  void setGlobal(const QString& name, const QVariant& value);

  /// Runs the event loop until nothing is pending: no timer of the script, no request, no queued
  /// work, no window that can be seen.
  bool run();

  /// The first.
  const std::optional<Failure>& failure() const { return failure_; }
  /// Whether the script was interrupted, or ran into a limit.
  bool isStopped() const { return !stopped_.isNull(); }

 private:
  struct Engine;
  struct Timer;

  bool attempt(const std::function<void()>& body);
  void fail(const Failure& failure);
  Failure failureOf(const void* exception);
  Failure placeOf(void* error) const;
  void defineGlobals();
  void defineCatalogue();
  void defineTimers();
  const void* startTimer(const void* call, bool repeats);
  void evaluateText(const QString& script, const QString& file);
  void import(const QString& path);
  QString lineOf(const QString& file, int line) const;
  bool mustStop();
  QString reasonToStop() const;
  QString pending() const;

  const Output output_;
  std::unique_ptr<Engine> engine_;
  std::optional<Failure> failure_;
  /// The text of each file that was evaluated, for what is said about failures.
  QHash<QString, QString> sources_;
  QSet<QString> imported_;
  QHash<int, std::shared_ptr<Timer>> timers_;
  int lastTimer_ = 0;
  int depth_ = 0;
  std::optional<std::chrono::steady_clock::time_point> deadline_;
  std::chrono::duration<double> timeout_{0};
  size_t memoryLimit_ = 0;
  std::atomic<bool> isInterrupted_ = false;
  QString stopped_;
  Failure stoppedAt_;
};

}  // namespace kelvar
