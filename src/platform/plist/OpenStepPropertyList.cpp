#include <QVariant>
#include <optional>

#include "platform/QtError.h"
#include "platform/plist/PropertyList.h"
#include "platform/plist/PropertyListForms.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

/// Strings, bare or in quotes; <bytes in hexadecimal>; ( lists, ); and { maps = to values; }. The
/// braces of the outermost map may be missing. Comments as in C++.
class OpenStepReader {
 public:
  explicit OpenStepReader(const QString& text) : text_(text) {}

  Result<QVariant> read() {
    skipBlanks();
    const qsizetype start = at_;
    QVariant root = readValue(0);
    skipBlanks();
    if (!error_ && root.typeId() == QMetaType::QString && (next() == u'=' || next() == u';')) {
      at_ = start;
      root = readEntries(0, kEnd);
    }
    if (!error_ && at_ < text_.size()) fail(u"something follows it"_s);
    if (error_) return tl::unexpected(*error_);
    return root;
  }

 private:
  /// What `next` returns past the end. Not a character.
  static constexpr char16_t kEnd = 0xffff;

  char16_t next() const { return at_ < text_.size() ? text_[at_].unicode() : kEnd; }

  /// Keeps the first error, which ends the reading.
  QVariant fail(const QString& why, Error::Kind kind = Error::Kind::Damaged) {
    if (!error_) {
      const qsizetype read = qMin(at_, text_.size());  // A last escape is read past the end.
      const qsizetype line = QStringView(text_).first(read).count(u'\n') + 1;
      error_ = failure(kind, u"line %1: %2"_s.arg(line).arg(why)).value();
    }
    return {};
  }

  void skipBlanks() {
    while (at_ < text_.size()) {
      const QStringView rest = QStringView(text_).sliced(at_);
      if (rest.first(1).trimmed().isEmpty()) {
        ++at_;
      } else if (rest.startsWith(u"//")) {
        skipBehind(u"\n");
      } else if (rest.startsWith(u"/*")) {
        skipBehind(u"*/");
      } else {
        return;
      }
    }
  }

  void skipBehind(QStringView mark) {
    const qsizetype found = text_.indexOf(mark, at_ + 2);
    at_ = found < 0 ? text_.size() : found + mark.size();
  }

  bool skip(char16_t character) {
    skipBlanks();
    if (next() != character) return false;
    ++at_;
    skipBlanks();
    return true;
  }

  QVariant readValue(int depth) {
    if (++count_ > PropertyList::kMaxValues) {
      return fail(u"it has more than %1 values"_s.arg(PropertyList::kMaxValues),
                  Error::Kind::TooLarge);
    }
    if (depth == PropertyList::kMaxDepth) {
      return fail(u"it is nested more than %1 deep"_s.arg(PropertyList::kMaxDepth),
                  Error::Kind::TooLarge);
    }
    if (skip(u'{')) return readEntries(depth + 1, u'}');
    if (skip(u'(')) return readList(depth + 1);
    if (skip(u'<')) return readBytes();
    if (next() == u'"' || next() == u'\'') return readQuoted();
    return readBare();
  }

  QVariant readEntries(int depth, char16_t end) {
    QVariantMap map;
    while (!error_ && next() != end) {
      const QVariant key = next() == u'"' || next() == u'\'' ? readQuoted() : readBare();
      // A key without a value is its own value.
      const QVariant value = skip(u'=') ? readValue(depth) : key;
      map.insert(key.toString(), value);
      if (!skip(u';') && !error_) return fail(u"a ; is missing"_s);
    }
    if (end != kEnd) ++at_;
    return map;
  }

  QVariant readList(int depth) {
    QVariantList list;
    while (!error_ && !skip(u')')) {
      list.append(readValue(depth));
      skipBlanks();
      if (next() != u')' && !skip(u',')) return fail(u"a , or ) is missing"_s);
    }
    return list;
  }

  QVariant readBytes() {
    QByteArray digits;
    while (next() != u'>') {
      if (!isDigit(QChar(next()), 16))
        return fail(u"bytes are given in hexadecimal and end with >"_s);
      digits.append(char(next()));
      ++at_;
      skipBlanks();
    }
    ++at_;
    return digits.size() % 2 == 0 ? QByteArray::fromHex(digits) : fail(u"half a byte is missing"_s);
  }

  QVariant readBare() {
    const qsizetype start = at_;
    const auto isBare = [](char16_t c) {
      return c < 0x80 && (QChar::isLetterOrNumber(c) || QStringView(u"_$/:.-").contains(QChar(c)));
    };
    while (isBare(next())) ++at_;
    if (at_ == start) return fail(u"a value is missing, or needs quotation marks"_s);
    return text_.sliced(start, at_ - start);
  }

  QVariant readQuoted() {
    const char16_t quote = next();
    QString string = u""_s;
    for (++at_; next() != quote; ++at_) {
      if (at_ >= text_.size()) return fail(u"a quotation mark is missing"_s);
      string += next() == u'\\' ? readEscape() : QChar(next());
      if (error_) return {};
    }
    ++at_;
    return string.isValidUtf16() ? string : fail(u"a string is not valid Unicode"_s);
  }

  /// Starts on the backslash and stops on the last character of the escape.
  QChar readEscape() {
    const char16_t letter = ++at_ < text_.size() ? text_[at_].unicode() : kEnd;
    if (letter == u'U' || letter == u'u') return readCode(1, 4, 16);
    if (letter >= u'0' && letter <= u'7') return readCode(0, 3, 8);
    constexpr QStringView kLetters = u"abfnrtv";
    constexpr QStringView kMeanings = u"\a\b\f\n\r\t\v";
    const qsizetype known = kLetters.indexOf(QChar(letter));
    return known < 0 ? QChar(letter) : kMeanings[known];
  }

  /// Octal codes beyond ASCII are refused: they meant an encoding that is no longer in use.
  QChar readCode(int skipped, int maxDigits, int base) {
    qsizetype end = at_ + skipped;
    while (end < text_.size() && end - at_ - skipped < maxDigits && isDigit(text_[end], base))
      ++end;
    const QStringView digits = QStringView(text_).sliced(at_ + skipped, end - at_ - skipped);
    const uint code = digits.toUInt(nullptr, base);
    if (digits.isEmpty() || (base == 8 && code >= 0x80)) fail(u"an escape cannot be read"_s);
    at_ = end - 1;
    return QChar(char16_t(code));
  }

  static bool isDigit(QChar c, int base) {
    return QStringView(u"0123456789abcdefABCDEF").first(base == 8 ? 8 : 22).contains(c);
  }

  const QString& text_;
  qsizetype at_ = 0;
  qsizetype count_ = 0;
  std::optional<Error> error_;
};

}  // namespace

Result<QVariant> readOpenStepPropertyList(const QString& text) {
  return OpenStepReader(text).read();
}

}  // namespace kelvar
