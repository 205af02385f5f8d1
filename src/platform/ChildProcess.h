#pragma once

#include <QByteArray>
#include <QStringList>

#include "pixels/Result.h"

namespace kelvar {

/// Runs other programs.
class ChildProcess {
 public:
  ChildProcess() = delete;

  /// Runs the program at the path `words[0]` in `directory`, waits until it has exited, and then
  /// returns its standard output and standard error, which share one pipe. The program inherits
  /// everything else. Its output must fit into the pipe, because it is read only after the program
  /// has exited. Fails if it cannot be launched or `Permissions` does not allow it.
  static Result<QByteArray> run(const QStringList& words, const QString& directory);
};

}  // namespace kelvar
