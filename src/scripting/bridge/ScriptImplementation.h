#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "runtime/Implementation.h"
#include "scripting/bridge/SelectorFunctions.h"

namespace kelvar {

/// The functions of a script object as the operations of an object of ours, which keeps the script
/// object alive. Calls are made on the main thread; any thread may release it.
class ScriptImplementation : public Implementation {
 public:
  /// What the implementations of one script share.
  struct Script {
    std::mutex mutex;
    /// Null once the script has ended.
    const SelectorFunctions* functions = nullptr;
    /// Script objects that are to be unprotected on the main thread.
    std::vector<JSObjectRef> released;
  };

  ScriptImplementation(std::shared_ptr<Script> script, JSObjectRef object);
  ~ScriptImplementation() override;

  bool respondsTo(const QString& selector) const override;
  QVariant call(const QString& selector, const QVariantList& arguments,
                const ValueType& result) const override;

  /// The script object that stands for ours; null for any other object of ours and in any other
  /// script's context.
  static JSObjectRef objectBehind(const Object* object, JSContextRef context);

 private:
  const std::shared_ptr<Script> script_;
  const JSObjectRef object_;
};

}  // namespace kelvar
