#pragma once

#include <QVariant>
#include <list>
#include <memory>
#include <unordered_map>

#include "runtime/DelegateInfo.h"
#include "scripting/bridge/SelectorFunctions.h"
#include "scripting/bridge/WrapperTable.h"

namespace kelvar {

/// The delegates that call the functions of script objects.
///
/// A script object and a delegate's description share one native delegate. It implements what the
/// script object has functions for at the moment, by either name of the selector. The script object
/// is held weakly: see `WrapperTable::retainDelegate`. Main thread.
class DelegateBindings {
 public:
  DelegateBindings(const EngineContext& context, WrapperTable& wrappers,
                   const ValueConverter& values, const SelectorFunctions& functions);
  void close();

  /// The value of a property that takes such a delegate. Throws what `ValueConverter` throws.
  QVariant toNative(JSValueRef value, const DelegateInfo& info);
  /// The script object behind a delegate; null for a delegate that is neither the script's nor an
  /// object.
  JSValueRef toScript(const QVariant& delegate, const DelegateInfo& info) const;

  /// Drops the bindings of collected script objects.
  void collect();

 private:
  struct Binding {
    const DelegateInfo* info;
    std::shared_ptr<void> delegate;
    JSWeakRef script;
    /// Where the script object is, or was.
    JSObjectRef address;
  };

  const Binding* find(JSObjectRef script, const DelegateInfo& info) const;
  const Binding& bind(JSObjectRef script, const DelegateInfo& info);
  void forget(const Binding& binding);
  void implement(const Binding& binding, const DelegateInfo::Operation& operation) const;

  const EngineContext& context_;
  WrapperTable& wrappers_;
  const ValueConverter& values_;
  const SelectorFunctions& functions_;
  std::list<Binding> bindings_;
  std::unordered_multimap<JSObjectRef, const Binding*> byScript_;
  std::unordered_map<const void*, const Binding*> byDelegate_;
};

}  // namespace kelvar
