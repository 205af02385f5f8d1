#include "scripting/dialect/Parser.h"

#include <QRegularExpression>
#include <QScopedValueRollback>
#include <QSet>
#include <algorithm>
#include <utility>

#include "scripting/dialect/MessageSend.h"
#include "scripting/dialect/ScriptPreprocessor.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;
using Kind = Token::Kind;

/// Maximum nesting of brackets. Deeper scripts are left to the engine, which knows its stack.
constexpr int kMaxDepth = 400;

/// Of the beginning of a catch clause.
constexpr qsizetype kMaxClause = 200;

/// Stands for any literal as the previous token.
const QString kLiteral = u"0"_s;

/// Words that an operand follows.
bool expectsOperand(QStringView word) {
  static const QSet<QStringView> kWords{
      u"await",    u"case",       u"class",   u"const",  u"default", u"delete", u"do",  u"else",
      u"export",   u"extends",    u"finally", u"for",    u"if",      u"import", u"in",  u"let",
      u"function", u"instanceof", u"new",     u"return", u"switch",  u"throw",  u"try", u"typeof",
      u"var",      u"void",       u"while",   u"with",   u"yield"};
  return kWords.contains(word);
}

/// What a brace opens a block after, rather than an object.
bool precedesBlock(const QString& token) {
  static const QSet<QString> kTokens{u""_s,   u";"_s,    u"{"_s,  u"}"_s,   u")"_s,
                                     u"=>"_s, u"else"_s, u"do"_s, u"try"_s, u"finally"_s};
  return kTokens.contains(token);
}

bool isControl(const QString& word) {
  return word == u"if"_s || word == u"while"_s || word == u"for"_s || word == u"with"_s;
}

}  // namespace

QStringList Parser::chunks() {
  QString out;
  while (!lexer_.atEnd()) {
    code(QChar(), out);
    // A closing bracket that nothing has opened.
    close(out);
  }
  if (isTooDeep_) return {script_.toString()};
  chunks_ += out;
  return chunks_;
}

void Parser::code(QChar closer, QString& out) {
  Scope scope{closer, false, out};
  code(scope);
}

void Parser::code(Scope& scope) {
  const QScopedValueRollback<int> deeper(depth_, depth_ + 1);
  if (depth_ > kMaxDepth) {
    isTooDeep_ = true;
    lexer_.skipToEnd();
  }
  for (Token token = peek(); !endsBefore(token, scope); token = peek()) {
    lexer_.skip(token);
    rewrite(token, scope);
  }
}

bool Parser::endsBefore(const Token& token, const Scope& scope) const {
  if (token.kind == Kind::End) return true;
  if (token.kind == Kind::Close) return scope.closer.isNull() || token.text.front() == scope.closer;
  // A word after an operand is a part of a selector, unless it is an operator or an arrow
  // function's parameter.
  return token.kind == Kind::Word && scope.isInMessage && isOperand_ && previous_ != u"." &&
         previous_ != u"async" && token.text != u"in" && token.text != u"instanceof" &&
         token.text != u"extends";
}

void Parser::rewrite(const Token& token, Scope& scope) {
  switch (token.kind) {
    case Kind::Word:
      return word(token.text, scope);
    case Kind::Punctuator:
      return punctuator(token.text, scope);
    case Kind::Open:
      return token.length == 1 ? open(token.text.front(), scope) : boxedDictionary(scope.out);
    case Kind::Backquote:
      return templateLiteral(scope.out);
    case Kind::Import:
      return importStatement(scope.out);
    case Kind::Selector:
      scope.out += u"\"%1\""_s.arg(token.text);
      return setPrevious(true, kLiteral);
    case Kind::Number:
      scope.isPlain = false;
      [[fallthrough]];
    case Kind::String:
    case Kind::RegularExpression:
      setPrevious(true, kLiteral);
      [[fallthrough]];
    case Kind::Blank:
    case Kind::Close:
    case Kind::Stray:
    case Kind::End:
      scope.out += token.text;
  }
}

void Parser::setPrevious(bool isOperand, const QString& previous) {
  isOperand_ = isOperand;
  previous_ = previous;
}

void Parser::word(QStringView word, Scope& scope) {
  const bool isMember = previous_ == u".";
  const bool isOf = isOperand_ && word == u"of";
  const bool isOperand = isMember || !(isOf || expectsOperand(word));
  const bool throws = word == u"throw" && !isMember && previous_ != u"function";
  if (!isOperand) scope.isPlain = false;
  const bool isLengthCall = isMember && word == u"length" && lexer_.rest().startsWith(u"()") &&
                            !scope.out.endsWith(u"super.");
  scope.out += isLengthCall ? QString::fromLatin1(kLengthMethod) : word.toString();
  if (throws) recordThrown(scope.out);
  if (word == u"catch" && !isMember && previous_ == u"}") caught_ = caughtVariable();
  setPrevious(isOperand, word.toString());
}

