#include "cli/run/TerminalDialog.h"

#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <optional>

#include "cli/Output.h"
#include "cli/run/ScriptGuard.h"
#include "platform/QtError.h"

namespace kelvar::cli {
namespace {

using namespace Qt::StringLiterals;
using Question = UserDialog::Question;

/// For messages, which are one line.
QString inOneLine(const QString& text) {
  return text.split(u'\n', Qt::SkipEmptyParts).join(u' ').simplified();
}

QString quoted(const Question& question) { return u'"' + inOneLine(question.text) + u'"'; }

/// Null for what is no answer to the question.
QString answerFrom(const QString& text, const Question& question) {
  if (text.isEmpty() && !question.initial.isNull()) return question.initial;
  if (question.choices.isEmpty()) return text.isNull() ? u""_s : text;
  if (question.choices.contains(text)) return text;
  for (const QString& each : question.choices) {
    if (each.compare(text, Qt::CaseInsensitive) == 0) return each;
  }
  return {};
}

void showPrompt(const Question& question) {
  for (const QString& line : question.text.split(u'\n')) {
    std::fprintf(stderr, "%s\n", qUtf8Printable(sanitizeForTerminal(line)));
  }
  QString prompt = question.choices.isEmpty() ? u"Answer"_s : question.choices.join(u" / ");
  if (!question.initial.isEmpty() && !question.isSecret) prompt += u" [%1]"_s.arg(question.initial);
  std::fprintf(stderr, "%s: ", qUtf8Printable(sanitizeForTerminal(prompt)));
  std::fflush(stderr);
}

/// While it lives, the terminal does not show what is typed.
class HiddenTyping {
 public:
  HiddenTyping() {
    if (tcgetattr(STDIN_FILENO, &before_) != 0) return;
    isHidden_ = true;
    termios hidden = before_;
    hidden.c_lflag &= ~tcflag_t(ECHO);
    tcsetattr(STDIN_FILENO, TCSANOW, &hidden);
  }
  ~HiddenTyping() {
    if (!isHidden_) return;
    tcsetattr(STDIN_FILENO, TCSANOW, &before_);
    std::fputc('\n', stderr);
  }
  HiddenTyping(const HiddenTyping&) = delete;
  HiddenTyping& operator=(const HiddenTyping&) = delete;

 private:
  termios before_{};
  bool isHidden_ = false;
};

enum class Ending { Line, EndOfInput, Interrupted };

/// Reads a line without its end. Unlike `read`, `poll` returns when Ctrl-C is pressed.
Ending readLine(QByteArray* line) {
  while (true) {
    if (ScriptGuard::wasInterrupted()) return Ending::Interrupted;
    pollfd input{STDIN_FILENO, POLLIN, 0};
    if (poll(&input, 1, -1) < 0) {
      if (errno == EINTR) continue;
      return Ending::EndOfInput;
    }
    char letter = 0;
    if (read(STDIN_FILENO, &letter, 1) != 1) return Ending::EndOfInput;
    if (letter == '\n') return Ending::Line;
    line->append(letter);
  }
}

/// What the user answers.
Result<QString> askOnTerminal(const Question& question) {
  while (true) {
    showPrompt(question);
    QByteArray line;
    std::optional<HiddenTyping> hidden;
    if (question.isSecret) hidden.emplace();
    const Ending ending = readLine(&line);
    hidden.reset();
    if (ending == Ending::Interrupted) {
      return failure(Error::Kind::Unsupported, u"the script was interrupted"_s);
    }
    if (ending == Ending::EndOfInput) {
      std::fputc('\n', stderr);
      if (!question.dismissal.isNull()) return question.dismissal;
      return failure(Error::Kind::Unsupported, u"nobody answers %1"_s.arg(quoted(question)));
    }
    const QString answer = answerFrom(QString::fromUtf8(line).trimmed(), question);
    if (!answer.isNull()) return answer;
    std::fprintf(stderr, "Please type one of the answers.\n");
  }
}

}  // namespace

void TerminalDialog::addOptions(CLI::App& program) {
  program
      .add_option("--answer", answers_,
                  "Answer what the script asks; may be repeated, for one question after the other")
      ->type_name("TEXT")
      ->allow_extra_args(false);
}

void TerminalDialog::install() {
  UserDialog::install(
      {.show = [](const QString& text) { printError(u"message: "_s + inOneLine(text)); },
       .ask = [this](const Question& question) { return ask(question); }});
}

Result<QString> TerminalDialog::takeAnswer(const Question& question) {
  const QString text = QString::fromStdString(answers_[used_++]);
  const QString answer = answerFrom(text, question);
  if (!answer.isNull()) return answer;
  return failure(Error::Kind::InvalidArgument,
                 u"--answer \"%1\" does not answer %2, which takes %3"_s.arg(
                     text, quoted(question), question.choices.join(u", ")));
}

Result<QString> TerminalDialog::ask(const Question& question) {
  if (used_ < answers_.size()) return takeAnswer(question);
  if (isatty(STDIN_FILENO) && isatty(STDERR_FILENO)) return askOnTerminal(question);
  if (question.dismissal.isNull()) {
    return failure(Error::Kind::Unsupported,
                   u"nobody can be asked %1; answer it with --answer"_s.arg(quoted(question)));
  }
  printError(u"nobody was asked %1; the answer is \"%2\""_s.arg(
      quoted(question), question.isSecret ? QString() : question.dismissal));
  return question.dismissal;
}

void TerminalDialog::finish() const {
  const size_t left = answers_.size() - used_;
  if (left > 0)
    printError(u"nothing was asked that the last %1 of --answer would answer"_s.arg(left));
}

}  // namespace kelvar::cli
