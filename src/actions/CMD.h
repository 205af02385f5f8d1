#pragma once

#include "pixels/Result.h"
#include "runtime/Object.h"

namespace kelvar {

/// Runs a program without a shell, waits for it and returns its output.
///
/// Meant for short commands with little output: the output is read only after the program has
/// ended, so a program that prints more than a pipe holds (64 KiB) never ends.
class KELVAR_EXPORT CMD : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  /// Runs a command line. It is split at single spaces, so two spaces in a row result in an empty
  /// word; no other character is special. The first word is the program: the first file of that
  /// name in the directories of `exports`, and then in `cd`.
  ///
  /// Standard output and standard error of the program are merged; standard input and environment
  /// are inherited. Returns the output, whatever the exit status. Fails if the program is not found
  /// or cannot be launched, or its output is not UTF-8. Blocks the calling thread.
  Result<QString> run(const QString& commandLine) const;
  /// The same. Null, with a log line, on failure.
  QString exec(const QString& commandLine) const;

  /// The directory in which the program runs; by default, that of the host application's
  /// executable.
  QString cd() const { return cd_; }
  void setCd(const QString& cd) { cd_ = cd; }

  /// The directories to search, separated by colons. The program itself does not see them.
  QString exports() const { return exports_; }
  void setExports(const QString& exports) { exports_ = exports; }

 private:
  static QString hostDirectory();
  QString launchPath(const QString& program) const;

  QString cd_ = hostDirectory();
  QString exports_ = QStringLiteral("/usr/local/bin:/usr/bin:/bin:/usr/sbin:/sbin");
};

}  // namespace kelvar
