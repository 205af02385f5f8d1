#include <QDateTime>
#include <QHash>
#include <algorithm>
#include <bit>
#include <vector>

#include "platform/plist/BinaryPropertyList.h"
#include "platform/plist/PropertyListForms.h"

namespace kelvar {
namespace {

using namespace bplist;

/// Bytes that hold `largest`: 1, 2, 4 or 8.
int widthFor(uint64_t largest) {
  return largest < 1u << 8 ? 1 : largest < 1u << 16 ? 2 : largest < uint64_t{1} << 32 ? 4 : 8;
}

void appendNumber(QByteArray* out, uint64_t number, int width) {
  for (int shift = 8 * (width - 1); shift >= 0; shift -= 8) out->append(char(number >> shift));
}

QByteArray marker(Kind kind, int low) { return QByteArray(1, char(kind << 4 | low)); }

QByteArray integerObject(const QVariant& value) {
  const bool isUnsigned =
      value.typeId() == QMetaType::ULongLong || value.typeId() == QMetaType::ULong;
  const uint64_t bits = isUnsigned ? value.toULongLong() : uint64_t(value.toLongLong());
  const bool isLarge = isUnsigned && bits > uint64_t(INT64_MAX);
  const int width = widthFor(bits);
  QByteArray object = marker(kInteger, isLarge ? 4 : std::countr_zero(unsigned(width)));
  if (isLarge) appendNumber(&object, 0, 8);
  appendNumber(&object, bits, width);
  return object;
}

QByteArray realObject(const QVariant& value) {
  if (value.typeId() == QMetaType::Float) {
    QByteArray object = marker(kReal, 2);
    appendNumber(&object, std::bit_cast<uint32_t>(value.toFloat()), 4);
    return object;
  }
  QByteArray object = marker(kReal, 3);
  appendNumber(&object, std::bit_cast<uint64_t>(value.toDouble()), 8);
  return object;
}

QByteArray counted(Kind kind, qsizetype count) {
  if (count < 15) return marker(kind, int(count));
  return marker(kind, 15) + integerObject(qlonglong(count));
}

QByteArray stringObject(const QString& text) {
  const auto isAscii = [](QChar c) { return c.unicode() < 0x80; };
  if (std::all_of(text.begin(), text.end(), isAscii)) {
    return counted(kAscii, text.size()) + text.toLatin1();
  }
  QByteArray object = counted(kUtf16, text.size());
  for (const QChar unit : text) appendNumber(&object, unit.unicode(), 2);
  return object;
}

class BinaryWriter {
 public:
  QByteArray write(const QVariant& root) {
    add(root);
    const int referenceWidth = widthFor(objects_.size());
    QByteArray out("bplist00");
    std::vector<qsizetype> offsets;
    for (const Object& object : objects_) {
      offsets.push_back(out.size());
      out += object.bytes;
      for (const size_t reference : object.references) {
        appendNumber(&out, reference, referenceWidth);
      }
    }
    const qsizetype table = out.size();
    const int offsetWidth = widthFor(uint64_t(table));
    for (const qsizetype offset : offsets) appendNumber(&out, uint64_t(offset), offsetWidth);
    out += QByteArray(6, '\0') + char(offsetWidth) + char(referenceWidth);
    appendNumber(&out, objects_.size(), 8);
    appendNumber(&out, 0, 8);
    appendNumber(&out, uint64_t(table), 8);
    return out;
  }

 private:
  /// The keys of a map come before its values, both as references.
  struct Object {
    QByteArray bytes;
    std::vector<size_t> references;
  };

  size_t add(const QVariant& value) {
    if (value.typeId() == QMetaType::QString) return addString(value.toString());
    const size_t number = objects_.size();
    objects_.emplace_back();
    Object object;
    switch (value.typeId()) {
      case QMetaType::Bool:
        object.bytes = marker(kSimple, value.toBool() ? kTrue : kFalse);
        break;
      case QMetaType::Float:
      case QMetaType::Double:
        object.bytes = realObject(value);
        break;
      case QMetaType::QByteArray:
        object.bytes = counted(kBytes, value.toByteArray().size()) + value.toByteArray();
        break;
      case QMetaType::QDateTime:
        object.bytes = marker(kDate, 3);
        appendNumber(&object.bytes, std::bit_cast<uint64_t>(referenceSeconds(value.toDateTime())),
                     8);
        break;
      case QMetaType::QVariantMap:
        object = mapObject(value.toMap());
        break;
      case QMetaType::QVariantList:
      case QMetaType::QStringList:
        object = listObject(value.toList());
        break;
      default:
        object.bytes = integerObject(value);
    }
    objects_[number] = std::move(object);
    return number;
  }

  /// Keys repeat, so that each string is written once.
  size_t addString(const QString& text) {
    const auto known = strings_.constFind(text);
    if (known != strings_.constEnd()) return *known;
    strings_.insert(text, objects_.size());
    objects_.push_back({stringObject(text), {}});
    return objects_.size() - 1;
  }

  Object mapObject(const QVariantMap& map) {
    Object object{counted(kMap, map.size()), {}};
    for (auto i = map.begin(); i != map.end(); ++i) object.references.push_back(addString(i.key()));
    for (const QVariant& value : map) object.references.push_back(add(value));
    return object;
  }

  Object listObject(const QVariantList& list) {
    Object object{counted(kList, list.size()), {}};
    for (const QVariant& element : list) object.references.push_back(add(element));
    return object;
  }

  std::vector<Object> objects_;
  QHash<QString, size_t> strings_;
};

}  // namespace

QByteArray writeBinaryPropertyList(const QVariant& value) { return BinaryWriter().write(value); }

}  // namespace kelvar
