#pragma once

#include <QVariant>
#include <map>
#include <memory>
#include <utility>

#include "runtime/ClassInfo.h"
#include "scripting/bridge/ScriptImplementation.h"
#include "scripting/bridge/WrapperTable.h"

namespace kelvar {

/// Objects of ours that forward to script objects, where an operation takes an object of a class
/// that scripts may implement.
///
/// A script object has one such object per class at a time. Whoever holds that keeps the script
/// object alive. If the script object refers to the holder in turn, as a function's variable does,
/// both live until the holder's property is set to something else, or the script ends. Main thread.
class ProtocolBindings {
 public:
  ProtocolBindings(const SelectorFunctions& functions, const WrapperTable& wrappers);
  ~ProtocolBindings();
  ProtocolBindings(const ProtocolBindings&) = delete;
  ProtocolBindings& operator=(const ProtocolBindings&) = delete;
  void close();

  /// Whether the value is a script's own object where the class may be implemented by one.
  bool isImplementable(JSValueRef value, const ClassInfo& info) const;
  /// The object that stands for the script object. Throws `NativeError` naming the required
  /// functions that it lacks.
  ObjectRef toNative(JSValueRef value, const ClassInfo& info);

  /// Unprotects the script objects that are no longer held.
  void collect();

 private:
  using Key = std::pair<JSObjectRef, const ClassInfo*>;

  const SelectorFunctions& functions_;
  const WrapperTable& wrappers_;
  const std::shared_ptr<ScriptImplementation::Script> script_;
  std::map<Key, std::weak_ptr<Object>> objects_;
};

}  // namespace kelvar
