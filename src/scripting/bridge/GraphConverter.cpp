#include "scripting/bridge/GraphConverter.h"

#include "archive/Data.h"
#include "archive/MutableArray.h"
#include "archive/MutableDictionary.h"
#include "archive/MutableString.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

constexpr int kMaxDepth = 512;

ObjectRef objectIn(const QVariant& value) {
  return value.metaType() == QMetaType::fromType<ObjectRef>() ? value.value<ObjectRef>() : nullptr;
}

void empty(Object* object) {
  if (auto* const list = dynamic_cast<MutableArray*>(object)) list->setValues({});
  if (auto* const dictionary = dynamic_cast<MutableDictionary*>(object)) dictionary->setValues({});
}

/// Empties every container below, so that none owns itself.
void emptyAll(const QVariant& value) {
  const ObjectRef object = objectIn(value);
  QVariantList inner;
  if (const auto list = std::dynamic_pointer_cast<MutableArray>(object)) inner = list->values();
  if (const auto map = std::dynamic_pointer_cast<MutableDictionary>(object)) {
    inner = map->values().values();
  }
  empty(object.get());
  for (const QVariant& each : inner) emptyAll(each);
}

}  // namespace

void GraphConverter::close() {
  for (const auto& [object, pair] : pairs_) JSWeakRelease(context_.group(), pair.script);
  pairs_.clear();
  byScript_.clear();
}

void GraphConverter::collect() {
  std::erase_if(byScript_, [this](const auto& each) {
    const auto found = pairs_.find(each.second);
    return found == pairs_.end() || JSWeakGetObject(found->second.script) != each.first;
  });
  std::erase_if(pairs_, [this](const auto& each) {
    const Pair& pair = each.second;
    const ObjectRef object = pair.object.lock();
    if (object && JSWeakGetObject(pair.script)) return false;
    if (object && pair.isOfScript) empty(object.get());
    JSWeakRelease(context_.group(), pair.script);
    return true;
  });
}

void GraphConverter::pair(const ObjectRef& object, JSObjectRef script, bool isOfScript) {
  const auto old = pairs_.find(object.get());
  if (old != pairs_.end()) JSWeakRelease(context_.group(), old->second.script);
  pairs_.insert_or_assign(object.get(),
                          Pair{object, JSWeakCreate(context_.group(), script), isOfScript});
  byScript_.insert_or_assign(script, object.get());
}

ObjectGraph GraphConverter::toNative(JSValueRef value) {
  Visit visit;
  const QVariant root = native(value, visit);
  return {root.typeId() == QMetaType::Nullptr ? QVariant() : root};
}

QVariant GraphConverter::native(JSValueRef value, Visit& visit) {
  const JSObjectRef object = context_.object(value);
  if (!object) {
    const QVariant plain = values_.toNative(value);
    return plain.isValid() ? plain : QVariant::fromValue(nullptr);
  }
  return values_.isContainer(object) ? container(object, visit) : values_.toNative(value);
}

QVariant GraphConverter::container(JSObjectRef script, Visit& visit) {
  ObjectRef object = known(script);
  if (object && visit.containers.contains(object.get())) return QVariant::fromValue(object);
  if (visit.depth >= kMaxDepth) {
    throw NativeError(u"the lists or dictionaries are nested too deeply"_s);
  }
  const bool isList = JSValueIsArray(context_, script);
  const bool isBytes =
      JSValueGetTypedArrayType(context_, script, nullptr) == kJSTypedArrayTypeUint8Array;
  if (isBytes) {
    if (!object) object = std::make_shared<Data>(values_.toNative(script).toByteArray());
    pair(object, script, true);
    return QVariant::fromValue(object);
  }
  if (!object) {
    object = isList ? ObjectRef(std::make_shared<MutableArray>())
                    : ObjectRef(std::make_shared<MutableDictionary>());
    pair(object, script, true);
  }
  visit.containers.insert(object.get());
  ++visit.depth;
  if (isList) {
    static_cast<MutableArray&>(*object).setValues(elements(script, visit));
  } else {
    static_cast<MutableDictionary&>(*object).setValues(entries(script, visit));
  }
  --visit.depth;
  return QVariant::fromValue(object);
}

