#include <gtest/gtest.h>

#include "platform/LogCapture.h"
#include "scripting/ScriptOutput.h"

namespace kelvar {
namespace {

TEST(ConsoleTest, PrintsAndFormats) {
  const std::pair<const char*, const char*> cases[] = {
      {"console.log('a', 1, {b: 2}, nil)", "a 1 {\"b\":2} null\n"},
      {"console.info('%s is %d, %i and %f', 'x', '4.5', 4.5, '1.25', 'rest')",
       "x is 4.5, 4 and 1.25 rest\n"},
      {"console.debug('%o %O %j%c.', [1, 'a'], {k: [1]}, {}, 'color: red')",
       "[1,\"a\"] {\"k\":[1]} {}.\n"},
      {"console.log('100% of %d%% %s', 5)", "100% of 5% %s\n"},
      {"console.log('%s'); console.log()", "%s\n\n"},
      {"const a = []; a.push(a); console.log('%o %d', a, {}); console.dir({a: Symbol('s')});\n"
       "console.log(Symbol('t'))",
       " NaN\n{}\nSymbol(t)\n"},
      {"console.group('g'); console.log('in\\nside'); console.group(); console.log('deep');\n"
       "console.groupEnd(); console.groupEnd(); console.groupEnd(); console.log('out')",
       "g\n  in\n  side\n    deep\nout\n"},
      {"console.count(); console.count('x'); console.count(); console.countReset();\n"
       "console.count(); console.clear()",
       "default: 1\nx: 1\ndefault: 2\ndefault: 1\n"},
      {"console.table([{a: 1, b: 'x'}, {b: 'long'}]); console.table(['v']); console.table(5)",
       "(index)  a  b\n0        1  x\n1           long\n(index)  value\n0        v\n5\n"},
      {"console.assert(true, 'no'); log = console.log; log('still')", "still\n"},
  };
  ScriptOutput output;
  for (const auto& [script, printed] : cases) {
    EXPECT_EQ(output.of(QString::fromUtf8(script)), printed) << script;
  }
  const std::string timed = output.of(
      QStringLiteral("console.time('t'); console.timeLog('t', 'x'); console.timeEnd('t')"));
  EXPECT_EQ(timed.find("t: "), 0u) << timed;
  EXPECT_NE(timed.find(" ms x\nt: "), std::string::npos) << timed;
}

TEST(ConsoleTest, WarnsInOneLine) {
  const std::pair<const char*, const char*> cases[] = {
      {"console.warn('a %s', 'b')", "a b"},
      {"console.error(new Error('no'), 5)", "Error: no 5"},
      {"console.error('two\\n  lines')", "two lines"},
      {"console.assert(0, 'x %d', 3)", "Assertion failed: x 3"},
      {"console.assert(false)", "Assertion failed"},
      {"console.timeEnd('t')", "there is no timer \"t\""},
      {"function f() {\n  console.trace('here') }\nf()",
       "Trace: here at f (script.js:2) at global code (script.js:3)"},
  };
  ScriptOutput output;
  for (const auto& [script, warned] : cases) {
    LogCapture log;
    EXPECT_EQ(output.of(QString::fromUtf8(script)), "") << script;
    EXPECT_EQ(log.lines().join(QLatin1Char(0x0a)).toStdString(), warned) << script;
  }
}

}  // namespace
}  // namespace kelvar
