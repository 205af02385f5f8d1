#include "scripting/runtime/ScriptRuntime.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <csignal>
#include <thread>

#include "platform/MainQueue.h"
#include "platform/image/Image.h"
#include "runtime/ClassInfo.h"
#include "runtime/Conversion.h"
#include "runtime/DelegateInfo.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

struct BellDelegate {
  static const DelegateInfo& staticDelegateInfo() {
    static const DelegateInfo kDelegate =
        DelegateInfoBuilder<BellDelegate>("BellDelegate")
            .operation("bell:shouldRing:", &BellDelegate::shouldRing,
                       "Called before the bell rings.", "False keeps it silent.")
            .operation("bellDidRing", &BellDelegate::didRing, "Called after the bell has rung.");
    return kDelegate;
  }
  DelegateFunction<bool(Object&, int)> shouldRing;
  DelegateFunction<void()> didRing;
};

/// Exercises what the real classes seldom do.
class Bell : public Object {
 public:
  static inline int alive = 0;
  static const ClassInfo& staticClassInfo() {
    static const ClassInfo kClass =
        ClassInfoBuilder<Bell>("Bell")
            .initializer(
                "init", [] { return std::make_shared<Bell>(); }, "Creates one.")
            .property("delegate", &Bell::delegate, &Bell::setDelegate, "A property.")
            .property("tone", &Bell::tone, &Bell::setTone, "A property.")
            .operation("ring", &Bell::ring, "An operation.")
            .operation(
                "ring:", [](Bell&, int times) { return times; }, "An operation.")
            .operation(
                "my_name:", [](Bell&, const QString& name) { return name; }, "An operation.")
            .operation(
                "echo:", [](Bell&, const QVariant& value) { return value; }, "An operation.")
            .operation(
                "typeOf:",
                [](Bell&, const QVariant& value) {
                  return QString::fromLatin1(value.metaType().name());
                },
                "An operation.")
            .operation(
                "another", [](Bell&) { return std::make_shared<Bell>(); }, "An operation.")
            .operation(
                "ringAndFail",
                [](Bell& self) {
                  self.ring();
                  self.ring();
                  throw std::runtime_error("it is cracked");
                },
                "An operation.")
            .operation(
                "fail", [](Bell&) { throw std::runtime_error("it is cracked"); }, "An operation.")
            .operation(
                "ringLater",
                [](Bell& self) {
                  const auto bell = std::static_pointer_cast<Bell>(self.shared_from_this());
                  MainQueue::async([bell] { bell->ring(); });
                },
                "An operation.")
            .classOperation(
                "bellOf:", [](const std::shared_ptr<Bell>& bell) { return bell; }, "An operation.");
    return kClass;
  }
  const ClassInfo& classInfo() const override { return staticClassInfo(); }
  Bell() { ++alive; }
  ~Bell() override { --alive; }

  std::weak_ptr<BellDelegate> delegate() const { return delegate_; }
  void setDelegate(const std::weak_ptr<BellDelegate>& delegate) { delegate_ = delegate; }
  QString tone() const { return tone_; }
  void setTone(const QString& tone) { tone_ = tone; }
  QString ring() {
    const auto delegate = delegate_.lock();
    if (!delegate) return u"nobody"_s;
    if (!delegate->shouldRing) return u"not asked"_s;
    if (!delegate->shouldRing(*this, 3)) return u"no"_s;
    if (delegate->didRing) delegate->didRing();
    return u"yes"_s;
  }

 private:
  std::weak_ptr<BellDelegate> delegate_;
  QString tone_;
};

class ScriptRuntimeTest : public testing::Test {
 protected:
  /// What the script prints, one line each, then the message of its failure.
  std::string run(const QString& script) {
    printed_.clear();
    runtime_ =
        std::make_unique<ScriptRuntime>([this](const QString& line) { printed_ += line + u'\n'; });
    runtime_->setGlobal(u"bell"_s, QVariant::fromValue<ObjectRef>(std::make_shared<Bell>()));
    runtime_->setTimeout(std::chrono::seconds(60));
    if (runtime_->evaluate(script, u"script.js"_s)) runtime_->run();
    if (const auto& failure = runtime_->failure()) printed_ += failure->message;
    return printed_.toStdString();
  }

