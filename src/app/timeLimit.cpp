#include "app/timeLimit.h"

#include <sys/time.h>
#include <unistd.h>

#include <cmath>
#include <csignal>

#include "app/Failure.h"
#include "platform/FileName.h"

namespace kelvar::app {
namespace {

using namespace Qt::StringLiterals;

constexpr double kLeastSeconds = 0.1;
constexpr double kMostSeconds = 86400;

/// Made beforehand, since a signal handler can make nothing.
QByteArray* farewell = nullptr;

/// No thread, which might not be had, and no waiting for the one that is busy.
void end(int) {
  [[maybe_unused]] const ssize_t written =
      ::write(STDERR_FILENO, farewell->constData(), size_t(farewell->size()));
  ::_exit(Failure::kFailed);
}

double readSeconds(const std::string& text) {
  bool isNumber = false;
  const double seconds = QByteArray::fromStdString(text).toDouble(&isNumber);
  if (isNumber && seconds >= kLeastSeconds && seconds <= kMostSeconds) return seconds;
  throw Failure(Failure::kMisuse, u"--timeout takes a number of seconds from %1 to %2, not \"%3\""_s
                                      .arg(kLeastSeconds)
                                      .arg(kMostSeconds)
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
  *seconds = kUsualTimeout;
  return command
      ->add_option("--timeout", *seconds,
                   "Give up after so many seconds, and leave the output as it was")
      ->type_name("SECONDS")
      ->capture_default_str();
}

void limitTime(const std::string& seconds) {
  const double limit = readSeconds(seconds);
  const char* const lineStart = ::isatty(STDERR_FILENO) != 0 ? "\r\x1b[K" : "";
  static QByteArray sentence;
  sentence =
      lineStart +
      u"kelvar: this takes longer than %1 s, so nothing was written; --timeout allows more\n"_s
          .arg(limit)
          .toUtf8();
  farewell = &sentence;
  struct sigaction action {};
  action.sa_handler = end;
  ::sigaction(SIGALRM, &action, nullptr);
  // Whoever started the program may have blocked it.
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

}  // namespace kelvar::app
