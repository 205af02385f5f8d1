#include "archive/HRCoder.h"
#include "archive/MutableArray.h"
#include "archive/MutableData.h"
#include "archive/MutableDictionary.h"
#include "archive/ValueClasses.h"
#include "platform/Log.h"
#include "runtime/ClassInfo.h"
#include "runtime/Coder.h"

/// How each kind of value is written and read.
namespace kelvar {
namespace {

const QString kClassKey = QString::fromLatin1(HRCoderClassNameKey);
const QString kDataKey = QString::fromLatin1(HRCoderBase64DataKey);

/// A map has no key that is none, but an empty one may be a null text.
QString keyIn(const QString& key) { return key.isNull() ? QStringLiteral("") : key; }

/// Strict, as writers write it: padded, and without anything in between.
QVariant bytesFromBase64(const QVariant& text, const QString& className) {
  const QByteArray base64 = text.toString().toLatin1();
  const auto result =
      QByteArray::fromBase64Encoding(base64, QByteArray::AbortOnBase64DecodingErrors);
  if (text.typeId() != QMetaType::QString || !result || base64.size() % 4 != 0) return {};
  if (className == Data::theClass().name()) {
    return toVariant(std::make_shared<Data>(result.decoded));
  }
  return className == MutableData::theClass().name()
             ? toVariant(std::make_shared<MutableData>(result.decoded))
             : QVariant();
}

}  // namespace

/// One container more, for as long as it lives.
class HRCoder::Level {
 public:
  explicit Level(HRCoder* coder) : coder_(coder) {
    if (++coder_->depth_ > kMaxDepth) {
      coder_->fail(QStringLiteral("it is nested more than %1 deep").arg(kMaxDepth));
    }
  }
  ~Level() { --coder_->depth_; }
  Level(const Level&) = delete;
  Level& operator=(const Level&) = delete;

 private:
  HRCoder* coder_;
};

QVariant HRCoder::archived(const QVariant& object) {
  switch (object.typeId()) {
    case QMetaType::QString:
      return object;
    case QMetaType::QByteArray:
      return archivedBytes(object.toByteArray(), Data::theClass().name());
    case QMetaType::QDateTime:
      return archivedDate(object.toDateTime());
    case QMetaType::QUrl:
      return encodedUrl(object.toUrl());
    case QMetaType::Nullptr:
      return outputFormat_ == kJson ? object : encodedNull();
    case QMetaType::QVariantMap:
      return archivedMap(object.toMap());
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
      return archivedList(object.toList());
    default:
      break;
  }
  if (isNumber(object)) return object;
  if (object.metaType() == QMetaType::fromType<ObjectRef>()) {
    return archivedReference(object.value<ObjectRef>());
  }
  logLine(u"HRCoder: a value of type %@ cannot be archived",
          {QString::fromLatin1(object.typeName())});
  return {};
}

QVariant HRCoder::archivedReference(const ObjectRef& object) {
  if (const auto map = std::dynamic_pointer_cast<MutableDictionary>(object)) {
    return archivedMap(map->values());
  }
  if (const auto list = std::dynamic_pointer_cast<MutableArray>(object)) {
    return archivedList(list->values());
  }
  const auto data = std::dynamic_pointer_cast<Data>(object);
  const bool isMutable = bool(std::dynamic_pointer_cast<MutableData>(object));
  if (data && (outputFormat_ == kJson || !isMutable)) {
    return archivedBytes(data->bytes(), data->classForCoder());
  }
  return archivedObject(object);
}

QVariant HRCoder::archivedObject(const ObjectRef& object) {
  const Level level(this);
  if (failed_) return {};
  stack_.append(QVariantMap{{kClassKey, object->classForCoder()}});
  if (const ObjectRef writer = object->replacementObjectForCoder(*this)) {
    writer->encodeWithCoder(*this);
  }
  return stack_.takeLast();
}

QVariant HRCoder::archivedMap(const QVariantMap& map) {
  const Level level(this);
  if (failed_) return {};
  stack_.append(QVariantMap());
  for (auto i = map.begin(); i != map.end(); ++i) encodeObject(i.value(), keyIn(i.key()));
  return stack_.takeLast();
}

QVariant HRCoder::archivedList(const QVariantList& list) {
  const Level level(this);
  if (failed_) return {};
  QVariantList values;
  for (qsizetype i = 0; i < list.size(); ++i) {
    values.append(encodedObject(list[i], QString::number(i)));
    if (values.last().isValid()) continue;
    if (!failed_) logLine(u"HRCoder: the list at %@ has an element that is none", {keyPath_});
    return {};
  }
  return values;
}

QVariant HRCoder::archivedBytes(const QByteArray& bytes, const QString& className) const {
  if (outputFormat_ != kJson) return bytes;
  return QVariantMap{{kClassKey, className}, {kDataKey, QString::fromLatin1(bytes.toBase64())}};
}

QVariant HRCoder::archivedDate(const QDateTime& date) const {
  return outputFormat_ == kJson ? QVariant(encodedDate(date)) : date;
}

QVariant HRCoder::unarchived(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::QVariantMap:
      return unarchivedMap(value.toMap());
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
      return unarchivedList(value.toList());
    case QMetaType::QByteArray:
      return toVariant(std::make_shared<Data>(value.toByteArray()));
    default:
      return value;
  }
}

QVariant HRCoder::unarchivedMap(const QVariantMap& map) {
  const Level level(this);
  if (failed_) return {};
  const QVariant className = map.value(kClassKey);
  if (map.contains(kDataKey)) {
    return bytesFromBase64(map.value(kDataKey),
                           className.isValid() ? className.toString() : Data::theClass().name());
  }
  stack_.append(map);
  QVariant object;
  if (className.isValid()) {
    object = unarchivedObject(className.toString());
  } else {
    QVariantMap values;
    for (auto i = map.begin(); i != map.end(); ++i) {
      const QString key = keyIn(i.key());
      const QVariant value = decodeObject(i.value(), key);
      if (value.isValid()) values.insert(key, value);
    }
    object = toVariant(std::make_shared<MutableDictionary>(values));
  }
  stack_.removeLast();
  return object;
}

QVariant HRCoder::unarchivedObject(const QString& className) {
  const ClassInfo* const found = ClassInfo::find(className);
  if (!found || !found->isDecodable()) {
    logLine(u"HRCoder: no class that can be read from an archive has the name %@", {className});
    return {};
  }
  const QVariant value = found->decode(*this);
  const auto object =
      value.metaType() == QMetaType::fromType<ObjectRef>() ? value.value<ObjectRef>() : nullptr;
  return object ? toVariant(object->awakeAfterUsingCoder(*this)) : value;
}

QVariant HRCoder::unarchivedList(const QVariantList& list) {
  const Level level(this);
  if (failed_) return {};
  QVariantList values;
  for (qsizetype i = 0; i < list.size(); ++i) {
    values.append(decodeObject(list[i], QString::number(i)));
    if (values.last().isValid()) continue;
    if (!failed_) logLine(u"HRCoder: the list at %@ has an element that is none", {keyPath_});
    return {};
  }
  return toVariant(std::make_shared<MutableArray>(values));
}

}  // namespace kelvar