  QString printed_;
  std::unique_ptr<ScriptRuntime> runtime_;
};

TEST_F(ScriptRuntimeTest, CallsBySelector) {
  const std::pair<const char*, const char*> cases[] = {
      {"print(bell.ring_(2), bell.ring(2), bell.ring())", "2 2 nobody\n"},
      {"print(bell.my__name_('a'), bell.my__name('b'))", "a b\n"},
      {"bell.tone = 'a'; print(bell.tone()); bell.setTone_('b'); print([bell tone])", "a\nb\n"},
      {"print(bell.valueForKey_('tone'), bell.tone() === nil)", "null true\n"},
      {"print(String(bell), bell.class() === bell.class(), bell.className())",
       "<Bell> true Bell\n"},
      {"print(bell.respondsToSelector_('ring:'), bell.respondsToSelector_('rang'))",
       "true false\n"},
      {"var r = [[KVRect alloc] init]; r.x = 5; print(r.x(), r instanceof KVRect, "
       "bell instanceof KVRect)",
       "5 true false\n"},
      {"print(KVRect.new().width(), KVRectMake(1.5, 2, 3, 4))", "0 {1.5, 2, 3, 4}\n"},
      {"print([KVShape sumPoints:[\"{0, 0}\", \"{1, 0}\", \"{1, 1}\"]])", "-1\n"},
      {"var s = [[KVShape alloc] initWithBounds:KVRectMake(1, 2, 3, 4) path:[]];\n"
       "print(s.bounds() === s.bounds(), s.bounds().height(), s.realSize().width)",
       "true 4 0\n"},
      {"print(TrackerManagerEventSessionEnded, KelvarVersionNumber > 0)", "Session Ended true\n"},
      {"var t = KVImageTransform.new(); t.tl = NSMakePoint(1, 2); t.tr = {x: 3, y: 4};\n"
       "print(t.tl(), t.tr().y, t.points()[0])",
       "{1, 2} 4 {1, 2}\n"},
      {"print(NSURL.URLWithString_('https://a.b/c').host(), NSURL.fileURLWithPath('/a').path())",
       "a.b /a\n"},
  };
  for (const auto& [script, result] : cases) {
    EXPECT_EQ(run(QString::fromUtf8(script)), result) << script;
  }
}

TEST_F(ScriptRuntimeTest, KeepsTypesOfValues) {
  const std::pair<const char*, const char*> cases[] = {
      {"1", "qlonglong 1"},
      {"1.5", "double 1.5"},
      {"-0", "double 0"},
      {"9007199254740993n", "qlonglong 9007199254740993"},
      {"18446744073709551615n", "qulonglong 18446744073709551615"},
      {"true", "bool true"},
      {"'a\\u0000ü'", "QString a\\u0000ü"},
      {"nil", "null null"},
      {"undefined", "null null"},
      {"new Date(86400000)", "QDateTime 1970-01-02T00:00:00.000Z"},
      {"new Uint8Array([1, 255])", "QByteArray {\"0\":1,\"1\":255}"},
      {"[1, [nil, 'b'], {c: 2.5}]", "QVariantList [1,[null,\"b\"],{\"c\":2.5}]"},
      {"({})", "QVariantMap {}"},
      {"NSMakeRect(1, 2, 3, 4)",
       "QRectF {\"origin\":{\"x\":1,\"y\":2},\"size\":{\"width\":3,\"height\":4}}"},
      {"NSMakeSize(1, 2)", "QSizeF {\"width\":1,\"height\":2}"},
      {"NSURL.URLWithString('http://a/')", "QUrl http://a/"},
  };
  for (const auto& [value, result] : cases) {
    const QString script =
        u"var v = %1, e = bell.echo(v); e = e instanceof Date ? e.toISOString() : "
        "e !== null && typeof e === 'object' && !(e instanceof NSURL) ? JSON.stringify(e) : "
        "String(e); print(bell.typeOf(v), e.replace('\\0', '\\\\u0000'))"_s.arg(
            QString::fromUtf8(value));
    EXPECT_EQ(run(script), std::string(result) + "\n") << value;
  }
  EXPECT_EQ(run(u"var l = bell.echo([4, 5]); print(l.count(), l.objectAtIndex_(1), "
                "l.firstObject(), [[] firstObject], Object.keys(l));\n"
                "var e = [l objectEnumerator], n; while (n = [e nextObject]) print(n);\n"
                "var d = bell.echo({a: {b: 1}, c: 2}); print([[d objectForKey:@\"a\"] "
                "valueForKey:@\"b\"], d.objectForKey('x'), d.allKeys(), Object.keys(d));\n"
                "l.objectAtIndex(2)"_s),
            "2 5 4 null 0,1\n4\n5\n1 null a,c a,c\n"
            "NSRangeException: the list has no object at 2, only 2 in all");
}

