#include "host/render/Resizing.h"

#include <algorithm>
#include <cmath>

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
Held heldAcross(int constraint) { return {!(constraint & 4), !(constraint & 2), !(constraint & 1)}; }
Held heldDown(int constraint) { return {!(constraint & 32), !(constraint & 16), !(constraint & 8)}; }

/// What is free shares the change in proportion.
Side resized(const Side& side, const Held& held, double from, double to) {
  const double end = from - side.start - side.length;
  double free = 0;
  if (!held.start) free += side.start;
  if (!held.length) free += side.length;
  if (!held.end) free += end;
  if (held.start && held.length) return side;
  if (std::abs(free) < 1e-9) {
    if (held.start || held.length) return held.length ? Side{to - end - side.length, side.length}
                                                      : Side{side.start, side.length + to - from};
    return side;
  }
  const double factor = (free + to - from) / free;
  if (held.length && held.end) return {to - end - side.length, side.length};
  const double start = held.start ? side.start : side.start * factor;
  double length = held.length ? side.length : side.length * factor;
  if (held.start && held.end) length = to - side.start - end;
  return {start, std::max(0.0, length)};
}

bool isContainer(const SketchJson& layer) {
  const QString kind = classOf(layer);
  return kind == u"group" || kind == u"shapeGroup";
}

}  // namespace

void resizeLayers(SketchJson* container, const QSizeF& from, const QSizeF& to) {
  const auto layers = container->find("layers");
  if (from == to || layers == container->end() || !layers->is_array()) return;
  for (SketchJson& layer : *layers) {
    if (!layer.is_object()) continue;
    const QRectF frame = rectIn(layer, "frame");
    const int constraint = integerIn(layer, "resizingConstraint", kEverythingFlexible);
    const Side across = resized({frame.x(), frame.width()}, heldAcross(constraint), from.width(),
                                to.width());
    const Side down = resized({frame.y(), frame.height()}, heldDown(constraint), from.height(),
                              to.height());
    SketchJson& changed = layer["frame"];
    changed["x"] = across.start;
    changed["y"] = down.start;
    changed["width"] = across.length;
    changed["height"] = down.length;
    if (isContainer(layer)) {
      resizeLayers(&layer, frame.size(), {across.length, down.length});
    }
  }
}

}  // namespace kelvar::render
