#include "scripting/bridge/SelectorFunctions.h"

#include <utility>

#include "runtime/ClassInfo.h"
#include "scripting/SelectorName.h"

namespace kelvar {

SelectorFunctions::SelectorFunctions(const EngineContext& context, const ValueConverter& values,
                                     Enter enter)
    : context_(context), values_(values), enter_(std::move(enter)) {}

JSObjectRef SelectorFunctions::find(JSObjectRef script, const QString& selector) const {
  if (selector.isEmpty()) return context_.functionOrNull(script);
  for (const QString& name : {scriptName(selector), shortScriptName(selector)}) {
    if (const JSObjectRef found = context_.functionOrNull(context_.get(script, name))) return found;
  }
  return nullptr;
}

bool SelectorFunctions::has(JSObjectRef script, const QString& selector) const {
  try {
    return find(script, selector) != nullptr;
  } catch (const ThrownValue&) {
    return true;  // The call reports it.
  }
}

QVariant SelectorFunctions::call(JSObjectRef script, const QString& selector,
                                 const QVariantList& arguments, const ValueType& result) const {
  QVariant converted;
  enter_([&] {
    const JSObjectRef function = find(script, selector);
    if (!function) return;
    EngineArguments values(context_);
    for (const QVariant& argument : arguments) values.append(values_.toScript(argument));
    converted = resultFrom(context_.call(function, script, values), result);
  });
  return converted;
}

QVariant SelectorFunctions::resultFrom(JSValueRef answer, const ValueType& type) const {
  if (type.type == QMetaType::fromType<void>()) return {};
  // Any value is true or false for a script.
  if (type.type == QMetaType::fromType<bool>()) return JSValueToBoolean(context_, answer);
  return values_.toNative(answer, &type);
}

}  // namespace kelvar
