#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QTemporaryDir>
#include <algorithm>

#include "platform/PendingTasks.h"
#include "scripting/runtime/ScriptRuntime.h"
#include "ui/PopUpButton.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

/// Views, controls and windows as scripts use them.
class ViewScriptTest : public testing::Test {
 protected:
  ViewScriptTest() {
    qputenv("KELVAR_DEFAULTS", dir_.filePath(u"settings"_s).toLocal8Bit());
    qputenv("DO_NOT_TRACK", "1");
  }
  void TearDown() override {
    QApplication::closeAllWindows();
    QCoreApplication::processEvents();
  }

  /// What the script prints, in one line; the message of an exception.
  std::string run(const char* script) {
    printed_.clear();
    runtime_.evaluate(u"try { %1 } catch (e) { log(e.message) }"_s.arg(QString::fromUtf8(script)),
                      u"script"_s);
    do {
      QCoreApplication::processEvents();
    } while (PendingTasks::count() > 0);
    if (runtime_.failure()) printed_.append(u"failed: "_s + runtime_.failure()->message);
    return printed_.join(u'|').toStdString();
  }

  struct Case {
    const char* script;
    const char* printed;
  };
  template <size_t count>
  void expect(const Case (&cases)[count]) {
    for (const auto& [script, printed] : cases) EXPECT_EQ(run(script), printed) << script;
  }

  QTemporaryDir dir_;
  QStringList printed_;
  ScriptRuntime runtime_{[this](const QString& line) { printed_.append(line); }};
};

TEST_F(ViewScriptTest, BuildsTreesOfViews) {
  expect({
      {"var v = [[NSView alloc] initWithFrame:NSMakeRect(1, 2, 30, 40)]; log([v frame])",
       "{{1, 2}, {30, 40}}"},
      {"var v = NSView.alloc().initWithFrame(NSMakeRect(0, 0, 3, 4));"
       "v.frame = NSMakeRect(5, 6, 7, 8); log(v.frame().origin.x, v.bounds())",
       "5 {{0, 0}, {7, 8}}"},
      {"var v = NSView.new(); [v setFrame:NSMakeRect(5, 6, 7, 8)]; [v setFrameSize:NSMakeSize(1, "
       "2)];"
       "v.setFrameOrigin(NSMakePoint(3, 4)); log([v frame], [v isFlipped])",
       "{{3, 4}, {1, 2}} false"},
      {"var v = NSView.new(), w = NSView.new(); [v addSubview:w]; log([[v subviews] count], "
       "v.subviews()[0] === w, w.superview() === v, v.superview())",
       "1 true true null"},
      {"var v = NSView.new(), w = NSView.new(); v.addSubview_(w); w.removeFromSuperview();"
       "log(v.subviews().length, w.superview())",
       "0 null"},
      {"var v = NSView.new(); log(v.isHidden(), v.hidden()); v.setHidden(true); log([v isHidden]);"
       "v.hidden = false; log(v.hidden(), v.window().isVisible()); v.window().close()",
       "false false|true|false true"},
      {"var v = NSView.new(); log(v.window()); [v addSubview:nil]",
       "null|addSubview: takes a view, not nil"},
      {"var v = NSView.new(); [v addSubview:v]", "a view cannot be inside itself"},
      {"NSView.new().frame = NSMakeRect(0, 0, NaN, 1)", "a frame needs finite numbers"},
      {"NSView.new().addSubview('view')",
       "NSView addSubview: takes NSView as argument 1, not string"},
      {"NSView.new().frame = 'wide'", "NSView setFrame: takes rectangle as argument 1, not string"},
      {"log([[KVView alloc] initWithFrame:NSMakeRect(0, 0, 9, 8)].frame().size, "
       "KVView.new().isKindOfClass(NSView), KVButton.new().isKindOfClass_(NSButton))",
       "{9, 8} true true"},
      {"var v = NSView.new(), b = NSButton.new(); b.tag = 4; v.addSubview(b);"
       "log(v.viewWithTag(4) === b, v.viewWithTag(5), b.isDescendantOf(v))",
       "true null true"},
  });
}

