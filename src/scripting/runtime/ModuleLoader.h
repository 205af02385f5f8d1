#pragma once

#include <QString>

#include "scripting/bridge/EngineContext.h"
#include "scripting/runtime/ErrorLocator.h"

namespace kelvar {

/// Finds and compiles the files of `require`, for the runtime's own JavaScript, which evaluates
/// each once. Main thread.
class ModuleLoader {
 public:
  /// Also defines the functions.
  ModuleLoader(const EngineContext& context, ErrorLocator& locator);

 private:
  /// The folder of the script that calls; the working directory without one.
  QString callersFolder() const;
  /// The file's paths, or null if there is none: as the name leads to it, absolute, and canonical.
  JSValueRef find(const QString& folder, const QString& name) const;
  /// The file as a function of `exports`, `require`, `module`, `__filename` and `__dirname`.
  JSValueRef compile(const QString& file, const QString& text) const;

  const EngineContext& context_;
  ErrorLocator& locator_;
};

}  // namespace kelvar
