#pragma once

#include <QStringList>
#include <functional>

#include "pixels/Result.h"
#include "platform/Export.h"

namespace kelvar {

/// What scripts show to the user and ask of them.
///
/// The program that runs scripts says how, by `install`. Without that, messages are warnings to the
/// user (`warnUser`), and every question fails. Main thread.
class KELVAR_EXPORT UserDialog {
 public:
  struct Question {
    /// One or more lines.
    QString text;
    /// The possible answers; empty if any text is one.
    QStringList choices;
    /// What is meant by an empty answer; of choices, one of them.
    QString initial;
    /// What nobody's answer means: nothing is changed by it. Null if there is no such answer, so
    /// that the question fails.
    QString dismissal;
    /// Whether the answer must not be seen while it is typed.
    bool isSecret = false;
  };
  struct Handler {
    std::function<void(const QString& message)> show;
    std::function<Result<QString>(const Question& question)> ask;
  };

  UserDialog() = delete;

  /// An empty handler undoes it.
  static void install(const Handler& handler);
  static void show(const QString& message);
  /// The user's answer, or the dismissal. Fails when there is neither.
  static Result<QString> ask(const Question& question);
};

}  // namespace kelvar
