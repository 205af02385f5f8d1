#pragma once

#include <QGraphicsEffect>

#include "ui/Shadow.h"

namespace kelvar {

/// Draws a widget, its children included, with a shadow behind it. The shadow is read at each
/// drawing, so that a change of it needs no further word.
class DropShadowEffect : public QGraphicsEffect {
  Q_OBJECT

 public:
  DropShadowEffect(ShadowRef shadow, QObject* parent);

  QRectF boundingRectFor(const QRectF& rect) const override;

 protected:
  void draw(QPainter* painter) override;

 private:
  bool isVisible() const { return shadow_->color().isValid() && shadow_->color().alpha() > 0; }

  ShadowRef shadow_;
};

}  // namespace kelvar