ObjectRef GraphConverter::known(JSObjectRef script) const {
  const auto found = byScript_.find(script);
  const auto pair = found == byScript_.end() ? pairs_.end() : pairs_.find(found->second);
  // A collected object may have had the same address.
  if (pair == pairs_.end() || JSWeakGetObject(pair->second.script) != script) return nullptr;
  return pair->second.object.lock();
}

QVariantList GraphConverter::elements(JSObjectRef list, Visit& visit) {
  const auto length = JSValueToNumber(context_, context_.get(list, u"length"_s), nullptr);
  QVariantList values;
  for (unsigned i = 0; i < unsigned(length); ++i) {
    JSValueRef exception = nullptr;
    const JSValueRef element = JSObjectGetPropertyAtIndex(context_, list, i, &exception);
    if (exception) throw ThrownValue{exception};
    try {
      values.append(native(element, visit));
    } catch (const NativeError& error) {
      throw error.within(u"[%1]"_s.arg(i));
    }
  }
  return values;
}

QVariantMap GraphConverter::entries(JSObjectRef dictionary, Visit& visit) {
  QVariantMap values;
  for (const QString& name : context_.namesOf(dictionary)) {
    try {
      values.insert(name, native(context_.get(dictionary, name), visit));
    } catch (const NativeError& error) {
      throw error.within(u'.' + name);
    }
  }
  return values;
}

JSValueRef GraphConverter::toScript(const ObjectGraph& graph) {
  const JSValueRef value = script(graph.root);
  if (graph.isTemporary) emptyAll(graph.root);
  return value;
}

JSValueRef GraphConverter::script(const QVariant& value) {
  if (const ObjectRef object = objectIn(value)) return scriptContainer(object);
  if (value.typeId() == QMetaType::QVariantList) {
    const JSObjectRef list = JSObjectMakeArray(context_, 0, nullptr, nullptr);
    fill(list, value.toList());
    return list;
  }
  if (value.typeId() == QMetaType::QVariantMap) {
    const JSObjectRef dictionary = values_.newDictionary();
    fill(dictionary, value.toMap());
    return dictionary;
  }
  return values_.toScript(value);
}

JSValueRef GraphConverter::scriptContainer(const ObjectRef& object) {
  const auto found = pairs_.find(object.get());
  if (found != pairs_.end() && !found->second.object.expired()) {
    if (const JSObjectRef known = JSWeakGetObject(found->second.script)) return known;
  }
  if (const auto list = std::dynamic_pointer_cast<MutableArray>(object)) {
    const JSObjectRef made = JSObjectMakeArray(context_, 0, nullptr, nullptr);
    pair(object, made, false);
    fill(made, list->values());
    return made;
  }
  if (const auto dictionary = std::dynamic_pointer_cast<MutableDictionary>(object)) {
    const JSObjectRef made = values_.newDictionary();
    pair(object, made, false);
    fill(made, dictionary->values());
    return made;
  }
  if (const auto string = std::dynamic_pointer_cast<MutableString>(object)) {
    return context_.string(string->string());
  }
  if (object->classInfo().name() == Data::staticClassInfo().name()) {
    const JSValueRef bytes = values_.toScript(static_cast<const Data&>(*object).bytes());
    pair(object, context_.object(bytes), false);
    return bytes;
  }
  return values_.toScript(QVariant::fromValue(object));
}

void GraphConverter::fill(JSObjectRef list, const QVariantList& values) {
  for (qsizetype i = 0; i < values.size(); ++i) {
    JSObjectSetPropertyAtIndex(context_, list, unsigned(i), script(values[i]), nullptr);
  }
}

void GraphConverter::fill(JSObjectRef dictionary, const QVariantMap& values) {
  for (auto it = values.begin(); it != values.end(); ++it) {
    context_.set(dictionary, it.key(), script(it.value()));
  }
}

}  // namespace kelvar
