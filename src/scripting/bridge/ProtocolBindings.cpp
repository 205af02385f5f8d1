#include "scripting/bridge/ProtocolBindings.h"

#include <QStringList>

#include "scripting/SelectorName.h"

namespace kelvar {

using namespace Qt::StringLiterals;

ProtocolBindings::ProtocolBindings(const SelectorFunctions& functions, const WrapperTable& wrappers)
    : functions_(functions),
      wrappers_(wrappers),
      script_(std::make_shared<ScriptImplementation::Script>()) {
  script_->functions = &functions_;
}

ProtocolBindings::~ProtocolBindings() { close(); }

void ProtocolBindings::close() {
  const std::lock_guard lock(script_->mutex);
  script_->functions = nullptr;
  script_->released.clear();
  objects_.clear();
}

bool ProtocolBindings::isImplementable(JSValueRef value, const ClassInfo& info) const {
  return info.protocol() && JSValueIsObject(functions_.context(), value) &&
         !wrappers_.isWrapper(value) && !wrappers_.classOf(value);
}

ObjectRef ProtocolBindings::toNative(JSValueRef value, const ClassInfo& info) {
  const JSObjectRef script = functions_.context().object(value);
  QStringList missing;
  for (const QString& selector : info.protocol()->required) {
    if (!functions_.find(script, selector)) missing.append(scriptName(selector));
  }
  if (!missing.isEmpty()) {
    throw NativeError(u"the object lacks the function%1 %2 of a %3"_s.arg(
        missing.size() == 1 ? u""_s : u"s"_s, missing.join(u", "), info.name()));
  }
  std::weak_ptr<Object>& known = objects_[{script, &info}];
  if (const ObjectRef object = known.lock()) return object;
  const ObjectRef made =
      info.protocol()->adapt(std::make_shared<ScriptImplementation>(script_, script));
  known = made;
  return made;
}

void ProtocolBindings::collect() {
  std::vector<JSObjectRef> released;
  {
    const std::lock_guard lock(script_->mutex);
    released.swap(script_->released);
  }
  if (released.empty()) return;
  for (const JSObjectRef each : released) JSValueUnprotect(functions_.context(), each);
  std::erase_if(objects_, [](const auto& each) { return each.second.expired(); });
}

}  // namespace kelvar
