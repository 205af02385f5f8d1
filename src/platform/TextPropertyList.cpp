#include <QVariant>

#include "platform/PropertyList.h"
#include "platform/PropertyListForms.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

/// The old text form: strings, bare or in quotes; <bytes in hexadecimal>; ( lists, ); and
/// { maps = to values; }. The braces of an outermost map may be missing. Comments as in C++.
class TextReader {
 public:
  explicit TextReader(const QString& text) : text_(text) {}

  QVariant read(QString* error) {
    skipBlanks();
    const qsizetype start = at_;
    QVariant root = readValue(0);
    skipBlanks();
    if (problem_.isEmpty() && root.typeId() == QMetaType::QString &&
        (next() == u'=' || next() == u';')) {
      at_ = start;
      root = readEntries(0, kEnd);
    }
    if (problem_.isEmpty() && at_ < text_.size()) fail(u"something follows it"_s);
    if (problem_.isEmpty()) return root;
    *error = problem_;
    return {};
  }

 private:
  /// What `next` gives past the end. Not a character.
  static constexpr char16_t kEnd = 0xffff;

  char16_t next() const { return at_ < text_.size() ? text_[at_].unicode() : kEnd; }

  QVariant fail(const QString& why) {
    if (problem_.isEmpty()) {
      const qsizetype read = qMin(at_, text_.size());  // A last escape is read past the end.
      const qsizetype line = QStringView(text_).first(read).count(u'\n') + 1;
      problem_ = u"line %1: %2"_s.arg(line).arg(why);
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
      return fail(u"it has more than %1 values"_s.arg(PropertyList::kMaxValues));
    }
    if (depth == PropertyList::kMaxDepth) {
      return fail(u"it is nested more than %1 deep"_s.arg(PropertyList::kMaxDepth));
    }
    if (skip(u'{')) return readEntries(depth + 1, u'}');
    if (skip(u'(')) return readList(depth + 1);
    if (skip(u'<')) return readBytes();
    if (next() == u'"' || next() == u'\'') return readQuoted();
    return readBare();
  }

  QVariant readEntries(int depth, char16_t end) {
    QVariantMap map;
    while (problem_.isEmpty() && next() != end) {
      const QVariant key = next() == u'"' || next() == u'\'' ? readQuoted() : readBare();
      // A key alone stands for itself.
      const QVariant value = skip(u'=') ? readValue(depth) : key;
      map.insert(key.toString(), value);
      if (!skip(u';') && problem_.isEmpty()) return fail(u"a ; is missing"_s);
    }
    if (end != kEnd) ++at_;
    return map;
  }

  QVariant readList(int depth) {
    QVariantList list;
    while (problem_.isEmpty() && !skip(u')')) {
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
      if (!problem_.isEmpty()) return {};
    }
    ++at_;
    return string.isValidUtf16() ? string : fail(u"a string is not valid Unicode"_s);
  }

  /// Stands on the backslash and stays on the last character of what belongs to it.
  QChar readEscape() {
    const char16_t letter = ++at_ < text_.size() ? text_[at_].unicode() : kEnd;
    if (letter == u'U' || letter == u'u') return readCode(1, 4, 16);
    if (letter >= u'0' && letter <= u'7') return readCode(0, 3, 8);
    constexpr QStringView kLetters = u"abfnrtv";
    constexpr QStringView kMeanings = u"\a\b\f\n\r\t\v";
    const qsizetype known = kLetters.indexOf(QChar(letter));
    return known < 0 ? QChar(letter) : kMeanings[known];
  }

  /// Octal codes beyond ASCII meant an encoding that is no more.
  QChar readCode(int skipped, int most, int base) {
    qsizetype end = at_ + skipped;
    while (end < text_.size() && end - at_ - skipped < most && isDigit(text_[end], base)) ++end;
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
  QString problem_;
};

}  // namespace

QVariant readTextPropertyList(const QString& text, QString* error) {
  return TextReader(text).read(error);
}

}  // namespace kelvar
