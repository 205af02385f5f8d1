#include "scripting/Translation.h"

#include <QRegularExpression>
#include <QScopedValueRollback>
#include <QSet>
#include <QStringList>
#include <algorithm>
#include <utility>

#include "scripting/SelectorName.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

bool startsWord(QChar c) { return c.isLetter() || c == u'_' || c == u'$' || c.isSurrogate(); }
bool continuesWord(QChar c) {
  return startsWord(c) || c.isDigit() || c.isMark() || c == u'\u200c' || c == u'\u200d';
}

/// Brackets in one another, at most: deeper ones are left to the engine, which knows its stack.
constexpr int kMaxDepth = 400;

/// Words after which an operand is still to come.
bool isOperator(const QString& word) {
  static const QSet<QString> kWords{
      u"await"_s, u"case"_s,   u"class"_s,  u"const"_s,    u"default"_s, u"delete"_s,
      u"do"_s,    u"else"_s,   u"export"_s, u"extends"_s,  u"finally"_s, u"for"_s,
      u"if"_s,    u"import"_s, u"in"_s,     u"function"_s, u"let"_s,     u"instanceof"_s,
      u"new"_s,   u"return"_s, u"switch"_s, u"throw"_s,    u"try"_s,     u"typeof"_s,
      u"var"_s,   u"void"_s,   u"while"_s,  u"with"_s,     u"yield"_s};
  return kWords.contains(word);
}

/// What has been read of `[receiver part:argument part:argument]`.
struct Message {
  QString receiver;
  bool hasPlainReceiver = true;
  QString name;
  QStringList arguments;
  bool isUnary = false;
};

/// One pass over the text. `operand_` says whether an operand ends where we are: only then is a
/// slash a division, and a word in a bracket part of a selector.
class Translator {
 public:
  explicit Translator(const QString& text) : text_(text) {}

  QStringList translated() {
    QString out;
    while (at_ < text_.size()) {
      code(QChar(), nullptr, out);
      // A closing bracket that nothing has opened.
      if (at_ < text_.size()) out += text_[at_++];
    }
    if (isTooDeep_) return {text_.toString()};
    pieces_ += out;
    return pieces_;
  }

 private:
  QChar peek(qsizetype ahead = 0) const {
    return at_ + ahead < text_.size() ? text_[at_ + ahead] : QChar();
  }
  bool isAt(QStringView what) const { return text_.mid(at_).startsWith(what); }
  QString take(qsizetype count) {
    const QString taken = text_.mid(at_, count).toString();
    at_ += taken.size();
    return taken;
  }

  /// Up to a closing bracket, which is left, or to the end. With a message, a selector's part ends
  /// it too, and then is what comes next.
  void code(QChar closer, Message* message, QString& out) {
    const QScopedValueRollback<int> deeper(depth_, depth_ + 1);
    if (depth_ > kMaxDepth) {
      isTooDeep_ = true;
      at_ = text_.size();
    }
    while (at_ < text_.size()) {
      const QChar c = peek();
      if (c.isSpace() || isAt(u"//") || isAt(u"/*")) {
        out += blank();
      } else if (startsWord(c)) {
        if (message && operand_ && last_ != u"."_s && beginsPart()) return;
        word(message, out);
      } else if (c.isDigit() || (c == u'.' && peek(1).isDigit())) {
        out += number();
        if (message) message->hasPlainReceiver = false;
      } else if (c == u'"' || c == u'\'' || (c == u'@' && (peek(1) == u'"' || peek(1) == u'\''))) {
        if (c == u'@') ++at_;
        out += string();
      } else if (isAt(u"@import")) {
        import(out);
      } else if (isAt(u"@selector")) {
        selector(out);
      } else if (c == u'`') {
        out += templateLiteral();
      } else if (c == u'/' && !operand_) {
        out += regularExpression();
      } else if (c == u'(' || c == u'{' || c == u'[') {
        open(message, out);
      } else if (c == u')' || c == u'}' || c == u']') {
        if (c == closer || closer.isNull()) return;
        out += take(1);
      } else {
        punctuation(message, out);
      }
    }
  }

  /// Whether a word behind an operand belongs to a selector, and is not an operator or an arrow
  /// function's parameter.
  bool beginsPart() const {
    qsizetype end = at_;
    while (end < text_.size() && continuesWord(text_[end])) ++end;
    const QString next = text_.mid(at_, end - at_).toString();
    return next != u"in"_s && next != u"instanceof"_s && next != u"extends"_s &&
           last_ != u"async"_s;
  }

