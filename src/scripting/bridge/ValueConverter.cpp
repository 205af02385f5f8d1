#include "scripting/bridge/ValueConverter.h"

#include <QColor>
#include <QDateTime>
#include <QPointF>
#include <QRectF>
#include <QTimeZone>
#include <QUrl>
#include <algorithm>
#include <cmath>
#include <memory>

#include "runtime/ClassInfo.h"
#include "runtime/DelegateInfo.h"
#include "scripting/Boxed.h"
#include "sketch/classes/AttributedText.h"
#include "util/MD5String.h"
#include "util/MF_Base64Codec.h"
#include "util/shuffle.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

/// Maximum nesting of lists and dictionaries.
constexpr int kMaxDepth = 512;
/// Integers up to here are exact as numbers of a script.
constexpr double kMaxExact = 0x1p53;

/// Also true for the empty values of types that have one of their own.
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

ValueConverter::ValueConverter(const EngineContext& context, WrapperTable& wrappers)
    : context_(context), wrappers_(wrappers) {
  extendValues();
}

void ValueConverter::extendValues() const {
  const JSObjectRef digest = context_.function([this](const EngineContext::Call& call) {
    return context_.string(MD5String(context_.text(call.arguments[0])));
  });
  const JSObjectRef base64 = context_.function([this](const EngineContext::Call& call) {
    const QVariant value = toNative(call.arguments[0]);
    return context_.string(value.typeId() == QMetaType::QByteArray
                               ? base64String(value.toByteArray())
                               : base64String(value.toString()));
  });
  const JSObjectRef shuffle = context_.function([this](const EngineContext::Call& call) {
    shuffleList(context_.object(call.arguments[0]));
    return call.arguments[0];
  });
  context_.callPrelude("extendValues", {digest, base64, shuffle});
}

void ValueConverter::shuffleList(JSObjectRef list) const {
  const auto length = unsigned(JSValueToNumber(context_, context_.get(list, u"length"_s), nullptr));
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
  if (exception) throw ThrownValue{exception};
}

JSValueRef ValueConverter::toScript(const QVariant& value) const {
  // Most reads of properties, which are to be fast.
  if (value.typeId() == QMetaType::Double) {
    return context_.number(*static_cast<const double*>(value.constData()));
  }
  if (isNone(value)) return context_.null();
  switch (value.typeId()) {
    case QMetaType::Bool:
      return context_.boolean(value.toBool());
    case QMetaType::ULong:
    case QMetaType::ULongLong:
      return integerToScript(value.toULongLong());
    case QMetaType::Long:
    case QMetaType::LongLong:
      return integerToScript(value.toLongLong());
    case QMetaType::QString:
      return context_.string(value.toString());
    case QMetaType::QStringList:
    case QMetaType::QVariantList:
      return listToScript(value.toList());
    case QMetaType::QVariantMap:
      return mapToScript(value.toMap());
    case QMetaType::QDateTime: {
      const JSValueRef time = context_.number(double(value.toDateTime().toMSecsSinceEpoch()));
      return JSObjectMakeDate(context_, 1, &time, nullptr);
    }
    case QMetaType::QByteArray:
      return bytesToScript(value.toByteArray());
    case QMetaType::QPointF:
    case QMetaType::QSizeF:
    case QMetaType::QRectF:
      return structToScript(value);
    default:
      return isNumber(value) ? context_.number(value.toDouble()) : objectToScript(value);
  }
}

JSValueRef ValueConverter::integerToScript(qlonglong integer) const {
  return std::abs(integer) > qlonglong(kMaxExact)
             ? JSBigIntCreateWithInt64(context_, integer, nullptr)
             : context_.number(double(integer));
}

JSValueRef ValueConverter::integerToScript(qulonglong integer) const {
  return integer > qulonglong(kMaxExact) ? JSBigIntCreateWithUInt64(context_, integer, nullptr)
                                         : context_.number(double(integer));
}

JSValueRef ValueConverter::bytesToScript(const QByteArray& bytes) const {
  char* const copy = std::make_unique<char[]>(size_t(bytes.size())).release();
  std::copy(bytes.begin(), bytes.end(), copy);
  return JSObjectMakeTypedArrayWithBytesNoCopy(context_, kJSTypedArrayTypeUint8Array, copy,
                                               size_t(bytes.size()), freeBytes, nullptr, nullptr);
}

JSValueRef ValueConverter::structToScript(const QVariant& value) const {
  const auto number = [this](double x) { return context_.number(x); };
  if (value.typeId() == QMetaType::QPointF) {
    const QPointF point = value.toPointF();
    return context_.callPrelude("point", {number(point.x()), number(point.y())});
  }
  if (value.typeId() == QMetaType::QSizeF) {
    const QSizeF size = value.toSizeF();
    return context_.callPrelude("size", {number(size.width()), number(size.height())});
  }
  const QRectF rect = value.toRectF();
  return context_.callPrelude(
      "rect", {number(rect.x()), number(rect.y()), number(rect.width()), number(rect.height())});
}

