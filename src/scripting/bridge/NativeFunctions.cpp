#include "scripting/bridge/NativeFunctions.h"

#include <memory>

#include "scripting/Boxed.h"
#include "scripting/foundation/FileFunctions.h"
#include "scripting/foundation/SystemFunctions.h"
#include "scripting/host/DialogFunctions.h"
#include "scripting/host/NetworkFunctions.h"
#include "scripting/host/PasteboardFunctions.h"
#include "scripting/host/ProgramFunctions.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

/// Null for an object that its properties do not make again: its class has no `init`, or a property
/// that cannot be set.
ObjectRef copyByProperties(const Object& object) {
  const ClassInfo& info = object.classInfo();
  ObjectRef copy = info.create(u"init"_s);
  for (const ClassInfo* each = &info; copy && each; each = each->base()) {
    for (const ClassInfo::Property& property : each->properties()) {
      if (!property.set || !property.set(*copy, property.get(object))) return nullptr;
    }
  }
  return copy;
}

}  // namespace

NativeFunctions::NativeFunctions(const EngineContext& context, WrapperTable& wrappers,
                                 ClassBridge& classes)
    : context_(context), wrappers_(wrappers) {
  const JSObjectRef native = JSObjectMake(context_, nullptr, nullptr);
  context_.callPrelude("setNative", {native});
  defineQuestions(native);
  for (const ClassInfo* const info :
       {&FileFunctions::staticClassInfo(), &SystemFunctions::staticClassInfo(),
        &DialogFunctions::staticClassInfo(), &PasteboardFunctions::staticClassInfo(),
        &ProgramFunctions::staticClassInfo(), &NetworkFunctions::staticClassInfo()}) {
    for (const ClassInfo::Operation& each : info->operations()) {
      context_.set(native, each.selector, classes.functionOf(*info, each));
    }
  }
}

void NativeFunctions::defineQuestions(JSObjectRef native) const {
  const auto add = [&](const QString& name, EngineContext::Function function) {
    context_.set(native, name, context_.function(std::move(function)));
  };
  const auto boxed = [this](JSValueRef value) {
    return std::dynamic_pointer_cast<Boxed>(wrappers_.objectOf(value));
  };
  add(u"isClass"_s, [this](const EngineContext::Call& call) {
    return context_.boolean(wrappers_.classOf(call.arguments[0]) != nullptr);
  });
  add(u"isBoxed"_s, [this, boxed](const EngineContext::Call& call) {
    return context_.boolean(boxed(call.arguments[0]) != nullptr);
  });
  // Two wrappers of one object are the same, so this is about values.
  add(u"isEqual"_s, [this, boxed](const EngineContext::Call& call) {
    const auto one = boxed(call.arguments[0]);
    const auto other = boxed(call.arguments[1]);
    return context_.boolean(one && other && one->value() == other->value());
  });
  add(u"classNameOf"_s, [this](const EngineContext::Call& call) -> JSValueRef {
    const ObjectRef object = wrappers_.objectOf(call.arguments[0]);
    return object ? context_.string(object->classInfo().name()) : context_.null();
  });
  add(u"copyOf"_s, [this](const EngineContext::Call& call) -> JSValueRef {
    const ObjectRef object = wrappers_.objectOf(call.arguments[0]);
    const ObjectRef copy = object ? copyByProperties(*object) : nullptr;
    return copy ? JSValueRef(wrappers_.wrapper(copy)) : context_.null();
  });
}

}  // namespace kelvar
