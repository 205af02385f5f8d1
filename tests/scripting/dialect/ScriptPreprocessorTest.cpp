#include "scripting/dialect/ScriptPreprocessor.h"

#include <gtest/gtest.h>

namespace kelvar {
namespace {

QString plain(const QString& script) { return preprocess(script).join(QString()); }

TEST(ScriptPreprocessorTest, TurnsMessagesIntoCalls) {
  const std::pair<const char*, const char*> cases[] = {
      {"[object name]", "__kelvarSend(object, \"name\")"},
      {"[object doThis:a with:b];", "__kelvarSend(object, \"doThis_with_\", a, b);"},
      {"[[KVRect alloc] init]", "__kelvarSend(__kelvarSend(KVRect, \"alloc\"), \"init\")"},
      {"x = [a.b(c)[0] set_it:@\"t\"]", "x = __kelvarSend(a.b(c)[0], \"set__it_\", \"t\")"},
      {"[o a:[p b:1] c:[q d]]",
       "__kelvarSend(o, \"a_c_\", __kelvarSend(p, \"b_\", 1), __kelvarSend(q, \"d\"))"},
      {"[o a:1\n   b:2]\nc", "__kelvarSend(o, \"a_b_\", 1\n   , 2)\nc"},
      {"[o\n  name]", "__kelvarSend(o\n  , \"name\")"},
      {"[o a:c ? x : y b:d]", "__kelvarSend(o, \"a_b_\", c ? x : y, d)"},
      {"[o a:function(x) { return [x y]; } b:{c: 1}]",
       "__kelvarSend(o, \"a_b_\", function(x) { return __kelvarSend(x, \"y\"); }, {c: 1})"},
      {"[o a:x => [x y] b:i++]", "__kelvarSend(o, \"a_b_\", x => __kelvarSend(x, \"y\"), i++)"},
      {"[new Date() time]", "__kelvarSend((new Date()), \"time\")"},
      {"[(a || b) c]", "__kelvarSend((a || b), \"c\")"},
      {"[...x y]; f(...[a b])", "__kelvarSend((...x), \"y\"); f(...__kelvarSend(a, \"b\"))"},
      {"[this c]; [5 d]", "__kelvarSend(this, \"c\"); __kelvarSend((5), \"d\")"},
      {"[@\"text\" length]", "__kelvarSend(\"text\", \"length\")"},
      {"f(`${[a b]} [a b]`)", "f(`${__kelvarSend(a, \"b\")} [a b]`)"},
      {"var a = b\n[c d]\n[e f]", "var a = b\n__kelvarSend(c, \"d\")\n__kelvarSend(e, \"f\")"},
      {"function f() {}\n[a b]", "function f() {}\n__kelvarSend(a, \"b\")"},
      {"if (x) [a b]; else [c d]", "if (x) __kelvarSend(a, \"b\"); else __kelvarSend(c, \"d\")"},
      {"[o a: /* b:1 */ 2 // c\n b:3]", "__kelvarSend(o, \"a_b_\",  /* b:1 */ 2 // c\n , 3)"},
      {"[NSArray arrayWithObjects:a, b, nil]",
       "__kelvarSend(NSArray, \"arrayWithObjects_\", a, b, nil)"},
      {"@import \"a.js\";\n@import 'b.js'", "__kelvarImport(\"a.js\");\n__kelvarImport('b.js');"},
      {"if (x) @import 'a.js'; else @import 'b.js';",
       "if (x) __kelvarImport('a.js'); else __kelvarImport('b.js');"},
      {"@import 'a.js'\n(function() {})()", "__kelvarImport('a.js');\n(function() {})()"},
      {"[o respondsTo:@selector( doThis:with: )]",
       "__kelvarSend(o, \"respondsTo_\", \"doThis:with:\")"},
      {"[o a:/x[/]y/gi b:1]", "__kelvarSend(o, \"a_b_\", /x[/]y/gi, 1)"},
      {"'a\\\r\n[b c]'; [d e]", "'a\\\r\n[b c]'; __kelvarSend(d, \"e\")"},
      {"for (const x of /[a]'/.exec([b c])) [x y]",
       "for (const x of /[a]'/.exec(__kelvarSend(b, \"c\"))) __kelvarSend(x, \"y\")"},
      {"a.length(); super.length(); a.length; b.length(1)",
       "a.__kelvarLength(); super.length(); a.length; b.length(1)"},
      {"[super a:1]", "super.a_(1)"},
      {"f(@[@1, @{a: @(2)}])", "f([1, NSDictionary.dictionaryWithDictionary_({a: (2)})])"},
      {"@YES ? @{} : @NO", "YES ? NSDictionary.dictionaryWithDictionary_({}) : NO"},
      {"[a b", "[__kelvarSend(a, \"b\")"},
      {"try {} catch (e) { f(e) } finally {}",
       "try {} catch (e) { e = __kelvarCaught(e); f(e) } finally {}"},
      {"a.catch(e => { f(e) }); try {} catch { f() }",
       "a.catch(e => { f(e) }); try {} catch { f() }"},
      {"try {} catch ({message}) {} try {} catch\n( $e )\n{}",
       "try {} catch ({message}) {} try {} catch\n( $e )\n{ $e = __kelvarCaught($e);}"},
      {"throw 'x'; a.throw(1)", "throw __kelvarThrown = 'x'; a.throw(1)"},
  };
  for (const auto& [script, translated] : cases) {
    EXPECT_EQ(plain(QString::fromUtf8(script)).toStdString(), translated) << script;
  }
}

TEST(ScriptPreprocessorTest, LeavesJavaScriptAlone) {
  const char* const cases[] = {
      "[1, 2, [3]]",
      "[]",
      "a[0][b.c]['d']",
      "[a, b].map(x => [x, x])",
      "[x in y, x instanceof Y, typeof x, new Foo, void 0, ...rest]",
      "[async x => 1, async function f() {}, function g() {}, class A extends B {}]",
      "[a ? b : c]",
      "[a\n, b]",
      "const [a, {b: [c]}] = d",
      "var r = /[a b]/g.exec(s) / 2 / [1][0]",
      "[...new Set(x), ...typeof y, a.new]",
      "[/a b/g, /c/]; of / 2 / [1]",
      "if (x) /[a b]'/.test(y)",
      "x = a / b; y = '/[c d]/'",
      "// [a b] @\"c\"\n/* [a b] */ '[a b]' \"[a \\\" b]\"",
      "({[k]: 1, get [a]() { return 1 }})",
      "a?.[0] ?? b?.c",
      "x = {}\n/re/.test(y)",
      "throw new Error('x'); o = {throw(e) {}, throw: 1}",
      "`[a b] \\` ${`${1}`}`",
      "0x1e+1; 1e+3; 1..toString(); .5",
      "return\n[1, 2]",
      "[",
      "']",
      "/* ",
      "`${",
      "@class",
      "@selector(",
      ")]}",
  };
  for (const char* const script : cases) {
    const QString text = QString::fromUtf8(script);
    EXPECT_EQ(plain(text).toStdString(), script);
  }
  const QString deep(1000000, u'[');
  EXPECT_TRUE(plain(deep) == deep);
}

}  // namespace
}  // namespace kelvar
