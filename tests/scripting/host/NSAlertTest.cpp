#include "scripting/foundation/Results.h"
#include "scripting/host/Asked.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

struct AlertCase {
  const char* script;
  QStringList answers;
  const char* asked;
  const char* result;
};

void expectAsked(const std::vector<AlertCase>& cases) {
  for (const AlertCase& each : cases) {
    Asked user(each.answers);
    expectResults({{each.script, each.result}});
    EXPECT_EQ(user.take(), each.asked) << each.script;
  }
}

TEST(NSAlertTest, AsksForButtons) {
  expectAsked({
      {"var a = [[NSAlert alloc] init]; [a setMessageText:@\"Hello\"];\n"
       "a.informativeText = 'there'; return [a runModal] == NSAlertFirstButtonReturn",
       {},
       "! Hello|there\n",
       "true"},
      {"var a = NSAlert.new(); a.messageText = 'Sure?'; [a addButtonWithTitle:\"Do\"];\n"
       "a.addButtonWithTitle_('Other'); a.addButtonWithTitle('Cancel');\n"
       "return [a runModal] + ' ' + a.runModal() + a.buttons().map(b => b.title())",
       {u"Other"_s},
       "? Sure? (Do,Other,Cancel) [Do] {Cancel}\n? Sure? (Do,Other,Cancel) [Do] {Cancel}\n",
       "1001 1002Do,Other,Cancel"},
      {"var a = NSAlert.new(); a.addButtonWithTitle('A').setTag(7);\n"
       "a.addButtonWithTitle('B').setKeyEquivalent('\\x1b'); return a.runModal()",
       {u"A"_s},
       "?  (A,B) [A] {B}\n",
       "7"},
      {"var a = NSAlert.new(); a.addButtonWithTitle('A'); a.addButtonWithTitle('B');\n"
       "return a.runModal()",
       {},
       "?  (A,B) [A]\n",
       "threw Error: nobody answers"},
      {"var a = [NSAlert alertWithMessageText:@\"M\" defaultButton:nil alternateButton:@\"No\"\n"
       " otherButton:nil informativeTextWithFormat:@\"%d of %@\", 3, \"x\"];\n"
       "return a.runModal() + ' ' + NSRunAlertPanel('T', '%@!', 'Yes', 'No', 'Maybe', 'f')",
       {u"OK"_s, u"Maybe"_s},
       "? M|3 of x (OK,No) [OK] {No}\n? T|f! (Yes,No,Maybe) [Yes] {No}\n",
       "1 -1"},
      {"var got; var a = NSAlert.new(); a.showsSuppressionButton = true;\n"
       "a.suppressionButton().setTitle('Never'); a.beginSheetModalForWindow_completionHandler_(\n"
       "  nil, r => got = r); return got + ' ' + a.suppressionButton().state()",
       {u"Yes"_s},
       "? Never (Yes,No) [No] {No}\n",
       "1000 1"},
      {"var a = NSAlert.new(), f = NSTextField.new(); f.setDrawsBackground(false);\n"
       "f.setSelectable(true); f.setNextKeyView(f); a.setAccessoryView(f); a.layout();\n"
       "a.window().setInitialFirstResponder(f); [[a window] makeFirstResponder:f];\n"
       "return [a.window() === a.window(), a.window().isVisible(), f.drawsBackground(),\n"
       "  a.window().initialFirstResponder() === f].join(' ')",
       {},
       "",
       "true false false true"},
      {"NSApp.displayDialog_withTitle_('text', 'title');\n"
       "[[NSApplication sharedApplication] displayDialog:@\"more\"];\n"
       "return NSApp === NSApplication.sharedApplication()",
       {},
       "! title|text\n! more\n",
       "true"},
  });
}

/// Defines `view` with a field, a menu, two check boxes, radio buttons and a secret.
constexpr const char* kForm = R"js(
var view = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 300, 200)];
var add = v => { view.addSubview(v); return v };
var acted = [];
add(NSTextField.labelWithString("Name:"));
var name = add([[NSTextField alloc] initWithFrame:NSMakeRect(0, 0, 100, 24)]);
name.setStringValue("Layer"); name.setCOSJSTargetFunction(f => acted.push(f.stringValue()));
var next = add(NSTextField.new()); next.placeholderString = "Next";
var menu = add([[NSPopUpButton alloc] initWithFrame:NSMakeRect(0, 0, 100, 24) pullsDown:false]);
[menu addItemsWithTitles:["One", "Two", "Two"]];
menu.setCOSJSTargetFunction(m => acted.push(m.indexOfSelectedItem()));
var box = add(NSButton.new()); box.setButtonType(NSSwitchButton); box.title = "On";
var off = add(NSButton.new()); off.setButtonType(NSSwitchButton); off.enabled = false;
var hidden = add(NSTextField.new()); hidden.hidden = true;
var push = add(NSButton.new()); push.title = "Push";
var radios = ["Left", "Right"].map(t => { var r = add(NSButton.new()); r.setButtonType(NSRadioButton);
  r.title = t; return r });
