#include "ui/NSSlider.h"

#include <algorithm>
#include <cmath>

#include "runtime/ClassInfo.h"
#include "runtime/leadingNumber.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&NSSlider::staticClassInfo);

/// More than a slider has pixels.
constexpr int kSteps = 10000;

}  // namespace

SliderBox::SliderBox() : QSlider(Qt::Horizontal) {
  setRange(0, kSteps);
  connect(this, &QSlider::valueChanged, this, [this](int step) {
    number_ = minimum_ + (maximum_ - minimum_) * step / kSteps;
    Q_EMIT wasMoved();
  });
}

void SliderBox::setNumber(double number) {
  if (std::isnan(number)) return;
  number_ = std::min(std::max(number, minimum_), maximum_);
  const double length = maximum_ - minimum_;
  const QSignalBlocker blocker(this);
  setValue(length > 0 ? int(std::lround((number_ - minimum_) / length * kSteps)) : 0);
}

void SliderBox::setNumbers(double minimum, double maximum) {
  minimum_ = minimum;
  maximum_ = maximum;
  setNumber(number_);
}

const ClassInfo& NSSlider::staticClassInfo() {
  using S = NSSlider;
  static const ClassInfo kClass =
      ClassInfoBuilder<S, NSControl>("NSSlider")
          .initializer(
              "init", [] { return S::initWithFrame({}); }, "Creates a slider of size zero.")
          .initializer("initWithFrame:", &S::initWithFrame,
                       "Creates a slider from 0 to 1, upright if the frame is higher than wide.")
          .property("minValue", &S::minValue, &S::setMinValue, "The smallest value.")
          .property("maxValue", &S::maxValue, &S::setMaxValue, "The largest value.")
          .property("numberOfTickMarks", &S::tickMarks, &S::setTickMarks,
                    "How many marks are drawn along it.")
          .operation("isVertical", &S::isVertical, "Returns whether it is upright.");
  return kClass;
}

double NSSlider::minValue() const { return slider() ? slider()->minimumNumber() : 0; }

double NSSlider::maxValue() const { return slider() ? slider()->maximumNumber() : 0; }

bool NSSlider::isVertical() const { return slider() && slider()->orientation() == Qt::Vertical; }

double NSSlider::doubleValue() const { return slider() ? slider()->number() : 0; }

SliderBox* NSSlider::slider() const { return qobject_cast<SliderBox*>(widget()); }

std::shared_ptr<NSSlider> NSSlider::initWithFrame(const QRectF& frame) {
  auto* const slider = new SliderBox;
  slider->setMinimumSize(1, 1);
  if (frame.height() > frame.width()) slider->setOrientation(Qt::Vertical);
  return std::static_pointer_cast<NSSlider>(View::adopt(slider, frame));
}

void NSSlider::setMinValue(double minimum) {
  if (slider()) slider()->setNumbers(minimum, maxValue());
}

void NSSlider::setMaxValue(double maximum) {
  if (slider()) slider()->setNumbers(minValue(), maximum);
}

void NSSlider::setTickMarks(int count) {
  tickMarks_ = std::max(count, 0);
  if (!slider()) return;
  slider()->setTickPosition(tickMarks_ > 0 ? QSlider::TicksBelow : QSlider::NoTicks);
  slider()->setTickInterval(tickMarks_ > 1 ? kSteps / (tickMarks_ - 1) : kSteps);
}

void NSSlider::setStringValue(const QString& value) {
  setDoubleValue(leadingNumber<double>(value));
}

void NSSlider::setDoubleValue(double number) {
  if (slider()) slider()->setNumber(number);
}

void NSSlider::connectControl() {
  QObject::connect(slider(), &SliderBox::wasMoved, slider(), acting());
}

}  // namespace kelvar