TEST_F(ViewScriptTest, OutletsAnswerWhatTheyAre) {
  expect({
      {"var c = KVViewController.new(), v = c.view(); log(v.frame().size, v.subviews().length > 0,"
       "c.imageQualityPopupButton().itemTitles(), "
       "c.imageQualityPopupButton().indexOfSelectedItem())",
       "{320, 80} true 1x,2x,3x,4x 0"},
      {"var c = KVViewController.new(); c.view(); c.imageQuality = 2; c.includeInArtboards = -1;"
       "[c reloadData]; log([[c imageQualityPopupButton] titleOfSelectedItem], "
       "c.includeInArtboardButton().state(), [[c includeInArtboardButton] title])",
       "3x -1 Include in artboards"},
      {"var c = KVViewController.new(); c.view(); c.imageQuality = -1; c.reloadData(); "
       "var p = c.imageQualityPopupButton(); log(p.title(), p.indexOfSelectedItem(), "
       "p.selectedItem(), p.numberOfItems(), p.title())",
       "Multiple -1 null 4 Multiple"},
      {"var c = KVViewController.new(); c.view(); log(c.layerFlipButton().isEnabled());"
       "c.disableLayerButton(); setTimeout(() => log(c.layerFlipButton().enabled()), 0)",
       "true|false"},
      {"var c = [[KVViewController alloc] initWithNibName:'KVMessageLine' bundle:nil]; c.view();"
       "c.message = 'Hello'; c.actionTitle = 'Go'; c.reloadData();"
       "log(c.messageLabel().stringValue(), c.actionButton().title()); "
       "c.messageLabel().stringValue = 'Other'; log([[c messageLabel] stringValue])",
       "Hello Go|Other"},
      {"var c = KVPopupCell.new(); c.view(); c.name = 'Glass'; c.popupMenu = [KVMenu menuWithItems:"
       "[{title: 'A', identifier: 'a'}, {type: 'separator'}, {title: 'B', identifier: 'b'}]];"
       "c.selectedIdentifier = 'b'; c.reloadData(); var p = c.popupButton();"
       "log(c.titleField().stringValue(), p.title(), p.indexOfSelectedItem(), p.itemTitles(), "
       "p.selectedItem().representedObject().identifier, p.itemAtIndex(2).state())",
       "Glass B 2 A,,B b 1"},
      {"var c = KVViewController.new(); c.view(); log(c.imageView().image())", "null"},
      {"var c = KVViewController.new(); c.view(); c.includeInArtboardButton().setButtonType(3)",
       "the kind of this button cannot be changed"},
  });
}

TEST_F(ViewScriptTest, PressesReachDelegates) {
  expect({
      {"var c = KVViewController.new(); c.view(); c.delegate = {"
       "controllerDidPressFlipLayer(x) { log('flip', x === c) },"
       "controller_didToggleIncludeInArtboards_(x, state) { log('include', state) },"
       "controller_didSelectImageQuality_(x, index) { log('quality', index) }};"
       "[[c layerFlipButton] performClick:nil]; c.includeInArtboardButton().performClick(nil);"
       "[[[c imageQualityPopupButton] menu] performActionForItemAtIndex:3];"
       "c.layerRotateButton().performClick_(nil)",
       "flip true|include 1|quality 3"},
      {"var c = KVPopupCell.new(); c.view(); c.popupMenu = [KVMenu menuWithItems:"
       "[{title: 'A', identifier: 'a'}, {title: 'B', identifier: 'b'}]]; c.reloadData();"
       "c.delegate = {popupCellSelectedDidChange(x) { log(x.selectedIdentifier()) }};"
       "c.popupMenu().performActionForItemAtIndex(1); log(c.popupButton().title());"
       "c.popupMenu().performActionForItemAtIndex(2)",
       "b|B|the menu has no item at 2, only 2 in all"},
      {"var c = KVViewController.new(); c.view(); c.layerFlipButton().enabled = false;"
       "c.delegate = {controllerDidPressFlipLayer() { log('flip') }};"
       "c.layerFlipButton().performClick(nil); log('inert')",
       "inert"},
      {"var c = KVViewController.new(); c.view();"
       "c.delegate = {controllerDidPressFlipLayer() { throw new Error('no') }};"
       "c.layerFlipButton().performClick(nil)",
       "no"},
      {"var b = NSButton.new(); b.setCOSJSTargetFunction(function(sender) { log(sender === b) });"
       "b.performClick(nil); b.setCOSJSTargetFunction(nil); b.performClick(nil)",
       "true"},
      {"var b = NSButton.new(); b.setCOSJSTargetFunction_(3)",
       "NSButton setCOSJSTargetFunction: takes ControlAction as argument 1, not number"},
      {"var p = NSPopUpButton.new(); p.addItemsWithTitles(['A', 'B']);"
       "p.COSJSTargetFunction = sender => log(sender.titleOfSelectedItem());"
       "p.menu().performActionForItemAtIndex_(1); p.selectItemAtIndex(0); log(p.stringValue())",
       "B|0"},
  });
}

