#pragma once

#include <QHash>
#include <QString>

#include "scripting/bridge/EngineContext.h"
#include "scripting/runtime/ScriptError.h"

namespace kelvar {

/// Finds out where in a script an exception was thrown.
///
/// The engine records that for errors alone. For other values, the preprocessor assigns what is
/// thrown to a variable, whose setter is defined here. Main thread.
class ErrorLocator {
 public:
  explicit ErrorLocator(const EngineContext& context);

  /// Remembers a script for the lines that errors quote.
  void addSource(const QString& file, const QString& script) { sources_.insert(file, script); }

  /// Where the script is now, without a message.
  ScriptError here() const { return placeOf(context_.error({})); }
  /// The exception, and where it was thrown.
  ScriptError errorFor(JSValueRef exception) const;

 private:
  JSObjectRef originOf(JSValueRef exception) const;
  ScriptError placeOf(JSObjectRef error) const;
  QString lineOf(const QString& file, int line) const;

  const EngineContext& context_;
  QHash<QString, QString> sources_;
  /// Holds the last value that was thrown, and an error made at that place.
  JSObjectRef lastThrown_;
};

}  // namespace kelvar
