#include "ui/KVView.h"

#include <QPainter>

#include "platform/Canvas.h"
#include "runtime/ClassInfo.h"
#include "ui/DropShadowEffect.h"
#include "ui/View.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&KVView::theClass);

}  // namespace

const ClassInfo& KVView::theClass() {
  static const ClassInfo kClass =
      Description<View>("KVView")
          .initialiser("init", [] { return View::adopt(new KVView); })
          .initialiser("initWithCoder:",
                       [](const QVariant&) { return View::adopt(KVView::initWithCoder(nullptr)); })
          .property("hidden", &View::isHidden, &View::setHidden)
          .operation("isOpaque", onWidget(&KVView::isOpaque))
          .operation("refreshShadow", onWidget(&KVView::refreshShadow))
          .property("dropShadow", onWidget(&KVView::dropShadow), onWidget(&KVView::setDropShadow))
          .property("backgroundColor", onWidget(&KVView::backgroundColor),
                    onWidget(&KVView::setBackgroundColor))
          .property("borderColor", onWidget(&KVView::borderColor),
                    onWidget(&KVView::setBorderColor))
          .property("borderWidth", onWidget(&KVView::borderWidth),
                    onWidget(&KVView::setBorderWidth))
          .property("innerShadowSize", onWidget(&KVView::innerShadowSize),
                    onWidget(&KVView::setInnerShadowSize))
          .property("innerShadowBlur", onWidget(&KVView::innerShadowBlur),
                    onWidget(&KVView::setInnerShadowBlur))
          .property("innerShadowColor", onWidget(&KVView::innerShadowColor),
                    onWidget(&KVView::setInnerShadowColor))
          .property("shadowSize", onWidget(&KVView::shadowSize), onWidget(&KVView::setShadowSize))
          .property("shadowBlur", onWidget(&KVView::shadowBlur), onWidget(&KVView::setShadowBlur))
          .property("shadowColor", onWidget(&KVView::shadowColor),
                    onWidget(&KVView::setShadowColor));
  return kClass;
}

KVView* KVView::initWithCoder(QWidget* parent) {
  auto* const view = new KVView(parent);
  view->dropShadow_ = std::make_shared<Shadow>();
  view->setGraphicsEffect(new DropShadowEffect(view->dropShadow_, view));
  return view;
}

KVView::KVView(QWidget* parent) : QWidget(parent) {}

void KVView::setShadowSize(const QPointF& size) {
  shadowSize_ = size;
  refreshShadow();
}

void KVView::setShadowBlur(double radius) {
  shadowBlur_ = radius;
  refreshShadow();
}

void KVView::setShadowColor(const QColor& color) {
  shadowColor_ = color;
  refreshShadow();
}

void KVView::refreshShadow() {
  if (!dropShadow_) return;
  dropShadow_->setOffset({shadowSize_.x(), shadowSize_.y()});
  dropShadow_->setColor(shadowColor_);
  dropShadow_->setBlurRadius(shadowBlur_);
}

void KVView::paintEvent(QPaintEvent* event) {
  QWidget::paintEvent(event);
  QPainter painter(this);
  Canvas canvas(size(), painter.deviceTransform().m11());
  canvas.save();
  const QRectF bounds({0, 0}, QSizeF(size()));
  if (backgroundColor_.isValid()) canvas.setFillColor(backgroundColor_);
  if (borderColor_.isValid()) canvas.setStrokeColor(borderColor_);
  canvas.setShadow(innerShadowColor_.isValid() ? innerShadowColor_ : QColor(Qt::transparent),
                   innerShadowBlur_, {innerShadowSize_.x(), innerShadowSize_.y()});
  canvas.fillRect(bounds);
  if (borderColor_.isValid() && borderWidth_ > 0) canvas.strokeRect(bounds, borderWidth_);
  canvas.restore();
  painter.drawImage(bounds, canvas.pixels());
}

}  // namespace kelvar
