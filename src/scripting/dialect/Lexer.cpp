#include "scripting/dialect/Lexer.h"

#include <QRegularExpression>
#include <algorithm>

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;
using Kind = Token::Kind;

bool startsWord(QChar c) { return c.isLetter() || c == u'_' || c == u'$' || c.isSurrogate(); }
bool continuesWord(QChar c) {
  return startsWord(c) || c.isDigit() || c.isMark() || c == u'\u200c' || c == u'\u200d';
}
bool isQuote(QChar c) { return c == u'"' || c == u'\''; }

}  // namespace

QChar Lexer::at(qsizetype ahead) const {
  return at_ + ahead < script_.size() ? script_[at_ + ahead] : QChar();
}

Token Lexer::token(Kind kind, qsizetype end) const {
  const QStringView text = script_.sliced(at_).first(std::min(end, script_.size()) - at_);
  return {kind, text, text.size()};
}

Token Lexer::peek(bool afterOperand) const {
  if (atEnd()) return token(Kind::End, at_);
  const QChar c = at(0);
  if (const qsizetype end = blankEnd(at_); end > at_) return token(Kind::Blank, end);
  if (startsWord(c)) return token(Kind::Word, wordEnd(at_));
  if (c.isDigit() || (c == u'.' && at(1).isDigit())) return token(Kind::Number, numberEnd());
  if (isQuote(c)) return token(Kind::String, stringEnd(at_));
  if (c == u'@') return atSign();
  if (c == u'`') return token(Kind::Backquote, at_ + 1);
  if (c == u'/' && !afterOperand) return token(Kind::RegularExpression, regularExpressionEnd());
  if (c == u'(' || c == u'[' || c == u'{') return token(Kind::Open, at_ + 1);
  if (c == u')' || c == u']' || c == u'}') return token(Kind::Close, at_ + 1);
  return token(Kind::Punctuator, punctuatorEnd());
}

QStringView Lexer::takeBlanks() {
  const Token blanks = token(Kind::Blank, blanksEnd(at_));
  skip(blanks);
  return blanks.text;
}

bool Lexer::takeTemplateText(QString* text) {
  const qsizetype begin = at_;
  bool isSubstitution = false;
  for (bool ends = false; !ends && !atEnd();) {
    isSubstitution = at(0) == u'$' && at(1) == u'{';
    ends = isSubstitution || at(0) == u'`';
    at_ += at(0) == u'\\' || isSubstitution ? 2 : 1;
  }
  at_ = std::min(at_, script_.size());
  *text += script_.sliced(begin, at_ - begin);
  return isSubstitution;
}

/// White space up to something else, or one comment. `from` where there is neither.
qsizetype Lexer::blankEnd(qsizetype from) const {
  const QStringView rest = script_.sliced(from);
  qsizetype end = from;
  if (rest.startsWith(u"//")) {
    while (end < script_.size() && script_[end] != u'\n') ++end;
  } else if (rest.startsWith(u"/*")) {
    const qsizetype close = script_.indexOf(u"*/", from + 2);
    end = close < 0 ? script_.size() : close + 2;
  } else {
    while (end < script_.size() && script_[end].isSpace()) ++end;
  }
  return end;
}

qsizetype Lexer::blanksEnd(qsizetype from) const {
  for (qsizetype end = blankEnd(from); end > from; end = blankEnd(from)) from = end;
  return from;
}

qsizetype Lexer::wordEnd(qsizetype from) const {
  while (from < script_.size() && continuesWord(script_[from])) ++from;
  return from;
}

qsizetype Lexer::numberEnd() const {
  const bool isHexadecimal = at(0) == u'0' && at(1).toLower() == u'x';
  qsizetype end = at_;
  while (end < script_.size() && (continuesWord(script_[end]) || script_[end] == u'.')) {
    const bool isExponent = script_[end].toLower() == u'e' && !isHexadecimal;
    ++end;
    if (isExponent && end < script_.size() && (script_[end] == u'+' || script_[end] == u'-')) ++end;
  }
  return end;
}

/// A string that is not closed ends with its line.
qsizetype Lexer::stringEnd(qsizetype from) const {
  const QChar quote = script_[from];
  qsizetype end = from + 1;
  while (end < script_.size() && script_[end] != quote && script_[end] != u'\n') {
    if (script_[end] != u'\\') {
      ++end;
    } else {
      end += script_.sliced(end + 1).startsWith(u"\r\n") ? 3 : 2;
    }
  }
  return end + 1;
}

/// With its flags.
qsizetype Lexer::regularExpressionEnd() const {
  qsizetype end = at_ + 1;
  bool inClass = false;
  for (; end < script_.size() && script_[end] != u'\n'; ++end) {
    if (script_[end] == u'\\') {
      ++end;
    } else if (script_[end] == u'[' || script_[end] == u']') {
      inClass = script_[end] == u'[';
    } else if (script_[end] == u'/' && !inClass) {
      break;
    }
  }
  return wordEnd(end + 1);
}

qsizetype Lexer::punctuatorEnd() const {
  const QStringView here = rest();
  if (here.startsWith(u"...")) return at_ + 3;
  const bool isChain = here.startsWith(u"?.") && !at(2).isDigit();
  const bool isPair =
      isChain || here.startsWith(u"++") || here.startsWith(u"--") || here.startsWith(u"=>");
  return at_ + (isPair ? 2 : 1);
}

Token Lexer::atSign() const {
  static const QRegularExpression kSelector(uR"(@selector[ \t]*\([ \t]*([\w$:]+)[ \t]*\))"_s);
  constexpr qsizetype kImport = 7;
  if (isQuote(at(1))) {
    const Token whole = token(Kind::String, stringEnd(at_ + 1));
    return {Kind::String, whole.text.sliced(1), whole.length};
  }
  if (at(1) == u'{') return {Kind::Open, script_.sliced(at_ + 1, 1), 2};
  // A list, a number or a boolean in the other language's notation.
  const QStringView next = script_.sliced(at_ + 1, wordEnd(at_ + 1) - at_ - 1);
  const bool isLiteral =
      at(1) == u'[' || at(1) == u'(' || at(1).isDigit() || next == u"YES" || next == u"NO";
  if (isLiteral) return {Kind::Blank, QStringView(), 1};
  if (rest().startsWith(u"@import")) {
    const qsizetype next = blanksEnd(at_ + kImport);
    const bool isComplete = next < script_.size() && isQuote(script_[next]);
    return isComplete ? token(Kind::Import, at_ + kImport) : token(Kind::Stray, at_ + 1);
  }
  if (rest().startsWith(u"@selector")) {
    const auto found = kSelector.match(script_, at_, QRegularExpression::NormalMatch,
                                       QRegularExpression::AnchorAtOffsetMatchOption);
    if (!found.hasMatch()) return token(Kind::Stray, at_ + 1);
    const QStringView name = script_.sliced(found.capturedStart(1), found.capturedLength(1));
    return {Kind::Selector, name, found.capturedLength()};
  }
  return token(Kind::Punctuator, at_ + 1);
}

}  // namespace kelvar