TEST_F(ViewScriptTest, MakesControls) {
  expect({
      {"var f = [[NSTextField alloc] initWithFrame:NSMakeRect(0, 0, 200, 25)];"
       "[f setStringValue:'12 px']; [f setEditable:false]; [f setBezeled:false];"
       "log([f stringValue], f.intValue(), f.doubleValue(), f.isEditable())",
       "12 px 12 12 false"},
      {"var f = NSTextField.labelWithString('Name'); log(f.stringValue(), f.editable(), "
       "f.frame().size.width > 10)",
       "Name false true"},
      {"var b = NSButton.alloc().initWithFrame(NSMakeRect(0, 0, 80, 20));"
       "b.setButtonType(NSSwitchButton); b.setTitle('A & B'); b.setState(NSOnState);"
       "log(b.state(), b.title(), b.intValue()); b.performClick(nil); log(b.state());"
       "b.setState(NSMixedState); log(b.state()); b.allowsMixedState = true; b.state = -1;"
       "log(b.state())",
       "1 A & B 1|0|1|-1"},
      {"var p = [[NSPopUpButton alloc] initWithFrame:NSMakeRect(0, 0, 80, 25) pullsDown:false];"
       "[p addItemWithTitle:'One']; [p addItemsWithTitles:['Two', 'Three']];"
       "[p selectItemWithTitle:'Three']; log(p.indexOfSelectedItem(), p.numberOfItems(), "
       "p.indexOfItemWithTitle('Two'), p.itemTitleAtIndex(0)); p.removeAllItems();"
       "log(p.itemTitles().length, p.titleOfSelectedItem())",
       "2 3 1 One|0 null"},
      {"var p = NSPopUpButton.new(); p.selectItemAtIndex(4)",
       "the menu has no item at 4, only 0 in all"},
      {"NSPopUpButton.alloc().initWithFrame_pullsDown_(NSMakeRect(0, 0, 1, 1), true)",
       "pop-up buttons do not pull down"},
      {"var p = NSPopUpButton.new(); p.addItemsWithTitles(['A', 'B']); p.selectItemAtIndex(1);"
       "p.menu().removeItemAtIndex(0); log(p.itemTitles(), p.titleOfSelectedItem())",
       "B B"},
      {"var i = NSImage.alloc().initWithSize(NSMakeSize(2.5, 3)), v = NSImageView.new();"
       "v.image = i; log(NSStringFromSize(v.image().size()), i.isValid(),"
       "NSImage.alloc().initWithSize(NSZeroSize).isValid(), NSImage.imageNamed('x'));"
       "NSImage.alloc().initWithSize(NSMakeSize(40000, 1))",
       "{2.5, 3} true false null|an image of that size is too large"},
      {"var w = NSPanel.alloc().init(), s = NSScreen.mainScreen(); w.setFrame_display("
       "NSMakeRect(0, 0, 300, 200), true); log(w.isVisible(), w.frame().size.width >= 300,"
       "s.frame().origin.y, s.frame().size.height >= s.visibleFrame().size.height,"
       "s.visibleFrame().size.height > 0, NSScreen.screens().length, s.backingScaleFactor() >= 1)",
       "false true 0 true true 1 true"},
      {"var f = NSTextField.new(); f.font = NSFont.boldSystemFontOfSize(20);"
       "log(f.font().pointSize(), NSFont.fontWithName_size_('No such font', 12))",
       "20 null"},
      // A family that is installed is found by its PostScript names, also in the regular style.
      {"var m = NSFontManager.sharedFontManager(), found = 0;"
       "for (const family of m.availableFontFamilies()) {"
       "  const styles = m.availableMembersOfFontFamily(family).map(member => member[1]);"
       "  if (!styles.includes('Regular') || family.includes('-')) continue; ++found;"
       "  for (const name of [family, family.replaceAll(' ', ''),"
       "                      family.replaceAll(' ', '') + '-Regular'])"
       "    if (NSFont.fontWithName_size_(name, 12)?.familyName() != family) log(name); }"
       "log(found > 0, m.availableFonts().some(name => name.includes('[')))",
       "true false"},
      {"var f = NSFont.systemFontOfSize_(12), m = NSFontManager.sharedFontManager();"
       "log([NaN, -1, 1e300].map(size => m.convertFont_toSize_(f, size)).map(f =>"
       "  [f.pointSize(), f.ascender() > 0].join()).join(' '))",
       "13,true 13,true 1000000,true"},
  });
}

