#include "scripting/Bridge.h"
#include "scripting/SelectorName.h"

namespace kelvar {

/// The delegate that stands for the script object, one for each kind of delegate.
QVariant Bridge::delegateFor(JSObjectRef script, const DelegateInfo& info) {
  for (Link& link : links_) {
    if (link.info != &info || JSWeakGetObject(link.script) != script) continue;
    refresh(link);
    return info.toVariant(link.delegate);
  }
  Link& link = links_.emplace_back(Link{&info, info.make(), JSWeakCreate(group_, script),
                                        std::vector<bool>(info.operations().size())});
  refresh(link);
  return info.toVariant(link.delegate);
}

JSValueRef Bridge::delegateToScript(const QVariant& delegate, const ValueType& type) const {
  for (const Link& link : links_) {
    if (link.info != &type.theDelegate() || link.info->toVariant(link.delegate) != delegate) {
      continue;
    }
    if (const JSObjectRef script = JSWeakGetObject(link.script)) return script;
  }
  return JSValueMakeNull(context_);
}

/// The script's function for the selector, by either name; null for none.
JSObjectRef Bridge::implementation(JSObjectRef script, const QString& selector) const {
  for (const QString& name : {scriptName(selector), shortScriptName(selector)}) {
    const JSValueRef value = get(script, name);
    if (!JSValueIsObject(context_, value)) continue;
    const JSObjectRef function = JSValueToObject(context_, value, nullptr);
    if (JSObjectIsFunction(context_, function)) return function;
  }
  return nullptr;
}

void Bridge::refresh(Link& link) {
  const JSObjectRef script = JSWeakGetObject(link.script);
  const auto& operations = link.info->operations();
  for (size_t i = 0; i < operations.size(); ++i) {
    const bool implements = implementation(script, operations[i].selector) != nullptr;
    if (implements == link.implemented[i]) continue;
    link.implemented[i] = implements;
    operations[i].implement(link.delegate.get(),
                            implements ? handler(link, operations[i]) : DelegateInfo::Handler());
  }
}

DelegateInfo::Handler Bridge::handler(const Link& link, const DelegateInfo::Operation& operation) {
  return [this, weak = link.script, &operation](const QVariantList& arguments) {
    QVariant result;
    enter_([&]() -> JSValueRef {
      const JSObjectRef script = JSWeakGetObject(weak);
      const JSObjectRef function = script ? implementation(script, operation.selector) : nullptr;
      if (!function) return nullptr;
      std::vector<JSValueRef> values;
      for (const QVariant& argument : arguments) values.push_back(toScript(argument));
      result = toNative(call(function, script, values), &operation.result);
      return nullptr;
    });
    return result;
  };
}

void Bridge::hold(JSObjectRef face, const QString& selector, JSValueRef delegate) {
  call(prelude("hold"), nullptr, {face, string(selector), delegate});
  delegating_.insert(heldBy(face)->object.get());
}

void Bridge::keep(JSObjectRef face, bool isNeeded) {
  if (isNeeded == kept_.contains(face)) return;
  if (isNeeded) {
    JSValueProtect(context_, face);
    kept_.insert(face);
  } else {
    JSValueUnprotect(context_, face);
    kept_.remove(face);
  }
}

/// Nobody but its face holds an object that waits for nothing.
void Bridge::keepWhatIsAtWork() {
  for (const Object* const each : delegating_) {
    const auto known = objects_.find(const_cast<Object*>(each));
    const JSObjectRef face = known == objects_.end() ? nullptr : JSWeakGetObject(known->second);
    if (face) keep(face, heldBy(face)->object.use_count() > 1);
  }
}

}  // namespace kelvar
