#pragma once

#include <cstdint>
#include <span>

#include "pixels/Export.h"
#include "pixels/warp/Homography.h"

namespace kelvar {

/// Converts the corners of a shape, as drawn, to the quad that a design is warped onto. All
/// coordinates are doubles, with y down. The `KV…` classes offer the same steps for point strings.

/// The bounding box of some points and of (0, 0), the origin that they are measured from.
struct BoxWithOrigin {
  double left = 0, top = 0, right = 0, bottom = 0;
  double width() const { return right - left; }
  double height() const { return bottom - top; }
};
KELVAR_PIXELS_EXPORT BoxWithOrigin boxWithOrigin(std::span<const warp::Point> points);

/// The trapezoid term (x2 - x1) (y1 + y2) of the edge from `a` to `b`.
inline double windingTerm(const warp::Point& a, const warp::Point& b) {
  return (b.x - a.x) * (a.y + b.y);
}

/// The sum of `windingTerm` over the edges of the polygon, including the closing one: minus twice
/// its area if it runs clockwise on screen. 0 for no points.
KELVAR_PIXELS_EXPORT double windingSum(std::span<const warp::Point> points);

/// Whether the winding sum is not greater than zero. Polygons without a winding count as clockwise:
/// no points, no area, or a sum that is NaN.
KELVAR_PIXELS_EXPORT bool isClockwise(std::span<const warp::Point> points);

/// Reverses the points if they are not clockwise on screen; the first stays first.
KELVAR_PIXELS_EXPORT void makeClockwise(std::span<warp::Point> points);

/// Moves points so that no coordinate is negative, and makes them clockwise.
KELVAR_PIXELS_EXPORT void normalizePoints(std::span<warp::Point> points);

/// Where the design's top-left, top-right, bottom-right and bottom-left corners go on a clockwise
/// shape: the flip is applied first, then the quarter turns, modulo 4.
KELVAR_PIXELS_EXPORT warp::Quad orientedQuad(const warp::Quad& corners, bool flipped,
                                             uint64_t rotation);

/// Size and corners of a warped image: its size in whole pixels, which may exceed the image limits,
/// and the quad in its pixels.
struct Placement {
  double width = 0;
  double height = 0;
  warp::Quad quad;
};

/// An image of `quad` times `scale` (0 is read as 1) that covers the scaled quad's bounding box,
/// widened to whole pixels. The pixel grid is anchored at the quad's lowest point and at whole x
/// coordinates.
KELVAR_PIXELS_EXPORT Placement placeInBoundingBox(const warp::Quad& quad, double scale);

/// The same, covering the scaled rectangle from (0, 0) to (`width`, `height`), widened to the right
/// and downwards.
KELVAR_PIXELS_EXPORT Placement placeInRectangle(const warp::Quad& quad, double width, double height,
                                                double scale);

}  // namespace kelvar
