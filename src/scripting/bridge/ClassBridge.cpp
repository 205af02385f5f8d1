#include "scripting/bridge/ClassBridge.h"

#include <algorithm>
#include <utility>

#include "scripting/SelectorName.h"
#include "scripting/TypeName.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;
using Kind = ClassInfo::Kind;
using Operations = QHash<QString, const ClassInfo::Operation*>;

/// From the base to the class itself, so that what a class redefines comes last.
std::vector<const ClassInfo*> chainOf(const ClassInfo& info) {
  std::vector<const ClassInfo*> chain;
  for (const ClassInfo* each = &info; each; each = each->base()) chain.insert(chain.begin(), each);
  return chain;
}

/// By selector, with those of the bases. Initializers are not inherited.
Operations operationsOf(const ClassInfo& info, Kind kind) {
  Operations found;
  for (const ClassInfo* each : chainOf(info)) {
    if (kind == Kind::Initializer && each != &info) continue;
    for (const ClassInfo::Operation& operation : each->operations()) {
      if (operation.kind == kind) found.insert(operation.selector, &operation);
    }
  }
  return found;
}

/// The operation's name in messages. Functions have no class.
QString nameOf(const ClassInfo& info, const QString& selector) {
  return info.name().isEmpty() ? selector : info.name() + u' ' + selector;
}

QString missingMember(const ClassInfo& info, Kind kind, const QString& name) {
  QStringList names;
  const Operations operations = operationsOf(info, kind);
  for (auto it = operations.begin(); it != operations.end(); ++it) names += scriptName(it.key());
  if (kind == Kind::ClassOperation) {
    names += u"alloc"_s;
    if (operationsOf(info, Kind::Initializer).contains(u"init"_s)) names += u"new"_s;
  }
  names.sort();
  const QString owner = kind == Kind::Operation     ? u"an object of class %1"_s
                        : kind == Kind::Initializer ? u"%1.alloc()"_s
                                                    : u"the class %1"_s;
  const QString nearest = nearestName(name, names);
  return u"%1 has no selector %2"_s.arg(owner.arg(info.name()), name) +
         (nearest.isNull() ? QString() : u"; the nearest is "_s + nearest);
}

}  // namespace

ClassBridge::ClassBridge(const EngineContext& context, WrapperTable& wrappers,
                         const ValueConverter& values, DelegateBindings& delegates,
                         ProtocolBindings& protocols, GraphConverter& graphs)
    : context_(context),
      wrappers_(wrappers),
      values_(values),
      delegates_(delegates),
      protocols_(protocols),
      graphs_(graphs) {}

JSObjectRef ClassBridge::classObject(const ClassInfo& info) {
  if (const JSObjectRef made = classObjects_[&info].classObject) return made;
  const JSObjectRef made = wrappers_.makeClassObject(info);
  JSValueProtect(context_, made);
  classObjects_[&info].classObject = made;
  defineOperations(made, info, Kind::ClassOperation);
  defineClassBasics(made, info);
  JSObjectSetPrototype(context_, made, missingMemberProxy(info, Kind::ClassOperation));
  return made;
}

JSObjectRef ClassBridge::instancePrototype(const ClassInfo& info) {
  if (const JSObjectRef made = classObjects_[&info].instance) return made;
  const JSObjectRef made = makePrototype(info, Kind::Operation);
  classObjects_[&info].instance = made;
  return made;
}

bool ClassBridge::setMember(JSObjectRef self, const ClassInfo& info, const QString& name,
                            JSValueRef value) {
  const Function set = classObjects_[&info].setters.value(name);
  if (set) set({self, {&value, 1}});
  return bool(set);
}

JSObjectRef ClassBridge::functionOf(const ClassInfo& info, const ClassInfo::Operation& operation) {
  return context_.function([this, &info, &operation](const Call& call) {
    return invoke(info, operation, call, nullptr);
  });
}

