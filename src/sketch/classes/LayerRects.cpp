#include "sketch/classes/LayerRects.h"

#include <cmath>

#include "runtime/ClassInfo.h"
#include "runtime/raise.h"
#include "sketch/document/Layer.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

const ClassInfo::Registration kRegistered(&LayerFrame::staticClassInfo);
const ClassInfo::Registration kAbsoluteRegistered(&AbsoluteRect::staticClassInfo);

/// The rectangle of a layer as it is now.
LayerRect& current(LayerRect& self) {
  self.read();
  return self;
}

template <void (KVRect::*set)(double)>
void setSide(LayerRect& self, double value) {
  if (!std::isfinite(value)) raise(u"the frame of a layer takes finite numbers"_s);
  (current(self).*set)(value);
  self.store();
}

/// Moves the rectangle so that the point at this part of its width or height is at `value`.
template <int percent>
void setAcross(LayerRect& self, double value) {
  current(self);
  setSide<&KVRect::setX>(self, value - self.width() * percent / 100.0);
}
template <int percent>
void setDown(LayerRect& self, double value) {
  current(self);
  setSide<&KVRect::setY>(self, value - self.height() * percent / 100.0);
}
template <int percent>
double across(const LayerRect& self) {
  return self.x() + self.width() * percent / 100.0;
}
template <int percent>
double down(const LayerRect& self) {
  return self.y() + self.height() * percent / 100.0;
}

template <class T>
ClassInfoBuilder<T, KVRect> sides(const char* name) {
  return ClassInfoBuilder<T, KVRect>(name)
      .property("x", &KVRect::x, setSide<&KVRect::setX>,
                "Left edge of the layer; setting it moves the layer.")
      .property("y", &KVRect::y, setSide<&KVRect::setY>,
                "Top edge of the layer; setting it moves the layer.")
      .property("width", &KVRect::width, setSide<&KVRect::setWidth>,
                "Width of the layer; setting it leaves the layer's contents as they are.")
      .property("height", &KVRect::height, setSide<&KVRect::setHeight>,
                "Height of the layer; setting it leaves the layer's contents as they are.")
      .property("minX", across<0>, setAcross<0>, "Left edge; setting it moves the layer.")
      .property("midX", across<50>, setAcross<50>, "Middle across; setting it moves the layer.")
      .property("maxX", across<100>, setAcross<100>, "Right edge; setting it moves the layer.")
      .property("minY", down<0>, setDown<0>, "Top edge; setting it moves the layer.")
      .property("midY", down<50>, setDown<50>, "Middle down; setting it moves the layer.")
      .property("maxY", down<100>, setDown<100>, "Bottom edge; setting it moves the layer.")
      .property("left", across<0>, setAcross<0>, "Left edge; setting it moves the layer.")
      .property("right", across<100>, setAcross<100>, "Right edge; setting it moves the layer.")
      .property("top", down<0>, setDown<0>, "Top edge; setting it moves the layer.")
      .property("bottom", down<100>, setDown<100>, "Bottom edge; setting it moves the layer.")
      .property(
          "rect", [](const T& self) { return self.CGRect(); },
          [](T& self, const QRectF& rect) { self.assign(rect); },
          "The rectangle as a structure; setting it moves and resizes the layer.")
      .property(
          "origin", [](const T& self) { return self.CGRect().topLeft(); },
          [](T& self, const QPointF& origin) {
            self.assign({origin, current(self).CGRect().size()});
          },
          "The top left corner; setting it moves the layer.")
      .property(
          "size", [](const T& self) { return self.CGRect().size(); },
          [](T& self, const QSizeF& size) {
            self.assign({current(self).CGRect().topLeft(), size});
          },
          "Width and height; setting them leaves the layer's contents as they are.")
      .operation(
          "addX:", [](T& self, double by) { setSide<&KVRect::setX>(self, current(self).x() + by); },
          "Moves the layer to the right.")
      .operation(
          "addY:", [](T& self, double by) { setSide<&KVRect::setY>(self, current(self).y() + by); },
          "Moves the layer down.")
      .operation(
          "subtractX:",
          [](T& self, double by) { setSide<&KVRect::setX>(self, current(self).x() - by); },
          "Moves the layer to the left.")
      .operation(
          "subtractY:",
          [](T& self, double by) { setSide<&KVRect::setY>(self, current(self).y() - by); },
          "Moves the layer up.")
      .operation(
          "scaleBy:",
          [](T& self, double by) {
            const QRectF rect = current(self).CGRect();
            self.assign({rect.topLeft(), rect.size() * by});
          },
          "Multiplies width and height; the contents and the top left corner stay.");
}

