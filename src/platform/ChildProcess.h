#pragma once

#include <QByteArray>
#include <QStringList>
#include <optional>

namespace kelvar {

/// Runs other programs.
class ChildProcess {
 public:
  ChildProcess() = delete;

  /// Runs the program at the path `words[0]` in `directory`, waits until it has ended, and then
  /// reads what it wrote to its standard output and error, which are one pipe. Everything else it
  /// inherits. Nothing, and `*error` says why, when it could not be launched.
  static std::optional<QByteArray> run(const QStringList& words, const QString& directory,
                                       QString* error);
};

}  // namespace kelvar
