#include <QColor>
#include <QDateTime>
#include <QPointF>
#include <QRectF>
#include <QTimeZone>
#include <QUrl>
#include <cmath>

#include "scripting/Boxed.h"
#include "scripting/Bridge.h"
#include "util/MD5String.h"
#include "util/MF_Base64Codec.h"
#include "util/shuffle.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

/// Lists and dictionaries in one another, at most: one that holds itself is noticed here.
constexpr int kMaxDepth = 512;
/// Whole numbers up to here are exact in a script.
constexpr double kMaxExact = 0x1p53;

/// Values whose types say for themselves that there is none.
bool isNone(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::QDateTime:
      return !value.toDateTime().isValid();
    case QMetaType::QUrl:
      return value.toUrl().isEmpty();
    case QMetaType::QColor:
      return !value.value<QColor>().isValid();
    default:
      return isNothing(value);
  }
}

void freeBytes(void* bytes, void*) { delete[] static_cast<char*>(bytes); }

}  // namespace

/// What strings, bytes and lists answer that is ours.
void Bridge::extendValues() {
  const JSObjectRef digest =
      function([this](const Call& call) { return string(MD5String(text(call.arguments[0]))); });
  const JSObjectRef base64 = function([this](const Call& call) {
    const QVariant value = toNative(call.arguments[0]);
    return string(value.typeId() == QMetaType::QByteArray ? base64String(value.toByteArray())
                                                          : base64String(value.toString()));
  });
  const JSObjectRef shuffle = function([this](const Call& call) {
    shuffleList(JSValueToObject(context_, call.arguments[0], nullptr));
    return call.arguments[0];
  });
  this->call(prelude("extendValues"), nullptr, {digest, base64, shuffle});
}

void Bridge::shuffleList(JSObjectRef list) const {
  const auto length = unsigned(JSValueToNumber(context_, get(list, u"length"_s), nullptr));
  JSValueRef exception = nullptr;
  EngineArguments elements(context_);
  for (unsigned i = 0; i < length && !exception; ++i) {
    elements.append(JSObjectGetPropertyAtIndex(context_, list, i, &exception));
  }
  std::span<JSValueRef> values = elements.values();
  shuffle(values);
  for (unsigned i = 0; i < length && !exception; ++i) {
    JSObjectSetPropertyAtIndex(context_, list, i, values[i], &exception);
  }
  if (exception) throw Thrown{exception};
}

JSValueRef Bridge::string(const QString& text) const {
  return JSValueMakeString(context_, EngineString(text));
}

QString Bridge::text(JSValueRef value) const {
  return EngineString(JSValueToStringCopy(context_, value, nullptr)).text();
}

JSValueRef Bridge::get(JSObjectRef object, const QString& name) const {
  JSValueRef exception = nullptr;
  const JSValueRef value = JSObjectGetProperty(context_, object, EngineString(name), &exception);
  if (exception) throw Thrown{exception};
  return value;
}

void Bridge::set(JSObjectRef object, const QString& name, JSValueRef value) const {
  JSObjectSetProperty(context_, object, EngineString(name), value, kJSPropertyAttributeNone,
                      nullptr);
}

void Bridge::defineAccessor(JSObjectRef object, const QString& name, JSObjectRef get,
                            JSObjectRef set) {
  const auto orUndefined = [&](JSObjectRef function) { return function ? function : undefined(); };
  call(prelude("accessor"), nullptr, {object, string(name), orUndefined(get), orUndefined(set)});
}

QString Bridge::described(JSValueRef value) const {
  return text(call(prelude("describe"), nullptr, {value}));
}

JSValueRef Bridge::call(JSObjectRef function, JSObjectRef self,
                        std::span<const JSValueRef> arguments) const {
  JSValueRef exception = nullptr;
  const JSValueRef result = JSObjectCallAsFunction(context_, function, self, arguments.size(),
                                                   arguments.data(), &exception);
  if (exception) throw Thrown{exception};
  return result;
}

