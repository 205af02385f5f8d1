#include "archive/ArchiveTree.h"

#include "archive/Data.h"
#include "archive/HRCoder.h"
#include "archive/ValueClasses.h"

namespace kelvar {
namespace {

const QString kClassKey = QString::fromLatin1(HRCoderClassNameKey);
const QString kDataKey = QString::fromLatin1(HRCoderBase64DataKey);
const QString kBytesKey = QStringLiteral("NS.data");
const QString kData = QStringLiteral("NSData");
const QString kMutableData = QStringLiteral("NSMutableData");

template <class Convert>
QVariant eachConverted(const QVariant& tree, Convert convert) {
  if (tree.typeId() == QMetaType::QVariantMap) {
    QVariantMap map = tree.toMap();
    for (QVariant& value : map) value = convert(value);
    return map;
  }
  if (tree.typeId() != QMetaType::QVariantList) return tree;
  QVariantList list = tree.toList();
  for (QVariant& value : list) value = convert(value);
  return list;
}

QVariantMap base64Data(const QString& className, const QByteArray& bytes) {
  return {{kClassKey, className}, {kDataKey, QString::fromLatin1(bytes.toBase64())}};
}

/// Invalid when the dictionary stands for something else.
QVariant fromBase64Data(const QVariantMap& map) {
  if (!map.contains(kDataKey)) return {};
  const auto object = HRCoder::unarchiveObjectWithPlistOrJSON(map).value<ObjectRef>();
  const auto data = std::dynamic_pointer_cast<Data>(object);
  return data ? HRCoder::archivedPlistWithRootObject(QVariant::fromValue(object)) : QVariant();
}

QVariant fromDate(const QVariantMap& map) {
  const QVariantMap epoch = encodedDate(QDateTime::fromSecsSinceEpoch(0, Qt::UTC));
  if (map.keys() != epoch.keys() || map.value(kClassKey) != epoch.value(kClassKey)) return {};
  return HRCoder::unarchiveObjectWithPlistOrJSON(map);
}

}  // namespace

QVariant jsonArchiveTree(const QVariant& tree) {
  if (tree.typeId() == QMetaType::QDateTime) return encodedDate(tree.toDateTime());
  if (tree.typeId() == QMetaType::QByteArray) return base64Data(kData, tree.toByteArray());
  if (tree.typeId() == QMetaType::QVariantMap) {
    const QVariantMap map = tree.toMap();
    if (map == encodedNull()) return QVariant::fromValue(nullptr);
    const QVariant bytes = map.value(kBytesKey);
    if (map.value(kClassKey) == kMutableData && bytes.typeId() == QMetaType::QByteArray) {
      return base64Data(kMutableData, bytes.toByteArray());
    }
  }
  return eachConverted(tree, jsonArchiveTree);
}

QVariant propertyListArchiveTree(const QVariant& tree) {
  if (tree.typeId() == QMetaType::Nullptr) return encodedNull();
  if (tree.typeId() == QMetaType::QVariantMap) {
    const QVariantMap map = tree.toMap();
    const QVariant bytes = fromBase64Data(map);
    if (bytes.isValid()) return bytes;
    const QVariant date = fromDate(map);
    if (date.isValid()) return date;
  }
  return eachConverted(tree, propertyListArchiveTree);
}

QVariant archiveTreeAt(const QVariant& tree, const QString& keyPath) {
  if (keyPath == QLatin1String(HRCoderRootObjectKey)) return tree;
  const bool isList = tree.typeId() == QMetaType::QVariantList;
  if (!isList && tree.typeId() != QMetaType::QVariantMap) return {};
  const QVariantMap map = tree.toMap();
  const QVariantList list = tree.toList();
  for (qsizetype end = 0; end >= 0 && end < keyPath.size();) {
    end = keyPath.indexOf(u'.', end);
    const QString key = keyPath.first(end < 0 ? keyPath.size() : end);
    bool isIndex = false;
    const qlonglong index = key.toLongLong(&isIndex);
    const QVariant child = !isList ? map.value(key) : isIndex ? list.value(index) : QVariant();
    if (end < 0) return child;
    const QVariant found = archiveTreeAt(child, keyPath.sliced(++end));
    if (found.isValid()) return found;
  }
  return {};
}

}  // namespace kelvar
