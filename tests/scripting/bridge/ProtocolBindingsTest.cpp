#include <gtest/gtest.h>

#include <thread>

#include "platform/MainQueue.h"
#include "runtime/ClassInfo.h"
#include "scripting/ScriptOutput.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

class Switch : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }
  virtual bool flip(int times) = 0;
  virtual QString label(const ObjectRef& asker) = 0;
};
using SwitchRef = std::shared_ptr<Switch>;

class ScriptedSwitch : public Switch, public Implemented {
 public:
  static inline int alive = 0;
  explicit ScriptedSwitch(const ImplementationRef& made) : Implemented(made) { ++alive; }
  ~ScriptedSwitch() override { --alive; }
  bool flip(int times) override { return call<bool>("flip:", times); }
  QString label(const ObjectRef& asker) override {
    return respondsTo("label:") ? call<QString>("label:", asker) : u"none"_s;
  }
};

const ClassInfo& Switch::staticClassInfo() {
  static const ClassInfo kClass = ClassInfoBuilder<Switch>("Switch")
                                      .operation("flip:", &Switch::flip, "An operation.")
                                      .implementable<ScriptedSwitch>({u"flip:"_s});
  return kClass;
}

class Lamp : public Object {
 public:
  static const ClassInfo& staticClassInfo() {
    static const ClassInfo kClass =
        ClassInfoBuilder<Lamp>("Lamp")
            .property("knob", &Lamp::knob, &Lamp::setKnob, "A property.")
            .property("row", &Lamp::row, &Lamp::setRow, "A property.")
            .operation(
                "another", [](Lamp&) { return std::make_shared<Lamp>(); }, "An operation.")
            .operation(
                "press", [](Lamp& self) { return self.knob_ && self.knob_->flip(3); },
                "An operation.")
            .operation(
                "pressTwice",
                [](Lamp& self) {
                  return QVariantList{self.knob_->flip(1), self.knob_->flip(2)};
                },
                "An operation.")
            .operation(
                "label", [](Lamp& self) { return self.knob_->label(self.shared_from_this()); },
                "An operation.")
            .operation(
                "pressLater",
                [](Lamp& self) { MainQueue::async([knob = self.knob_] { knob->flip(9); }); },
                "An operation.");
    return kClass;
  }
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  SwitchRef knob() const { return knob_; }
  void setKnob(const SwitchRef& knob) { knob_ = knob; }
  QList<SwitchRef> row() const { return row_; }
  void setRow(const QList<SwitchRef>& row) { row_ = row; }

 private:
  SwitchRef knob_;
  QList<SwitchRef> row_;
};

class ProtocolBindingsTest : public testing::Test {
 protected:
  std::string run(const QString& script) {
    lamp_ = std::make_shared<Lamp>();
    return output_.of(script, {{u"lamp"_s, toVariant(lamp_)}});
  }

  ScriptOutput output_;
  std::shared_ptr<Lamp> lamp_;
};

TEST_F(ProtocolBindingsTest, CallsScriptObjects) {
  const std::pair<const char*, const char*> cases[] = {
      {"var k = {flip_(n) { print(n, this === k); return 'yes' }}; lamp.knob = k;\n"
       "print(lamp.press(), lamp.knob() === k, [[lamp knob] flip:1])",
       "3 true\n1 true\ntrue true yes\n"},
      {"class K { flip(n) { return n === 3 } } [lamp setKnob:new K()]; print([lamp press])",
       "true\n"},
      {"var f = () => 0; f.flip_ = () => {}; lamp.knob = f; print(lamp.press())", "false\n"},
      {"lamp.knob = {flip_() {}}; lamp.knob = nil; print(lamp.knob(), lamp.press())",
       "null false\n"},
      {"var k = {flip_() {}}; lamp.knob = k; print(lamp.label());\n"
       "k.label = asker => asker === lamp ? 'mine' : 'whose'; print(lamp.label());\n"
       "k.label = () => ({}); print(lamp.label()); delete k.label; print(lamp.label())",
       "none\nmine\nnull\nnone\n"},
      {"var k = {flip_() {}}; lamp.row = [k, k, {flip() {}}]; lamp.knob = lamp.row()[0];\n"
       "print(lamp.row().length, lamp.row()[1] === k, lamp.knob() === k); lamp.row = nil;\n"
       "print(lamp.row().length)",
       "3 true true\n0\n"},
      {"lamp.knob = {flip_(n) { return n > 1 ? lamp.pressTwice().length > 0 : n === 1 }};\n"
       "lamp.knob().flip_ = n => n === 2; print(lamp.pressTwice())",
       "false,true\n"},
  };
  for (const auto& [script, said] : cases) EXPECT_EQ(run(QString::fromUtf8(script)), said);
}