TEST_F(ScriptRuntimeTest, ReportsMistakes) {
  const std::pair<const char*, const char*> cases[] = {
      {"bell.rang()", "an object of class Bell has no selector rang; the nearest is ring"},
      {"bell.setTne_('a')",
       "an object of class Bell has no selector setTne_; the nearest is "
       "setTone_"},
      {"KVShape.sumPoint_([])",
       "the class KVShape has no selector sumPoint_; the nearest is "
       "sumPoints_"},
      {"KVShape.alloc().initWithBounds_()",
       "KVShape.alloc() has no selector initWithBounds_; the nearest is initWithBounds_path"},
      {"bell.tne = 1", "an object of class Bell has no selector tne; the nearest is tone"},
      {"bell.ring = 1", "Bell has no property ring that can be set"},
      {"bell.tone = []", "Bell setTone: takes string as argument 1, not list"},
      {"bell.ring_('a')", "Bell ring: takes number as argument 1, not string"},
      {"bell.my__name()", "Bell my_name: takes 1 argument, not 0"},
      {"KVRectMake(1, 2)", "Error: KVRectMake takes 4 arguments, not 2"},
      {"KVImage.new()", "the class KVImage has no selector new"},
      {"[bell].each().rang()", "no element of the list has a selector rang"},
      {"[].each().ring()", "no element of the list has a selector ring"},
      {"[bell].each().tone = 'a'", "Each has no property tone that can be set"},
      {"KVShape.alloc().initWithBounds_path_(bell, [])",
       "KVShape initWithBounds:path: takes KVRect as argument 1, not Bell"},
      {"bell.ring.call(KVRect.new())", "ring must be called on an object of class Bell"},
      {"bell.echo(() => 1)", "a function cannot be passed to Kelvar"},
      {"bell.echo([new Date('x')])", "an invalid date cannot be passed to Kelvar"},
      {"bell.echo(KVRect.alloc())", "the object is not initialized yet"},
      {"KVRect.alloc().init.call(KVShape.alloc())",
       "KVRect init must be called on the result of alloc()"},
      {"var a = []; a[0] = a; bell.echo(a)",
       "Bell echo: [0]: a list or dictionary cannot contain itself"},
      {"bell.fail()", "it is cracked"},
      {"setTimeout(5)", "a timer requires a function"},
      {"@import 'nowhere.js'", "nowhere.js"},
  };
  for (const auto& [script, message] : cases) {
    const std::string said = run(QString::fromUtf8(script));
    EXPECT_EQ(said.find("Error: "), 0u) << said;
    EXPECT_NE(said.find(message), std::string::npos) << script << ": " << said;
    EXPECT_EQ(runtime_->failure()->line, 1) << script;
    EXPECT_EQ(runtime_->failure()->text.toStdString(), script);
  }
  EXPECT_EQ(run(u"try { bell.rang() } catch (e) { print('caught', e instanceof Error) }"_s),
            "caught true\n");
}

