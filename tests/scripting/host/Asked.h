#pragma once

#include <QStringList>

#include "platform/UserDialog.h"

namespace kelvar {

/// Stands for the user while it lives: gives answers in order, and records what it was shown and
/// asked.
class Asked {
 public:
  /// After the last answer, questions are dismissed, or fail.
  explicit Asked(const QStringList& answers = {}) : answers_(answers) {
    UserDialog::install(
        {.show = [this](const QString& text) { record(QStringLiteral("! ") + text); },
         .ask = [this](const UserDialog::Question& question) { return answer(question); }});
  }
  ~Asked() { UserDialog::install({}); }
  Asked(const Asked&) = delete;
  Asked& operator=(const Asked&) = delete;

  /// A line for each message ("! text") and question ("? text (choices) [initial] {dismissal}").
  std::string take() { return std::exchange(log_, {}).toStdString(); }

 private:
  void record(const QString& line) {
    log_ += QString(line).replace(QLatin1Char('\n'), QLatin1Char('|')) + QLatin1Char('\n');
  }

  Result<QString> answer(const UserDialog::Question& question) {
    QString line = QStringLiteral("? ") + question.text;
    if (!question.choices.isEmpty()) {
      line += QStringLiteral(" (%1)").arg(question.choices.join(QLatin1Char(',')));
    }
    if (!question.initial.isNull()) line += QStringLiteral(" [%1]").arg(question.initial);
    if (!question.dismissal.isNull()) line += QStringLiteral(" {%1}").arg(question.dismissal);
    record(question.isSecret ? line + QStringLiteral(" secret") : line);
    if (!answers_.isEmpty()) return answers_.takeFirst();
    if (!question.dismissal.isNull()) return question.dismissal;
    return failure(Error::Kind::Unsupported, std::string("nobody answers"));
  }

  QStringList answers_;
  QString log_;
};

}  // namespace kelvar
