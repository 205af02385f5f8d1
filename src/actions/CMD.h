#pragma once

#include "runtime/Object.h"

namespace kelvar {

/// Runs a program without a shell, waits for it and returns everything that it printed.
///
/// Meant for short commands with little output: the program's output is read only after it has
/// ended, so one that prints more than a pipe holds (64 KiB) waits for ever.
class KELVAR_EXPORT CMD : public Object {
 public:
  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }

  /// Runs a command line: its words are what stands between single blanks, so that two blanks in a
  /// row give an empty word, and no character means anything else. The first word names a program:
  /// a file of that name in the first directory of `exports`, and at last in `cd`, that has one.
  ///
  /// Standard output and error of the program are one stream; its standard input and environment
  /// are the caller's. Returns the stream, whatever the exit status; null when it is not UTF-8.
  /// Null as well, with a log line and a sentence in `*error` where that is not null, when the
  /// program was not found or could not be launched. Blocks the calling thread.
  QString exec(const QString& commandLine, QString* error = nullptr) const;

  /// The directory in which the program runs; at first the one that the host's program is in.
  QString cd() const { return cd_; }
  void setCd(const QString& cd) { cd_ = cd; }

  /// The directories that are searched, separated by colons. The program does not see them.
  QString exports() const { return exports_; }
  void setExports(const QString& exports) { exports_ = exports; }

 private:
  static QString hostDirectory();
  QString launchPath(const QString& program) const;

  QString cd_ = hostDirectory();
  QString exports_ = QStringLiteral("/usr/local/bin:/usr/bin:/bin:/usr/sbin:/sbin");
};

}  // namespace kelvar