JSObjectRef ClassBridge::makePrototype(const ClassInfo& info, Kind kind) {
  const JSObjectRef prototype = JSObjectMake(context_, nullptr, nullptr);
  JSValueProtect(context_, prototype);
  if (kind == Kind::Operation) defineObjectBasics(prototype);
  defineOperations(prototype, info, kind);
  JSObjectSetPrototype(context_, prototype, missingMemberProxy(info, kind));
  context_.callPrelude("markAsNative", {prototype});
  return prototype;
}

/// `set` is a function, or undefined for a member that cannot be assigned.
void ClassBridge::define(JSObjectRef target, const QString& name, Function body,
                         JSValueRef set) const {
  context_.callPrelude("define",
                       {target, context_.string(name), context_.function(std::move(body)), set});
}

/// Defines every operation under both of its names.
void ClassBridge::defineOperations(JSObjectRef target, const ClassInfo& info, Kind kind) {
  QHash<QString, Candidates> named;
  for (const ClassInfo::Operation* const operation : operationsOf(info, kind)) {
    const QString name = scriptName(operation->selector);
    const QString shorter = shortScriptName(operation->selector);
    named[name].push_back(operation);
    if (shorter != name) named[shorter].push_back(operation);
  }
  for (auto it = named.begin(); it != named.end(); ++it) {
    std::sort(it->begin(), it->end(), [](const auto* a, const auto* b) {
      return a->parameters.size() < b->parameters.size();
    });
    const QString& name = it.key();
    const Function body = method(info, kind, name, *it);
    if (kind != Kind::Operation) {
      define(target, name, body, context_.function(setter(info, kind, name)));
      continue;
    }
    context_.callPrelude("defineOperation",
                         {target, context_.string(name), context_.function(body)});
    classObjects_[&info].setters.insert(name, setter(info, kind, name));
  }
}

void ClassBridge::defineClassBasics(JSObjectRef target, const ClassInfo& info) {
  const auto add = [&](const QString& name, Function body) {
    define(target, name, std::move(body), context_.undefined());
  };
  add(u"alloc"_s, [this, &info](const Call&) -> JSValueRef {
    JSObjectRef prototype = classObjects_[&info].allocated;
    if (!prototype) prototype = makePrototype(info, Kind::Initializer);
    classObjects_[&info].allocated = prototype;
    return wrappers_.allocate(info, prototype);
  });
  if (const auto* const init = operationsOf(info, Kind::Initializer).value(u"init"_s)) {
    add(u"new"_s,
        [this, init](const Call&) { return values_.toScript(perform(*init, nullptr, {})); });
  }
  add(u"class"_s, [this, &info](const Call&) { return classObject(info); });
  add(u"name"_s, [this, &info](const Call&) { return context_.string(info.name()); });
  add(u"toString"_s, [this, &info](const Call&) { return context_.string(info.name()); });
  add(u"superclass"_s, [this, &info](const Call&) -> JSValueRef {
    if (info.base()) return classObject(*info.base());
    return &info == &Object::staticClassInfo() ? context_.null()
                                               : classObject(Object::staticClassInfo());
  });
  const auto isSubclass = [this, &info](const Call& call) {
    const auto* const base =
        call.arguments.empty() ? nullptr : wrappers_.classOf(call.arguments[0]);
    return context_.boolean(base && (base == &Object::staticClassInfo() || isKindOf(info, *base)));
  };
  const auto responds = [this, &info](const Call& call) {
    const QString selector = call.arguments.empty() ? QString() : context_.text(call.arguments[0]);
    return context_.boolean(info.operation(Kind::Operation, selector) != nullptr);
  };
  for (const QString& selector : {u"isSubclassOfClass:"_s, u"instancesRespondToSelector:"_s}) {
    const auto body = selector.startsWith(u"is") ? Function(isSubclass) : Function(responds);
    for (const QString& name : {scriptName(selector), shortScriptName(selector)}) add(name, body);
  }
}

