#include "cli/timeLimit.h"

#include <sys/time.h>
#include <unistd.h>

#include <cmath>
#include <csignal>

#include "cli/CommandError.h"
#include "platform/files/FileName.h"

namespace kelvar::cli {
namespace {

using namespace Qt::StringLiterals;

constexpr double kMinSeconds = 0.1;
constexpr double kMaxSeconds = 86400;

/// Formatted in advance, because a signal handler cannot format text.
QByteArray* farewell = nullptr;

/// A signal handler: needs neither a thread, which the system may refuse, nor the busy main thread.
void end(int) {
  [[maybe_unused]] const ssize_t written =
      ::write(STDERR_FILENO, farewell->constData(), size_t(farewell->size()));
  ::_exit(kFailed);
}

double readSeconds(const std::string& text) {
  bool isNumber = false;
  const double seconds = QByteArray::fromStdString(text).toDouble(&isNumber);
  if (isNumber && seconds >= kMinSeconds && seconds <= kMaxSeconds) return seconds;
  misuse(u"--timeout takes a number of seconds from %1 to %2, not \"%3\""_s.arg(kMinSeconds)
             .arg(kMaxSeconds)
             .arg(QString::fromStdString(text)));
}

void startTimer(double seconds) {
  double whole = 0;
  const double rest = std::modf(seconds, &whole);
  const itimerval timer{{}, {time_t(whole), suseconds_t(rest * 1e6)}};
  ::setitimer(ITIMER_REAL, &timer, nullptr);
}

}  // namespace

CLI::Option* addTimeout(CLI::App* command, std::string* seconds) {
  *seconds = kDefaultTimeout;
  return command
      ->add_option("--timeout", *seconds,
                   "Give up after this time and leave the output file unchanged")
      ->type_name("SECONDS")
      ->capture_default_str();
}

void limitTime(const std::string& seconds) {
  const double limit = readSeconds(seconds);
  const char* const lineStart = ::isatty(STDERR_FILENO) != 0 ? "\r\x1b[K" : "";
  static QByteArray message;
  message =
      lineStart +
      u"kelvar: not finished after %1 s, so nothing was written; --timeout allows more time\n"_s
          .arg(limit)
          .toUtf8();
  farewell = &message;
  struct sigaction action {};
  action.sa_handler = end;
  ::sigaction(SIGALRM, &action, nullptr);
  // The parent process may have blocked it.
  sigset_t alarm;
  sigemptyset(&alarm);
  sigaddset(&alarm, SIGALRM);
  ::pthread_sigmask(SIG_UNBLOCK, &alarm, nullptr);
  startTimer(limit);
}

void liftTimeLimit() { startTimer(0); }

void liftTimeLimitForStream(const std::string& output) {
  if (output == "-" || isFileStream(fileNameFromBytes(output))) liftTimeLimit();
}

}  // namespace kelvar::cli
