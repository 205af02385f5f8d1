#include "sketch/document/KeyedArchive.h"

#include "platform/plist/PropertyList.h"

namespace kelvar::render {
namespace {

using namespace Qt::StringLiterals;

/// Deeper than any text; an object that contains itself ends here too.
constexpr int kMaxDepth = 16;
constexpr int kMaxObjects = 100'000;

class Unarchiver {
 public:
  explicit Unarchiver(const QVariantList& objects) : objects_(objects) {}

  QVariant resolved(const QVariant& value, int depth) {
    if (depth > kMaxDepth || ++count_ > kMaxObjects) return {};
    if (value.typeId() == QMetaType::QVariantList) return list(value.toList(), depth);
    if (value.typeId() != QMetaType::QVariantMap) return value;
    const QVariantMap map = value.toMap();
    const auto reference = map.constFind(u"CF$UID"_s);
    if (reference == map.constEnd()) return object(map, depth);
    const qulonglong number = reference->toULongLong();
    if (number == 0 || number >= qulonglong(objects_.size())) return {};  // 0 is "$null".
    return resolved(objects_[qsizetype(number)], depth + 1);
  }

 private:
  QVariantList list(const QVariantList& references, int depth) {
    QVariantList list;
    for (const QVariant& reference : references) list.append(resolved(reference, depth + 1));
    return list;
  }

  QVariant object(const QVariantMap& map, int depth) {
    if (map.contains(u"NS.string"_s)) return resolved(map[u"NS.string"_s], depth + 1);
    if (map.contains(u"NS.data"_s)) return resolved(map[u"NS.data"_s], depth + 1);
    const QVariantList values = list(map[u"NS.objects"_s].toList(), depth);
    if (!map.contains(u"NS.keys"_s) && map.contains(u"NS.objects"_s)) return values;
    QVariantMap members;
    const QVariantList keys = list(map[u"NS.keys"_s].toList(), depth);
    for (qsizetype i = 0; i < std::min(keys.size(), values.size()); ++i) {
      members[keys[i].toString()] = values[i];
    }
    for (auto member = map.begin(); member != map.end(); ++member) {
      if (member.key() == u"$class" || member.key().startsWith(u"NS.")) continue;
      members[member.key()] = resolved(member.value(), depth + 1);
    }
    return members;
  }

  const QVariantList& objects_;
  int count_ = 0;
};

}  // namespace

QVariant readKeyedArchive(const QByteArray& archive) {
  const QVariantMap top = PropertyList::read(archive).value_or(QVariant()).toMap();
  const QVariantList objects = top[u"$objects"_s].toList();
  return Unarchiver(objects).resolved(top[u"$top"_s].toMap()[u"root"_s], 0);
}

}  // namespace kelvar::render