JSValueRef Bridge::toScript(const QVariant& value) {
  if (isNone(value)) return JSValueMakeNull(context_);
  const auto number = [&](double x) { return JSValueMakeNumber(context_, x); };
  switch (value.typeId()) {
    case QMetaType::Bool:
      return JSValueMakeBoolean(context_, value.toBool());
    case QMetaType::ULong:
    case QMetaType::ULongLong: {
      const qulonglong whole = value.toULongLong();
      return whole > qulonglong(kMaxExact) ? JSBigIntCreateWithUInt64(context_, whole, nullptr)
                                           : number(double(whole));
    }
    case QMetaType::Long:
    case QMetaType::LongLong: {
      const qlonglong whole = value.toLongLong();
      return std::abs(whole) > qlonglong(kMaxExact)
                 ? JSBigIntCreateWithInt64(context_, whole, nullptr)
                 : number(double(whole));
    }
    case QMetaType::QString:
      return string(value.toString());
    case QMetaType::QStringList:
    case QMetaType::QVariantList:
      return listToScript(value.toList());
    case QMetaType::QVariantMap:
      return mapToScript(value.toMap());
    case QMetaType::QDateTime: {
      const JSValueRef time = number(double(value.toDateTime().toMSecsSinceEpoch()));
      return JSObjectMakeDate(context_, 1, &time, nullptr);
    }
    case QMetaType::QByteArray: {
      const QByteArray bytes = value.toByteArray();
      char* const copy = std::make_unique<char[]>(size_t(bytes.size())).release();
      std::copy(bytes.begin(), bytes.end(), copy);
      return JSObjectMakeTypedArrayWithBytesNoCopy(context_, kJSTypedArrayTypeUint8Array, copy,
                                                   size_t(bytes.size()), freeBytes, nullptr,
                                                   nullptr);
    }
    case QMetaType::QPointF: {
      const QPointF point = value.toPointF();
      return call(prelude("point"), nullptr, {number(point.x()), number(point.y())});
    }
    case QMetaType::QSizeF: {
      const QSizeF size = value.toSizeF();
      return call(prelude("size"), nullptr, {number(size.width()), number(size.height())});
    }
    case QMetaType::QRectF: {
      const QRectF rect = value.toRectF();
      return call(
          prelude("rect"), nullptr,
          {number(rect.x()), number(rect.y()), number(rect.width()), number(rect.height())});
    }
    default:
      break;
  }
  if (isNumber(value)) return number(value.toDouble());
  ObjectRef object = value.value<ObjectRef>();
  if (!object) object = Boxed::box(value);
  if (object) return face(object);
  throw Failure(
      u"a %1 cannot be handed to a script"_s.arg(QString::fromLatin1(value.metaType().name())));
}

JSValueRef Bridge::listToScript(const QVariantList& list) {
  const JSObjectRef array = JSObjectMakeArray(context_, 0, nullptr, nullptr);
  for (qsizetype i = 0; i < list.size(); ++i) {
    JSObjectSetPropertyAtIndex(context_, array, unsigned(i), toScript(list[i]), nullptr);
  }
  return array;
}

JSValueRef Bridge::mapToScript(const QVariantMap& map) {
  const JSObjectRef object = JSObjectMake(context_, nullptr, nullptr);
  JSObjectSetPrototype(context_, object, prelude("dictionary"));
  for (auto it = map.begin(); it != map.end(); ++it) set(object, it.key(), toScript(it.value()));
  return object;
}

QVariant Bridge::toNative(JSValueRef value, const ValueType* type) {
  return toNative(value, type, 0);
}

QVariant Bridge::toNative(JSValueRef value, const ValueType* type, int depth) {
  if (depth > kMaxDepth) throw Failure(u"the lists or dictionaries are nested too deeply"_s);
  switch (JSValueGetType(context_, value)) {
    case kJSTypeUndefined:
    case kJSTypeNull:
      return depth == 0 ? QVariant() : QVariant::fromValue(nullptr);
    case kJSTypeBoolean:
      return JSValueToBoolean(context_, value);
    case kJSTypeNumber: {
      const double number = JSValueToNumber(context_, value, nullptr);
      const bool isWhole = std::trunc(number) == number && std::abs(number) <= kMaxExact &&
                           !(number == 0 && std::signbit(number));
      return isWhole ? QVariant(qlonglong(number)) : QVariant(number);
    }
    case kJSTypeString:
      return text(value);
    case kJSTypeBigInt: {
      const qlonglong number = JSValueToInt64(context_, value, nullptr);
      if (text(value) == QString::number(number)) return number;
      const qulonglong larger = JSValueToUInt64(context_, value, nullptr);
      if (text(value) == QString::number(larger)) return larger;
      throw Failure(u"%1 does not fit into 64 bits"_s.arg(text(value)));
    }
    case kJSTypeObject:
      return objectToNative(JSValueToObject(context_, value, nullptr), type, depth);
    default:
      throw Failure(u"%1 cannot be handed on"_s.arg(kindOf(value)));
  }
}

