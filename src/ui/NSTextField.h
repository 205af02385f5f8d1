#pragma once

#include <QColor>

#include "ui/ControlBox.h"
#include "ui/NSControl.h"

class QLabel;
class QLineEdit;

namespace kelvar {

/// The widget of a text field that a script makes: a line to type into, or a label that wraps.
class TextFieldBox : public ControlBox {
  Q_OBJECT

 public:
  /// A label shows plain text only.
  explicit TextFieldBox(bool isEditable = true);

  bool isEditable() const { return edit() != nullptr; }
  void setEditable(bool editable);
  bool isBezeled() const { return isBezeled_; }
  void setBezeled(bool bezeled);
  bool isSecure() const { return isSecure_; }
  /// Shows dots instead of what is typed.
  void setSecure(bool secure);

  QLineEdit* edit() const;
  QLabel* label() const;

 private:
  void putControl(bool isEditable);
  void showBezel();

  bool isBezeled_ = true;
  bool isSecure_ = false;
};

/// The view of a text field, or of a label of a form.
class KELVAR_EXPORT NSTextField : public NSControl {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  using NSControl::NSControl;
  /// A field to type into.
  static std::shared_ptr<NSTextField> initWithFrame(const QRectF& frame);
  /// A label of the size of its text.
  static std::shared_ptr<NSTextField> labelWithString(const QString& text);

  QString stringValue() const override;
  /// Does not run the action.
  void setStringValue(const QString& text) override;
  bool isEditable() const;
  /// Whether it shows dots instead of what is typed.
  bool isSecure() const { return box() && box()->isSecure(); }
  /// Throws `std::invalid_argument` for a label of a form.
  void setEditable(bool editable);
  bool isBezeled() const;
  void setBezeled(bool bezeled);
  QString placeholderString() const;
  void setPlaceholderString(const QString& text);
  /// None for the palette's color.
  QVariant textColor() const;
  void setTextColor(const QColor& color);
  /// Whether the text of a label can be selected. That of a field always can.
  bool isSelectable() const { return isEditable() || isSelectable_; }
  void setSelectable(bool selectable);
  /// Whether the background has its color.
  bool drawsBackground() const { return drawsBackground_; }
  void setDrawsBackground(bool draws);
  /// None for the palette's color.
  QVariant backgroundColor() const;
  void setBackgroundColor(const QColor& color);
  /// 0 left, 1 right, 2 center.
  int alignment() const { return alignment_; }
  void setAlignment(int alignment);

 protected:
  QWidget* control() const override;
  void connectControl() override;

 private:
  TextFieldBox* box() const;
  QLabel* label() const;
  /// Applies what a new control does not have yet.
  void styleControl();

  QString placeholder_;
  QColor textColor_, backgroundColor_;
  bool isSelectable_ = false;
  bool drawsBackground_ = true;
  int alignment_ = 0;
};

/// A text field that shows dots instead of what is typed.
class KELVAR_EXPORT NSSecureTextField : public NSTextField {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  using NSTextField::NSTextField;
  static std::shared_ptr<NSSecureTextField> initWithFrame(const QRectF& frame);
};

/// The widget of a secure text field.
class SecureTextFieldBox : public TextFieldBox {
  Q_OBJECT

 public:
  SecureTextFieldBox() { setSecure(true); }
};

}  // namespace kelvar
