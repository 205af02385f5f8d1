#pragma once

#include <QSet>
#include <QString>

#include "scripting/bridge/EngineContext.h"
#include "scripting/runtime/ErrorLocator.h"

namespace kelvar {

/// Evaluates scripts and the files that they import. What a script throws is a `ThrownValue`. Main
/// thread.
class ScriptLoader {
 public:
  /// Also defines the function that `@import` becomes.
  ScriptLoader(const EngineContext& context, ErrorLocator& locator);

  void evaluate(const QString& script, const QString& file);
  /// Evaluates a file unless that has been done, also where files import each other. A relative
  /// path starts at the file that is importing. Throws `NativeError` if the file cannot be read.
  void import(const QString& path);

  /// The text of a script. Throws `NativeError` if it cannot be read or that is not allowed.
  static QString read(const QString& file);

 private:
  const EngineContext& context_;
  ErrorLocator& locator_;
  QSet<QString> imported_;
};

}  // namespace kelvar