TEST_F(ScriptRuntimeTest, ReportsWhereExceptionsWereThrown) {
  const std::tuple<const char*, const char*, int, const char*> cases[] = {
      {"\n\nfoo(", "SyntaxError: Unexpected end of script", 3, "foo("},
      {"\n[bell\n  echo:nil\n  ]; null.x\n", "TypeError: null is not an object", 4, "]; null.x"},
      {"function f() {\n  throw 'text' }\nf()", "text", 2, "throw 'text' }"},
      {"setTimeout(() => {\n throw new Error('late') }, 1)", "Error: late", 2,
       "throw new Error('late') }, 1)"},
      {"(async () => {\n await 1\n throw new Error('later') })()", "Error: later", 3,
       "throw new Error('later') })()"},
      {"\n[1].objectAtIndex(2)", "NSRangeException: the list has no object at 2", 2,
       "[1].objectAtIndex(2)"},
      {"throw {code: 5}", "{\"code\":5}", 1, "throw {code: 5}"},
      {"bell.delegate = {bellDidRing() {}, bell_shouldRing_() {\n bell.rang() }}\nbell.ring()",
       "Error: an object of class Bell has no selector rang", 2, "bell.rang() }}"},
  };
  for (const auto& [script, message, line, text] : cases) {
    const std::string said = run(QString::fromUtf8(script));
    EXPECT_EQ(said.find(message), 0u) << script << ": " << said;
    ASSERT_TRUE(runtime_->failure());
    EXPECT_EQ(runtime_->failure()->file, u"script.js"_s);
    EXPECT_EQ(runtime_->failure()->line, line) << script;
    EXPECT_EQ(runtime_->failure()->text.toStdString(), text);
  }
}

TEST_F(ScriptRuntimeTest, CallsScriptObjectsAsDelegates) {
  EXPECT_EQ(run(u"var d = {}; bell.delegate = d; print(bell.ring(), bell.delegate() === d);\n"
                "setTimeout(() => { d.bell_shouldRing = function (b, n) {\n"
                "  print(b === bell, n, this === d); return n > 2 };\n"
                "  setTimeout(() => {\n"
                "    print(bell.ring()); d.bellDidRing = () => print('rang');\n"
                "    setTimeout(() => { print(bell.ring()); bell.delegate = nil;\n"
                "      print(bell.ring(), bell.delegate()) }, 0) }, 0) }, 0)"_s),
            "not asked true\ntrue 3 true\nyes\ntrue 3 true\nrang\nyes\nnobody null\n");
}

TEST_F(ScriptRuntimeTest, SeesDelegateFunctionsOfSameTurn) {
  EXPECT_EQ(run(u"var d = {}; bell.delegate = d; print(bell.ring());\n"
                "d.bell_shouldRing = () => true; d.bellDidRing = () => delete d.bell_shouldRing;\n"
                "print(bell.ring(), bell.ring());\n"
                "Object.defineProperty(d, 'bell_shouldRing', {get() { throw 'up' }});\n"
                "try { bell.ring() } catch (e) { print(e) }"_s),
            "not asked\nyes not asked\nup\n");
}

TEST_F(ScriptRuntimeTest, PassesDelegateExceptionsToCallingScript) {
  const std::pair<const char*, const char*> cases[] = {
      {"bell.delegate = {bell_shouldRing: () => { throw new Error('no') }};\n"
       "try { bell.ring(); print('went on') } catch (e) { print('caught', e) }\n"
       "bell.delegate = {bell_shouldRing: () => true}; print(bell.ring())",
       "caught Error: no\nyes\n"},
      // Takes precedence over the failure of the operation, and ends its calls to the delegate.
      {"let asked = 0; bell.delegate = {bell_shouldRing() { asked++; throw 5 }};\n"
       "try { bell.ringAndFail() } catch (e) { print(e, asked) }",
       "5 1\n"},
      {"bell.delegate = {bell_shouldRing() { try { bell.rang() } catch { return true } }};\n"
       "print(bell.ring())",
       "yes\n"},
      {"bell.delegate = {bell_shouldRing() { throw new Error('late') }};\nbell.ringLater();\n"
       "setTimeout(() => print('not any more'), 100)",
       "Error: late"},
  };
  for (const auto& [script, said] : cases) EXPECT_EQ(run(QString::fromUtf8(script)), said);
}

TEST_F(ScriptRuntimeTest, PrintsContentsOfListsAndDictionaries) {
  EXPECT_EQ(run(u"var a = {b: bell, c: [1, NSMakePoint(1, 2)], d: 2n ** 60n}; print(a, [a]);\n"
                "print([1, 'b', bell], nil, undefined, {}, [], new Date(0).getTime());\n"
                "a.a = a; print(a); print({toString() { return 'own' }});\n"
                "try { print({toString() { throw 'up' }}) } catch (e) { print(e) }"_s),
            "{\"b\":\"<Bell>\",\"c\":[1,\"{1, 2}\"],\"d\":\"1152921504606846976\"} "
            "[{\"b\":\"<Bell>\",\"c\":[1,\"{1, 2}\"],\"d\":\"1152921504606846976\"}]\n"
            "1,b,<Bell> null undefined {} [] 0\n"
            "[object Object]\nown\nup\n");
}