TEST_F(ProtocolBindingsTest, NamesWhatIsMissing) {
  const std::pair<const char*, const char*> cases[] = {
      {"lamp.knob = {label() {}}", "Lamp setKnob: the object lacks the function flip_ of a Switch"},
      {"lamp.knob = {flip_: true}",
       "Lamp setKnob: the object lacks the function flip_ of a Switch"},
      {"lamp.knob = []", "Lamp setKnob: the object lacks the function flip_ of a Switch"},
      {"lamp.knob = 'a'", "Lamp setKnob: takes Switch as argument 1, not string"},
      {"lamp.knob = lamp", "Lamp setKnob: takes Switch as argument 1, not Lamp"},
      {"lamp.knob = KVRect", "Lamp setKnob: a class cannot be passed to Kelvar"},
      {"lamp.knob = {get flip_() { throw 'up' }}", "up"},
      {"lamp.row = [{flip_() {}}, {}]",
       "Lamp setRow: [1]: the object lacks the function flip_ of a Switch"},
      {"lamp.row = [nil]", "Lamp setRow: [0] is nil, not Switch"},
      {"lamp.row = [lamp]", "Lamp setRow: [0] is Lamp, not Switch"},
      {"lamp.row = 5", "Lamp setRow: takes list of Switch as argument 1, not number"},
  };
  for (const auto& [script, message] : cases) {
    const std::string said = run(QString::fromUtf8(script));
    EXPECT_TRUE(said == message || said == std::string("Error: ") + message) << said;
  }
}

TEST_F(ProtocolBindingsTest, PassesExceptionsToTheScript) {
  const std::pair<const char*, const char*> cases[] = {
      {"lamp.knob = {flip_(n) { throw n }}; try { lamp.press() } catch (e) { print('got', e) }",
       "got 3\n"},
      {"let n = 0; lamp.knob = {flip_() { n++; throw 'once' }};\n"
       "try { lamp.pressTwice() } catch (e) { print(e, n) }",
       "once 1\n"},
      {"lamp.knob = {flip_() { throw new Error('late') }}; lamp.pressLater();\n"
       "setTimeout(() => print('not any more'), 100)",
       "Error: late"},
  };
  for (const auto& [script, said] : cases) EXPECT_EQ(run(QString::fromUtf8(script)), said);
}

TEST_F(ProtocolBindingsTest, KeepsObjectsWhileTheyAreHeld) {
  constexpr int kMany = 300;
  EXPECT_EQ(run(u"let left = 5;\n"
                "const hold = lamp => { lamp.knob = {flip_: () => print('held')} };\n"
                "hold(lamp);\n"
                "(function turn() {\n"
                "  for (let i = 0; i < %1; i++) {\n"
                "    const k = {flip_() {}, weight: new Array(5000).fill(1.5)};\n"
                "    const other = lamp.another(); other.knob = k; other.knob = nil;\n"
                "  }\n"
                "  if (--left > 0) setTimeout(turn, 0); else lamp.press();\n"
                "})()"_s.arg(kMany)),
            "held\n");
  EXPECT_EQ(ScriptedSwitch::alive, 1);
  const SwitchRef knob = lamp_->knob();
  std::thread([this] { lamp_.reset(); }).join();
  output_.end();
  EXPECT_FALSE(knob->flip(1)) << "the script has ended";
}

TEST_F(ProtocolBindingsTest, BelongsToOneScript) {
  run(u"lamp.knob = {flip_: () => true}"_s);
  ScriptOutput other;
  EXPECT_EQ(other.of(u"print(lamp.press(), lamp.knob().className(), lamp.knob().flip_(1))"_s,
                     {{u"lamp"_s, toVariant(lamp_)}}),
            "true Switch true\n");
}

}  // namespace
}  // namespace kelvar
