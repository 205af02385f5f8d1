#pragma once

#include <QString>

namespace kelvar {

/// An exception that a script did not catch.
struct ScriptError {
  QString message;
  /// Where it was thrown; empty and 0 if that is unknown.
  QString file;
  int line = 0;
  /// That line of the file.
  QString text;
};

}  // namespace kelvar
