#include <QDateTime>
#include <QHash>
#include <QtEndian>
#include <bit>
#include <vector>

#include "platform/PropertyList.h"
#include "platform/PropertyListForms.h"

/// The binary form: "bplist00", the objects, a table of their offsets, and a trailer of 32 bytes
/// (6 unused, the bytes an offset and a reference take, then the number of objects, the root's
/// number and the table's offset in 8 bytes each). Everything is big-endian. The upper half of an
/// object's first byte is its kind, the lower half a count; 15 says that an integer object with
/// the count follows.
namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

enum Kind : uint8_t {
  kSimple = 0x0,
  kInteger = 0x1,
  kReal = 0x2,
  kDate = 0x3,
  kBytes = 0x4,
  kAscii = 0x5,
  kUtf16 = 0x6,
  kReference = 0x8,
  kList = 0xa,
  kMap = 0xd
};
constexpr uint8_t kFalse = 0x08;
constexpr uint8_t kTrue = 0x09;
constexpr qsizetype kHeaderSize = 8;
constexpr qsizetype kTrailerSize = 32;

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

/// An object may be referred to from many places: it is read once and shared. What the whole would
/// come to with each mention written out is counted, since that is what its readers walk through.
class BinaryReader {
 public:
  explicit BinaryReader(const QByteArray& bytes) : bytes_(bytes) {}

  QVariant read(QString* error) {
    QVariant root;
    if (readTrailer()) root = object(top_, 0).value;
    if (!problem_.isEmpty()) {
      *error = problem_;
      return {};
    }
    return root;
  }

 private:
  enum class State : uint8_t { Unread, Open, Read };
  struct Entry {
    State state = State::Unread;
    int height = 0;          ///< Containers down from here.
    qsizetype mentions = 1;  ///< Values with each mention written out.
    qsizetype text = 0;      ///< Characters and bytes in them, keys included.
    QVariant value;
  };

  bool fail(const QString& why) {
    if (problem_.isEmpty()) problem_ = why;
    return false;
  }
  bool failAt(qsizetype offset) {
    return fail(u"the object at byte %1 cannot be read"_s.arg(offset));
  }

  uint64_t number(qsizetype at, int width) const {
    uint64_t value = 0;
    for (int i = 0; i < width; ++i) value = value << 8 | uint8_t(bytes_[at + i]);
    return value;
  }

  bool readTrailer() {
    const qsizetype trailer = bytes_.size() - kTrailerSize;
    if (trailer < kHeaderSize) return fail(u"it ends too early"_s);
    offsetWidth_ = uint8_t(bytes_[trailer + 6]);
    referenceWidth_ = uint8_t(bytes_[trailer + 7]);
    const uint64_t count = number(trailer + 8, 8), top = number(trailer + 16, 8),
                   table = number(trailer + 24, 8);
    const bool isSound = offsetWidth_ >= 1 && offsetWidth_ <= 8 && referenceWidth_ >= 1 &&
                         referenceWidth_ <= 8 && top < count && table >= kHeaderSize &&
                         table <= uint64_t(trailer) &&
                         count <= (uint64_t(trailer) - table) / uint64_t(offsetWidth_);
    if (!isSound) return fail(u"its trailer cannot be right"_s);
    if (count > uint64_t(PropertyList::kMaxValues)) return failCount();
    table_ = qsizetype(table);
    top_ = size_t(top);
    entries_.resize(size_t(count));
    return true;
  }

  bool failCount() { return fail(u"it has more than %1 values"_s.arg(PropertyList::kMaxValues)); }

  const Entry& object(size_t index, int depth) {
    Entry& entry = entries_[index];
    if (entry.state == State::Open) fail(u"an object in it contains itself"_s);
    if (entry.state == State::Unread) {
      entry.state = State::Open;
      readObject(index, depth, &entry);
      entry.state = State::Read;
    }
    if (depth + entry.height > PropertyList::kMaxDepth) {
      fail(u"it is nested more than %1 deep"_s.arg(PropertyList::kMaxDepth));
    }
    return entry;
  }

  bool readObject(size_t index, int depth, Entry* entry) {
    const uint64_t offset = number(table_ + qsizetype(index) * offsetWidth_, offsetWidth_);
    if (offset < uint64_t(kHeaderSize) || offset >= uint64_t(table_)) {
      return fail(u"the offset of object %1 is outside"_s.arg(index));
    }
    const uint8_t first = uint8_t(bytes_[qsizetype(offset)]);
    const qsizetype at = qsizetype(offset) + 1;
    const auto kind = Kind(first >> 4);
    if (kind == kSimple || kind == kInteger || kind == kReal || kind == kDate) {
      entry->value = fixedObject(first, at);
      return entry->value.isValid() || failAt(at - 1);
    }
    if (kind == kReference) {
      const int width = (first & 15) + 1;
      if (width > 4 || !holds(at, 1, width)) return failAt(at - 1);
      entry->value = QVariantMap{{u"CF$UID"_s, qlonglong(number(at, width))}};
      entry->height = 1;
      return true;
    }
    qsizetype start = at;
    const qsizetype count = readCount(first & 15, &start);
    if (count < 0) return failAt(at - 1);
    if (kind == kList || kind == kMap) return readContainer(kind, start, count, depth, entry);
    entry->text = count;
    entry->value = countedObject(kind, start, count);
    return entry->value.isValid() || failAt(at - 1);
  }