TEST_F(ScriptRuntimeTest, PassesArgumentsToTimers) {
  EXPECT_EQ(run(u"setTimeout((...all) => print('a', ...all), undefined, 1, {b: 2});\n"
                "const id = setInterval(n => { print(n); clearInterval(id) }, NaN, 'n');\n"
                "clearTimeout(setTimeout(print, 0, 'never'))"_s),
            "a 1 {\"b\":2}\nn\n");
}

TEST_F(ScriptRuntimeTest, KeepsObjectsThatScriptReaches) {
  const int before = Bell::alive;
  constexpr int kMany = 200000;
  EXPECT_EQ(run(u"var kept = bell.another(); kept.tone = 'kept';\n"
                "kept.delegate = {bell_shouldRing: () => true};\n"
                "for (let i = 0; i < %1; i++) bell.another().tone = 'gone';\n"
                "print(kept.tone(), kept.ring())"_s.arg(kMany)),
            "kept yes\n");
  EXPECT_LT(Bell::alive, before + kMany * 3 / 4) << "garbage is collected while a script runs";
  EXPECT_GE(Bell::alive, before + 2);
  runtime_.reset();
  EXPECT_EQ(Bell::alive, before);
}

TEST_F(ScriptRuntimeTest, KeepsDelegatesOfActiveObjects) {
  const int before = Bell::alive;
  constexpr int kMany = 400;
  const QString script =
      uR"(
      function gone() {
        const b = bell.another();
        b.delegate = {bellDidRing() {}, weight: new Array(5000).fill(1.5)};
        b.ring();
      }
      function atWork() {
        const b = bell.another(), sound = 'rang';
        b.delegate = {bell_shouldRing: () => true, bellDidRing() { print(sound) }};
        b.ringLater();
      }
      let left = 5;
      function turn() {
        atWork();
        for (let i = 0; i < %1; i++) gone();
        if (--left > 0) setTimeout(turn, 0);
      }
      turn())"_s.arg(kMany);
  EXPECT_EQ(run(script), "rang\nrang\nrang\nrang\nrang\n");
  EXPECT_LT(Bell::alive, before + kMany * 4) << "delegates do not keep objects alive";
  runtime_.reset();
  EXPECT_EQ(Bell::alive, before);
}

/// The images take 6 GB in all.
TEST_F(ScriptRuntimeTest, ReleasesUnreachableImages) {
  run({});
  runtime_->setMemoryLimit(size_t{2} << 30);
  QImage pixels(2000, 1500, QImage::Format_ARGB32_Premultiplied);
  pixels.fill(Qt::red);
  runtime_->setGlobal(u"image"_s, QVariant::fromValue(std::make_shared<Image>(pixels)));
  EXPECT_TRUE(
      runtime_->evaluate(u"for (let i = 0; i < 500; i++) KVImage.cropImage_withBounds_(image, "
                         "KVRectMake(0, 0, 2000, 1500))"_s,
                         u"b"_s))
      << runtime_->failure()->message.toStdString();
}