JSValueRef ValueConverter::listToScript(const QVariantList& list) const {
  const JSObjectRef array = JSObjectMakeArray(context_, 0, nullptr, nullptr);
  for (qsizetype i = 0; i < list.size(); ++i) {
    JSObjectSetPropertyAtIndex(context_, array, unsigned(i), toScript(list[i]), nullptr);
  }
  return array;
}

JSValueRef ValueConverter::mapToScript(const QVariantMap& map) const {
  const JSObjectRef object = newDictionary();
  for (auto it = map.begin(); it != map.end(); ++it) {
    context_.set(object, it.key(), toScript(it.value()));
  }
  return object;
}

JSObjectRef ValueConverter::newDictionary() const {
  const JSObjectRef dictionary = JSObjectMake(context_, nullptr, nullptr);
  JSObjectSetPrototype(context_, dictionary, context_.prelude("dictionary"));
  return dictionary;
}

JSValueRef ValueConverter::objectToScript(const QVariant& value) const {
  if (const auto object = value.value<ObjectRef>()) return wrappers_.wrapper(object);
  if (const JSObjectRef wrapper = wrappers_.wrapperOfValue(value)) return wrapper;
  if (value.metaType() == QMetaType::fromType<AttributedText>()) {
    const auto text = value.value<AttributedText>();
    return context_.callPrelude("attributedText",
                                {context_.string(text.string), listToScript(text.runs)});
  }
  throw NativeError(u"a value of type %1 cannot be passed to a script"_s.arg(
      QString::fromLatin1(value.metaType().name())));
}

QVariant ValueConverter::toNative(JSValueRef value, const ValueType* type) const {
  return toNative(value, type, nullptr);
}

ValueConverter::Level ValueConverter::enter(JSObjectRef container, const Level* outer) {
  for (const Level* each = outer; each; each = each->outer) {
    if (each->container == container) {
      throw NativeError(u"a list or dictionary cannot contain itself"_s);
    }
  }
  const int depth = outer ? outer->depth + 1 : 0;
  if (depth >= kMaxDepth) throw NativeError(u"the lists or dictionaries are nested too deeply"_s);
  return {container, outer, depth};
}

QVariant ValueConverter::toNative(JSValueRef value, const ValueType* type,
                                  const Level* outer) const {
  switch (JSValueGetType(context_, value)) {
    case kJSTypeUndefined:
    case kJSTypeNull:
      return outer ? QVariant::fromValue(nullptr) : QVariant();
    case kJSTypeBoolean:
      return JSValueToBoolean(context_, value);
    case kJSTypeNumber: {
      const double number = JSValueToNumber(context_, value, nullptr);
      const bool isWhole = std::trunc(number) == number && std::abs(number) <= kMaxExact &&
                           !(number == 0 && std::signbit(number));
      return isWhole ? QVariant(qlonglong(number)) : QVariant(number);
    }
    case kJSTypeString:
      return context_.text(value);
    case kJSTypeBigInt:
      return integerToNative(value);
    case kJSTypeObject:
      return objectToNative(context_.object(value), type, outer);
    default:
      throw NativeError(u"a %1 cannot be passed to Kelvar"_s.arg(kindOf(value)));
  }
}

QVariant ValueConverter::integerToNative(JSValueRef value) const {
  const QString digits = context_.text(value);
  const qlonglong number = JSValueToInt64(context_, value, nullptr);
  if (digits == QString::number(number)) return number;
  const qulonglong larger = JSValueToUInt64(context_, value, nullptr);
  if (digits == QString::number(larger)) return larger;
  throw NativeError(u"%1 does not fit into 64 bits"_s.arg(digits));
}

QVariant ValueConverter::objectToNative(JSObjectRef object, const ValueType* type,
                                        const Level* outer) const {
  if (wrappers_.isWrapper(object)) return wrapperToNative(object);
  if (JSObjectIsFunction(context_, object) || wrappers_.classOf(object)) {
    throw NativeError(u"a %1 cannot be passed to Kelvar"_s.arg(kindOf(object)));
  }
  if (JSValueIsDate(context_, object)) return dateToNative(object);
  if (JSValueGetTypedArrayType(context_, object, nullptr) == kJSTypedArrayTypeUint8Array) {
    return bytesToNative(object);
  }
  const QVariant structure = structToNative(object, type ? type->type : QMetaType());
  if (structure.isValid()) return structure;
  const JSValueRef plain = context_.callPrelude("plainValue", {object});
  if (JSValueIsNull(context_, plain)) return QVariant::fromValue(nullptr);
  if (!JSValueIsStrictEqual(context_, plain, object)) return toNative(plain, type, outer);
  return JSValueIsArray(context_, object) ? listToNative(object, outer)
                                          : mapToNative(object, outer);
}

