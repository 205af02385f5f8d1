#include "archive/ArchiveReader.h"

#include "archive/ArchiveLevel.h"
#include "archive/ArchiveScalars.h"
#include "archive/HRCoderAliasPlaceholder.h"
#include "archive/MutableArray.h"
#include "archive/MutableData.h"
#include "archive/MutableDictionary.h"
#include "platform/Log.h"
#include "runtime/ClassInfo.h"
#include "runtime/leadingNumber.h"

namespace kelvar {
namespace {

const QString kClassKey = QString::fromLatin1(HRCoderClassNameKey);
const QString kDataKey = QString::fromLatin1(HRCoderBase64DataKey);

bool isPlaceholder(const QVariant& value) {
  return objectIn(value) == HRCoderAliasPlaceholder::placeholder();
}

/// Strict: padded, and without other characters, as writers produce it.
QVariant bytesFromBase64(const QVariant& text, const QString& className) {
  const QByteArray base64 = text.toString().toLatin1();
  const auto result =
      QByteArray::fromBase64Encoding(base64, QByteArray::AbortOnBase64DecodingErrors);
  if (text.typeId() != QMetaType::QString || !result || base64.size() % 4 != 0) return {};
  if (className == Data::staticClassInfo().name()) {
    return toVariant(std::make_shared<Data>(result.decoded));
  }
  return className == MutableData::staticClassInfo().name()
             ? toVariant(std::make_shared<MutableData>(result.decoded))
             : QVariant();
}

}  // namespace

QVariant ArchiveReader::object(const QVariant& tree) const {
  switch (tree.typeId()) {
    case QMetaType::QVariantMap:
      return fromMap(tree.toMap());
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
      return fromList(tree.toList());
    case QMetaType::QByteArray:
      return toVariant(std::make_shared<Data>(tree.toByteArray()));
    default:
      return tree;
  }
}

QVariant ArchiveReader::fromMap(const QVariantMap& map) const {
  const ArchiveLevel level(coder_);
  if (coder_.failed_) return {};
  const QVariant className = map.value(kClassKey);
  if (map.contains(kDataKey)) {
    return bytesFromBase64(map.value(kDataKey), className.isValid()
                                                    ? className.toString()
                                                    : Data::staticClassInfo().name());
  }
  coder_.stack_.append(map);
  const QVariant object = className.isValid() ? instance(className.toString()) : dictionary(map);
  coder_.stack_.removeLast();
  return object;
}

QVariant ArchiveReader::dictionary(const QVariantMap& map) const {
  QVariantMap values;
  for (auto i = map.begin(); i != map.end(); ++i) {
    const QString key = HRCoder::keyIn(i.key());
    const QVariant value = coder_.decodeObject(i.value(), key);
    if (value.isValid()) values.insert(key, value);
  }
  return toVariant(std::make_shared<MutableDictionary>(values));
}

QVariant ArchiveReader::instance(const QString& className) const {
  const ClassInfo* const found = ClassInfo::find(className);
  if (!found || !found->isDecodable()) {
    logLine(u"HRCoder: no class that can be read from an archive has the name %@", {className});
    return {};
  }
  const QVariant value = found->decode(coder_);
  const ObjectRef object = objectIn(value);
  return object ? toVariant(object->awakeAfterUsingCoder(coder_)) : value;
}

QVariant ArchiveReader::fromList(const QVariantList& list) const {
  const ArchiveLevel level(coder_);
  if (coder_.failed_) return {};
  QVariantList values;
  for (qsizetype i = 0; i < list.size(); ++i) {
    values.append(coder_.decodeObject(list[i], QString::number(i)));
    if (values.last().isValid()) continue;
    coder_.logMissingElement();
    return {};
  }
  return toVariant(std::make_shared<MutableArray>(values));
}

void ArchiveReader::replacePlaceholder(const QVariant& root, const QString& path,
                                       const QVariant& object) {
  QVariant container = root;
  for (const QString& component : path.split(u'.')) {
    const ObjectRef holder = objectIn(container);
    if (!holder) return;
    if (const auto array = std::dynamic_pointer_cast<MutableArray>(holder)) {
      const auto index = leadingNumber<int64_t>(component);
      if (index < 0 || index >= array->values().size()) return;
      container = array->values()[index];
      if (!isPlaceholder(container)) continue;
      // A list cannot hold an invalid value.
      return array->replace(index, object.isValid() ? object : QVariant::fromValue(nullptr));
    }
    container = holder->valueForKey(component);
    if (!container.isValid() || isPlaceholder(container)) {
      holder->setValueForKey(object, component);
      return;
    }
  }
}

}  // namespace kelvar
