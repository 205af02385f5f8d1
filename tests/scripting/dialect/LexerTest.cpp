#include "scripting/dialect/Lexer.h"

#include <gtest/gtest.h>

#include <QStringList>

namespace kelvar {
namespace {

using Kind = Token::Kind;

/// The tokens with their kinds' initials, as in "W:a P:+ N:1". Every token but an opening bracket
/// and a punctuator counts as an operand.
std::string tokensOf(const QString& script) {
  static const char kNames[] = "bWNSTRIsOCPx";
  Lexer lexer(script);
  QStringList found;
  for (Token token = lexer.peek(false); token.kind != Kind::End;) {
    lexer.skip(token);
    found += QLatin1Char(kNames[int(token.kind)]) + QStringLiteral(":") + token.text.toString();
    const bool isOperand = token.kind != Kind::Open && token.kind != Kind::Punctuator;
    token = lexer.peek(isOperand);
  }
  return found.join(u' ').toStdString();
}

TEST(LexerTest, SplitsScripts) {
  const std::pair<const char*, const char*> cases[] = {
      {"a/b", "W:a P:/ W:b"},
      {"(/[/]x/g)", "O:( R:/[/]x/g C:)"},
      {"1e+3-0x1e+2", "N:1e+3 P:- N:0x1e P:+ N:2"},
      {".5.x", "N:.5.x"},
      {"a?.b?.5:c", "W:a P:?. W:b P:? N:.5 P:: W:c"},
      {"...a++=>", "P:... W:a P:++ P:=>"},
      {"@\"a\"'b\\'c'", "S:\"a\" S:'b\\'c'"},
      {"'a\\\r\nb'", "S:'a\\\r\nb'"},
      {"'a\nb", "S:'a\n W:b"},
      {"//a\n/*b*/", "b://a b:\n b:/*b*/"},
      {"@import 'a'", "I:@import b:  S:'a'"},
      {"@import /* a */\n'b'", "I:@import b:  b:/* a */ b:\n S:'b'"},
      {"@import a", "x:@ W:import b:  W:a"},
      {"@selector( a:b: )", "s:a:b:"},
      {"@selector(", "x:@ W:selector O:("},
      {"@a", "P:@ W:a"},
      {"h\u00e9\u200dllo$_1", "W:h\u00e9\u200dllo$_1"},
      {"/*", "b:/*"},
      {"'\\", "S:'\\"},
  };
  for (const auto& [script, tokens] : cases) {
    EXPECT_EQ(tokensOf(QString::fromUtf8(script)), tokens) << script;
  }
}

TEST(LexerTest, StopsTemplateTextAtSubstitutions) {
  const QString script = QStringLiteral("a\\${$b${c}`");
  Lexer lexer(script);
  QString text;
  EXPECT_TRUE(lexer.takeTemplateText(&text));
  EXPECT_EQ(text, u"a\\${$b${");
  EXPECT_EQ(lexer.rest(), u"c}`");
  text.clear();
  EXPECT_FALSE(lexer.takeTemplateText(&text));
  EXPECT_EQ(text, u"c}`");
  EXPECT_TRUE(lexer.atEnd());
}

}  // namespace
}  // namespace kelvar
