#pragma once

#include <QStringList>

#include "scripting/dialect/Lexer.h"

namespace kelvar {

/// Rewrites a script to plain JavaScript while it reads it, in one pass. See `preprocess` for what
/// it rewrites; everything else is copied. For one script; it must outlive the parser.
class Parser {
 public:
  explicit Parser(QStringView script) : script_(script), lexer_(script) {}

  /// The script, cut after each `@import` statement.
  QStringList chunks();

 private:
  /// Code up to a closing bracket, while it is read.
  struct Scope {
    /// Null outside all brackets.
    QChar closer;
    /// Within a message, where a part of the selector ends the code as well.
    bool isInMessage;
    QString& out;
    /// Whether it is an operand that needs no parentheses before a call.
    bool isPlain = true;
  };

  Token peek() const { return lexer_.peek(isOperand_); }
  void code(Scope& scope);
  void code(QChar closer, QString& out);
  bool endsBefore(const Token& token, const Scope& scope) const;
  void rewrite(const Token& token, Scope& scope);
  void word(QStringView word, Scope& scope);
  void recordThrown(QString& out) const;
  QString caughtVariable() const;
  void punctuator(QStringView mark, Scope& scope);
  void templateLiteral(QString& out);
  void importStatement(QString& out);
  bool beginsStatement(const QString& before) const;
  void boxedDictionary(QString& out);
  void open(QChar opener, Scope& scope);
  void close(QString& out);
  void bracket(QString& out);
  void messageSend(const QString& receiver, bool isPlainReceiver, QString& out);

  void setPrevious(bool isOperand, const QString& previous);

  const QStringView script_;
  Lexer lexer_;
  QStringList chunks_;
  int depth_ = 0;
  bool isTooDeep_ = false;
  /// Whether an operand ends here: only then is a slash a division, and a word within brackets a
  /// part of a selector.
  bool isOperand_ = false;
  /// The last token, blanks aside; any literal is "0".
  QString previous_;
  /// The variable of a catch clause, until its block begins.
  QString caught_;
};

}  // namespace kelvar
