#pragma once

#include <QSlider>

#include "ui/NSControl.h"

namespace kelvar {

/// The widget of a slider: Qt's has whole numbers alone.
class SliderBox : public QSlider {
  Q_OBJECT

 public:
  SliderBox();

  double number() const { return number_; }
  double minimumNumber() const { return minimum_; }
  double maximumNumber() const { return maximum_; }
  /// Brought into the range; emits no `wasMoved`.
  void setNumber(double number);
  void setNumbers(double minimum, double maximum);

 Q_SIGNALS:
  /// The user has moved it.
  void wasMoved();

 private:
  double minimum_ = 0;
  double maximum_ = 1;
  double number_ = 0;
};

/// The view of a slider. Its value is a number of its range, from 0 to 1 unless a script says
/// otherwise.
class KELVAR_EXPORT NSSlider : public NSControl {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  using NSControl::NSControl;
  static std::shared_ptr<NSSlider> initWithFrame(const QRectF& frame);

  double minValue() const;
  void setMinValue(double minimum);
  double maxValue() const;
  void setMaxValue(double maximum);
  int tickMarks() const { return tickMarks_; }
  void setTickMarks(int count);
  bool isVertical() const;

  QString stringValue() const override { return QString::number(doubleValue(), 'g', 15); }
  void setStringValue(const QString& value) override;
  double doubleValue() const override;
  void setDoubleValue(double number) override;

 protected:
  void connectControl() override;

 private:
  SliderBox* slider() const;

  int tickMarks_ = 0;
};

}  // namespace kelvar