TEST_F(ViewScriptTest, TellsWhenBannerChangesItsHeight) {
  EXPECT_EQ(run("var b = [[KVViewController alloc] initWithNibName:'KVSoftMessage' bundle:nil];"
                "var v = NSView.alloc().initWithFrame(NSMakeRect(0, 0, 320, 300));"
                "v.addSubview(b.view()); log(b.view().hidden());"
                "b.delegate = {controllerNeedToUpdateLayout(x) {"
                "  const size = x.view().frame().size;"
                "  log('layout', size.width, size.height > 60, "
                "x.softMessageLabel().stringValue().length);"
                "  x.view().frame = NSMakeRect(0, 300 - size.height, 320, size.height); }};"
                "[b showSoftMessage:'word '.repeat(60) action:'' messageId:3]; log('later')"),
            "true|later|layout 320 true 300");
  EXPECT_EQ(run("log(b.view().hidden(), b.view().frame().origin.y + b.view().frame().size.height)"),
            "false 300");
}

TEST_F(ViewScriptTest, RunsDocumentedPanel) {
  QFile page(QStringLiteral(KELVAR_DOCS_DIR "/script-panels.md"));
  ASSERT_TRUE(page.open(QIODevice::ReadOnly));
  const QString text = QString::fromUtf8(page.readAll());
  const qsizetype from = text.indexOf(u"// panel.js"_s);
  runtime_.evaluate(text.mid(from, text.indexOf(u"```"_s, from) - from), u"panel.js"_s);
  EXPECT_EQ(run("onRun({})"), "");
  const QWidgetList all = QApplication::topLevelWidgets();
  const auto shown =
      std::find_if(all.begin(), all.end(), [](QWidget* each) { return each->isVisible(); });
  ASSERT_NE(shown, all.end());
  EXPECT_EQ((*shown)->size(), QSize(320, 152));
  EXPECT_EQ((*shown)->findChild<QWidget*>(u"KVPopupCell"_s)->geometry(), QRect(0, 8, 320, 64));
  (*shown)->findChild<QAbstractButton*>(u"layerFlipButton"_s)->click();
  (*shown)->findChild<PopUpButton*>(u"popupButton"_s)->chooseItem(1);
  EXPECT_EQ(printed_.join(u'|').toStdString(), "flip|chosen: profile");
}

/// Views are often chained before they are in a window.
TEST_F(ViewScriptTest, GivesFocusInOrderOfKeyViews) {
  expect({
      {"var w = [[NSPanel alloc] initWithContentRect:NSMakeRect(0, 0, 200, 100) styleMask:1"
       " backing:2 defer:false];"
       "var f = ['a', 'b', 'c'].map(t => { var f = [[NSTextField alloc] initWithFrame:"
       "NSMakeRect(0, 0, 50, 20)]; f.setIdentifier(t); return f });"
       "f[0].setNextKeyView(f[2]); [f[2] setNextKeyView:f[1]];"
       "f.forEach(each => w.contentView().addSubview(each));"
       "w.setInitialFirstResponder(f[0]); log(w.makeFirstResponder(NSView.new()));"
       "w.makeKeyAndOrderFront(nil); log(w.initialFirstResponder() === f[0])",
       "false|true"},
  });
  const QWidgetList all = QApplication::allWidgets();
  const auto first = std::find_if(all.begin(), all.end(),
                                  [](const QWidget* each) { return each->objectName() == u"a"; });
  ASSERT_NE(first, all.end());
  QWidget* const window = (*first)->window();
  QStringList order;
  for (QWidget* each = window->nextInFocusChain(); each != window && order.size() < 3;
       each = each->nextInFocusChain()) {
    if (qobject_cast<QLineEdit*>(each)) order.append(each->parentWidget()->objectName());
  }
  EXPECT_EQ(order, (QStringList{u"a"_s, u"c"_s, u"b"_s}));
}

TEST_F(ViewScriptTest, StylesLabelsOfAlerts) {
  expect({
      {"var l = NSTextField.new(); l.setEditable(false); l.setDrawsBackground(false);"
       "l.setSelectable(true); l.backgroundColor = [NSColor redColor];"
       "log(l.drawsBackground(), l.isSelectable(), l.backgroundColor().alphaComponent())",
       "false true 1"},
      {"var p = NSPopUpButton.new(); log(p.lastItem(), p.selectedTag());"
       "p.addItemsWithTitles(['a', 'b']); p.lastItem().setTag(3);"
       "log(p.selectItemWithTag(3), [p selectedTag], p.selectItemWithTag(9),"
       "p.itemWithTitle('b').tag(), p.itemWithTitle('c'), p.indexOfItemWithTag(3),"
       "p.titleOfSelectedItem())",
       "null -1|true 3 false 3 null 1 b"},
      {"var s = [[NSSecureTextField alloc] init]; log(s.className(), s instanceof NSTextField)",
       "NSSecureTextField true"},
      {"var b = NSButton.new(); b.setBezelStyle(4); log([b bezelStyle])", "4"},
  });
}

}  // namespace
}  // namespace kelvar
