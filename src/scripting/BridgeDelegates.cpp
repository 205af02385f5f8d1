#include <algorithm>

#include "scripting/Bridge.h"
#include "scripting/SelectorName.h"

namespace kelvar {

/// The delegate that stands for the script object, one for each kind of delegate.
QVariant Bridge::delegateFor(JSObjectRef script, const DelegateInfo& info) {
  // One that is gone may have lain where the script object lies now.
  const auto [first, last] = linkOfScript_.equal_range(script);
  for (auto each = first; each != last; ++each) {
    Link& link = *each->second;
    if (link.info != &info || JSWeakGetObject(link.script) != script) continue;
    refresh(link);
    return info.toVariant(link.delegate);
  }
  Link& link = links_.emplace_back(Link{&info, info.make(), JSWeakCreate(group_, script), script,
                                        std::vector<bool>(info.operations().size())});
  linkOfScript_.emplace(script, &link);
  linkOfDelegate_.emplace(link.delegate.get(), &link);
  refresh(link);
  return info.toVariant(link.delegate);
}

void Bridge::forget(const Link& link) {
  const auto [first, last] = linkOfScript_.equal_range(link.address);
  linkOfScript_.erase(
      std::find_if(first, last, [&](const auto& each) { return each.second == &link; }));
  linkOfDelegate_.erase(link.delegate.get());
  JSWeakRelease(group_, link.script);
}

/// Nil for a delegate that is neither of the script's nor an object.
JSValueRef Bridge::delegateToScript(const QVariant& delegate, const ValueType& type) {
  if (const ObjectRef object = type.theDelegate().toObject(delegate)) return face(object);
  const auto known = linkOfDelegate_.find(type.theDelegate().fromVariant(delegate).get());
  const JSObjectRef script =
      known == linkOfDelegate_.end() ? nullptr : JSWeakGetObject(known->second->script);
  return script ? script : JSValueMakeNull(context_);
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
    enter_([&] {
      const JSObjectRef script = JSWeakGetObject(weak);
      const JSObjectRef function = script ? implementation(script, operation.selector) : nullptr;
      if (!function) return;
      EngineArguments values(context_);
      for (const QVariant& argument : arguments) values.append(toScript(argument));
      const JSValueRef answer = call(function, script, values);
      if (operation.result.type != QMetaType::fromType<void>()) {
        result = toNative(answer, &operation.result);
      }
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
  for (Object* const each : delegating_) {
    const auto known = objects_.find(each);
    const JSObjectRef face = known == objects_.end() ? nullptr : JSWeakGetObject(known->second);
    if (face) keep(face, heldBy(face)->object.use_count() > 1);
  }
}

}  // namespace kelvar
