#include "scripting/Bridge.h"

#include <algorithm>

#include "scripting/Boxed.h"
#include "scripting/Prelude.h"
#include "scripting/SelectorName.h"
#include "scripting/TypeName.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;
using Kind = ClassInfo::Kind;

/// From the base to the class itself, so that what a class describes anew comes last.
std::vector<const ClassInfo*> chainOf(const ClassInfo& info) {
  std::vector<const ClassInfo*> chain;
  for (const ClassInfo* each = &info; each; each = each->base()) chain.insert(chain.begin(), each);
  return chain;
}

bool isKindOf(const ClassInfo& info, const ClassInfo& wanted) {
  const ClassInfo* each = &info;
  while (each && each != &wanted) each = each->base();
  return each != nullptr;
}

/// What objects of the class answer. Initialisers are those of the class alone.
QHash<QString, const ClassInfo::Operation*> operationsOf(const ClassInfo& info, Kind kind) {
  QHash<QString, const ClassInfo::Operation*> found;
  for (const ClassInfo* each : chainOf(info)) {
    if (kind == Kind::Initialiser && each != &info) continue;
    for (const ClassInfo::Operation& operation : each->operations()) {
      if (operation.kind == kind) found.insert(operation.selector, &operation);
    }
  }
  return found;
}

JSObjectRef errorIn(JSContextRef context, const QString& message) {
  const JSValueRef argument = JSValueMakeString(context, EngineString(message));
  return JSObjectMakeError(context, 1, &argument, nullptr);
}

/// Functions have no class.
QString written(const ClassInfo& info, const QString& selector) {
  return info.name().isEmpty() ? selector : info.name() + u' ' + selector;
}

}  // namespace

Bridge::Bridge(JSGlobalContextRef context, Enter enter)
    : context_(context), group_(JSContextGetGroup(context)), enter_(std::move(enter)) {
  JSClassDefinition definition = kJSClassDefinitionEmpty;
  definition.className = "Function";
  definition.callAsFunction = callFunction;
  definition.finalize = finalizeFunction;
  functionClass_ = JSClassCreate(&definition);
  definition = kJSClassDefinitionEmpty;
  definition.className = "Object";
  definition.finalize = finalizeFace;
  faceClass_ = JSClassCreate(&definition);
  definition = kJSClassDefinitionEmpty;
  definition.className = "Class";
  definition.hasInstance = isInstance;
  classClass_ = JSClassCreate(&definition);
  makePrelude();
}

void Bridge::close() {
  for (const JSObjectRef face : std::exchange(kept_, {})) JSValueUnprotect(context_, face);
  for (const Link& link : links_) JSWeakRelease(group_, link.script);
  links_.clear();
  linkOfScript_.clear();
  linkOfDelegate_.clear();
  for (const auto& [object, weak] : objects_) JSWeakRelease(group_, weak);
  objects_.clear();
}

Bridge::~Bridge() {
  JSClassRelease(functionClass_);
  JSClassRelease(faceClass_);
  JSClassRelease(classClass_);
}

void Bridge::makePrelude() {
  const EngineString source(QString::fromUtf8(kPrelude));
  JSValueRef exception = nullptr;
  const JSValueRef made = JSEvaluateScript(context_, source, nullptr, nullptr, 1, &exception);
  if (exception) throw Failure(text(exception));
  prelude_ = JSValueToObject(context_, made, nullptr);
  JSValueProtect(context_, prelude_);
  extendValues();
}

JSObjectRef Bridge::prelude(const char* name) const {
  return JSValueToObject(context_, get(prelude_, QString::fromLatin1(name)), nullptr);
}

JSValueRef Bridge::callFunction(JSContextRef context, JSObjectRef function, JSObjectRef self,
                                size_t count, const JSValueRef arguments[], JSValueRef* exception) {
  const auto* const call = static_cast<Function*>(JSObjectGetPrivate(function));
  try {
    return (*call)({self, {arguments, count}});
  } catch (const Thrown& thrown) {
    *exception = thrown.value;
  } catch (const std::exception& failure) {
    *exception = errorIn(context, QString::fromUtf8(failure.what()));
  }
  return JSValueMakeUndefined(context);
}

JSObjectRef Bridge::error(const QString& message) const { return errorIn(context_, message); }

void Bridge::finalizeFunction(JSObjectRef function) {
  delete static_cast<Function*>(JSObjectGetPrivate(function));
}

void Bridge::finalizeFace(JSObjectRef face) {
  auto* const held = static_cast<Held*>(JSObjectGetPrivate(face));
  if (!held) return;
  const std::lock_guard lock(held->bridge->goneMutex_);
  held->bridge->gone_.emplace_back(held);
}

