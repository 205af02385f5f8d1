#include "ui/KVView.h"

#include <QPainter>

#include "platform/image/Canvas.h"
#include "runtime/ClassInfo.h"
#include "ui/DropShadowEffect.h"
#include "ui/View.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&KVView::staticClassInfo);

class StyledView : public View {
 public:
  using View::View;
  const ClassInfo& classInfo() const override { return KVView::staticClassInfo(); }
};

}  // namespace

const ClassInfo& KVView::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<StyledView, View>("KVView")
          .initializer(
              "init", [] { return View::adopt(new KVView); },
              "Creates a view without a drop shadow.")
          .initializer(
              "initWithFrame:", [](const QRectF& frame) { return View::adopt(new KVView, frame); },
              "Creates a view without a drop shadow.")
          .initializer(
              "initWithCoder:",
              [](const QVariant&) { return View::adopt(KVView::initWithCoder(nullptr)); },
              "Creates a view as a form does, with a drop shadow that is invisible until it has a "
              "color.")
          .operation("isOpaque", onWidget(&KVView::isOpaque),
                     "Returns false: what is behind the view shows through.")
          .operation("refreshShadow", onWidget(&KVView::refreshShadow),
                     "Copies `shadowSize`, `shadowBlur` and `shadowColor` to the drop shadow.")
          .property("dropShadow", onWidget(&KVView::dropShadow), onWidget(&KVView::setDropShadow),
                    "The shadow around the view and its contents, or nil.")
          .property("backgroundColor", onWidget(&KVView::backgroundColor),
                    onWidget(&KVView::setBackgroundColor), "The fill color; nil for black.")
          .property("borderColor", onWidget(&KVView::borderColor),
                    onWidget(&KVView::setBorderColor), "The border's color, or nil for no border.")
          .property("borderWidth", onWidget(&KVView::borderWidth),
                    onWidget(&KVView::setBorderWidth),
                    "The border's width in points, centered on the view's edge; 0 for no border.")
          .property(
              "innerShadowSize", onWidget(&KVView::innerShadowSize),
              onWidget(&KVView::setInnerShadowSize),
              "How far the shadow of fill and border is moved, in points: x to the right, y up.")
          .property("innerShadowBlur", onWidget(&KVView::innerShadowBlur),
                    onWidget(&KVView::setInnerShadowBlur),
                    "The blur radius of the shadow of fill and border, in points.")
          .property("innerShadowColor", onWidget(&KVView::innerShadowColor),
                    onWidget(&KVView::setInnerShadowColor),
                    "The color of the shadow of fill and border, or nil for none.")
          .property("shadowSize", onWidget(&KVView::shadowSize), onWidget(&KVView::setShadowSize),
                    "How far the drop shadow is moved, in points: x to the right, y up.")
          .property("shadowBlur", onWidget(&KVView::shadowBlur), onWidget(&KVView::setShadowBlur),
                    "The drop shadow's blur radius, in points.")
          .property("shadowColor", onWidget(&KVView::shadowColor),
                    onWidget(&KVView::setShadowColor), "The drop shadow's color, or nil for none.");
  return kClass;
}

ViewRef KVView::makeView(QWidget* widget) { return std::make_shared<StyledView>(widget); }

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
