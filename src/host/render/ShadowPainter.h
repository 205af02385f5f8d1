#pragma once

#include <QPainterPath>
#include <QPen>
#include <functional>
#include <stop_token>

#include "host/render/LayerStyle.h"
#include "host/render/Surface.h"

namespace kelvar::render {

/// What casts a shadow, in the picture's pixels.
struct Caster {
  QRectF bounds;
  /// Draws it onto a surface in the shape that it has; only its alpha counts.
  std::function<void(Surface*, double spread)> draw;
  /// Whether something can be seen through it: then its shadow is left out behind it.
  bool isTranslucent = false;
};

/// What an outline is drawn along with for a shadow to be larger, or smaller, on every side.
QPen spreadPen(double spread);

/// Draws the shadow of `caster`. Shadows keep their direction when a layer is turned; `scale` is
/// by how much lengths grow on their way to the picture.
void paintShadow(const Caster& caster, const Shadow& shadow, double scale, const Canvas& canvas,
                 const std::stop_token& stop);

/// Draws the shadow that the rim of `outline`, in the picture's pixels, casts onto what it
/// surrounds.
void paintInnerShadow(const QPainterPath& outline, const Shadow& shadow, double scale,
                      const Canvas& canvas, const std::stop_token& stop);

/// How far a shadow of this blur radius is counted as part of the picture.
double shadowMargin(const Shadow& shadow);

}  // namespace kelvar::render
