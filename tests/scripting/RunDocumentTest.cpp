#include "scripting/RunTest.h"
#include "sketch/document/SketchDocument.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

/// Runs scripts on the example document, "a.sketch".
class RunDocumentTest : public RunTest {
 protected:
  RunDocumentTest() {
    QProcess example;
    example.start(QStringLiteral(KELVAR_EXAMPLE_DOCUMENT), {dir_.filePath(u"a.sketch"_s)});
    EXPECT_TRUE(example.waitForFinished(-1));
    original_ = bytes(u"a.sketch"_s);
    write(u"none.js"_s, "");
    write(u"change.js"_s,
          "function onRun(c) { setTimeout(() => c.document.pages()[0].setName('New'), 1) }");
    write(u"save.js"_s,
          "context.document.pages()[0].setName('New'); [context.document save]; log('saved')");
    write(u"open.js"_s,
          "const all = NSDocumentController.sharedDocumentController();\n"
          "log(all.currentDocument() === context.document, all.documents().length,\n"
          "    NSApp.orderedDocuments()[0].displayName(), context.document.zoomValue())");
    write(u"fail.js"_s, "context.document.pages()[0].setName('New'); throw new Error('no')");
  }

  QByteArray bytes(const QString& name) const {
    QFile file(dir_.filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  /// The name of the document's first page; empty without such a document.
  std::string pageOf(const QString& name) const {
    const auto document = SketchDocument::open(dir_.filePath(name));
    return document ? (*document)->pages().first()->name().toStdString() : std::string();
  }

  QByteArray original_;
};

TEST_F(RunDocumentTest, SavesOrSaysThatItDidNot) {
  struct Case {
    const char* line;
    const char* printed;
    const char* error;
    /// The page's name in the document and in "b.sketch"; empty for no such file.
    const char* inPlace;
    const char* elsewhere;
  };
  constexpr const char* kUnsaved =
      "kelvar: a.sketch was changed but not saved; use --save or -o OUT\n";
  const Case cases[] = {
      {"none.js", "", "", "Weather", ""},
      {"open.js", "true 1 a 1\n", "", "Weather", ""},
      {"change.js", "", kUnsaved, "Weather", ""},
      {"save.js", "saved\n", "", "New", ""},
      {"none.js --save", "", "", "Weather", ""},
      {"change.js --save", "", "", "New", ""},
      {"save.js --save", "saved\n", "", "New", ""},
      {"none.js -o b.sketch", "", "", "Weather", "Weather"},
      {"change.js -o b.sketch", "", "", "Weather", "New"},
      {"save.js -o b.sketch", "saved\n", "", "Weather", "New"},
      {"fail.js --save", "", "kelvar: a.sketch was changed but not saved: the script failed\n",
       "Weather", ""},
      {"change.js -o no/b.sketch", "", "kelvar: cannot write ", "Weather", ""},
      {"save.js --deny write", "", "kelvar: a.sketch was changed but not saved", "Weather", ""},
      {"save.js --deny write -o b.sketch", "saved\n", "", "Weather", "New"},
  };
  for (const Case& each : cases) {
    QFile file(dir_.filePath(u"a.sketch"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(original_);
    file.close();
    QFile::remove(dir_.filePath(u"b.sketch"_s));
    start(QString::fromLatin1(each.line) + u" --document a.sketch"_s);
    ASSERT_TRUE(program_.waitForFinished(-1));
    EXPECT_EQ(program_.readAllStandardOutput().toStdString(), each.printed) << each.line;
    const std::string error = program_.readAllStandardError().toStdString();
    EXPECT_EQ(error.find(each.error), 0u) << each.line << ": " << error;
    EXPECT_EQ(error.empty(), std::string_view(each.error).empty()) << each.line << ": " << error;
    EXPECT_EQ(pageOf(u"a.sketch"_s), each.inPlace) << each.line;
    EXPECT_EQ(bytes(u"a.sketch"_s) == original_, each.inPlace == std::string_view("Weather"));
    EXPECT_EQ(pageOf(u"b.sketch"_s), each.elsewhere) << each.line;
  }
}

TEST_F(RunDocumentTest, ReportsWrongOptions) {
  write(u"cmd.js"_s, "log([[CMD new] exec:\"echo hi\"])");
  write(u"p/Contents/Sketch/manifest.json"_s,
        "{\"commands\": [{\"script\": \"x.js\", \"handlers\": {\"actions\": {\"A\": \"a\"}}}]}");
  const std::pair<const char*, const char*> cases[] = {
      {"none.js --save", "2: kelvar: --save requires --document"},
      {"none.js -o b.sketch", "2: kelvar: --output requires --document"},
      {"none.js --document a.sketch -o b.png", "2: kelvar: -o takes a file that ends in sketch"},
      {"none.js --document a.sketch -o b.sketch --save", "2: kelvar: --save excludes --output"},
      {"none.js --action A", "2: kelvar: --action takes a plug-in"},
      {"p", "2: kelvar: the plug-in has no command, only handlers of actions (--action)"},
      {"p --action B", "2: kelvar: the plug-in handles no action B, only A"},
      {"cmd.js --allow fly", "2: kelvar: --allow takes read, write, run, open, network or all"},
      {"cmd.js --deny run,write=x", "2: kelvar: --deny takes one kind before \"=\""},
      {"cmd.js --allow run=no-such", "2: kelvar: there is no program \"no-such\" on the PATH"},
      {"cmd.js", "hi\n"},
      {"cmd.js --deny run --allow run=echo", "hi\n"},
      {"cmd.js --deny all --allow run", "hi\n"},
      {"cmd.js --deny run", "1: kelvar: Error: running /usr/bin/echo is not allowed; --allow run="},
      {"cmd.js --deny run=echo", "1: kelvar: Error: running /usr/bin/echo is not allowed because"},
  };
  for (const auto& [line, answer] : cases) {
    EXPECT_EQ(run(QString::fromUtf8(line)).find(answer), 0u) << line << ": " << answer;
  }
}

TEST_F(RunDocumentTest, RunsBundlesLikeHost) {
  write(u"p/Contents/Resources/a.txt"_s, "");
  write(u"p/Contents/Sketch/manifest.json"_s, R"({"identifier": "com.x.p", "commands": [
      {"identifier": "main", "script": "Main.js",
       "handlers": {"run": "go", "tearDown": "after",
                    "actions": {"Startup": "started", "Shutdown": "ended"}}},
      {"identifier": "run", "script": "main.js", "handler": "runs"},
      {"script": "listen.js", "handlers": {"actions": {"OpenDocument": "heard",
       "SelectionChanged": "heard"}}}]})");
  write(u"p/Contents/Sketch/main.js"_s, R"(@import "LIB/Util.js"
function started(c) { log("started", c.action); }
function onSetUp() { log("set up"); }
function go(c) {
  log(name(c.scriptPath), name(c.scriptURL.path()), name(c.plugin.url().path()),
      name([c.plugin urlForResourceNamed:"a.txt"].path()), Object.keys(c.plugin.commands()));
  setTimeout(() => log("later"), 1);
}
function runs() { [[CMD new] exec:"echo"]; }
function after() { log("after"); }
function ended() { log("ended"); })");
  write(u"p/Contents/Sketch/lib/util.js"_s,
        "function name(path) { return path[0] === '/' ? path.split('/').pop() : path }");
  write(u"p/Contents/Sketch/listen.js"_s,
        "function heard(c) { log(c.action, (c.actionContext.newSelection ?? []).length) }");
  EXPECT_EQ(run(u"p/ --command main --document a.sketch --select Glass"_s),
            "started Startup\nOpenDocument 0\nSelectionChanged.finish 1\nset up\n"
            "main.js main.js p a.txt main,run\nafter\nlater\nended\n");
  EXPECT_EQ(run(u"p --action SelectionChanged.begin"_s), "SelectionChanged.begin 0\n");
  const std::string refused = run(u"p --command run"_s);
  EXPECT_NE(refused.find("running /usr/bin/echo is not allowed"), std::string::npos) << refused;
}

TEST_F(RunDocumentTest, KeepsValuesOfCommandsInDocument) {
  write(u"p/Contents/Sketch/manifest.json"_s,
        R"({"identifier": "com.x.p", "commands": [{"identifier": "main", "script": "main.js"}]})");
  write(u"p/Contents/Sketch/main.js"_s, R"(function onRun(c) {
  const layer = c.selection[0], command = c.command;
  log([command valueForKey:"k" onLayer:layer], [command valueForKey:"k" onDocument:c.document.documentData()],
      [command valueForKey:"k" onLayer:layer forPluginIdentifier:"com.y"]);
  [command setValue:{list: [1, 2.5, "x", true]} forKey:"k" onLayer:layer];
  [command setValue:"text" forKey:"k" onDocument:c.document.documentData()];
  if (command.valueForKey_onDocument_("k", c.document) !== "text") log("not the same");
  [command setValue:7 forKey:"k" onLayer:layer forPluginIdentifier:"com.y"];
  [command setValue:1 forKey:"gone" onDocument:c.document];
  [command setValue:nil forKey:"gone" onDocument:c.document];
  for (const bad of [NaN, layer, new Date(), () => 1, {a: [layer]}, Symbol("s")]) {
    try { [command setValue:bad forKey:"bad" onLayer:layer]; log("kept"); } catch {}
  }
  try { [command setValue:1 forKey:"bad" onLayer:nil]; log("kept"); } catch {}
})");
  EXPECT_EQ(run(u"p --document a.sketch --select Glass --save"_s), "null null null\n");
  EXPECT_EQ(run(u"p --document a.sketch --select Glass"_s),
            "{\"list\":[1,2.5,\"x\",true]} text 7\n");
  const auto document = SketchDocument::open(dir_.filePath(u"a.sketch"_s));
  ASSERT_TRUE(document);
  EXPECT_EQ((*document)->userInfo(u"com.x.p"_s), (QVariantMap{{u"k"_s, u"text"_s}}));
}

TEST_F(RunDocumentTest, LocatesTimeoutsInMicrotasks) {
  const std::pair<const char*, const char*> cases[] = {
      {"Promise.resolve().then(function f() {\n  for (;;); })", "a.js:"},
      {"setTimeout(() => Promise.resolve().then(async () => { await null;\n  for (;;); }), 1)",
       "a.js:"},
      {"function f() {\n  try { f(); } catch { f(); } }\nf()", "a.js:"},
  };
  for (const auto& [script, place] : cases) {
    write(u"a.js"_s, script);
    const std::string failure = run(u"a.js --timeout 2"_s);
    EXPECT_EQ(failure.find("1: kelvar: the script did not end within 2 s\n"), 0u) << failure;
    EXPECT_NE(failure.find(place), std::string::npos) << failure;
  }
}

}  // namespace
}  // namespace kelvar
