#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "platform/Permissions.h"
#include "scripting/runtime/ScriptRuntime.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

class RequireTest : public testing::Test {
 protected:
  void write(const QString& name, const char* text) const {
    const QString path = dir_.filePath(name);
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
  }

  /// What "main.js" prints, then the message and the place of its failure.
  std::string run(const char* script) {
    write(u"main.js"_s, script);
    QString printed;
    ScriptRuntime runtime([&](const QString& line) { printed += line + u'\n'; });
    runtime.evaluateFile(dir_.filePath(u"main.js"_s));
    if (const auto& failure = runtime.failure()) {
      printed += u"%1 (%2:%3)"_s.arg(failure->message, QFileInfo(failure->file).fileName())
                     .arg(failure->line);
    }
    return printed.replace(dir_.path(), u"DIR"_s).toStdString();
  }

  QTemporaryDir dir_;
};

TEST_F(RequireTest, EvaluatesModulesOnce) {
  write(u"lib/one.js"_s,
        "#!/usr/bin/env node\n'use strict';\nprint('once');\nexports.name = 'one';\n"
        "exports.deep = require('./deep/two');\nexports.strict = this === exports;");
  write(u"lib/deep/two.js"_s,
        "module.exports = function (r) { return [r x] + require('../data').list.length };");
  write(u"lib/data.json"_s, "{\"list\": [1, 2, 3]}");
  write(u"lib/folder/index.js"_s,
        "module.exports = [__dirname, __filename, module.id, module.loaded].join(' ')");
  write(u"lib/odd.json.js"_s, "module.exports = 'odd'");
  const std::pair<const char*, const char*> cases[] = {
      {"const one = require('./lib/one.js'); print(require('./lib/one') === one, one.name,\n"
       "  one.deep([KVRect new]), one.strict, typeof exports)",
       "once\ntrue one 3 true undefined\n"},
      {"print(require('./LIB/One').name)", "once\none\n"},
      {"print(require('./lib/folder')); print(require('./lib/folder/') === "
       "require('./lib/folder'))",
       "DIR/lib/folder DIR/lib/folder/index.js DIR/lib/folder/index.js false\ntrue\n"},
      {"print(require('./lib/odd.json'), require.resolve('./lib/data'))",
       "odd DIR/lib/data.json\n"},
      {"setTimeout(() => 1, 0); (function () { print(require('./lib/data').list) })()", "1,2,3\n"},
  };
  for (const auto& [script, printed] : cases) EXPECT_EQ(run(script), printed) << script;
}

TEST_F(RequireTest, GivesPartOfModulesThatNeedEachOther) {
  write(u"a.js"_s, "exports.early = 'a'; const b = require('./b'); exports.late = b.seen + b.late");
  write(u"b.js"_s,
        "const a = require('./a'); exports.seen = a.early + a.late; exports.late = 'b';\n"
        "exports.own = require('./b').seen");
  EXPECT_EQ(run("print(require('./a').late, require('./b').own)"), "aundefinedb aundefined\n");
}

TEST_F(RequireTest, ReportsWhatIsMissing) {
  write(u"broken.js"_s, "\nfunction {");
  write(u"throws.js"_s, "exports.a = 1;\nthrow new Error('no')");
  write(u"bad.json"_s, "{a}");
  write(u"secret/s.js"_s, "");
  Permissions permissions;
  ASSERT_TRUE(permissions.deny(Permissions::Kind::Read, dir_.filePath(u"secret"_s)));
  Permissions::install(permissions);
  const std::pair<const char*, const char*> cases[] = {
      {"\nrequire('sketch/dom')",
       "Error: there is no module \"sketch/dom\": the JavaScript API of newer versions of Sketch "
       "is not there, only its classes; see docs/scripting-host.md (main.js:2)"},
      {"try { require('sketch') } catch (e) { print(e.code) }", "MODULE_NOT_FOUND\n"},
      {"require('util')",
       "Error: there is no module \"util\": files are named by relative path, as in "
       "require(\"./util\") (main.js:1)"},
      {"require('./none')", "Error: there is no module \"./none\" in DIR (main.js:1)"},
      {"require('.')", "Error: there is no module \".\" in DIR (main.js:1)"},
      {"require()", "TypeError: require takes a path, not nil (main.js:1)"},
      {"require(Symbol('s'))", "TypeError: require takes a path, not a symbol (main.js:1)"},
      {"require('')", "TypeError: require takes a path, not an empty one (main.js:1)"},
      {"require('./broken')", "SyntaxError: Unexpected token '{' (broken.js:2)"},
      {"require('./bad')", "SyntaxError: DIR/bad.json is not valid JSON: JSON Parse error: "},
      // Tried again, as nothing is kept of it.
      {"for (const i of [1, 2]) try { require('./throws') } catch (e) { print(e) }\n"
       "require('./throws')",
       "Error: no\nError: no\nError: no (throws.js:2)"},
      {"require('./secret/s.js')", "Error: reading DIR/secret/s.js is not allowed"},
  };
  for (const auto& [script, printed] : cases) {
    const std::string said = run(script);
    EXPECT_EQ(said.find(printed), 0u) << script << ": " << said;
  }
  Permissions::install({});
}

}  // namespace
}  // namespace kelvar
