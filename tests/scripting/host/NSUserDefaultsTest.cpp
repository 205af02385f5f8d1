#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "platform/Browser.h"
#include "platform/Permissions.h"
#include "platform/store/UserDefaults.h"
#include "scripting/foundation/Results.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

class NSUserDefaultsTest : public testing::Test {
 protected:
  NSUserDefaultsTest() { qputenv("KELVAR_DEFAULTS", dir_.filePath(u"settings"_s).toUtf8()); }
  ~NSUserDefaultsTest() override {
    if (before_.isNull()) {
      qunsetenv("KELVAR_DEFAULTS");
    } else {
      qputenv("KELVAR_DEFAULTS", before_);
    }
  }

  const QByteArray before_ = qgetenv("KELVAR_DEFAULTS");
  QTemporaryDir dir_;
};

TEST_F(NSUserDefaultsTest, KeepsValues) {
  expectResults({
      {"var d = [NSUserDefaults standardUserDefaults]; [d setObject:{a: [1, 'x', true]} "
       "forKey:@\"map\"];\n"
       "[d setInteger:4.7 forKey:\"int\"]; d.setFloat_forKey_(1.5, 'real');\n"
       "d.setBool_forKey_(true, 'bool'); [d setObject:@\"12 px\" forKey:\"text\"];\n"
       "d.setObject_forKey_(['a'], 'list'); d.setValue_forKey_('YES', 'yes');\n"
       "d.setObject_forKey_(new Uint8Array([65]), 'data'); return [d synchronize]",
       "true"},
      // Another object reads what is stored.
      {"var d = NSUserDefaults.alloc().init();\n"
       "return [JSON.stringify(d.dictionaryForKey('map')), d.integerForKey('int'),\n"
       "  d.doubleForKey('real'), d.boolForKey('bool'), d.boolForKey('yes'),\n"
       "  d.boolForKey('text'), d.integerForKey('real'), d.stringForKey('int'),\n"
       "  d.stringForKey('bool'), d.stringArrayForKey('list'), d.dataForKey('data').length()].join("
       "' ')",
       "{\"a\":[1,\"x\",true]} 4 1.5 true true false 1 4 1 a 1"},
      {"var d = [NSUserDefaults standardUserDefaults];\n"
       "return [d.objectForKey('none'), d.integerForKey('none'), d.boolForKey('none'),\n"
       "  d.stringForKey('map'), d.arrayForKey('text'), d.dictionaryForKey('list'),\n"
       "  d.dataForKey('text')].join(',')",
       ",0,false,,,,"},
      {"var d = [NSUserDefaults standardUserDefaults]; d.setObject_forKey_(nil, 'int');\n"
       "[d removeObjectForKey:\"real\"];\n"
       "return [d.objectForKey('int'), d.valueForKey('real')].join(',')",
       ","},
      {"var d = [NSUserDefaults standardUserDefaults];\n"
       "[d registerDefaults:{int: 9, text: 'registered'}];\n"
       "return [d.integerForKey('int'), d.stringForKey('text'),\n"
       "  d.dictionaryRepresentation().int].join(' ')",
       "9 12 px 9"},
      {"var a = [[NSUserDefaults alloc] initWithSuiteName:@\"d\"]; a.setObject_forKey('v', 'k');\n"
       "a.setURL_forKey(NSURL.URLWithString('http://a.b/'), 'u');\n"
       "var d = [NSUserDefaults standardUserDefaults], all = a.dictionaryRepresentation();\n"
       "var domain = d.persistentDomainForName('d'), url = a.URLForKey('u').host();\n"
       "d.setPersistentDomain_forName({n: 1}, 'd');\n"
       "var after = JSON.stringify(a.dictionaryRepresentation());\n"
       "d.removePersistentDomainForName('d');\n"
       "return [all.k, domain.k, url, after, d.persistentDomainForName('d')].join(' ')",
       "v v a.b {\"n\":1} "},
      // What cannot be stored takes nothing away.
      {"var a = [[NSUserDefaults alloc] initWithSuiteName:@\"e\"]; a.setObject_forKey(1, 'k');\n"
       "try { a.setPersistentDomain_forName({b: 2, c: [KVRect new]}, 'e'); } catch (e) {}\n"
       "var kept = JSON.stringify(a.dictionaryRepresentation());\n"
       "a.setPersistentDomain_forName({k: 3, n: nil}, 'e');\n"
       "return kept + JSON.stringify(a.dictionaryRepresentation())",
       "{\"k\":1}{\"k\":3}"},
      // Suites have keys of their own, also by names with a slash.
      {"var a = [[NSUserDefaults alloc] initWithSuiteName:@\"a\"],\n"
       "  b = NSUserDefaults.alloc().initWithSuiteName('a/b');\n"
       "a.setObject_forKey_(1, 'b/k'); b.setObject_forKey_(2, 'k');\n"
       "return [a.objectForKey('b/k'), b.objectForKey('k'), b.objectForKey('int'),\n"
       "  Object.keys(a.dictionaryRepresentation()), Object.keys(b.dictionaryRepresentation()),\n"
       "  'k' in [NSUserDefaults standardUserDefaults].dictionaryRepresentation(),\n"
       "  NSUserDefaults.alloc().initWithSuiteName('')].join(' ')",
       "1 2  b/k k false "},
  });
  EXPECT_EQ(UserDefaults::standard().objectForKey(u"text"_s), u"12 px"_s);
}