  QString blank() {
    qsizetype end = at_;
    if (isAt(u"//")) {
      while (end < text_.size() && text_[end] != u'\n') ++end;
    } else if (isAt(u"/*")) {
      const qsizetype close = text_.indexOf(u"*/", at_ + 2);
      end = close < 0 ? text_.size() : close + 2;
    } else {
      while (end < text_.size() && text_[end].isSpace()) ++end;
    }
    return take(end - at_);
  }

  QString blanks() {
    QString all;
    while (at_ < text_.size() && (peek().isSpace() || isAt(u"//") || isAt(u"/*"))) all += blank();
    return all;
  }

  QString plainWord() {
    qsizetype end = at_;
    while (end < text_.size() && continuesWord(text_[end])) ++end;
    return take(end - at_);
  }

  void word(Message* message, QString& out) {
    const bool isMember = last_ == u"."_s;
    const QString taken = plainWord();
    out += taken;
    const bool isOf = operand_ && !isMember && taken == u"of"_s;
    operand_ = isMember || !(isOf || isOperator(taken));
    if (message && !operand_) message->hasPlainReceiver = false;
    if (taken == u"throw"_s && !isMember && last_ != u"function"_s) markThrown(out);
    last_ = taken;
  }

  /// Not behind `throw (`, which could be the name of a method, and not for a new error.
  void markThrown(QString& out) {
    qsizetype next = at_;
    while (next < text_.size() && (text_[next] == u' ' || text_[next] == u'\t')) ++next;
    if (next == at_ || next == text_.size()) return;
    if (u"(:,;=}\n\r/"_s.contains(text_[next]) || text_.mid(next).startsWith(u"new ")) return;
    out += u' ' + QString::fromLatin1(kThrownVariable) + u" ="_s;
  }

  QString number() {
    qsizetype end = at_;
    while (end < text_.size() && (continuesWord(text_[end]) || text_[end] == u'.')) {
      const bool isExponent = text_[end].toLower() == u'e' && !isAt(u"0x") && !isAt(u"0X");
      ++end;
      if (isExponent && end < text_.size() && (text_[end] == u'+' || text_[end] == u'-')) ++end;
    }
    setOperand(u"0"_s);
    return take(end - at_);
  }

  QString string() {
    const QChar quote = peek();
    qsizetype end = at_ + 1;
    while (end < text_.size() && text_[end] != quote && text_[end] != u'\n') {
      if (text_[end] != u'\\') {
        ++end;
      } else {
        end += text_.sliced(end + 1).startsWith(u"\r\n") ? 3 : 2;
      }
    }
    setOperand(u"\""_s);
    return take(end + 1 - at_);
  }

  QString templateLiteral() {
    QString out = take(1);
    while (at_ < text_.size() && peek() != u'`') {
      if (peek() == u'\\') {
        out += take(2);
      } else if (isAt(u"${")) {
        out += take(2);
        operand_ = false;
        last_ = u"("_s;
        code(u'}', nullptr, out);
        out += take(1);
      } else {
        out += take(1);
      }
    }
    setOperand(u"`"_s);
    return out + take(1);
  }

  QString regularExpression() {
    qsizetype end = at_ + 1;
    bool inClass = false;
    for (; end < text_.size() && text_[end] != u'\n'; ++end) {
      if (text_[end] == u'\\') {
        ++end;
      } else if (text_[end] == u'[' || text_[end] == u']') {
        inClass = text_[end] == u'[';
      } else if (text_[end] == u'/' && !inClass) {
        break;
      }
    }
    setOperand(u"/"_s);
    const QString pattern = take(end + 1 - at_);
    return pattern + plainWord();
  }

  void import(QString& out) {
    const qsizetype begin = at_;
    const QString word = take(7);
    const QString between = blanks();
    if (peek() != u'"' && peek() != u'\'') {
      at_ = begin;
      out += take(1);
      return;
    }
    const bool begins = isStatement(out);
    QString call =
        QString::fromLatin1(kImportFunction) + u'(' + withoutLastBlanks(between) + string() + u')';
    const QStringView rest = QStringView(text_).sliced(at_);
    const auto next =
        std::find_if_not(rest.begin(), rest.end(), [](QChar c) { return c.isSpace(); });
    // It ends here also before a line that would go on with what it gives.
    if (next == rest.end() || *next != u';') call += u';';
    if (begins) {
      pieces_ << std::exchange(out, QString()) << call;
    } else {
      out += call;
    }
    operand_ = false;
    last_ = u";"_s;
  }

  /// Whether what comes next begins a statement, and a line, outside all brackets.
  bool isStatement(const QString& before) const {
    const QStringView line = QStringView(before).sliced(before.lastIndexOf(u'\n') + 1);
    const bool ended = operand_ || last_.isEmpty() || last_ == u";"_s || last_ == u"}"_s;
    return depth_ == 1 && ended &&
           std::all_of(line.begin(), line.end(), [](QChar c) { return c.isSpace() || c == u';'; });
  }

