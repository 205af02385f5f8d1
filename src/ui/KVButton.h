#pragma once

#include <QColor>
#include <QPushButton>

#include "runtime/Object.h"

namespace kelvar {

/// A push button that can have a flat colour behind it and a title in a colour of its own.
///
/// Made in a form, its properties set there. The bezel is painted over the background, so a button
/// with a background is usually flat. A title that does not fit ends in an ellipsis; the tool tip
/// then has the whole.
class KELVAR_EXPORT KVButton : public QPushButton {
  Q_OBJECT
  Q_PROPERTY(QColor backgroundColor READ backgroundColor WRITE setBackgroundColor)
  Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor)

 public:
  static const ClassInfo& theClass();

  explicit KVButton(QWidget* parent = nullptr);

  /// Replaces what is to be painted behind the button; not valid for nothing.
  QColor backgroundColor() const { return backgroundColor_; }
  void setBackgroundColor(const QColor& color) { backgroundColor_ = color; }

  /// Of the title that the button has in `awakeFromNib`; not valid for the palette's colour.
  QColor textColor() const { return textColor_; }
  void setTextColor(const QColor& color) { textColor_ = color; }

  /// Gives the title its colour. Called once, when the form has been loaded: a colour or a title
  /// that is set later has the palette's colour.
  void awakeFromNib();

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool event(QEvent* event) override;

 private:
  /// The title as it was styled. Centred, in the button's font of that time.
  struct StyledTitle {
    QString text;
    QColor color;
    QFont font;
  };

  bool isStyled() const { return styledTitle_.color.isValid() && styledTitle_.text == text(); }
  /// The title as it fits.
  QString elided() const;

  QColor backgroundColor_;
  QColor textColor_;
  StyledTitle styledTitle_;
};

}  // namespace kelvar
