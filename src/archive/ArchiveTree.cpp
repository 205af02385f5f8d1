#include "archive/ArchiveTree.h"

#include <QStringList>
#include <algorithm>

#include "archive/Data.h"
#include "archive/HRCoder.h"
#include "archive/ValueClasses.h"

namespace kelvar {
namespace {

const QString kClassKey = QString::fromLatin1(HRCoderClassNameKey);
const QString kRootKey = QString::fromLatin1(HRCoderRootObjectKey);
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

/// Invalid when the dictionary represents something else.
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

/// Finds the targets of all aliases in one traversal: the key paths are sorted, and each step down
/// the tree narrows them to those with the same prefix.
class AliasTargets {
 public:
  explicit AliasTargets(const QVariant& tree) {
    collect(tree);
    std::sort(paths_.begin(), paths_.end());
    paths_.erase(std::unique(paths_.begin(), paths_.end()), paths_.end());
    if (std::binary_search(paths_.begin(), paths_.end(), kRootKey)) found_.insert(kRootKey, tree);
    walk(tree, {paths_.cbegin(), paths_.cend()}, 0);
  }
  QHash<QString, QVariant> found() const { return found_; }

 private:
  struct Range {
    QStringList::const_iterator first, last;
    bool isEmpty() const { return first == last; }
  };

  void collect(const QVariant& value) {
    if (isArchiveAlias(value)) {
      paths_.append(value.toMap().first().toString());
    } else if (value.typeId() == QMetaType::QVariantMap) {
      for (const QVariant& child : value.toMap()) collect(child);
    } else if (value.typeId() == QMetaType::QVariantList) {
      for (const QVariant& child : value.toList()) collect(child);
    }
  }

  /// Of paths that are equal up to `at`, those that continue with `text`.
  static Range narrowed(const Range& range, qsizetype at, QStringView text) {
    const auto part = [&](const QString& path) { return QStringView(path).mid(at, text.size()); };
    const auto first =
        std::lower_bound(range.first, range.last, text,
                         [&](const QString& path, QStringView t) { return part(path) < t; });
    const auto last =
        std::upper_bound(first, range.last, text,
                         [&](QStringView t, const QString& path) { return t < part(path); });
    return {first, last};
  }

  /// `range` are the paths that lead into `container` with their first `at` characters.
  void walk(const QVariant& container, const Range& range, qsizetype at) {
    if (range.isEmpty()) return;
    if (container.typeId() == QMetaType::QVariantMap) {
      const QVariantMap map = container.toMap();
      for (auto i = map.begin(); i != map.end(); ++i) step(i.value(), i.key(), range, at);
    } else if (container.typeId() == QMetaType::QVariantList) {
      const QVariantList list = container.toList();
      for (qsizetype i = 0; i < list.size(); ++i) step(list[i], QString::number(i), range, at);
    }
  }

  void step(const QVariant& child, const QString& key, const Range& range, qsizetype at) {
    const Range further = narrowed(range, at, key);
    if (further.isEmpty()) return;
    const qsizetype end = at + key.size();
    if (further.first->size() == end && !found_.contains(*further.first)) {
      found_.insert(*further.first, child);
    }
    walk(child, narrowed(further, end, u"."), end + 1);
  }

  QStringList paths_;
  QHash<QString, QVariant> found_;
};

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

bool isArchiveAlias(const QVariant& value) {
  if (value.typeId() != QMetaType::QVariantMap) return false;
  const QVariantMap map = value.toMap();
  return map.size() == 1 && map.firstKey() == QLatin1String(HRCoderObjectAliasKey);
}

QHash<QString, QVariant> archiveAliasTargets(const QVariant& tree) {
  return AliasTargets(tree).found();
}

}  // namespace kelvar