radios[0].state = 1;
var secret = add(NSSecureTextField.new());
var read = () => [name.stringValue(), next.stringValue(), menu.titleOfSelectedItem(), box.state(),
                  radios[1].state(), secret.stringValue(), acted].join(" ");
)js";

TEST(NSAlertTest, AsksForFields) {
  const std::string form = kForm;
  const std::string cancelled =
      form +
      "var a = NSAlert.new(); a.setAccessoryView(view); a.addButtonWithTitle('OK');\n"
      "a.addButtonWithTitle('Cancel'); return a.runModal() + read()";
  const std::string plain =
      form + "var a = NSAlert.new(); a.accessoryView = view; return a.runModal() + ' ' + read()";
  const char* const asked =
      "? Name [Layer] {Layer}\n? Next [] {}\n? Name (One,Two) [One] {One}\n"
      "? On (Yes,No) [No] {No}\n? Name (Left,Right) [Left] {Left}\n? Name [] {} secret\n";
  expectAsked({
      {cancelled.c_str(), {}, "?  (OK,Cancel) [OK] {Cancel}\n", "1001Layer  One 0 0  "},
      {plain.c_str(), {}, asked, "1000 Layer  One 0 0  "},
      {plain.c_str(),
       {u"New"_s, u"n"_s, u"Two"_s, u"Yes"_s, u"Right"_s, u"pw"_s},
       asked,
       "1000 New n Two 1 1 pw New,1"},
  });
}

TEST(NSAlertTest, AsksForNumbersAndCells) {
  const std::string range =
      "var v = NSView.new(), acted = []; v.addSubview(NSTextField.labelWithString('Size:'));\n"
      "var add = (type, max) => { var c = type.alloc().initWithFrame(NSMakeRect(0, 0, 90, 20));\n"
      "  c.setMinValue(-2); c.setMaxValue(max); c.setFloatValue(4.5); v.addSubview(c);\n"
      "  c.setCOSJSTargetFunction(each => acted.push(each.doubleValue())); return c };\n";
  const std::string ranges =
      range +
      "var s = add(NSSlider, 10), t = add(NSStepper, 20), a = NSAlert.new();\n"
      "a.setAccessoryView(v); a.runModal(); return [s.floatValue(), t.intValue(), acted]";
  const std::string limits =
      range +
      "var read = c => { c.setDoubleValue(99); const high = c.doubleValue(); "
      "c.setStringValue('-9');"
      "\n return [high, c.stringValue(), (c.setMinValue(1), c.intValue())] };\n"
      "return [read(add(NSSlider, 10)), read(add(NSStepper, 20)), acted.length]";
  const std::string matrix =
      "var cell = NSButtonCell.new(); cell.setButtonType(NSRadioButton); cell.setTitle('x');\n"
      "var m = [[NSMatrix alloc] initWithFrame:NSMakeRect(0, 0, 90, 60) mode:NSRadioModeMatrix\n"
      "  prototype:cell numberOfRows:2 numberOfColumns:2], hits = 0;\n"
      "m.cells().forEach((c, i) => { c.setTitle('ABCD'[i]); c.setTag(i + 5) });\n"
      "var on = () => m.cells().map(c => c.state()).join('');\n"
      "m.setCOSJSTargetFunction(x => hits += x.selectedTag());\n";
  const std::string asked =
      matrix +
      "var a = NSAlert.new(); a.setAccessoryView(m); a.runModal();\n"
      "return [on(), m.selectedCell().title(), m.selectedRow(), m.selectedColumn(), hits]";
  const std::string chosen =
      matrix +
      "var first = on(); m.selectCellAtRow_column(0, 1); var second = on();\n"
      "m.selectCellWithTag(8); m.setCellSize(CGSizeMake(40, 20));\n"
      "return [first, second, on(), m.selectCellWithTag(1), m.cellAtRow_column(2, 0), hits,\n"
      "  m.cellAtRow_column(1, 1).frame(), m.numberOfRows()]";
  expectAsked({
      {ranges.c_str(),
       {u"7.25"_s, u"40"_s},
       "? Size (-2 to 10) [4.5] {4.5}\n? Size (-2 to 20) [4.5] {4.5}\n",
       "7.25,20,7.25,20"},
      {limits.c_str(), {}, "", "10,-2,1,20,-2,1,0"},
      {asked.c_str(), {u"C"_s}, "? Value (A,B,C,D) [A] {A}\n", "0010,C,1,0,7"},
      {chosen.c_str(), {}, "", "1000,0100,0001,false,,0,{{44, 18}, {40, 20}},2"},
      {(matrix + "return m.selectCellAtRow_column(2, 0)").c_str(),
       {},
       "",
       "threw Error: the matrix has no such cell"},
  });
}