TEST_F(ScriptRuntimeTest, StopsAtLimits) {
  runtime_ = std::make_unique<ScriptRuntime>([](const QString&) {});
  runtime_->setTimeout(std::chrono::milliseconds(200));
  EXPECT_FALSE(runtime_->evaluate(
      u"\n\nfunction f() {\n while (true) { try { for (;;); } catch (e) {} }\n}\nf()"_s, u"a"_s));
  EXPECT_EQ(runtime_->failure()->message, u"the script did not end within 0.2 s"_s);
  EXPECT_EQ(runtime_->failure()->file, u"a"_s);
  // For a loop that it has compiled, the engine reports the line of the function.
  EXPECT_TRUE(runtime_->failure()->line == 3 || runtime_->failure()->line == 4);

  // A delegate that is called from a loop does not escape the limit.
  runtime_ = std::make_unique<ScriptRuntime>([](const QString&) {});
  runtime_->setTimeout(std::chrono::milliseconds(200));
  runtime_->setGlobal(u"bell"_s, QVariant::fromValue<ObjectRef>(std::make_shared<Bell>()));
  EXPECT_FALSE(
      runtime_->evaluate(u"bell.delegate = {bell_shouldRing() {\n for (;;); }};\n"
                         "for (;;) { try { bell.ring() } catch {} }"_s,
                         u"a"_s));
  EXPECT_EQ(runtime_->failure()->file, u"a"_s);

  runtime_ = std::make_unique<ScriptRuntime>([](const QString&) {});
  runtime_->setTimeout(std::chrono::milliseconds(200));
  EXPECT_TRUE(runtime_->evaluate(u"setInterval(() => {}, 5)"_s, u"a"_s));
  EXPECT_FALSE(runtime_->run());
  EXPECT_EQ(runtime_->failure()->message,
            u"the script did not end within 0.2 s: a timer is still pending"_s);

  runtime_ = std::make_unique<ScriptRuntime>([](const QString&) {});
  std::thread other([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    runtime_->interrupt();
  });
  EXPECT_FALSE(runtime_->evaluate(u"for (;;);"_s, u"a"_s));
  other.join();
  EXPECT_EQ(runtime_->failure()->message, u"the script was interrupted"_s);

  runtime_ = std::make_unique<ScriptRuntime>([](const QString&) {});
  runtime_->setMemoryLimit(size_t{700} << 20);
  EXPECT_FALSE(
      runtime_->evaluate(u"let a = []; for (;;) a.push(new Array(1000).fill(1.5))"_s, u"a"_s));
  EXPECT_EQ(runtime_->failure()->message, u"the script uses more than 700 MB of memory"_s);
}

TEST_F(ScriptRuntimeTest, ImportsEachFileOnceRelativeToImporter) {
  const QTemporaryDir dir;
  const auto write = [&](const QString& name, const char* text) {
    QDir(dir.path()).mkpath(u"sub"_s);
    QFile file(dir.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
  };
  write(u"main.js"_s, "@import 'sub/a.js'\n@import \"sub/a.js\";\nprint(a, b);\nboom()");
  write(u"sub/a.js"_s, "@import 'b.js'\nvar a = 'a'; print('once');");
  write(u"sub/b.js"_s, "@import 'a.js'\nvar b = 'b';\nfunction boom() {\n  null.x }");
  run(u""_s);
  EXPECT_FALSE(runtime_->evaluateFile(dir.filePath(u"main.js"_s)));
  EXPECT_EQ(printed_, u"once\na b\n"_s);
  EXPECT_EQ(runtime_->failure()->file, dir.filePath(u"sub/b.js"_s));
  EXPECT_EQ(runtime_->failure()->line, 4);
  // A script's own functions replace imported ones, and nothing runs of one with a syntax error.
  write(u"own.js"_s,
        "// first\n@import 'sub/d.js';\n\nfunction f() { return 'own' }\nprint(f(), g());\nnull.x");
  write(u"sub/d.js"_s,
        "function f() { return 'imported' }\nfunction g() { return f() + d }\nvar d = 'd'");
  run(u""_s);
  EXPECT_FALSE(runtime_->evaluateFile(dir.filePath(u"own.js"_s)));
  EXPECT_EQ(printed_, u"own ownd\n"_s);
  EXPECT_EQ(runtime_->failure()->line, 6);
  write(u"broken.js"_s, "print('run');\n@import 'sub/d.js'\nfunction {");
  run(u""_s);
  EXPECT_FALSE(runtime_->evaluateFile(dir.filePath(u"broken.js"_s)));
  EXPECT_EQ(printed_, u""_s);
  EXPECT_EQ(runtime_->failure()->line, 3);
  write(u"strict.js"_s, "// Ours.\n'use strict';\n@import 'sub/d.js'\nvague = 1");
  run(u""_s);
  EXPECT_FALSE(runtime_->evaluateFile(dir.filePath(u"strict.js"_s)));
  EXPECT_EQ(runtime_->failure()->line, 4);
  write(u"late.js"_s, "function later() {\n @import 'sub/c.js'\n return c }");
  write(u"sub/c.js"_s, "var c = 'c'");
  run(u""_s);
  EXPECT_TRUE(runtime_->evaluateFile(dir.filePath(u"late.js"_s)));
  EXPECT_TRUE(runtime_->call(u"later"_s, {})) << "relative to the file, not to its caller";
}

}  // namespace
}  // namespace kelvar