const ClassInfo* Bridge::classBehind(JSValueRef value) const {
  if (!JSValueIsObjectOfClass(context_, value, classClass_)) return nullptr;
  const JSObjectRef object = JSValueToObject(context_, value, nullptr);
  return static_cast<std::pair<Bridge*, const ClassInfo*>*>(JSObjectGetPrivate(object))->second;
}

bool Bridge::isInstance(JSContextRef, JSObjectRef classObject, JSValueRef value, JSValueRef*) {
  const auto* const behind =
      static_cast<std::pair<Bridge*, const ClassInfo*>*>(JSObjectGetPrivate(classObject));
  const Held* const held = behind->first->heldBy(value);
  return held && held->object && isKindOf(held->object->classInfo(), *behind->second);
}

JSObjectRef Bridge::function(Function function) {
  const JSObjectRef made = JSObjectMake(context_, functionClass_,
                                        std::make_unique<Function>(std::move(function)).release());
  const JSObjectRef constructor =
      JSValueToObject(context_, get(JSContextGetGlobalObject(context_), u"Function"_s), nullptr);
  JSObjectSetPrototype(context_, made, get(constructor, u"prototype"_s));
  return made;
}

JSObjectRef Bridge::functionOf(const ClassInfo& info, const ClassInfo::Operation& operation) {
  return function([this, &info, &operation](const Call& call) {
    return invoke(info, operation, call, nullptr);
  });
}

JSObjectRef Bridge::classObject(const ClassInfo& info) {
  if (const JSObjectRef made = facesOf(info).classObject) return made;
  auto& behind = classes_.emplace_back(this, &info);
  const JSObjectRef made = JSObjectMake(context_, classClass_, &behind);
  JSValueProtect(context_, made);
  faces_[&info].classObject = made;
  define(made, info, Kind::ClassOperation);
  const auto add = [&](const QString& name, Function body) {
    call(prelude("define"), nullptr, {made, string(name), function(std::move(body)), undefined()});
  };
  add(u"alloc"_s, [this, &info](const Call&) -> JSValueRef {
    Faces& faces = facesOf(info);
    if (!faces.allocated) faces.allocated = makePrototype(info, Kind::Initialiser);
    return makeFace({this, nullptr, &info}, faces.allocated);
  });
  if (const auto* const init = operationsOf(info, Kind::Initialiser).value(u"init"_s)) {
    add(u"new"_s, [this, init](const Call&) { return toScript(perform(*init, nullptr, {})); });
  }
  add(u"class"_s, [this, &info](const Call&) { return classObject(info); });
  add(u"name"_s, [this, &info](const Call&) { return string(info.name()); });
  add(u"toString"_s, [this, &info](const Call&) { return string(info.name()); });
  JSObjectSetPrototype(context_, made, terminal(info, Kind::ClassOperation));
  return made;
}

Bridge::Faces& Bridge::facesOf(const ClassInfo& info) { return faces_[&info]; }

JSObjectRef Bridge::makePrototype(const ClassInfo& info, Kind kind) {
  const JSObjectRef prototype = JSObjectMake(context_, nullptr, nullptr);
  JSValueProtect(context_, prototype);
  if (kind == Kind::Operation) defineBasics(prototype);
  define(prototype, info, kind);
  JSObjectSetPrototype(context_, prototype, terminal(info, kind));
  return prototype;
}

/// Both names of every operation, and setting what is a property.
void Bridge::define(JSObjectRef target, const ClassInfo& info, Kind kind) {
  QHash<QString, Candidates> named;
  const auto operations = operationsOf(info, kind);
  for (const ClassInfo::Operation* const operation : operations) {
    named[scriptName(operation->selector)].push_back(operation);
    const QString shorter = shortScriptName(operation->selector);
    if (shorter != scriptName(operation->selector)) named[shorter].push_back(operation);
  }
  for (auto it = named.begin(); it != named.end(); ++it) {
    const QString& name = it.key();
    // Without a colon first: it is the one that the name says in full.
    std::sort(it->begin(), it->end(), [](const auto* a, const auto* b) {
      return a->parameters.size() < b->parameters.size();
    });
    const ClassInfo::Property* const property =
        kind == Kind::Operation ? info.property(name) : nullptr;
    const ClassInfo::Operation* const setter =
        property && property->set ? operations.value(ClassInfo::setterOf(name)) : nullptr;
    Function set;
    if (setter) {
      set = method(info, kind, name, {setter});
    } else {
      set = [&info, name](const Call&) -> JSValueRef {
        throw Failure(u"%1 has no property %2 that can be set"_s.arg(info.name(), name));
      };
    }
    call(prelude("define"), nullptr,
         {target, string(name), function(method(info, kind, name, *it)), function(std::move(set))});
  }
}

