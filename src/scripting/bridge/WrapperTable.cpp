#include "scripting/bridge/WrapperTable.h"

#include <utility>

#include "scripting/bridge/ScriptImplementation.h"

namespace kelvar {
namespace {

/// How many wrappers are made between two looks at the finalized ones.
constexpr size_t kReleaseInterval = 16;

}  // namespace

WrapperTable::WrapperTable(const EngineContext& context, Prototype prototype, Setter setter)
    : context_(context), prototype_(std::move(prototype)), setter_(std::move(setter)) {
  JSClassDefinition definition = kJSClassDefinitionEmpty;
  definition.className = "Object";
  definition.finalize = finalizeWrapper;
  definition.setProperty = setMember;
  wrapperClass_ = JSClassCreate(&definition);
  definition = kJSClassDefinitionEmpty;
  definition.className = "Class";
  definition.hasInstance = isInstance;
  classClass_ = JSClassCreate(&definition);
}

WrapperTable::~WrapperTable() {
  JSClassRelease(wrapperClass_);
  JSClassRelease(classClass_);
}

void WrapperTable::close() {
  for (const JSObjectRef each : std::exchange(protected_, {})) JSValueUnprotect(context_, each);
  for (const auto& [object, weak] : wrappers_) JSWeakRelease(context_.group(), weak);
  wrappers_.clear();
}

void WrapperTable::finalizeWrapper(JSObjectRef wrapper) {
  auto* const data =
      static_cast<WrapperData*>(static_cast<EngineData*>(JSObjectGetPrivate(wrapper)));
  if (!data) return;
  const std::lock_guard lock(data->table->finalizedMutex_);
  data->table->finalized_.emplace_back(data);
}

bool WrapperTable::setMember(JSContextRef context, JSObjectRef wrapper, JSStringRef name,
                             JSValueRef value, JSValueRef* exception) {
  const auto* const data =
      static_cast<WrapperData*>(static_cast<EngineData*>(JSObjectGetPrivate(wrapper)));
  if (!data || !data->object) return false;
  bool isSet = false;
  EngineContext::guard(context, exception, [&] {
    const QString member = EngineString(JSStringRetain(name)).text();
    isSet = data->table->setter_(wrapper, data->object->classInfo(), member, value);
  });
  return isSet || *exception;
}

bool WrapperTable::isInstance(JSContextRef, JSObjectRef classObject, JSValueRef value,
                              JSValueRef*) {
  const auto* const data =
      static_cast<ClassData*>(static_cast<EngineData*>(JSObjectGetPrivate(classObject)));
  const ObjectRef object = data->table->objectOf(value);
  return object && isKindOf(object->classInfo(), *data->info);
}

JSObjectRef WrapperTable::make(const ObjectRef& object, const ClassInfo* allocated,
                               JSObjectRef prototype) {
  EngineData* const data = std::make_unique<WrapperData>(
                               WrapperData{{EngineData::Kind::Wrapper}, this, object, allocated})
                               .release();
  const JSObjectRef made = JSObjectMake(context_, wrapperClass_, data);
  JSObjectSetPrototype(context_, made, prototype);
  return made;
}

JSObjectRef WrapperTable::wrapper(const ObjectRef& object) {
  if (const JSObjectRef existing = existingWrapper(object.get())) return existing;
  if (const JSObjectRef own = ScriptImplementation::objectBehind(object.get(), context_)) {
    return own;
  }
  const JSObjectRef made = make(object, nullptr, prototype_(object->classInfo()));
  const auto known = wrappers_.find(object.get());
  if (known != wrappers_.end()) {
    JSWeakRelease(context_.group(), known->second);
    wrappers_.erase(known);
  }
  wrappers_.emplace(object.get(), JSWeakCreate(context_.group(), made));
  if (const auto boxed = std::dynamic_pointer_cast<Boxed>(object)) {
    boxes_.add(boxed);
    if (boxed->bytes() > 0) JSReportExtraMemoryCost(context_, boxed->bytes());
  }
  if (++wrappersMade_ % kReleaseInterval == 0) releaseFinalized();
  return made;
}

JSObjectRef WrapperTable::wrapperOfValue(const QVariant& value) {
  const ObjectRef box = boxes_.boxFor(value);
  return box ? wrapper(box) : nullptr;
}

JSObjectRef WrapperTable::allocate(const ClassInfo& info, JSObjectRef prototype) {
  return make(nullptr, &info, prototype);
}

JSObjectRef WrapperTable::makeClassObject(const ClassInfo& info) {
  EngineData* const data =
      &classes_.emplace_back(ClassData{{EngineData::Kind::Class}, this, &info});
  return JSObjectMake(context_, classClass_, data);
}

const WrapperTable::WrapperData* WrapperTable::dataOf(JSValueRef value) const {
  const EngineData* const data = context_.dataOf(value);
  const bool isWrapper = data && data->kind == EngineData::Kind::Wrapper;
  return isWrapper ? static_cast<const WrapperData*>(data) : nullptr;
}

ObjectRef WrapperTable::objectOf(JSValueRef value) const {
  const WrapperData* const data = dataOf(value);
  return data ? data->object : nullptr;
}

const ClassInfo* WrapperTable::allocatedClassOf(JSValueRef value) const {
  const WrapperData* const data = dataOf(value);
  return data ? data->allocated : nullptr;
}

const ClassInfo* WrapperTable::classOf(JSValueRef value) const {
  const EngineData* const data = context_.dataOf(value);
  const bool isClass = data && data->kind == EngineData::Kind::Class;
  return isClass ? static_cast<const ClassData*>(data)->info : nullptr;
}

JSObjectRef WrapperTable::existingWrapper(Object* object) const {
  const auto known = wrappers_.find(object);
  return known == wrappers_.end() ? nullptr : JSWeakGetObject(known->second);
}

void WrapperTable::retainDelegate(JSObjectRef wrapper, const QString& selector,
                                  JSValueRef delegate) {
  context_.callPrelude("retain", {wrapper, context_.string(selector), delegate});
  delegating_.insert(dataOf(wrapper)->object.get());
}

void WrapperTable::protectWhileShared(JSObjectRef wrapper, long references) {
  if (delegating_.isEmpty()) return;
  const ObjectRef& object = dataOf(wrapper)->object;
  if (delegating_.contains(object.get())) protect(wrapper, object.use_count() > references);
}

void WrapperTable::protect(JSObjectRef wrapper, bool isNeeded) {
  if (isNeeded == protected_.contains(wrapper)) return;
  if (isNeeded) {
    JSValueProtect(context_, wrapper);
    protected_.insert(wrapper);
  } else {
    JSValueUnprotect(context_, wrapper);
    protected_.remove(wrapper);
  }
}

void WrapperTable::releaseFinalized() {
  std::vector<std::unique_ptr<WrapperData>> finalized;
  {
    const std::lock_guard lock(finalizedMutex_);
    finalized.swap(finalized_);
  }
  for (const auto& data : finalized) {
    delegating_.remove(data->object.get());
    const auto known = wrappers_.find(data->object.get());
    if (known == wrappers_.end() || JSWeakGetObject(known->second)) continue;
    JSWeakRelease(context_.group(), known->second);
    wrappers_.erase(known);
  }
}

void WrapperTable::collect() {
  releaseFinalized();
  // An object that only its wrapper references has no pending work, so nothing to report.
  for (Object* const each : delegating_) {
    if (const JSObjectRef wrapper = existingWrapper(each)) protectWhileShared(wrapper, 1);
  }
}

bool isKindOf(const ClassInfo& info, const ClassInfo& base) {
  const ClassInfo* each = &info;
  while (each && each != &base) each = each->base();
  return each != nullptr;
}

}  // namespace kelvar