bool constrainsProportions(const LayerFrame& self) {
  return self.layer() && getBool(get(self.layer()->node().json(), "frame"), "constrainProportions");
}
void setConstrainsProportions(LayerFrame& self, bool value) {
  if (!self.layer()) raise(u"the rectangle is not the frame of a layer"_s);
  self.layer()->edit().change()["frame"]["constrainProportions"] = value;
}

}  // namespace

void LayerRect::assign(const QRectF& rect) {
  for (const double number : {rect.x(), rect.y(), rect.width(), rect.height()}) {
    if (!std::isfinite(number)) raise(u"the frame of a layer takes finite numbers"_s);
  }
  setX(rect.x());
  setY(rect.y());
  setWidth(rect.width());
  setHeight(rect.height());
  store();
}

const ClassInfo& LayerFrame::staticClassInfo() {
  static const ClassInfo kClass =
      sides<LayerFrame>("MSRect")
          .initializer(
              "init", [] { return LayerFrame::withRect({}); }, "Creates the zero rectangle.")
          .initializer("initWithRect:", LayerFrame::withRect, "Creates a rectangle.")
          .classOperation("rectWithRect:", LayerFrame::withRect, "Creates a rectangle.")
          .classOperation(
              "rectWithX:y:width:height:",
              [](double x, double y, double width, double height) {
                return LayerFrame::withRect({x, y, width, height});
              },
              "Creates a rectangle.")
          .property("constrainProportions", constrainsProportions, setConstrainsProportions,
                    "Whether the host keeps the proportions when the layer is resized by hand; no "
                    "without a layer.");
  return kClass;
}

std::shared_ptr<LayerFrame> LayerFrame::withRect(const QRectF& rect) {
  const auto frame = std::make_shared<LayerFrame>(nullptr);
  frame->assign(rect);
  return frame;
}

LayerFrame::LayerFrame(SketchLayerRef layer) : LayerRect(std::move(layer)) { read(); }

void LayerFrame::read() {
  if (!layer()) return;
  const QRectF rect = layer()->frameRect();
  setX(rect.x());
  setY(rect.y());
  setWidth(rect.width());
  setHeight(rect.height());
}

void LayerFrame::store() {
  if (layer()) layer()->setFrame(KVRectFromCGRect(CGRect()));
}

const ClassInfo& AbsoluteRect::staticClassInfo() {
  static const ClassInfo kClass =
      sides<AbsoluteRect>("MSAbsoluteRect")
          .property("rulerX", &AbsoluteRect::rulerX, &AbsoluteRect::setRulerX,
                    "Left edge on the artboard, or on the page; setting it moves the layer.")
          .property("rulerY", &AbsoluteRect::rulerY, &AbsoluteRect::setRulerY,
                    "Top edge on the artboard, or on the page; setting it moves the layer.");
  return kClass;
}

AbsoluteRect::AbsoluteRect(SketchLayerRef layer) : LayerRect(std::move(layer)) { read(); }

void AbsoluteRect::read() {
  const QRectF rect = frameOnPage(*layer());
  setX(rect.x());
  setY(rect.y());
  setWidth(rect.width());
  setHeight(rect.height());
}

/// Moves by as much as the corner is off, and takes the size as it is.
void AbsoluteRect::store() {
  const QRectF before = frameOnPage(*layer());
  const QTransform toPage = parentToPage(*layer());
  const QTransform linear(toPage.m11(), toPage.m12(), toPage.m21(), toPage.m22(), 0, 0);
  const QPointF by = linear.inverted().map(CGRect().topLeft() - before.topLeft());
  QRectF frame = layer()->frameRect().translated(by);
  if (CGRect().size() != before.size()) frame.setSize(CGRect().size());
  layer()->setFrame(KVRectFromCGRect(frame));
}

namespace {

QPointF rulerOrigin(const SketchLayer& layer) {
  const SketchLayerRef artboard = layer.artboard();
  return artboard && artboard.get() != &layer ? frameOnPage(*artboard).topLeft() : QPointF();
}

}  // namespace

double AbsoluteRect::rulerX() const { return x() - rulerOrigin(*layer()).x(); }
double AbsoluteRect::rulerY() const { return y() - rulerOrigin(*layer()).y(); }
void AbsoluteRect::setRulerX(double x) {
  setSide<&KVRect::setX>(*this, x + rulerOrigin(*layer()).x());
}
void AbsoluteRect::setRulerY(double y) {
  setSide<&KVRect::setY>(*this, y + rulerOrigin(*layer()).y());
}

QTransform parentToPage(const SketchLayer& layer) {
  QTransform toPage;
  for (SketchLayerRef around = layer.parent(); around && !around->isPage();
       around = around->parent()) {
    toPage *= around->transform();
  }
  return toPage;
}

QRectF frameOnPage(const SketchLayer& layer) {
  return parentToPage(layer).mapRect(layer.frameRect());
}

}  // namespace kelvar