  void selector(QString& out) {
    static const QRegularExpression kSelector(uR"(@selector[ \t]*\([ \t]*([\w$:]+)[ \t]*\))"_s);
    const auto found = kSelector.match(text_, at_, QRegularExpression::NormalMatch,
                                       QRegularExpression::AnchorAtOffsetMatchOption);
    if (!found.hasMatch()) {
      out += take(1);
      return;
    }
    take(found.capturedLength());
    out += u'"' + found.captured(1) + u'"';
    setOperand(u"\""_s);
  }

  void setOperand(const QString& last) {
    operand_ = true;
    last_ = last;
  }

  void open(Message* message, QString& out) {
    const QChar opener = peek();
    if (opener == u'[') return bracket(out);
    const bool isControl =
        last_ == u"if"_s || last_ == u"while"_s || last_ == u"for"_s || last_ == u"with"_s;
    const bool isBlock = operand_ || last_.isEmpty() || last_ == u";"_s || last_ == u"{"_s ||
                         last_ == u"}"_s || last_ == u")"_s || last_ == u"=>"_s ||
                         last_ == u"else"_s || last_ == u"do"_s || last_ == u"try"_s ||
                         last_ == u"finally"_s;
    if (message && message->name.isEmpty() && out.trimmed().isEmpty() && opener == u'{') {
      message->hasPlainReceiver = false;
    }
    out += take(1);
    operand_ = false;
    last_ = opener;
    const QChar closer = opener == u'(' ? u')' : u'}';
    code(closer, nullptr, out);
    out += take(1);
    last_ = closer;
    // Within brackets there are no statements: a function's body ends an operand.
    operand_ = opener == u'(' ? !isControl : message || !isBlock;
  }

  void punctuation(Message* message, QString& out) {
    const bool doubled = isAt(u"++") || isAt(u"--");
    const bool member = isAt(u"?.") && !peek(2).isDigit();
    const QString mark = take(isAt(u"...") ? 3 : doubled || member || isAt(u"=>") ? 2 : 1);
    last_ = member ? u"."_s : mark;
    if (message && last_ != u"."_s) message->hasPlainReceiver = false;
    if (!doubled) operand_ = false;
    out += mark;
  }

  void bracket(QString& out) {
    ++at_;
    operand_ = false;
    last_ = u"["_s;
    Message message;
    QString first;
    code(u']', &message, first);
    if (peek() != u']' && at_ < text_.size()) {
      message.receiver = first;
      parts(message);
      // One that is never closed is for the engine to find.
      if (at_ == text_.size()) out += u'[';
      out += written(message);
    } else {
      out += u'[' + first;
      if (peek() == u']') out += u']';
    }
    if (peek() == u']') ++at_;
    setOperand(u"]"_s);
  }

  /// From the selector's first part to the closing bracket.
  void parts(Message& message) {
    Message rest;
    while (at_ < text_.size() && peek() != u']') {
      const QString part = plainWord();
      const QString behind = blanks();
      message.name += part;
      QString argument = behind;
      if (peek() == u':') {
        ++at_;
        message.name += u':';
        operand_ = false;
        last_ = u":"_s;
        code(u']', &rest, argument);
      } else {
        message.isUnary = true;
        // Anything but the closing bracket is a mistake, which the engine will find here.
        if (peek() != u']') code(u']', nullptr, argument);
      }
      message.arguments += argument;
      if (part.isEmpty()) break;
    }
  }

  /// Without blanks behind it, unless they take more than a line.
  static QString withoutLastBlanks(const QString& text) {
    qsizetype end = text.size();
    while (end > 0 && text[end - 1].isSpace()) --end;
    return QStringView(text).sliced(end).contains(u'\n') ? text : text.first(end);
  }

  static QString written(const Message& message) {
    QString receiver = withoutLastBlanks(message.receiver);
    if (!message.hasPlainReceiver) {
      const QString bare = receiver.trimmed();
      receiver.replace(receiver.indexOf(bare), bare.size(), u'(' + bare + u')');
    }
    QStringList arguments;
    for (const QString& argument : message.arguments) arguments += withoutLastBlanks(argument);
    return receiver + u'.' + scriptName(message.name) + u'(' + arguments.join(u", "_s) + u')';
  }

  const QStringView text_;
  qsizetype at_ = 0;
  QStringList pieces_;
  int depth_ = 0;
  bool isTooDeep_ = false;
  bool operand_ = false;
  /// The last word or mark, blanks and comments aside.
  QString last_;
};

}  // namespace

QStringList plainJavaScript(const QString& script) { return Translator(script).translated(); }

}  // namespace kelvar
