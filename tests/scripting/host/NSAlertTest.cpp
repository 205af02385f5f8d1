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
