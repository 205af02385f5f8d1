#include "scripting/bridge/DelegateBindings.h"

#include <algorithm>

namespace kelvar {

DelegateBindings::DelegateBindings(const EngineContext& context, WrapperTable& wrappers,
                                   const ValueConverter& values, const SelectorFunctions& functions)
    : context_(context), wrappers_(wrappers), values_(values), functions_(functions) {}

void DelegateBindings::close() {
  for (const Binding& binding : bindings_) JSWeakRelease(context_.group(), binding.script);
  bindings_.clear();
  byScript_.clear();
  byDelegate_.clear();
}

QVariant DelegateBindings::toNative(JSValueRef value, const DelegateInfo& info) {
  if (const ObjectRef object = wrappers_.objectOf(value)) {
    const QVariant delegate = info.fromObject(object);
    return delegate.isValid() ? delegate : values_.toNative(value);
  }
  const JSObjectRef script = context_.object(value);
  if (!script || wrappers_.isWrapper(value)) return values_.toNative(value);
  const Binding* const known = find(script, info);
  return info.toVariant((known ? *known : bind(script, info)).delegate);
}

JSValueRef DelegateBindings::toScript(const QVariant& delegate, const DelegateInfo& info) const {
  if (const ObjectRef object = info.toObject(delegate)) return wrappers_.wrapper(object);
  const auto known = byDelegate_.find(info.fromVariant(delegate).get());
  const JSObjectRef script =
      known == byDelegate_.end() ? nullptr : JSWeakGetObject(known->second->script);
  return script ? script : context_.null();
}

void DelegateBindings::collect() {
  for (auto binding = bindings_.begin(); binding != bindings_.end();) {
    if (JSWeakGetObject(binding->script)) {
      ++binding;
      continue;
    }
    forget(*binding);
    binding = bindings_.erase(binding);
  }
}

const DelegateBindings::Binding* DelegateBindings::find(JSObjectRef script,
                                                        const DelegateInfo& info) const {
  // A collected script object may have had the same address.
  const auto [first, last] = byScript_.equal_range(script);
  const auto found = std::find_if(first, last, [&](const auto& each) {
    return each.second->info == &info && JSWeakGetObject(each.second->script) == script;
  });
  return found == last ? nullptr : found->second;
}

const DelegateBindings::Binding& DelegateBindings::bind(JSObjectRef script,
                                                        const DelegateInfo& info) {
  const Binding& binding = bindings_.emplace_back(
      Binding{&info, info.make(), JSWeakCreate(context_.group(), script), script});
  byScript_.emplace(script, &binding);
  byDelegate_.emplace(binding.delegate.get(), &binding);
  for (const DelegateInfo::Operation& operation : info.operations()) implement(binding, operation);
  return binding;
}

void DelegateBindings::forget(const Binding& binding) {
  const auto [first, last] = byScript_.equal_range(binding.address);
  byScript_.erase(
      std::find_if(first, last, [&](const auto& each) { return each.second == &binding; }));
  byDelegate_.erase(binding.delegate.get());
  JSWeakRelease(context_.group(), binding.script);
}

/// A function stands for a delegate with a single operation.
void DelegateBindings::implement(const Binding& binding,
                                 const DelegateInfo::Operation& operation) const {
  const bool isOperation =
      binding.info->operations().size() == 1 && context_.functionOrNull(binding.address);
  const QString selector = isOperation ? QString() : operation.selector;
  const auto handler = [this, weak = binding.script, selector,
                        &operation](const QVariantList& arguments) {
    const JSObjectRef script = JSWeakGetObject(weak);
    return script ? functions_.call(script, selector, arguments, operation.result) : QVariant();
  };
  const auto isImplemented = [this, weak = binding.script, selector] {
    const JSObjectRef script = JSWeakGetObject(weak);
    return script && functions_.has(script, selector);
  };
  operation.implement(binding.delegate.get(), handler, isImplemented);
}

}  // namespace kelvar
