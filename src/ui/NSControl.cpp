#include "ui/NSControl.h"

#include <QApplication>

#include "runtime/ClassInfo.h"
#include "runtime/DelegateInfo.h"
#include "runtime/leadingNumber.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&NSControl::staticClassInfo);

}  // namespace

const ClassInfo& NSControl::staticClassInfo() {
  using C = NSControl;
  static const ClassInfo kClass =
      ClassInfoBuilder<C, View>("NSControl")
          .property("enabled", &C::isEnabled, &C::setEnabled, "Whether the user can use it.")
          .operation("isEnabled", &C::isEnabled, "Returns whether the user can use it.")
          .property("stringValue", &C::stringValue, &C::setStringValue, "The value as text.")
          .property("objectValue", &C::stringValue, &C::setStringValue, "The value as text.")
          .property("doubleValue", &C::doubleValue, &C::setDoubleValue,
                    "The value as a number; 0 for text that does not start with one.")
          .property("floatValue", &C::doubleValue, &C::setDoubleValue,
                    "The value as a number; 0 for text that does not start with one.")
          .property(
              "integerValue", &C::integerValue,
              [](C& control, int64_t number) { control.setDoubleValue(double(number)); },
              "The value as a whole number; 0 for text that does not start with one.")
          .property(
              "intValue", &C::integerValue,
              [](C& control, int64_t number) { control.setDoubleValue(double(number)); },
              "The value as a whole number; 0 for text that does not start with one.")
          .property("font", &C::font, &C::setFont, "The font; nil for the default one.")
          .operation("sizeToFit", &C::sizeToFit,
                     "Gives the control the size that its contents need; its top left stays.")
          .operation(
              "performClick:", [](C& control, const QVariant&) { control.performClick(); },
              "Does what a click of the user does, if the control is enabled; the argument has no "
              "effect.")
          .property("COSJSTargetFunction", &C::action, &C::setAction,
                    "A function that is called with the control when the user has used it, after "
                    "the form's own action.");
  return kClass;
}

const DelegateInfo& ControlAction::staticDelegateInfo() {
  static const DelegateInfo kDelegate =
      DelegateInfoBuilder<ControlAction>("ControlAction")
          .operation("controlDidAct:", &ControlAction::controlDidAct,
                     "Called with the control after the user has used it.");
  return kDelegate;
}

void NSControl::setEnabled(bool enabled) {
  if (widget()) widget()->setEnabled(enabled);
}

double NSControl::doubleValue() const { return leadingNumber<double>(stringValue()); }

void NSControl::setDoubleValue(double number) { setStringValue(QString::number(number, 'g', 15)); }

int64_t NSControl::integerValue() const { return integerFromReal(doubleValue()); }

NSFontRef NSControl::font() const {
  return control() ? std::make_shared<NSFont>(control()->font()) : nullptr;
}

void NSControl::setFont(const NSFontRef& font) {
  if (control()) control()->setFont(font ? font->font() : QApplication::font());
}

void NSControl::sizeToFit() {
  const QRectF before = frame();
  const QSizeF size = fittingSize();
  setFrame({before.x(), before.y() + before.height() - size.height(), size.width(), size.height()});
}

void NSControl::setAction(std::weak_ptr<ControlAction> action) {
  action_ = std::move(action);
  if (!widget() || action_.expired()) return;
  keepWithWidget();
  if (!std::exchange(isConnected_, true)) connectControl();
}

void NSControl::act() {
  if (!isEnabled()) return;
  const auto action = action_.lock();
  if (!action) return;
  // A copy, as the action may remove itself.
  if (const auto function = action->controlDidAct) function(*this);
}

}  // namespace kelvar