/// Defines what every object has without its class describing it.
void ClassBridge::defineObjectBasics(JSObjectRef target) {
  using Body = std::function<JSValueRef(Object & object, const Call& call)>;
  const auto add = [&](const QString& name, Body body) {
    const auto whole = [this, name, body = std::move(body)](const Call& call) {
      return body(*objectBehind(call.self, Object::staticClassInfo(), name), call);
    };
    define(target, name, whole, context_.undefined());
  };
  add(u"toString"_s,
      [this](Object& object, const Call&) { return context_.string(object.description()); });
  add(u"class"_s, [this](Object& object, const Call&) { return classObject(object.classInfo()); });
  add(u"className"_s,
      [this](Object& object, const Call&) { return context_.string(object.classInfo().name()); });
  const auto isKind = [this](Object& object, const Call& call) -> JSValueRef {
    const auto* const info =
        call.arguments.empty() ? nullptr : wrappers_.classOf(call.arguments[0]);
    if (info) return context_.boolean(isKindOf(object.classInfo(), *info));
    const JSValueRef type = call.arguments.empty() ? context_.null() : call.arguments[0];
    return context_.callPrelude("isInstance", {call.self, type});
  };
  const auto responds = [this](Object& object, const Call& call) {
    const QString selector = call.arguments.empty() ? QString() : context_.text(call.arguments[0]);
    return context_.boolean(object.classInfo().operation(Kind::Operation, selector) != nullptr);
  };
  for (const QString& name : {u"isKindOfClass_"_s, u"isKindOfClass"_s}) add(name, isKind);
  for (const QString& name : {u"respondsToSelector_"_s, u"respondsToSelector"_s}) {
    add(name, responds);
  }
}

ClassBridge::Function ClassBridge::setter(const ClassInfo& info, Kind kind, const QString& name) {
  const ClassInfo::Property* const property =
      kind == Kind::Operation ? info.property(name) : nullptr;
  const ClassInfo::Operation* const operation =
      property && property->set ? info.operation(kind, ClassInfo::setterOf(name)) : nullptr;
  if (operation) return method(info, kind, name, {operation});
  return [&info, name](const Call&) -> JSValueRef {
    throw NativeError(u"%1 has no property %2 that can be set"_s.arg(info.name(), name));
  };
}

ClassBridge::Function ClassBridge::method(const ClassInfo& info, Kind kind, const QString& name,
                                          Candidates candidates) {
  return [this, &info, kind, name, candidates = std::move(candidates)](const Call& call) {
    const ClassInfo::Operation* operation = candidates.back();
    for (const ClassInfo::Operation* const each : candidates) {
      if (each->parameters.size() == call.arguments.size()) operation = each;
    }
    if (kind == Kind::Initializer) return initialize(info, *operation, call);
    if (kind == Kind::ClassOperation) return invoke(info, *operation, call, nullptr);
    // Holds the object, which the script may release during the call.
    return invoke(info, *operation, call, objectBehind(call.self, info, name));
  };
}

/// Proxy at the end of the prototype chain; records unknown members.
JSObjectRef ClassBridge::missingMemberProxy(const ClassInfo& info, Kind kind) {
  const JSObjectRef describe = context_.function([this, &info, kind](const Call& call) {
    return context_.string(missingMember(info, kind, context_.text(call.arguments[0])));
  });
  // As long as the proxy that uses it.
  JSValueProtect(context_, describe);
  const JSObjectRef get = context_.function([this, describe](const Call& call) -> JSValueRef {
    const JSValueRef key = call.arguments[1];
    if (JSValueIsSymbol(context_, key)) return context_.undefined();
    if (!JSValueToBoolean(context_, context_.callPrelude("isObjectPrototypeMember", {key}))) {
      return context_.callPrelude("readMissing", {key, describe});
    }
    return context_.callPrelude("objectPrototypeMember", {key});
  });
  const JSObjectRef set = context_.function([this, &info, kind](const Call& call) -> JSValueRef {
    throw NativeError(missingMember(info, kind, context_.text(call.arguments[1])));
  });
  return context_.object(context_.callPrelude("missingMemberProxy", {get, set}));
}

