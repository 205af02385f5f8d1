#include <QDateTime>
#include <QtEndian>
#include <algorithm>
#include <bit>
#include <optional>
#include <vector>

#include "platform/QtError.h"
#include "platform/plist/BinaryPropertyList.h"
#include "platform/plist/PropertyList.h"
#include "platform/plist/PropertyListForms.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;
using namespace bplist;

/// Objects can be referenced from many places: each is read once and shared. The limits apply to
/// the size with every reference written out, since that is what users of the result traverse.
class BinaryReader {
 public:
  explicit BinaryReader(const QByteArray& bytes) : bytes_(bytes) {}

  Result<QVariant> read() {
    QVariant root;
    if (readTrailer()) root = object(top_, 0).value;
    if (error_) return tl::unexpected(*error_);
    return root;
  }

 private:
  enum class State : uint8_t { Unread, Open, Read };
  struct Entry {
    State state = State::Unread;
    int height = 0;          ///< Levels of containers below.
    qsizetype mentions = 1;  ///< Values, with every reference written out.
    qsizetype text = 0;      ///< Characters and bytes in those, keys included.
    QVariant value;
  };

  /// Keeps the first error, which ends the reading.
  bool fail(const QString& why, Error::Kind kind = Error::Kind::Damaged) {
    if (!error_) error_ = failure(kind, why).value();
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

  bool failCount() {
    return fail(u"it has more than %1 values"_s.arg(PropertyList::kMaxValues),
                Error::Kind::TooLarge);
  }
  bool failDepth() {
    return fail(u"it is nested more than %1 deep"_s.arg(PropertyList::kMaxDepth),
                Error::Kind::TooLarge);
  }

  const Entry& object(size_t index, int depth) {
    Entry& entry = entries_[index];
    if (entry.state == State::Open) fail(u"an object in it contains itself"_s);
    if (entry.state == State::Unread) {
      entry.state = State::Open;
      readObject(index, depth, &entry);
      entry.state = State::Read;
    }
    if (depth + entry.height > PropertyList::kMaxDepth) failDepth();
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

  /// Whether `count` items of `width` bytes fit between `at` and the table of offsets.
  bool holds(qsizetype at, qsizetype count, int width) const {
    return count <= (table_ - at) / width;
  }

  /// Moves `*at` past the count. Negative when that is invalid.
  qsizetype readCount(int low, qsizetype* at) const {
    if (low < 15) return low;
    if (!holds(*at, 1, 1) || uint8_t(bytes_[*at]) >> 4 != kInteger) return -1;
    const QVariant count = fixedObject(uint8_t(bytes_[*at]), *at + 1);
    if (!count.isValid() || count.toULongLong() > uint64_t(PropertyList::kMaxBytes)) return -1;
    *at += 1 + (qsizetype{1} << (bytes_[*at] & 15));
    return qsizetype(count.toULongLong());
  }

  /// Objects whose size follows from their first byte.
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

  /// Up to four bytes are unsigned, eight are signed, and sixteen hold larger unsigned numbers.
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
    if (depth == PropertyList::kMaxDepth) return failDepth();
    const bool isMap = kind == kMap;
    if (!holds(at, count, referenceWidth_ * (isMap ? 2 : 1))) return failAt(at - 1);
    QVariantMap map;
    QVariantList list;
    for (qsizetype i = 0; i < count && !error_; ++i) {
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
    return !error_.has_value();
  }

  QVariant child(qsizetype reference, int depth, Entry* entry) {
    const uint64_t index = number(reference, referenceWidth_);
    if (index >= entries_.size()) fail(u"a reference in it is outside"_s);
    if (error_) return {};
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
    fail(u"written out it is larger than %1 MiB"_s.arg(PropertyList::kMaxBytes >> 20),
         Error::Kind::TooLarge);
  }

  const QByteArray& bytes_;
  int offsetWidth_ = 0;
  int referenceWidth_ = 0;
  qsizetype table_ = 0;
  size_t top_ = 0;
  std::vector<Entry> entries_;
  std::optional<Error> error_;
};

}  // namespace

Result<QVariant> readBinaryPropertyList(const QByteArray& bytes) {
  return BinaryReader(bytes).read();
}

}  // namespace kelvar
