#include "scripting/bridge/EngineContext.h"

#include <memory>
#include <utility>

#include "platform/Permissions.h"
#include "runtime/NamedException.h"
#include "scripting/bridge/Prelude.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

JSObjectRef errorIn(JSContextRef context, const QString& message) {
  const JSValueRef argument = JSValueMakeString(context, EngineString(message));
  return JSObjectMakeError(context, 1, &argument, nullptr);
}

/// What `EngineContext::guard` does. Each call from a script passes here.
template <class Call>
void guarded(JSContextRef context, JSValueRef* exception, const Call& call) {
  const RefusalScope refusals;
  try {
    call();
    if (refusals.refusal()) *exception = errorIn(context, *refusals.refusal());
  } catch (const ThrownValue& thrown) {
    *exception = thrown.value;
  } catch (const NamedException& failure) {
    const JSObjectRef error = errorIn(context, QString::fromUtf8(failure.what()));
    const EngineString name(QString::fromLatin1(failure.name()));
    JSObjectSetProperty(context, error, EngineString(u"name"_s), JSValueMakeString(context, name),
                        kJSPropertyAttributeDontEnum, nullptr);
    *exception = error;
  } catch (const std::exception& failure) {
    *exception = errorIn(context, QString::fromUtf8(failure.what()));
  }
}

}  // namespace

struct EngineContext::FunctionData : EngineData {
  Function call;
};

EngineContext::EngineContext(JSGlobalContextRef context) : context_(context) {
  JSClassDefinition definition = kJSClassDefinitionEmpty;
  definition.className = "Function";
  definition.callAsFunction = callFunction;
  definition.finalize = finalizeFunction;
  functionClass_ = JSClassCreate(&definition);
  functionPrototype_ = object(get(object(get(global(), u"Function"_s)), u"prototype"_s));
  JSValueProtect(context_, functionPrototype_);
  prelude_ = evaluateEmbedded(kPrelude[0].text);
  JSValueProtect(context_, prelude_);
  for (const EmbeddedScript& each : std::span(kPrelude).subspan(1)) {
    const JSValueRef arguments[] = {prelude_};
    call(evaluateEmbedded(each.text), nullptr, arguments);
  }
  for (const EmbeddedScript& each : kLazyScripts) {
    const JSObjectRef load =
        function([this, &each](const Call&) -> JSValueRef { return evaluateEmbedded(each.text); });
    callPrelude("defineLazily", {string(QString::fromLatin1(each.name)), load});
  }
}

/// Without a file, so that errors are located in the script that calls it.
JSObjectRef EngineContext::evaluateEmbedded(const char* script) const {
  JSValueRef exception = nullptr;
  const EngineString source(QString::fromUtf8(script));
  const JSValueRef made = JSEvaluateScript(context_, source, nullptr, nullptr, 1, &exception);
  if (exception) throw NativeError(text(exception));
  return object(made);
}

EngineContext::~EngineContext() { JSClassRelease(functionClass_); }

void EngineContext::guard(JSContextRef context, JSValueRef* exception,
                          const std::function<void()>& call) {
  guarded(context, exception, call);
}

JSValueRef EngineContext::callFunction(JSContextRef context, JSObjectRef function, JSObjectRef self,
                                       size_t count, const JSValueRef arguments[],
                                       JSValueRef* exception) {
  const auto* const data =
      static_cast<FunctionData*>(static_cast<EngineData*>(JSObjectGetPrivate(function)));
  JSValueRef result = JSValueMakeUndefined(context);
  guarded(context, exception, [&] { result = data->call({self, {arguments, count}}); });
  return result;
}

void EngineContext::finalizeFunction(JSObjectRef function) {
  delete static_cast<FunctionData*>(static_cast<EngineData*>(JSObjectGetPrivate(function)));
}

JSObjectRef EngineContext::function(Function function) const {
  EngineData* const data = std::make_unique<FunctionData>(
                               FunctionData{{EngineData::Kind::Function}, std::move(function)})
                               .release();
  const JSObjectRef made = JSObjectMake(context_, functionClass_, data);
  JSObjectSetPrototype(context_, made, functionPrototype_);
  return made;
}

JSObjectRef EngineContext::error(const QString& message) const {
  return errorIn(context_, message);
}

JSValueRef EngineContext::string(const QString& text) const {
  return JSValueMakeString(context_, EngineString(text));
}

QString EngineContext::text(JSValueRef value) const {
  return EngineString(JSValueToStringCopy(context_, value, nullptr)).text();
}

QString EngineContext::described(JSValueRef value) const {
  return text(callPrelude("describe", {value}));
}

JSObjectRef EngineContext::functionOrNull(JSValueRef value) const {
  const JSObjectRef function = object(value);
  return function && JSObjectIsFunction(context_, function) ? function : nullptr;
}

JSValueRef EngineContext::get(JSObjectRef object, const QString& name) const {
  JSValueRef exception = nullptr;
  const JSValueRef value = JSObjectGetProperty(context_, object, EngineString(name), &exception);
  if (exception) throw ThrownValue{exception};
  return value;
}

void EngineContext::set(JSObjectRef object, const QString& name, JSValueRef value) const {
  JSObjectSetProperty(context_, object, EngineString(name), value, kJSPropertyAttributeNone,
                      nullptr);
}

QStringList EngineContext::namesOf(JSObjectRef object) const {
  const JSPropertyNameArrayRef array = JSObjectCopyPropertyNames(context_, object);
  QStringList names;
  for (size_t i = 0; i < JSPropertyNameArrayGetCount(array); ++i) {
    names.append(EngineString(JSStringRetain(JSPropertyNameArrayGetNameAtIndex(array, i))).text());
  }
  JSPropertyNameArrayRelease(array);
  return names;
}

void EngineContext::defineAccessor(JSObjectRef object, const QString& name, JSObjectRef get,
                                   JSObjectRef set) const {
  const auto orUndefined = [&](JSObjectRef function) { return function ? function : undefined(); };
  callPrelude("accessor", {object, string(name), orUndefined(get), orUndefined(set)});
}

JSValueRef EngineContext::call(JSObjectRef function, JSObjectRef self,
                               std::span<const JSValueRef> arguments) const {
  JSValueRef exception = nullptr;
  const JSValueRef result = JSObjectCallAsFunction(context_, function, self, arguments.size(),
                                                   arguments.data(), &exception);
  if (exception) throw ThrownValue{exception};
  return result;
}

JSValueRef EngineContext::callPrelude(const char* name,
                                      std::initializer_list<JSValueRef> arguments) const {
  return call(prelude(name), nullptr, {arguments.begin(), arguments.size()});
}

JSObjectRef EngineContext::prelude(const char* name) const {
  return object(get(prelude_, QString::fromLatin1(name)));
}

}  // namespace kelvar