/// What every object answers without its class's doing.
void Bridge::defineBasics(JSObjectRef target) {
  const auto add = [&](const QString& name, std::function<JSValueRef(Object&, const Call&)> body) {
    const auto whole = [this, name, body = std::move(body)](const Call& call) {
      const ObjectRef object = objectBehind(call.self, Object::theClass(), name);
      return body(*object, call);
    };
    this->call(prelude("define"), nullptr, {target, string(name), function(whole), undefined()});
  };
  add(u"toString"_s, [this](Object& object, const Call&) { return string(object.description()); });
  add(u"class"_s, [this](Object& object, const Call&) { return classObject(object.classInfo()); });
  add(u"className"_s,
      [this](Object& object, const Call&) { return string(object.classInfo().name()); });
  const auto isKind = [this](Object& object, const Call& call) -> JSValueRef {
    const auto* const info = call.arguments.empty() ? nullptr : classBehind(call.arguments[0]);
    return JSValueMakeBoolean(context_, info && isKindOf(object.classInfo(), *info));
  };
  add(u"isKindOfClass_"_s, isKind);
  add(u"isKindOfClass"_s, isKind);
  const auto responds = [this](Object& object, const Call& call) -> JSValueRef {
    const QString selector = call.arguments.empty() ? QString() : text(call.arguments[0]);
    return JSValueMakeBoolean(context_,
                              object.classInfo().operation(Kind::Operation, selector) != nullptr);
  };
  add(u"respondsToSelector_"_s, responds);
  add(u"respondsToSelector"_s, responds);
}

/// Where a name ends up that nobody has.
JSObjectRef Bridge::terminal(const ClassInfo& info, Kind kind) {
  const auto missing = [this, &info, kind](JSValueRef key) {
    const QString name = text(key);
    QStringList names;
    const auto operations = operationsOf(info, kind);
    for (auto it = operations.begin(); it != operations.end(); ++it) {
      names += scriptName(it.key());
    }
    if (kind == Kind::ClassOperation) {
      names += u"alloc"_s;
      if (operationsOf(info, Kind::Initialiser).contains(u"init"_s)) names += u"new"_s;
    }
    names.sort();
    const QString who = kind == Kind::Operation     ? u"an object of class %1"_s.arg(info.name())
                        : kind == Kind::Initialiser ? u"%1.alloc()"_s.arg(info.name())
                                                    : u"the class %1"_s.arg(info.name());
    const QString nearest = nearestName(name, names);
    return Failure(u"%1 has no selector %2"_s.arg(who, name) +
                   (nearest.isNull() ? QString() : u"; the nearest is "_s + nearest));
  };
  const JSObjectRef get = function([this, missing](const Call& call) -> JSValueRef {
    const JSValueRef key = call.arguments[1];
    if (JSValueIsSymbol(context_, key)) return undefined();
    if (!JSValueToBoolean(context_, this->call(prelude("isKnown"), nullptr, {key}))) {
      throw missing(key);
    }
    return this->call(prelude("known"), nullptr, {key});
  });
  const JSObjectRef set =
      function([missing](const Call& call) -> JSValueRef { throw missing(call.arguments[1]); });
  return JSValueToObject(context_, call(prelude("terminal"), nullptr, {get, set}), nullptr);
}

Bridge::Function Bridge::method(const ClassInfo& info, Kind kind, const QString& name,
                                Candidates candidates) {
  return [this, &info, kind, name, candidates = std::move(candidates)](const Call& call) {
    const ClassInfo::Operation* operation = candidates.back();
    for (const ClassInfo::Operation* const each : candidates) {
      if (each->parameters.size() == call.arguments.size()) operation = each;
    }
    if (kind == Kind::Initialiser) return initialise(info, *operation, call);
    if (kind == Kind::ClassOperation) return invoke(info, *operation, call, nullptr);
    // The script may let go of the object while it is at work.
    return invoke(info, *operation, call, objectBehind(call.self, info, name));
  };
}

ObjectRef Bridge::objectBehind(JSObjectRef self, const ClassInfo& info, const QString& name) const {
  const Held* const held = heldBy(self);
  if (held && held->object && isKindOf(held->object->classInfo(), info)) return held->object;
  throw Failure(u"%1 of %2 was called on something else"_s.arg(name, info.name()));
}