/// Not for `throw (`, which may be a method's name, nor for a new error, which knows its place.
void Parser::recordThrown(QString& out) const {
  const QStringView rest = lexer_.rest();
  const QStringView value = rest.sliced(std::distance(
      rest.begin(),
      std::find_if_not(rest.begin(), rest.end(), [](QChar c) { return c == u' ' || c == u'\t'; })));
  if (value.isEmpty() || value.size() == rest.size()) return;
  if (u"(:,;=}\n\r/"_s.contains(value.front()) || value.startsWith(u"new ")) return;
  out += u' ' + QString::fromLatin1(kThrownVariable) + u" ="_s;
}

/// Null for a pattern, and where there are comments.
QString Parser::caughtVariable() const {
  static const QRegularExpression kClause(uR"(^\s*\(\s*([A-Za-z_$][\w$]*)\s*\)\s*\{)"_s);
  return kClause.match(lexer_.rest().left(kMaxClause)).captured(1);
}

void Parser::punctuator(QStringView mark, Scope& scope) {
  const bool isMember = mark == u"." || mark == u"?.";
  if (!isMember) scope.isPlain = false;
  scope.out += mark;
  const bool isPostfix = mark == u"++" || mark == u"--";
  setPrevious(isPostfix && isOperand_, isMember ? u"."_s : mark.toString());
}

void Parser::templateLiteral(QString& out) {
  out += u'`';
  while (lexer_.takeTemplateText(&out)) {
    setPrevious(false, u"("_s);
    code(u'}', out);
    close(out);
  }
  setPrevious(true, kLiteral);
}

/// The word "@import" is read; a string follows.
void Parser::importStatement(QString& out) {
  const bool begins = beginsStatement(out);
  const QString blanks = withoutTrailingBlanks(lexer_.takeBlanks());
  const Token file = peek();
  lexer_.skip(file);
  QString call = u"%1(%2%3)"_s.arg(QLatin1StringView(kImportFunction), blanks, file.text);
  // A line break ends an import, even if the next line could continue the call.
  if (!lexer_.rest().trimmed().startsWith(u';')) call += u';';
  if (begins) {
    chunks_ << std::exchange(out, QString()) << call;
  } else {
    out += call;
  }
  setPrevious(false, u";"_s);
}

/// Whether a statement begins here, first on its line and outside all brackets.
bool Parser::beginsStatement(const QString& before) const {
  const QStringView line = QStringView(before).sliced(before.lastIndexOf(u'\n') + 1);
  const bool ended = isOperand_ || previous_.isEmpty() || previous_ == u";" || previous_ == u"}";
  return depth_ == 1 && ended &&
         std::all_of(line.begin(), line.end(), [](QChar c) { return c.isSpace() || c == u';'; });
}

void Parser::open(QChar opener, Scope& scope) {
  if (opener == u'[') return bracket(scope.out);
  const bool isBrace = opener == u'{';
  // Within brackets there are no statements: a brace is an object or a function's body.
  const bool isValue = isBrace ? scope.isInMessage || !(isOperand_ || precedesBlock(previous_))
                               : !isControl(previous_);
  if (isBrace && scope.isInMessage && scope.out.trimmed().isEmpty()) scope.isPlain = false;
  scope.out += opener;
  if (isBrace && !caught_.isNull()) {
    scope.out += u" %1 = %2(%1);"_s.arg(std::exchange(caught_, QString()),
                                        QLatin1StringView(kCaughtFunction));
  }
  setPrevious(false, opener);
  const QChar closer = isBrace ? u'}' : u')';
  code(closer, scope.out);
  close(scope.out);
  setPrevious(isValue, closer);
}

/// "@{…}" has the operations of a dictionary, as what Foundation returns has.
void Parser::boxedDictionary(QString& out) {
  out += u"NSDictionary.dictionaryWithDictionary_({"_s;
  setPrevious(false, u"("_s);
  code(u'}', out);
  close(out);
  out += u')';
  setPrevious(true, u")"_s);
}

/// The closing bracket at which some code has ended, if the script does not end there.
void Parser::close(QString& out) {
  const Token token = peek();
  lexer_.skip(token);
  out += token.text;
}

/// A message, a list or a subscript.
void Parser::bracket(QString& out) {
  setPrevious(false, u"["_s);
  QString first;
  Scope receiver{u']', true, first};
  code(receiver);
  if (peek().kind == Kind::Word) {
    messageSend(first, receiver.isPlain, out);
  } else {
    out += u'[' + first;
    close(out);
  }
  setPrevious(true, u"]"_s);
}

/// From the first part of the selector through the closing bracket.
void Parser::messageSend(const QString& receiver, bool isPlainReceiver, QString& out) {
  MessageSend message{receiver, isPlainReceiver, {}, {}};
  for (Token part = peek(); part.kind == Kind::Word; part = peek()) {
    lexer_.skip(part);
    message.selector += part.text;
    QString argument = lexer_.takeBlanks().toString();
    const Token colon = peek();
    const bool takesArgument = colon.text == u":";
    if (takesArgument) {
      lexer_.skip(colon);
      message.selector += u':';
      setPrevious(false, u":"_s);
    }
    // Without a colon, anything but the closing bracket is a mistake, which the engine reports.
    Scope scope{u']', takesArgument, argument};
    code(scope);
    message.arguments += argument;
  }
  // A message that is never closed is left for the engine to report.
  if (lexer_.atEnd()) out += u'[';
  out += message.javaScript();
  lexer_.skip(peek());
}

}  // namespace kelvar