TEST(NSAlertTest, SendsActionsToTargets) {
  const std::string target =
      "var said = [], type = MOClassDescription\n"
      "  .allocateDescriptionForClassWithName_superclass('T' + NSUUID.UUID().UUIDString(), "
      "NSObject);\n"
      "type.addInstanceMethodWithSelector_function('act:', s => said.push(s.title()));\n"
      "var t = type.registerClass().new(), b = NSButton.alloc().initWithFrame(CGRectZero);\n"
      "b.title = 'B';\n";
  for (const auto& [script, result] : std::initializer_list<std::pair<const char*, const char*>>{
           {"b.setTarget(t); b.setAction('act:'); b.performClick(nil);\n"
            "return [said, b.target() === t, b.action()]",
            "B,true,act:"},
           {"b.setCOSJSTargetFunction(s => said.push('f')); b.setAction('callAction:');\n"
            "b.setTarget(t); b.performClick(nil); b.setAction(@selector(act:)); "
            "b.performClick(nil);\n"
            "return said",
            "f,B"},
           {"b.setAction('act:'); b.performClick(nil); return [b.sendAction_to('act:', t),\n"
            "  b.sendAction_to('act:', nil), said]",
            "true,false,B"},
           {"type.addInstanceMethodWithSelector_function('later:', s => said.push(s)); "
            "t.later(4);\n"
            "var sub = MOClassDescription.allocateDescriptionForClassWithName_superclass(\n"
            "  type.name() + 'Sub', t.class()).registerClass(), o = sub.new(); o.later(5);\n"
            "return [said, o.isKindOfClass(t.class()), t.isKindOfClass(sub), o.superclass() ===\n"
            "  NSClassFromString(type.name()), [o respondsToSelector:'later:']]",
            "4,5,true,false,true,true"},
           {"return MOClassDescription.allocateDescriptionForClassWithName_superclass(type.name(), "
            "NSObject)",
            "null"},
           {"return MOClassDescription.allocateDescriptionForClassWithName_superclass('X', NSView)",
            "threw NSInvalidArgumentException: the superclass of X is NSObject or a class that a "
            "script made, not a class NSView"}}) {
    expectResults({{(target + script).c_str(), result}});
  }
}

TEST(NSAlertTest, StacksFieldsOfAlertWindows) {
  expectAsked({
      {"var w = COSAlertWindow.new(), b = [[NSComboBox alloc] initWithFrame:CGRectZero], n = 0;\n"
       "[b addItemsWithObjectValues:[\"px\", \"pt\"]]; b.selectItemAtIndex(0);\n"
       "b.setCOSJSTargetFunction(x => n++); w.addTextLabelWithValue('Unit:');\n"
       "w.addAccessoryView(b); w.runModal();\n"
       "return [b.stringValue(), b.indexOfSelectedItem(), b.objectValueOfSelectedItem(), n]",
       {u"em"_s},
       "? Unit (px, pt) [px] {px}\n",
       "em,-1,,1"},
      {"var b = NSComboBox.new(); b.addItemWithObjectValue(5); var none = b.stringValue();\n"
       "b.selectItemWithObjectValue('5'); return [none, b.stringValue(), b.numberOfItems(),\n"
       "  b.indexOfItemWithObjectValue('6'), b.indexOfSelectedItem()]",
       {},
       "",
       ",5,1,-1,0"},
      {"NSComboBox.new().itemObjectValueAtIndex(0)",
       {},
       "",
       "threw Error: the combo box has no item 0"},
      {"var w = COSAlertWindow.new(); w.setMessageText('Rename'); [w "
       "setInformativeText:@\"now\"];\n"
       "w.addButtonWithTitle('OK'); w.addButtonWithTitle('Cancel');\n"
       "w.addTextLabelWithValue('Prefix'); [w addTextFieldWithValue:@\"a\"];\n"
       "w.addAccessoryView(NSButton.new()); w.setIcon(nil);\n"
       "return [w runModal] + ' ' + w.viewAtIndex(1).stringValue() + ' ' +\n"
       "  [[w viewAtIndex:0] stringValue] + w.alert().buttons().count()",
       {u"OK"_s, u"b"_s},
       "? Rename|now (OK,Cancel) [OK] {Cancel}\n? Prefix [a] {a}\n",
       "1000 b Prefix2"},
  });
}

TEST(NSAlertTest, ReportsMistakes) {
  Asked user;
  expectResults({
      {"NSAlert.new().setAccessoryView({})",
       "threw NSInvalidArgumentException: setAccessoryView: takes an NSView, not a dictionary"},
      {"NSAlert.new().addButtonWithTitle(nil)",
       "threw NSInvalidArgumentException: addButtonWithTitle: takes a string, not nil"},
      {"COSAlertWindow.new().viewAtIndex(0)",
       "threw NSRangeException: viewAtIndex: takes an index below 0, not 0"},
      {"COSAlertWindow.new().addAccessoryView(Symbol('s'))",
       "threw NSInvalidArgumentException: addAccessoryView: takes an NSView, not a symbol"},
      {"NSAlert.new().mesageText()",
       "threw NSInvalidArgumentException: an object of class NSAlert has no selector mesageText; "
       "the nearest is messageText"},
  });
}

}  // namespace
}  // namespace kelvar
