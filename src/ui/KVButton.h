#pragma once

#include <QColor>
#include <QPushButton>

#include "ui/View.h"

namespace kelvar {

/// A push button with an optional background color and title color.
///
/// Created by a form, which sets its properties. The bezel is painted over the background, so a
/// button with a background is usually flat. A title that does not fit is elided; the tool tip then
/// shows all of it.
class KELVAR_EXPORT KVButton : public QPushButton {
  Q_OBJECT
  Q_PROPERTY(QColor backgroundColor READ backgroundColor WRITE setBackgroundColor)
  Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor)

 public:
  static const ClassInfo& staticClassInfo();
  /// The view of a widget that is a `KVButton`.
  static ViewRef makeView(QWidget* widget);

  explicit KVButton(QWidget* parent = nullptr);

  /// Replaces what was painted behind the button; invalid for none.
  QColor backgroundColor() const { return backgroundColor_; }
  void setBackgroundColor(const QColor& color) { backgroundColor_ = color; }

  /// The color of the title that the button has in `awakeFromNib`; invalid for the palette's color.
  QColor textColor() const { return textColor_; }
  void setTextColor(const QColor& color) { textColor_ = color; }

  /// Applies the color to the title. Called once, after the form is loaded: a title that is set
  /// later has the palette's color.
  void awakeFromNib();

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool event(QEvent* event) override;

 private:
  /// The title when it was styled, with the button's font at that time.
  struct StyledTitle {
    QString text;
    QColor color;
    QFont font;
  };

  bool isStyled() const { return styledTitle_.color.isValid() && styledTitle_.text == text(); }
  /// The title, elided to fit.
  QString elided() const;

  QColor backgroundColor_;
  QColor textColor_;
  StyledTitle styledTitle_;
};

}  // namespace kelvar