bool ValueConverter::isContainer(JSObjectRef object) const {
  return !wrappers_.isWrapper(object) && !wrappers_.classOf(object) &&
         !JSObjectIsFunction(context_, object) && !JSValueIsDate(context_, object) &&
         !structToNative(object, QMetaType()).isValid() &&
         JSValueIsStrictEqual(context_, context_.callPrelude("plainValue", {object}), object);
}

QVariant ValueConverter::wrapperToNative(JSObjectRef wrapper) const {
  const ObjectRef object = wrappers_.objectOf(wrapper);
  if (!object) throw NativeError(u"the object is not initialized yet"_s);
  const auto* const boxed = dynamic_cast<const Boxed*>(object.get());
  return boxed ? boxed->value() : QVariant::fromValue(object);
}

QVariant ValueConverter::dateToNative(JSObjectRef date) const {
  const double time = JSValueToNumber(context_, date, nullptr);
  if (std::isnan(time)) throw NativeError(u"an invalid date cannot be passed to Kelvar"_s);
  return QDateTime::fromMSecsSinceEpoch(integerFromReal(time), Qt::UTC);
}

QVariant ValueConverter::bytesToNative(JSObjectRef bytes) const {
  const auto* const data =
      static_cast<char*>(JSObjectGetTypedArrayBytesPtr(context_, bytes, nullptr));
  return QByteArray(data, qsizetype(JSObjectGetTypedArrayByteLength(context_, bytes, nullptr)));
}

/// A point, a size or a rectangle: an object that was made as one, or any where `type` is one.
/// Invalid for anything else.
QVariant ValueConverter::structToNative(JSObjectRef object, QMetaType type) const {
  int kind = int(JSValueToNumber(context_, context_.callPrelude("structKind", {object}), nullptr));
  if (kind == 0) {
    kind = type.id() == QMetaType::QPointF  ? 1
           : type.id() == QMetaType::QSizeF ? 2
           : type.id() == QMetaType::QRectF ? 3
                                            : 0;
  }
  if (kind == 1) return QPointF(member(object, "x"), member(object, "y"));
  if (kind == 2) return QSizeF(member(object, "width"), member(object, "height"));
  if (kind != 3) return {};
  // A flat rectangle has all four members itself.
  const auto part = [&](const QString& name) {
    const JSObjectRef inner = context_.object(context_.get(object, name));
    return inner ? inner : object;
  };
  const JSObjectRef origin = part(u"origin"_s);
  const JSObjectRef size = part(u"size"_s);
  return QRectF(member(origin, "x"), member(origin, "y"), member(size, "width"),
                member(size, "height"));
}

double ValueConverter::member(JSObjectRef structure, const char* name) const {
  const JSValueRef value = context_.get(structure, QString::fromLatin1(name));
  if (!JSValueIsNumber(context_, value)) {
    throw NativeError(u"the %1 of a structure is not a number"_s.arg(QString::fromLatin1(name)));
  }
  return JSValueToNumber(context_, value, nullptr);
}

QVariant ValueConverter::listToNative(JSObjectRef list, const Level* outer) const {
  const Level level = enter(list, outer);
  const auto length = JSValueToNumber(context_, context_.get(list, u"length"_s), nullptr);
  QVariantList values;
  for (unsigned i = 0; i < unsigned(length); ++i) {
    JSValueRef exception = nullptr;
    const JSValueRef element = JSObjectGetPropertyAtIndex(context_, list, i, &exception);
    if (exception) throw ThrownValue{exception};
    try {
      values.append(toNative(element, nullptr, &level));
    } catch (const NativeError& error) {
      throw error.within(u"[%1]"_s.arg(i));
    }
  }
  return values;
}

QVariant ValueConverter::mapToNative(JSObjectRef map, const Level* outer) const {
  const Level level = enter(map, outer);
  QVariantMap values;
  for (const QString& name : context_.namesOf(map)) {
    try {
      values.insert(name, toNative(context_.get(map, name), nullptr, &level));
    } catch (const NativeError& error) {
      throw error.within(u'.' + name);
    }
  }
  return values;
}

QString ValueConverter::kindOf(JSValueRef value) const {
  if (const ObjectRef object = wrappers_.objectOf(value)) return object->classInfo().name();
  if (const ClassInfo* const info = wrappers_.allocatedClassOf(value)) return info->name();
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
  if (wrappers_.classOf(value)) return u"class"_s;
  if (JSValueIsArray(context_, value)) return u"list"_s;
  if (JSValueIsDate(context_, value)) return u"date"_s;
  return context_.functionOrNull(value) ? u"function"_s : u"dictionary"_s;
}

}  // namespace kelvar
