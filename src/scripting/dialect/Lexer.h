#pragma once

#include <QString>
#include <QStringView>

namespace kelvar {

/// A piece of a script.
struct Token {
  enum class Kind {
    /// White space or a comment.
    Blank,
    /// An identifier or a keyword.
    Word,
    Number,
    /// With its quotes, without an @ before them.
    String,
    /// Begins a template literal, whose parts `Lexer::takeTemplateText` reads.
    Backquote,
    RegularExpression,
    /// The word "@import" before a string.
    Import,
    /// `@selector(name:)`; the text is the name alone.
    Selector,
    Open,
    Close,
    Punctuator,
    /// An @ that begins neither an import nor a selector, although the word after it says so.
    Stray,
    End,
  };

  Kind kind;
  QStringView text;
  /// What it takes of the script, which may be more than the text.
  qsizetype length;
};

/// Splits a script into tokens. Never fails: what is malformed becomes some token, for the engine
/// to complain about. The script must outlive the lexer and its tokens.
class Lexer {
 public:
  explicit Lexer(QStringView script) : script_(script) {}

  /// The token here. After an operand, a slash is a division; otherwise it begins a regular
  /// expression.
  Token peek(bool afterOperand) const;
  void skip(const Token& token) { at_ += token.length; }

  QStringView takeBlanks();
  /// Appends the text of a template literal up to its next substitution, "${" included, or to its
  /// end, the backquote included. Returns whether a substitution follows.
  bool takeTemplateText(QString* text);

  QStringView rest() const { return script_.sliced(at_); }
  bool atEnd() const { return at_ >= script_.size(); }
  void skipToEnd() { at_ = script_.size(); }

 private:
  QChar at(qsizetype ahead) const;
  Token token(Token::Kind kind, qsizetype end) const;
  /// These return where what begins at `at_` or `from` ends.
  qsizetype blankEnd(qsizetype from) const;
  qsizetype blanksEnd(qsizetype from) const;
  qsizetype wordEnd(qsizetype from) const;
  qsizetype numberEnd() const;
  qsizetype stringEnd(qsizetype from) const;
  qsizetype regularExpressionEnd() const;
  qsizetype punctuatorEnd() const;
  Token atSign() const;

  const QStringView script_;
  qsizetype at_ = 0;
};

}  // namespace kelvar
