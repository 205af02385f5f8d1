#include "sketch/render/symbols/Resizing.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "sketch/document/SketchTransform.h"

namespace kelvar::render {
namespace {

/// A side along one axis, and what the constraint holds fast of it.
struct Side {
  double start, length;
};

struct Held {
  bool start, length, end;
};

/// A bit that is set lets go.
constexpr int kEverythingFlexible = 63;
Held heldAcross(int constraint) {
  return {!(constraint & 4), !(constraint & 2), !(constraint & 1)};
}
Held heldDown(int constraint) {
  return {!(constraint & 32), !(constraint & 16), !(constraint & 8)};
}

/// What is free shares the change in proportion.
Side resized(const Side& side, const Held& held, double from, double to) {
  const double end = from - side.start - side.length;
  double free = 0;
  if (!held.start) free += side.start;
  if (!held.length) free += side.length;
  if (!held.end) free += end;
  if (held.start && held.length) return side;
  if (std::abs(free) < 1e-9) {
    // Two free margins of zero share the change equally.
    if (held.length && !held.end) return {(to - side.length) / 2, side.length};
    if (held.length) return {to - end - side.length, side.length};
    return held.start ? Side{side.start, side.length + to - from} : side;
  }
  const double factor = (free + to - from) / free;
  if (held.length && held.end) return {to - end - side.length, side.length};
  const double start = held.start ? side.start : side.start * factor;
  double length = held.length ? side.length : side.length * factor;
  if (held.start && held.end) length = to - side.start - end;
  return {start, std::max(0.0, length)};
}

/// Documents of Sketch 43 have one of four ways to resize in place of a constraint.
int constraintFromType(const SketchJson& layer, const QRectF& bounds, const QSizeF& container) {
  enum Type { PinToCorner = 1, KeepMargins = 2, Float = 3 };
  const bool isRight = bounds.center().x() > container.width() / 2;
  const bool isLow = bounds.center().y() > container.height() / 2;
  switch (getInt(layer, "resizingType")) {
    case PinToCorner:
      return kEverythingFlexible & ~(2 | 16 | (isRight ? 1 : 4) | (isLow ? 8 : 32));
    case KeepMargins:
      return kEverythingFlexible & ~(1 | 4 | 8 | 32);
    case Float:
      return kEverythingFlexible & ~(2 | 16);
    default:
      return kEverythingFlexible;
  }
}

bool isContainer(const SketchJson& layer) {
  const QString kind = classOf(layer);
  return kind == u"group" || kind == u"shapeGroup";
}

/// The frame of a layer whose bounds in the coordinates around it go from one rectangle to another:
/// a turned layer keeps its angle, and each of its sides grows as a line in its direction does.
QRectF frameWithin(const SketchJson& layer, const QRectF& from, const QRectF& to) {
  const QRectF frame = getRect(layer, "frame");
  const double across = from.width() > 0 ? to.width() / from.width() : 1;
  const double down = from.height() > 0 ? to.height() / from.height() : 1;
  const double angle = getNumber(layer, "rotation") * std::numbers::pi / 180;
  const double c = std::cos(angle), s = std::sin(angle);
  QRectF result({0, 0}, QSizeF(frame.width() * std::hypot(across * c, down * s),
                               frame.height() * std::hypot(across * s, down * c)));
  result.moveCenter(to.center());
  return result;
}

QRectF resizedFrame(const SketchJson& layer, const QSizeF& from, const QSizeF& to) {
  const bool isTurned = std::fmod(getNumber(layer, "rotation"), 180) != 0;
  const QRectF frame = getRect(layer, "frame");
  const QRectF bounds =
      isTurned ? sketchTransform(layer).mapRect(QRectF({0, 0}, frame.size())) : frame;
  const int constraint = layer.contains("resizingConstraint")
                             ? getInt(layer, "resizingConstraint", kEverythingFlexible)
                             : constraintFromType(layer, bounds, from);
  const Side across =
      resized({bounds.x(), bounds.width()}, heldAcross(constraint), from.width(), to.width());
  const Side down =
      resized({bounds.y(), bounds.height()}, heldDown(constraint), from.height(), to.height());
  const QRectF changed(across.start, down.start, across.length, down.length);
  return isTurned ? frameWithin(layer, bounds, changed) : changed;
}

}  // namespace

void resizeLayers(SketchJson* container, const QSizeF& from, const QSizeF& to) {
  const auto layers = container->find("layers");
  if (from == to || layers == container->end() || !layers->is_array()) return;
  for (SketchJson& layer : *layers) {
    if (!layer.is_object()) continue;
    const QSizeF before = getRect(layer, "frame").size();
    const QRectF frame = resizedFrame(layer, from, to);
    setRect(&layer, "frame", frame);
    const bool isText = classOf(layer) == u"text";
    if (isText && std::abs(frame.width() - before.width()) > 1e-6) layer[kHasForeignFrame] = true;
    if (isContainer(layer)) resizeLayers(&layer, before, frame.size());
  }
}

}  // namespace kelvar::render
