#include "scripting/viewConstants.h"

#include "ui/NSButton.h"
#include "ui/NSMatrix.h"
#include "ui/NSWindow.h"
#include "ui/View.h"

namespace kelvar {

QList<ScriptApi::Constant> viewConstants() {
  static const struct {
    const char* name;
    int number;
  } kNumbers[] = {{"NSOffState", 0},
                  {"NSOnState", 1},
                  {"NSMixedState", -1},
                  {"NSControlStateValueOff", 0},
                  {"NSControlStateValueOn", 1},
                  {"NSControlStateValueMixed", -1},
                  {"NSMomentaryPushInButton", 7},
                  {"NSPushOnPushOffButton", NSButton::kPushOnPushOff},
                  {"NSToggleButton", NSButton::kToggle},
                  {"NSSwitchButton", NSButton::kSwitch},
                  {"NSRadioButton", NSButton::kRadio},
                  {"NSButtonTypeMomentaryPushIn", 7},
                  {"NSButtonTypePushOnPushOff", NSButton::kPushOnPushOff},
                  {"NSButtonTypeToggle", NSButton::kToggle},
                  {"NSButtonTypeSwitch", NSButton::kSwitch},
                  {"NSButtonTypeRadio", NSButton::kRadio},
                  {"NSRoundedBezelStyle", 1},
                  {"NSBezelStyleRounded", 1},
                  {"NSRadioModeMatrix", NSMatrix::kRadio},
                  {"NSHighlightModeMatrix", NSMatrix::kHighlight},
                  {"NSListModeMatrix", NSMatrix::kList},
                  {"NSTrackModeMatrix", NSMatrix::kTrack},
                  {"NSLeftTextAlignment", 0},
                  {"NSRightTextAlignment", 1},
                  {"NSCenterTextAlignment", 2},
                  {"NSTextAlignmentLeft", 0},
                  {"NSTextAlignmentRight", 1},
                  {"NSTextAlignmentCenter", 2},
                  {"NSViewNotSizable", 0},
                  {"NSViewMinXMargin", View::kMinXMargin},
                  {"NSViewWidthSizable", View::kWidth},
                  {"NSViewMaxXMargin", View::kMaxXMargin},
                  {"NSViewMinYMargin", View::kMinYMargin},
                  {"NSViewHeightSizable", View::kHeight},
                  {"NSViewMaxYMargin", View::kMaxYMargin},
                  {"NSBorderlessWindowMask", 0},
                  {"NSTitledWindowMask", NSWindow::kTitled},
                  {"NSClosableWindowMask", NSWindow::kClosable},
                  {"NSMiniaturizableWindowMask", NSWindow::kMiniaturizable},
                  {"NSResizableWindowMask", NSWindow::kResizable},
                  {"NSWindowStyleMaskTitled", NSWindow::kTitled},
                  {"NSWindowStyleMaskClosable", NSWindow::kClosable},
                  {"NSWindowStyleMaskMiniaturizable", NSWindow::kMiniaturizable},
                  {"NSWindowStyleMaskResizable", NSWindow::kResizable},
                  {"NSBackingStoreBuffered", 2}};
  QList<ScriptApi::Constant> constants;
  for (const auto& [name, number] : kNumbers) {
    constants.append({QString::fromLatin1(name), number});
  }
  return constants;
}

}  // namespace kelvar
