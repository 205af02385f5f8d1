#pragma once

#include <QDoubleSpinBox>

#include "ui/NSControl.h"

namespace kelvar {

/// The widget of a stepper.
class StepperBox : public QDoubleSpinBox {
  Q_OBJECT

 public:
  StepperBox();
};

/// The view of two arrows that count up and down, from 0 to 59 unless a script says otherwise.
class KELVAR_EXPORT NSStepper : public NSControl {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  using NSControl::NSControl;
  static std::shared_ptr<NSStepper> initWithFrame(const QRectF& frame);

  double minValue() const;
  void setMinValue(double minimum);
  double maxValue() const;
  void setMaxValue(double maximum);
  double increment() const;
  void setIncrement(double increment);
  /// Whether it goes on at the other end of its range.
  bool valueWraps() const;
  void setValueWraps(bool wraps);

  QString stringValue() const override { return QString::number(doubleValue(), 'g', 15); }
  void setStringValue(const QString& value) override;
  double doubleValue() const override;
  /// Brought into the range. Does not run the action.
  void setDoubleValue(double number) override;

 protected:
  void connectControl() override;

 private:
  StepperBox* stepper() const;
  void setRange(double minimum, double maximum);
};

}  // namespace kelvar
