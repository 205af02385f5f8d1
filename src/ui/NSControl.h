#pragma once

#include <QFont>

#include "core/NSFont.h"
#include "ui/ControlAction.h"
#include "ui/View.h"

namespace kelvar {

/// The view of a control: it can be disabled, has a value, and tells when the user has used it.
///
/// The value is a string unless a class says otherwise; numbers are read from its start.
class KELVAR_EXPORT NSControl : public View {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  using View::View;

  /// What is inside a control is no subview.
  QList<ViewRef> subviews() const override { return {}; }

  bool isEnabled() const { return widget() && widget()->isEnabled(); }
  void setEnabled(bool enabled);

  virtual QString stringValue() const { return {}; }
  virtual void setStringValue(const QString&) {}
  virtual double doubleValue() const;
  virtual void setDoubleValue(double number);
  int64_t integerValue() const;

  /// Null once the widget was deleted.
  NSFontRef font() const;
  /// Null for the font of the application.
  void setFont(const NSFontRef& font);
  /// Gives the view the size that its contents need; its top left stays where it is.
  void sizeToFit();
  /// Does what a click of the user does. Nothing if the control is disabled.
  virtual void performClick() { act(); }

  std::weak_ptr<ControlAction> action() const { return action_; }
  void setAction(std::weak_ptr<ControlAction> action);

 protected:
  /// The widget that the user works with, which may be inside the view's.
  virtual QWidget* control() const { return widget(); }
  /// Connects the widget's signal to `act`. Called once, with the first action.
  virtual void connectControl() {}
  /// Tells the action.
  void act();

  /// For `connectControl`: calls `act` while the view lives.
  auto acting() {
    return [self = weak_from_this()] {
      if (const ObjectRef view = self.lock()) static_cast<NSControl&>(*view).act();
    };
  }

 private:
  std::weak_ptr<ControlAction> action_;
  bool isConnected_ = false;
};

}  // namespace kelvar
