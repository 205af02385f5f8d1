#pragma once

#include <QGraphicsEffect>

#include "ui/Shadow.h"

namespace kelvar {

/// Draws a widget and its children with a shadow behind them. The shadow is read each time, so
/// changes to it show with the next paint.
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
