#pragma once

#include <QAbstractButton>

#include "platform/image/Image.h"
#include "ui/ControlBox.h"
#include "ui/NSControl.h"

namespace kelvar {

/// The widget of a button that a script makes, whose kind it can choose.
class ButtonBox : public ControlBox {
  Q_OBJECT
};

/// The view of a button: a push button, a check box, a radio button or a form's.
///
/// Its value is its state.
class KELVAR_EXPORT NSButton : public NSControl {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  /// The kinds that differ here; every other number is a push button.
  enum Type { kPushOnPushOff = 1, kToggle = 2, kSwitch = 3, kRadio = 4, kOnOff = 6 };

  using NSControl::NSControl;
  /// A push button.
  static std::shared_ptr<NSButton> initWithFrame(const QRectF& frame);

  QString title() const;
  void setTitle(const QString& title);
  /// 0 off, 1 on, -1 mixed.
  int state() const;
  /// Does not run the action. Mixed is on where that is not allowed.
  void setState(int state);
  bool allowsMixedState() const;
  void setAllowsMixedState(bool allows);
  /// Throws `std::invalid_argument` for a form's button and a `KVButton`.
  void setButtonType(int type);
  ImageRef image() const { return image_; }
  void setImage(const ImageRef& image);
  /// As it was asked for; the desktop decides on the look.
  int bezelStyle() const { return bezelStyle_; }
  void setBezelStyle(int style) { bezelStyle_ = style; }
  bool isBordered() const;
  void setBordered(bool bordered);
  QString keyEquivalent() const { return keyEquivalent_; }
  /// "\r" for Return, "\x1b" for Escape, else a character, which is typed with Ctrl.
  void setKeyEquivalent(const QString& key);

  QString stringValue() const override { return QString::number(state()); }
  void setStringValue(const QString& value) override;
  double doubleValue() const override { return state(); }
  void setDoubleValue(double number) override;
  void performClick() override;

 protected:
  QWidget* control() const override;
  void connectControl() override;

 private:
  QAbstractButton* button() const;

  ImageRef image_;
  QString keyEquivalent_;
  int bezelStyle_ = 1;
};

}  // namespace kelvar
