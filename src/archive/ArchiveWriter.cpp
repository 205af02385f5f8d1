#include "archive/ArchiveWriter.h"

#include <QDateTime>
#include <QUrl>

#include "archive/ArchiveLevel.h"
#include "archive/ArchiveScalars.h"
#include "archive/MutableArray.h"
#include "archive/MutableData.h"
#include "archive/MutableDictionary.h"
#include "archive/ValueClasses.h"
#include "platform/Log.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const QString kClassKey = QString::fromLatin1(HRCoderClassNameKey);
const QString kDataKey = QString::fromLatin1(HRCoderBase64DataKey);

}  // namespace

QVariant ArchiveWriter::tree(const QVariant& value) const {
  switch (value.typeId()) {
    case QMetaType::QString:
      return value;
    case QMetaType::QByteArray:
      return bytes(value.toByteArray(), Data::staticClassInfo().name());
    case QMetaType::QDateTime:
      return isJson() ? QVariant(encodedDate(value.toDateTime())) : value;
    case QMetaType::QUrl:
      return encodedUrl(value.toUrl());
    case QMetaType::Nullptr:
      return isJson() ? value : encodedNull();
    case QMetaType::QVariantMap:
      return map(value.toMap());
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
      return list(value.toList());
    default:
      break;
  }
  if (isNumber(value)) return value;
  if (const ObjectRef object = objectIn(value)) return reference(object);
  logLine(u"HRCoder: a value of type %@ cannot be archived",
          {QString::fromLatin1(value.typeName())});
  return {};
}

QVariant ArchiveWriter::reference(const ObjectRef& object) const {
  if (const auto dictionary = std::dynamic_pointer_cast<MutableDictionary>(object)) {
    return map(dictionary->values());
  }
  if (const auto array = std::dynamic_pointer_cast<MutableArray>(object)) {
    return list(array->values());
  }
  const auto data = std::dynamic_pointer_cast<Data>(object);
  const bool isMutable = bool(std::dynamic_pointer_cast<MutableData>(object));
  if (data && (isJson() || !isMutable)) return bytes(data->bytes(), data->classForCoder());
  return this->object(object);
}

QVariant ArchiveWriter::object(const ObjectRef& object) const {
  const ArchiveLevel level(coder_);
  if (coder_.failed_) return {};
  coder_.stack_.append(QVariantMap{{kClassKey, object->classForCoder()}});
  if (const ObjectRef writer = object->replacementObjectForCoder(coder_)) {
    writer->encodeWithCoder(coder_);
  }
  return coder_.stack_.takeLast();
}

QVariant ArchiveWriter::map(const QVariantMap& map) const {
  const ArchiveLevel level(coder_);
  if (coder_.failed_) return {};
  coder_.stack_.append(QVariantMap());
  for (auto i = map.begin(); i != map.end(); ++i) {
    coder_.encodeObject(i.value(), HRCoder::keyIn(i.key()));
  }
  return coder_.stack_.takeLast();
}

QVariant ArchiveWriter::list(const QVariantList& list) const {
  const ArchiveLevel level(coder_);
  if (coder_.failed_) return {};
  QVariantList values;
  for (qsizetype i = 0; i < list.size(); ++i) {
    values.append(coder_.encodedObject(list[i], QString::number(i)));
    if (values.last().isValid()) continue;
    coder_.logMissingElement();
    return {};
  }
  return values;
}

QVariant ArchiveWriter::bytes(const QByteArray& bytes, const QString& className) const {
  if (!isJson()) return bytes;
  return QVariantMap{{kClassKey, className}, {kDataKey, QString::fromLatin1(bytes.toBase64())}};
}

}  // namespace kelvar
