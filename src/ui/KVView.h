#pragma once

#include <QColor>
#include <QWidget>

#include "ui/Shadow.h"
#include "ui/View.h"

namespace kelvar {

/// A container that paints a fill, a border, a shadow under both, and a drop shadow around the
/// whole view with its contents.
///
/// Created by a form, which sets its properties. Lengths are points. Setters do not request a
/// repaint: changes show when the view is next painted.
class KELVAR_EXPORT KVView : public QWidget {
  Q_OBJECT
  Q_PROPERTY(QColor backgroundColor READ backgroundColor WRITE setBackgroundColor)
  Q_PROPERTY(QColor borderColor READ borderColor WRITE setBorderColor)
  Q_PROPERTY(double borderWidth READ borderWidth WRITE setBorderWidth)
  Q_PROPERTY(QPointF innerShadowSize READ innerShadowSize WRITE setInnerShadowSize)
  Q_PROPERTY(double innerShadowBlur READ innerShadowBlur WRITE setInnerShadowBlur)
  Q_PROPERTY(QColor innerShadowColor READ innerShadowColor WRITE setInnerShadowColor)
  Q_PROPERTY(QPointF shadowSize READ shadowSize WRITE setShadowSize)
  Q_PROPERTY(double shadowBlur READ shadowBlur WRITE setShadowBlur)
  Q_PROPERTY(QColor shadowColor READ shadowColor WRITE setShadowColor)

 public:
  static const ClassInfo& staticClassInfo();
  /// The view of a widget that is a `KVView`.
  static ViewRef makeView(QWidget* widget);

  /// As a form creates it: with a drop shadow that is invisible until it has a color.
  static KVView* initWithCoder(QWidget* parent);
  /// Without a drop shadow.
  explicit KVView(QWidget* parent = nullptr);

  /// False: what is behind the view shows through.
  bool isOpaque() const { return false; }

  /// Null if the view was not created by a form.
  ShadowRef dropShadow() const { return dropShadow_; }
  void setDropShadow(ShadowRef shadow) { dropShadow_ = std::move(shadow); }

  /// The fill; black if invalid.
  QColor backgroundColor() const { return backgroundColor_; }
  void setBackgroundColor(const QColor& color) { backgroundColor_ = color; }
  /// The border needs a valid color and a width above 0. It is centered on the edge of the bounds,
  /// so half of it is clipped.
  QColor borderColor() const { return borderColor_; }
  void setBorderColor(const QColor& color) { borderColor_ = color; }
  double borderWidth() const { return borderWidth_; }
  void setBorderWidth(double width) { borderWidth_ = width; }

  /// The offset of the shadow of fill and border: x to the right, y up.
  QPointF innerShadowSize() const { return innerShadowSize_; }
  void setInnerShadowSize(const QPointF& size) { innerShadowSize_ = size; }
  double innerShadowBlur() const { return innerShadowBlur_; }
  void setInnerShadowBlur(double radius) { innerShadowBlur_ = radius; }
  QColor innerShadowColor() const { return innerShadowColor_; }
  void setInnerShadowColor(const QColor& color) { innerShadowColor_ = color; }

  /// These three change the drop shadow at once.
  QPointF shadowSize() const { return shadowSize_; }
  void setShadowSize(const QPointF& size);
  double shadowBlur() const { return shadowBlur_; }
  void setShadowBlur(double radius);
  QColor shadowColor() const { return shadowColor_; }
  void setShadowColor(const QColor& color);
  void refreshShadow();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  ShadowRef dropShadow_;
  QColor backgroundColor_;
  QColor borderColor_;
  double borderWidth_ = 0;
  QPointF innerShadowSize_;
  double innerShadowBlur_ = 0;
  QColor innerShadowColor_;
  QPointF shadowSize_;
  double shadowBlur_ = 0;
  QColor shadowColor_;
};

}  // namespace kelvar