QVariant Bridge::objectToNative(JSObjectRef object, const ValueType* type, int depth) {
  if (const Held* const held = heldBy(object)) {
    if (!held->object) throw Failure(u"an object is not initialised yet"_s);
    if (type && type->theDelegate) {
      const QVariant delegate = type->theDelegate().fromObject(held->object);
      if (delegate.isValid()) return delegate;
    }
    const auto* const boxed = dynamic_cast<const Boxed*>(held->object.get());
    return boxed ? boxed->value() : QVariant::fromValue(held->object);
  }
  if (type && type->theDelegate) return delegateFor(object, type->theDelegate());
  if (JSObjectIsFunction(context_, object) ||
      JSValueIsObjectOfClass(context_, object, classClass_)) {
    throw Failure(u"a %1 cannot be handed on"_s.arg(kindOf(object)));
  }
  if (JSValueIsDate(context_, object)) {
    const double time = JSValueToNumber(context_, object, nullptr);
    if (std::isnan(time)) throw Failure(u"a date that is none cannot be handed on"_s);
    return QDateTime::fromMSecsSinceEpoch(integerFromReal(time), Qt::UTC);
  }
  if (JSValueGetTypedArrayType(context_, object, nullptr) == kJSTypedArrayTypeUint8Array) {
    const auto* const bytes =
        static_cast<char*>(JSObjectGetTypedArrayBytesPtr(context_, object, nullptr));
    return QByteArray(bytes, qsizetype(JSObjectGetTypedArrayByteLength(context_, object, nullptr)));
  }
  if (const QVariant made = structToNative(object, type ? type->type : QMetaType());
      made.isValid()) {
    return made;
  }
  if (JSValueIsArray(context_, object)) {
    const auto length = JSValueToNumber(context_, get(object, u"length"_s), nullptr);
    QVariantList list;
    for (unsigned i = 0; i < unsigned(length); ++i) {
      JSValueRef exception = nullptr;
      const JSValueRef element = JSObjectGetPropertyAtIndex(context_, object, i, &exception);
      if (exception) throw Thrown{exception};
      list.append(toNative(element, nullptr, depth + 1));
    }
    return list;
  }
  QVariantMap map;
  const JSPropertyNameArrayRef names = JSObjectCopyPropertyNames(context_, object);
  const std::unique_ptr<OpaqueJSPropertyNameArray, decltype(&JSPropertyNameArrayRelease)> owner(
      names, &JSPropertyNameArrayRelease);
  for (size_t i = 0; i < JSPropertyNameArrayGetCount(names); ++i) {
    const EngineString name(JSStringRetain(JSPropertyNameArrayGetNameAtIndex(names, i)));
    map.insert(name.text(), toNative(get(object, name.text()), nullptr, depth + 1));
  }
  return map;
}

double Bridge::number(JSObjectRef object, const char* name) const {
  const JSValueRef value = get(object, QString::fromLatin1(name));
  if (!JSValueIsNumber(context_, value)) {
    throw Failure(u"a structure's %1 is no number"_s.arg(QString::fromLatin1(name)));
  }
  return JSValueToNumber(context_, value, nullptr);
}

/// A point, a size or a rectangle, told by its making, or by what is wanted. Invalid for others.
QVariant Bridge::structToNative(JSObjectRef object, QMetaType type) const {
  int kind =
      int(JSValueToNumber(context_, call(prelude("structKind"), nullptr, {object}), nullptr));
  if (kind == 0) {
    kind = type.id() == QMetaType::QPointF  ? 1
           : type.id() == QMetaType::QSizeF ? 2
           : type.id() == QMetaType::QRectF ? 3
                                            : 0;
  }
  if (kind == 1) return QPointF(number(object, "x"), number(object, "y"));
  if (kind == 2) return QSizeF(number(object, "width"), number(object, "height"));
  if (kind != 3) return {};
  const auto part = [&](const QString& name) {
    const JSValueRef value = get(object, name);
    return JSValueIsObject(context_, value) ? JSValueToObject(context_, value, nullptr) : object;
  };
  const JSObjectRef origin = part(u"origin"_s);
  const JSObjectRef size = part(u"size"_s);
  return QRectF(number(origin, "x"), number(origin, "y"), number(size, "width"),
                number(size, "height"));
}

/// What the value is, for whoever handed on the wrong one.
QString Bridge::kindOf(JSValueRef value) const {
  if (const Held* const held = heldBy(value)) {
    return held->object ? held->object->classInfo().name() : held->allocated->name();
  }
  switch (JSValueGetType(context_, value)) {
    case kJSTypeUndefined:
    case kJSTypeNull:
      return u"nil"_s;
    case kJSTypeBoolean:
      return u"boolean"_s;
    case kJSTypeNumber:
    case kJSTypeBigInt:
      return u"number"_s;
    case kJSTypeString:
      return u"string"_s;
    case kJSTypeSymbol:
      return u"symbol"_s;
    default:
      break;
  }
  if (JSValueIsObjectOfClass(context_, value, classClass_)) return u"class"_s;
  if (JSValueIsArray(context_, value)) return u"list"_s;
  if (JSValueIsDate(context_, value)) return u"date"_s;
  const JSObjectRef object = JSValueToObject(context_, value, nullptr);
  return JSObjectIsFunction(context_, object) ? u"function"_s : u"dictionary"_s;
}

}  // namespace kelvar