TEST_F(NSUserDefaultsTest, ReportsMistakes) {
  const std::pair<const char*, const char*> calls[] = {
      {"d.setObject_forKey_(1, nil)", "a key of the user's defaults must be a string, not nil"},
      {"d.objectForKey(nil)", "a key of the user's defaults must be a string, not nil"},
      {"d.setObject_forKey_(() => 1, 'k')",
       "NSUserDefaults setObject:forKey: the value for k: a function cannot be passed to Kelvar"},
      {"d.setObject_forKey_([KVRect new], 'k')", "the value for \"k\" cannot be stored: "},
      {"var a = []; a.push(a); d.setObject_forKey_(a, 'k')",
       "NSUserDefaults setObject:forKey: the value for k: [0]: a list or dictionary cannot contain "
       "itself"},
      {"d.setInteger_forKey_('x', 'k')",
       "NSUserDefaults setInteger:forKey: takes number as argument 1, not string"},
      {"d.registerDefaults('x')",
       "NSUserDefaults registerDefaults: takes dictionary as argument 1, not string"},
  };
  for (const auto& [call, message] : calls) {
    const std::string script =
        std::string("var d = NSUserDefaults.standardUserDefaults(); try { ") + call +
        "; return 'no error' } catch (e) { return e.message.startsWith(" + "`" + message +
        "`) ? '' : e.message }";
    expectResults({{script.c_str(), ""}});
  }
}

TEST(NSWorkspaceTest, OpensWhatIsSafe) {
  const Browser browser({"http", "https", "mailto", "file"});
  const QTemporaryDir dir;
  const std::string path = dir.path().toStdString();
  const std::string show =
      "[[NSWorkspace sharedWorkspace] selectFile:'" + path + "' inFileViewerRootedAtPath:'']";
  expectResults({
      {"[[NSWorkspace sharedWorkspace] openURL:[NSURL URLWithString:@\"https://a.example/b?c\"]]",
       "true"},
      {"NSWorkspace.sharedWorkspace().openURL_(NSURL.URLWithString('mailto:a@b.example'))", "true"},
      {"[[NSWorkspace sharedWorkspace] openURL:[NSURL fileURLWithPath:@\"/etc/passwd\"]]", "false"},
      {"[[NSWorkspace sharedWorkspace] openURL:[NSURL URLWithString:@\"x-app://run\"]]", "false"},
      {show.c_str(), "true"},
      {"[[NSWorkspace sharedWorkspace] openFile:'/etc/passwd']", "false"},
      {"[[NSWorkspace sharedWorkspace] openFile:'/usr']", "true"},
      {"[[NSWorkspace sharedWorkspace] selectFile:'/no/such' inFileViewerRootedAtPath:'']",
       "false"},
      {"NSWorkspace.sharedWorkspace().openURL(nil)",
       "threw Error: openURL: takes an NSURL, not nil"},
      {"NSWorkspace.sharedWorkspace().openURL({})",
       "threw Error: NSWorkspace openURL: takes NSURL as argument 1, not dictionary"},
      {"NSWorkspace.sharedWorkspace().activateFileViewerSelectingURLs([NSURL.URLWithString("
       "'http://a.example')])",
       "threw Error: activateFileViewerSelectingURLs: takes files"},
  });
}

TEST(NSWorkspaceTest, AsksPermission) {
  const Browser browser({"http"});
  Permissions permissions;
  permissions.close(Permissions::Kind::Open);
  Permissions::install(permissions);
  expectResults({{"NSWorkspace.sharedWorkspace().openURL(NSURL.URLWithString('http://a.example'))",
                  "threw Error: opening http://a.example is not allowed; --allow open=a.example "
                  "allows it"}});
  Permissions::install({});
}

}  // namespace
}  // namespace kelvar
