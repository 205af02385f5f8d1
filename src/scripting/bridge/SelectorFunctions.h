#pragma once

#include <QVariant>
#include <functional>

#include "runtime/ValueType.h"
#include "scripting/bridge/EngineContext.h"
#include "scripting/bridge/ValueConverter.h"

namespace kelvar {

/// The functions of script objects that are named after selectors, as our code calls them. An empty
/// selector is for a script object that is the function itself. Main thread.
class SelectorFunctions {
 public:
  /// Runs a call into the script and handles what it throws. Does not run it after an exception
  /// that has not reached the script yet.
  using Enter = std::function<void(const std::function<void()>& call)>;

  SelectorFunctions(const EngineContext& context, const ValueConverter& values, Enter enter);

  /// The function for the selector, by either name; null if there is none. Throws what a getter of
  /// the script throws.
  JSObjectRef find(JSObjectRef script, const QString& selector) const;
  /// Whether a call would find one.
  bool has(JSObjectRef script, const QString& selector) const;
  /// Invalid if there is no such function or it throws.
  QVariant call(JSObjectRef script, const QString& selector, const QVariantList& arguments,
                const ValueType& result) const;

  const EngineContext& context() const { return context_; }

 private:
  QVariant resultFrom(JSValueRef answer, const ValueType& type) const;

  const EngineContext& context_;
  const ValueConverter& values_;
  const Enter enter_;
};

}  // namespace kelvar