JSValueRef Bridge::invoke(const ClassInfo& info, const ClassInfo::Operation& operation,
                          const Call& call, const ObjectRef& self) {
  const size_t count = operation.parameters.size();
  if (call.arguments.size() != count) {
    throw Failure(u"%1 takes %2 argument%3, not %4"_s.arg(written(info, operation.selector))
                      .arg(count)
                      .arg(count == 1 ? u""_s : u"s"_s)
                      .arg(call.arguments.size()));
  }
  QVariantList arguments;
  arguments.reserve(qsizetype(count));
  bool hasDelegate = false;
  for (size_t i = 0; i < count; ++i) {
    const ValueType& type = operation.parameters[i];
    arguments.append(toNative(call.arguments[i], &type));
    hasDelegate = hasDelegate || type.theDelegate;
    if (!type.fits(arguments.back())) {
      throw Failure(u"%1 takes %2 as argument %3, not %4"_s.arg(
          written(info, operation.selector), scriptTypeName(type), QString::number(i + 1),
          kindOf(call.arguments[i])));
    }
  }
  const QVariant result = perform(operation, self.get(), arguments);
  if (hasDelegate && self) hold(call.self, operation.selector, call.arguments[0]);
  // The face and the caller hold it themselves.
  constexpr long kOwn = 2;
  if (self && delegating_.contains(self.get())) keep(call.self, self.use_count() > kOwn);
  if (operation.result.type == QMetaType::fromType<void>()) return undefined();
  return operation.result.theDelegate ? delegateToScript(result, operation.result)
                                      : toScript(result);
}

/// What a delegate has thrown meanwhile goes before everything else that has gone wrong.
QVariant Bridge::perform(const ClassInfo::Operation& operation, Object* self,
                         const QVariantList& arguments) {
  const auto throwNow = [this] {
    const JSValueRef value = std::exchange(thrown_, nullptr);
    JSValueUnprotect(context_, value);
    throw Thrown{value};
  };
  std::optional<QVariant> result;
  try {
    result = operation.call(self, arguments);
  } catch (...) {
    if (!thrown_) throw;
    throwNow();
  }
  if (thrown_) throwNow();
  return *result;
}

void Bridge::throwLater(JSValueRef value) {
  JSValueProtect(context_, value);
  thrown_ = value;
}

/// What was allocated becomes the new object. Nil when that cannot be made.
JSValueRef Bridge::initialise(const ClassInfo& info, const ClassInfo::Operation& operation,
                              const Call& call) {
  Held* const held = heldBy(call.self);
  if (!held || held->allocated != &info) {
    throw Failure(written(info, operation.selector) + u" wants what alloc() gives"_s);
  }
  return invoke(info, operation, call, nullptr);
}

Bridge::Held* Bridge::heldBy(JSValueRef value) const {
  if (!JSValueIsObjectOfClass(context_, value, faceClass_)) return nullptr;
  return static_cast<Held*>(JSObjectGetPrivate(JSValueToObject(context_, value, nullptr)));
}

JSObjectRef Bridge::makeFace(Held held, JSObjectRef prototype) const {
  const JSObjectRef made =
      JSObjectMake(context_, faceClass_, std::make_unique<Held>(std::move(held)).release());
  JSObjectSetPrototype(context_, made, prototype);
  return made;
}

JSObjectRef Bridge::face(const ObjectRef& object) {
  const auto known = objects_.find(object.get());
  if (known != objects_.end()) {
    if (const JSObjectRef made = JSWeakGetObject(known->second)) return made;
    JSWeakRelease(group_, known->second);
    objects_.erase(known);
  }
  const ClassInfo& info = object->classInfo();
  Faces& faces = facesOf(info);
  if (!faces.instance) {
    const JSObjectRef prototype = makePrototype(info, Kind::Operation);
    faces_[&info].instance = prototype;
  }
  const JSObjectRef made = makeFace({this, object, nullptr}, faces_[&info].instance);
  objects_.emplace(object.get(), JSWeakCreate(group_, made));
  const auto* const boxed = dynamic_cast<const Boxed*>(object.get());
  if (boxed && boxed->bytes() > 0) JSReportExtraMemoryCost(context_, boxed->bytes());
  constexpr size_t kManyGone = 16;
  if (++facesMade_ % kManyGone == 0) dropGone();
  return made;
}

void Bridge::dropGone() {
  std::vector<std::unique_ptr<Held>> gone;
  {
    const std::lock_guard lock(goneMutex_);
    gone.swap(gone_);
  }
  for (const auto& held : gone) {
    delegating_.remove(held->object.get());
    const auto known = objects_.find(held->object.get());
    if (known == objects_.end() || JSWeakGetObject(known->second)) continue;
    JSWeakRelease(group_, known->second);
    objects_.erase(known);
  }
}

void Bridge::tidy() {
  dropGone();
  keepWhatIsAtWork();
  for (auto link = links_.begin(); link != links_.end();) {
    if (JSWeakGetObject(link->script)) {
      refresh(*link++);
      continue;
    }
    forget(*link);
    link = links_.erase(link);
  }
}

}  // namespace kelvar