ObjectRef ClassBridge::objectBehind(JSObjectRef self, const ClassInfo& info,
                                    const QString& name) const {
  const ObjectRef object = wrappers_.objectOf(self);
  if (object && isKindOf(object->classInfo(), info)) return object;
  throw NativeError(u"%1 must be called on an object of class %2"_s.arg(name, info.name()));
}

/// Returns the new object, or nil if it cannot be made.
JSValueRef ClassBridge::initialize(const ClassInfo& info, const ClassInfo::Operation& operation,
                                   const Call& call) {
  if (wrappers_.allocatedClassOf(call.self) != &info) {
    throw NativeError(nameOf(info, operation.selector) +
                      u" must be called on the result of alloc()"_s);
  }
  return invoke(info, operation, call, nullptr);
}

JSValueRef ClassBridge::invoke(const ClassInfo& info, const ClassInfo::Operation& operation,
                               const Call& call, const ObjectRef& self) {
  const QVariant result = perform(operation, self.get(), argumentsOf(info, operation, call));
  if (self) {
    const bool takesDelegate =
        std::any_of(operation.parameters.begin(), operation.parameters.end(),
                    [](const ValueType& type) { return type.staticDelegateInfo != nullptr; });
    if (takesDelegate) {
      wrappers_.retainDelegate(call.self, operation.selector, call.arguments[0]);
    }
    // The wrapper and `self` are not what keeps an object at work.
    constexpr long kOwnReferences = 2;
    wrappers_.protectWhileShared(call.self, kOwnReferences);
  }
  if (operation.result.type == QMetaType::fromType<void>()) return context_.undefined();
  if (operation.result.type == QMetaType::fromType<ObjectGraph>()) {
    return graphs_.toScript(result.value<ObjectGraph>());
  }
  return operation.result.staticDelegateInfo
             ? delegates_.toScript(result, operation.result.staticDelegateInfo())
             : values_.toScript(result);
}

QVariantList ClassBridge::argumentsOf(const ClassInfo& info, const ClassInfo::Operation& operation,
                                      const Call& call) {
  const size_t count = operation.parameters.size();
  if (call.arguments.size() != count) {
    throw NativeError(u"%1 takes %2 argument%3, not %4"_s.arg(nameOf(info, operation.selector))
                          .arg(count)
                          .arg(count == 1 ? u""_s : u"s"_s)
                          .arg(call.arguments.size()));
  }
  QVariantList arguments;
  if (count > 0) arguments.reserve(qsizetype(count));
  for (size_t i = 0; i < count; ++i) {
    const ValueType& type = operation.parameters[i];
    const JSValueRef argument = call.arguments[i];
    try {
      arguments.append(argumentOf(argument, type));
    } catch (const NativeError& problem) {
      throw NativeError(
          u"%1 %2"_s.arg(placeOf(info, operation, call), QString::fromUtf8(problem.what())));
    }
    if (type.fits(arguments.back())) continue;
    arguments.back() = asNumberOrText(argument, type);
    if (arguments.back().isValid()) continue;
    throw NativeError(u"%1 takes %2 as argument %3, not %4"_s.arg(
        nameOf(info, operation.selector), scriptTypeName(type), QString::number(i + 1),
        values_.kindOf(argument)));
  }
  return arguments;
}