  /// What lies between `at` and the table of offsets.
  bool holds(qsizetype at, qsizetype count, int width) const {
    return count <= (table_ - at) / width;
  }

  /// Negative when it cannot be right.
  qsizetype readCount(int low, qsizetype* at) const {
    if (low < 15) return low;
    if (!holds(*at, 1, 1) || uint8_t(bytes_[*at]) >> 4 != kInteger) return -1;
    const QVariant count = fixedObject(uint8_t(bytes_[*at]), *at + 1);
    if (!count.isValid() || count.toULongLong() > uint64_t(PropertyList::kMaxBytes)) return -1;
    *at += 1 + (qsizetype{1} << (bytes_[*at] & 15));
    return qsizetype(count.toULongLong());
  }

  /// Objects whose first byte tells their size.
  QVariant fixedObject(uint8_t first, qsizetype at) const {
    if (first == kFalse || first == kTrue) return first == kTrue;
    const int exponent = first & 15, width = 1 << exponent;
    if (first >> 4 == kSimple || exponent > 4 || !holds(at, 1, width)) return {};
    if (first >> 4 == kInteger) return integer(at, width);
    if (first >> 4 == kReal && width == 4) return std::bit_cast<float>(uint32_t(number(at, 4)));
    if (width != 8) return {};
    const auto real = std::bit_cast<double>(number(at, 8));
    if (first >> 4 == kReal) return real;
    const QDateTime date = dateFromReferenceSeconds(real);
    return date.isValid() ? QVariant(date) : QVariant();
  }

  /// Up to four bytes are unsigned; sixteen hold what eight signed ones do not.
  QVariant integer(qsizetype at, int width) const {
    if (width < 16) return qlonglong(number(at, width));
    const uint64_t high = number(at, 8), low = number(at + 8, 8);
    const bool isLarge = low > uint64_t(INT64_MAX);
    if (high == 0) return isLarge ? QVariant(qulonglong(low)) : QVariant(qlonglong(low));
    return high == UINT64_MAX && isLarge ? QVariant(qlonglong(low)) : QVariant();
  }

  QVariant countedObject(Kind kind, qsizetype at, qsizetype count) const {
    if (!holds(at, count, kind == kUtf16 ? 2 : 1)) return {};
    const char* const data = bytes_.constData() + at;
    if (kind == kBytes) return QByteArray(data, count);
    QString text(count, Qt::Uninitialized);
    if (kind == kAscii) {
      const auto isAscii = [](char c) { return uint8_t(c) < 0x80; };
      if (!std::all_of(data, data + count, isAscii)) return {};
      return count == 0 ? u""_s : QString::fromLatin1(data, count);
    }
    if (kind != kUtf16) return {};
    qFromBigEndian<char16_t>(data, count, text.data());
    return text.isValidUtf16() ? (count == 0 ? u""_s : text) : QVariant();
  }

  bool readContainer(Kind kind, qsizetype at, qsizetype count, int depth, Entry* entry) {
    if (depth == PropertyList::kMaxDepth) {
      return fail(u"it is nested more than %1 deep"_s.arg(PropertyList::kMaxDepth));
    }
    const bool isMap = kind == kMap;
    if (!holds(at, count, referenceWidth_ * (isMap ? 2 : 1))) return failAt(at - 1);
    QVariantMap map;
    QVariantList list;
    for (qsizetype i = 0; i < count && problem_.isEmpty(); ++i) {
      const qsizetype reference = at + i * referenceWidth_;
      if (!isMap) {
        list.append(child(reference, depth, entry));
      } else {
        const qsizetype value = reference + count * referenceWidth_;
        map.insert(key(reference, depth, entry), child(value, depth, entry));
      }
    }
    entry->height += 1;
    entry->value = isMap ? QVariant(map) : QVariant(list);
    return problem_.isEmpty();
  }

  QVariant child(qsizetype reference, int depth, Entry* entry) {
    const uint64_t index = number(reference, referenceWidth_);
    if (index >= entries_.size()) fail(u"a reference in it is outside"_s);
    if (!problem_.isEmpty()) return {};
    const Entry& found = object(size_t(index), depth + 1);
    entry->height = std::max(entry->height, found.height);
    entry->mentions += found.mentions;
    if (entry->mentions > PropertyList::kMaxValues) failCount();
    countText(found.text, entry);
    return found.value;
  }

  QString key(qsizetype reference, int depth, Entry* entry) {
    Entry alone;
    const QVariant key = child(reference, depth, &alone);
    if (key.typeId() != QMetaType::QString) fail(u"a key in it is not a string"_s);
    countText(alone.text, entry);
    return key.toString();
  }

  void countText(qsizetype text, Entry* entry) {
    entry->text += text;
    if (entry->text <= PropertyList::kMaxBytes) return;
    fail(u"written out it is larger than %1 MiB"_s.arg(PropertyList::kMaxBytes >> 20));
  }

  const QByteArray& bytes_;
  int offsetWidth_ = 0;
  int referenceWidth_ = 0;
  qsizetype table_ = 0;
  size_t top_ = 0;
  std::vector<Entry> entries_;
  QString problem_;
};

}  // namespace

QByteArray writeBinaryPropertyList(const QVariant& value) { return BinaryWriter().write(value); }

QVariant readBinaryPropertyList(const QByteArray& bytes, QString* error) {
  return BinaryReader(bytes).read(error);
}

}  // namespace kelvar
