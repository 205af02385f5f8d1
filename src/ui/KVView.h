#pragma once

#include <QColor>
#include <QWidget>

#include "ui/Shadow.h"

namespace kelvar {

/// A container that paints its bounds: a fill, a border, a shadow under both, and a drop shadow
/// around the whole view, its contents included.
///
/// Made in a form, its properties set there. Lengths are points. No setter asks for a redraw: what
/// changes is seen when the view is painted next.
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
  static const ClassInfo& theClass();

  /// As a form makes it: with a drop shadow that is invisible until it is given a colour.
  static KVView* initWithCoder(QWidget* parent);
  /// Without a drop shadow.
  explicit KVView(QWidget* parent = nullptr);

  /// False: what lies behind is painted first.
  bool isOpaque() const { return false; }

  /// Null in a view that was not made by a form.
  ShadowRef dropShadow() const { return dropShadow_; }
  void setDropShadow(ShadowRef shadow) { dropShadow_ = std::move(shadow); }

  /// The fill; black where it is not valid.
  QColor backgroundColor() const { return backgroundColor_; }
  void setBackgroundColor(const QColor& color) { backgroundColor_ = color; }
  /// There is a border only with a valid colour and a width above 0. It is centred on the edge of
  /// the bounds, so that half of it is cut off.
  QColor borderColor() const { return borderColor_; }
  void setBorderColor(const QColor& color) { borderColor_ = color; }
  double borderWidth() const { return borderWidth_; }
  void setBorderWidth(double width) { borderWidth_ = width; }

  /// How far the shadow of fill and border is moved: x to the right, y up.
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
