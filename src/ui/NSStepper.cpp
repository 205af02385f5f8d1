#include "ui/NSStepper.h"

#include <QLineEdit>
#include <QSignalBlocker>
#include <algorithm>

#include "runtime/ClassInfo.h"
#include "runtime/leadingNumber.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&NSStepper::staticClassInfo);

}  // namespace

/// The number is shown by a field of the script's own.
StepperBox::StepperBox() {
  constexpr int kDecimals = 6;
  constexpr double kMaximum = 59;
  setDecimals(kDecimals);
  setMaximum(kMaximum);
  setWrapping(true);
  setMinimumSize(1, 1);
  lineEdit()->hide();
}

const ClassInfo& NSStepper::staticClassInfo() {
  using S = NSStepper;
  static const ClassInfo kClass =
      ClassInfoBuilder<S, NSControl>("NSStepper")
          .initializer(
              "init", [] { return S::initWithFrame({}); }, "Creates a stepper of size zero.")
          .initializer("initWithFrame:", &S::initWithFrame,
                       "Creates a stepper from 0 to 59, which goes on at the other end.")
          .property("minValue", &S::minValue, &S::setMinValue, "The smallest value.")
          .property("maxValue", &S::maxValue, &S::setMaxValue, "The largest value.")
          .property("increment", &S::increment, &S::setIncrement,
                    "How much the value changes at a time.")
          .property("valueWraps", &S::valueWraps, &S::setValueWraps,
                    "Whether it goes on at the other end of its range.");
  return kClass;
}

double NSStepper::minValue() const { return stepper() ? stepper()->minimum() : 0; }

double NSStepper::maxValue() const { return stepper() ? stepper()->maximum() : 0; }

double NSStepper::increment() const { return stepper() ? stepper()->singleStep() : 0; }

bool NSStepper::valueWraps() const { return stepper() && stepper()->wrapping(); }

double NSStepper::doubleValue() const { return stepper() ? stepper()->value() : 0; }

StepperBox* NSStepper::stepper() const { return qobject_cast<StepperBox*>(widget()); }

std::shared_ptr<NSStepper> NSStepper::initWithFrame(const QRectF& frame) {
  return std::static_pointer_cast<NSStepper>(View::adopt(new StepperBox, frame));
}

void NSStepper::setMinValue(double minimum) { setRange(minimum, maxValue()); }

void NSStepper::setMaxValue(double maximum) { setRange(minValue(), maximum); }

void NSStepper::setRange(double minimum, double maximum) {
  if (!stepper()) return;
  const QSignalBlocker blocker(stepper());
  const double number = doubleValue();
  stepper()->setRange(minimum, maximum);
  setDoubleValue(number);
}

void NSStepper::setIncrement(double increment) {
  if (stepper()) stepper()->setSingleStep(increment);
}

void NSStepper::setValueWraps(bool wraps) {
  if (stepper()) stepper()->setWrapping(wraps);
}

void NSStepper::setStringValue(const QString& value) {
  setDoubleValue(leadingNumber<double>(value));
}

void NSStepper::setDoubleValue(double number) {
  if (!stepper()) return;
  const QSignalBlocker blocker(stepper());
  // Qt would go on at the other end of the range.
  stepper()->setValue(std::min(std::max(number, minValue()), maxValue()));
}

void NSStepper::connectControl() {
  QObject::connect(stepper(), &QDoubleSpinBox::valueChanged, stepper(), acting());
}

}  // namespace kelvar