/// As in the host, text that says a number is one where a number is expected, such as what a user
/// has typed, and a number is text where text is. Invalid for anything else.
QVariant ClassBridge::asNumberOrText(JSValueRef value, const ValueType& type) const {
  if (type.type == QMetaType::fromType<QString>() && JSValueIsNumber(context_, value)) {
    return context_.text(value);
  }
  if (!isNumber(QVariant(type.type)) || !JSValueIsString(context_, value)) return {};
  bool isRead = false;
  const double number = context_.text(value).trimmed().toDouble(&isRead);
  return isRead && type.fits(number) ? QVariant(number) : QVariant();
}

/// The operation for messages, with the key that the call is about.
QString ClassBridge::placeOf(const ClassInfo& info, const ClassInfo::Operation& operation,
                             const Call& call) const {
  const QString name = nameOf(info, operation.selector);
  const qsizetype index = operation.selector.split(u':').indexOf(u"forKey");
  if (index < 0 || !JSValueIsString(context_, call.arguments[size_t(index)])) {
    return name.endsWith(u':') ? name : name + u':';
  }
  return u"%1 the value for %2:"_s.arg(name, context_.text(call.arguments[size_t(index)]));
}

QVariant ClassBridge::argumentOf(JSValueRef value, const ValueType& type) {
  if (type.staticDelegateInfo) return delegates_.toNative(value, type.staticDelegateInfo());
  if (type.staticClassInfo) return objectFor(value, type.staticClassInfo(), &type);
  if (type.type == QMetaType::fromType<ObjectGraph>()) {
    return QVariant::fromValue(graphs_.toNative(value));
  }
  if (type.staticElementInfo && JSValueIsArray(context_, value)) {
    return objectsFor(value, type.staticElementInfo());
  }
  return values_.toNative(value, &type);
}

/// A script's own object may implement the class, and a plain value may be converted to it.
QVariant ClassBridge::objectFor(JSValueRef value, const ClassInfo& info, const ValueType* type) {
  if (protocols_.isImplementable(value, info)) {
    return QVariant::fromValue(protocols_.toNative(value, info));
  }
  const QVariant plain = values_.toNative(value, type);
  const ObjectRef converted =
      plain.metaType() == QMetaType::fromType<ObjectRef>() ? nullptr : info.fromValue(plain);
  return converted ? QVariant::fromValue(converted) : plain;
}

QVariant ClassBridge::objectsFor(JSValueRef list, const ClassInfo& info) {
  const JSObjectRef elements = context_.object(list);
  const auto length = JSValueToNumber(context_, context_.get(elements, u"length"_s), nullptr);
  QVariantList objects;
  for (unsigned i = 0; i < unsigned(length); ++i) {
    JSValueRef exception = nullptr;
    const JSValueRef element = JSObjectGetPropertyAtIndex(context_, elements, i, &exception);
    if (exception) throw ThrownValue{exception};
    QVariant object;
    try {
      object = objectFor(element, info, nullptr);
    } catch (const NativeError& problem) {
      throw problem.within(u"[%1]"_s.arg(i));
    }
    const ObjectRef found = object.value<ObjectRef>();
    if (!found || !isKindOf(found->classInfo(), info)) {
      throw NativeError(u"[%1] is %2, not %3"_s.arg(i).arg(values_.kindOf(element), info.name()));
    }
    objects.append(object);
  }
  return objects;
}

/// What a delegate threw during the operation takes precedence over the operation's own failure.
QVariant ClassBridge::perform(const ClassInfo::Operation& operation, Object* self,
                              const QVariantList& arguments) {
  const auto throwPending = [this] {
    const JSValueRef value = std::exchange(pendingException_, nullptr);
    JSValueUnprotect(context_, value);
    throw ThrownValue{value};
  };
  std::optional<QVariant> result;
  try {
    result = operation.call(self, arguments);
  } catch (...) {
    if (!pendingException_) throw;
    throwPending();
  }
  if (pendingException_) throwPending();
  return *result;
}

void ClassBridge::setPendingException(JSValueRef value) {
  JSValueProtect(context_, value);
  pendingException_ = value;
}

}  // namespace kelvar
