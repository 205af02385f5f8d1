#include "sketch/document/SketchPath.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "sketch/document/LayerType.h"
#include "sketch/document/RoundedCorner.h"

namespace kelvar {
namespace {

/// More points cannot be told apart; documents that ask for them are hostile.
constexpr int kMaxStarPoints = 1000;

/// A point of an outline in the layer's coordinates. A side whose handles lie on its ends is
/// straight.
struct OutlinePoint {
  QPointF at;
  QPointF handleIn;
  QPointF handleOut;
  double radius = 0;
  CornerStyle style = CornerStyle::Rounded;
  bool hasIn = false;
  bool hasOut = false;
};

using Outline = std::vector<OutlinePoint>;

QPointF scaled(const QPointF& point, const QSizeF& size) {
  return {point.x() * size.width(), point.y() * size.height()};
}

OutlinePoint straight(double x, double y) {
  return {.at = {x, y}, .handleIn = {x, y}, .handleOut = {x, y}};
}

/// `count` points on the ellipse in the unit square, from the top on, clockwise; of a star, those
/// between lie at `innerRadius` of it.
Outline starPoints(int count, double innerRadius) {
  Outline outline;
  const bool isStar = innerRadius != 1;
  const int all = std::clamp(count, 3, kMaxStarPoints) * (isStar ? 2 : 1);
  for (int i = 0; i < all; ++i) {
    const double angle = 2 * std::numbers::pi * i / all;
    const double radius = isStar && i % 2 == 1 ? innerRadius / 2 : 0.5;
    outline.push_back(straight(0.5 + radius * std::sin(angle), 0.5 - radius * std::cos(angle)));
  }
  return outline;
}

Outline ovalPoints() {
  Outline outline;
  constexpr double kHandle = BezierPath::kQuarterHandle / 2;
  const QPointF directions[] = {{-1, 0}, {0, -1}, {1, 0}, {0, 1}};
  for (const QPointF& along : directions) {
    // A quarter turn ahead of the direction of travel, from the bottom on, clockwise.
    const QPointF at = QPointF(0.5, 0.5) + QPointF(along.y(), -along.x()) / 2;
    outline.push_back({.at = at,
                       .handleIn = at - along * kHandle,
                       .handleOut = at + along * kHandle,
                       .hasIn = true,
                       .hasOut = true});
  }
  return outline;
}

/// The points of a shape whose document has none, in the unit square.
Outline pointsOfKind(const SketchJson& shape) {
  const QString kind = classOf(shape);
  if (kind == u"rectangle" || isSketchFrame(shape) || isSketchArtboard(shape))
    return {straight(0, 0), straight(1, 0), straight(1, 1), straight(0, 1)};
  if (kind == u"triangle") return {straight(0.5, 0), straight(1, 1), straight(0, 1)};
  if (kind == u"oval") return ovalPoints();
  const int count = getInt(shape, "numberOfPoints", 5);
  if (kind == u"polygon") return starPoints(count, 1);
  if (kind == u"star")
    return starPoints(count, std::clamp(getNumber(shape, "radius", 0.5), 0.0, 0.999));
  return {};
}

OutlinePoint pointFromJson(const SketchJson& point) {
  OutlinePoint result;
  result.at = getPoint(point, "point");
  result.hasIn = getBool(point, "hasCurveTo");
  result.hasOut = getBool(point, "hasCurveFrom");
  result.handleIn = result.hasIn ? getPoint(point, "curveTo") : result.at;
  result.handleOut = result.hasOut ? getPoint(point, "curveFrom") : result.at;
  result.radius = std::max(0.0, getNumber(point, "cornerRadius"));
  result.style = CornerStyle(std::clamp(getInt(point, "cornerStyle"), 0, 3));
  return result;
}

/// Where the points and what goes with them are: in the shape itself, before Sketch 50 in its
/// "path".
const SketchJson& holderOf(const SketchJson& shape, const char* key) {
  return shape.contains(key) ? shape : get(shape, "path");
}

/// Of the style of a frame or a rectangle: one radius for all corners, or one for each.
const SketchJson& cornersOf(const SketchJson& shape) { return get(get(shape, "style"), "corners"); }

/// A rectangle's radius for all corners, and those of its style, count where its points have none
/// of their own.
void takeFixedRadius(const SketchJson& shape, Outline* outline) {
  const QString kind = classOf(shape);
  if (isSketchShape(shape) && (kind != u"rectangle" || getBool(shape, "edited"))) return;
  for (const OutlinePoint& point : *outline) {
    if (point.radius != 0) return;
  }
  const SketchJson& radii = getArray(cornersOf(shape), "radii");
  for (size_t i = 0; i < outline->size(); ++i) {
    double radius = getNumber(shape, "fixedRadius");
    if (!radii.empty()) {
      const SketchJson& own = radii[std::min(i, radii.size() - 1)];
      radius = own.is_number() ? own.get<double>() : 0;
    }
    (*outline)[i].radius = std::max(0.0, radius);
  }
}

Outline outlineOf(const SketchJson& shape, const QSizeF& size) {
  Outline outline;
  for (const SketchJson& point : getArray(holderOf(shape, "points"), "points")) {
    if (point.is_object()) outline.push_back(pointFromJson(point));
  }
  if (outline.empty()) outline = pointsOfKind(shape);
  takeFixedRadius(shape, &outline);
  for (OutlinePoint& point : outline) {
    point.at = scaled(point.at, size);
    point.handleIn = scaled(point.handleIn, size);
    point.handleOut = scaled(point.handleOut, size);
  }
  return outline;
}

double distance(const QPointF& a, const QPointF& b) {
  return std::hypot(a.x() - b.x(), a.y() - b.y());
}

/// Draws an outline: a walk from point to point that takes a short cut at each rounded corner.
class Walk {
 public:
  Walk(const Outline& outline, bool isClosed, bool isSmooth)
      : outline_(outline), isClosed_(isClosed), isSmooth_(isSmooth) {
    for (size_t i = 0; i < outline.size(); ++i) corners_.push_back(corner(i));
    for (size_t i = 0; i < outline.size(); ++i) shareSide(i);
  }

  BezierPath path() {
    const size_t count = outline_.size();
    if (count == 0) return {};
    if (corners_[0].reach > 0) {
      path_.moveTo(corners_[0].end());
    } else {
      path_.moveTo(outline_[0].at);
    }
    for (size_t i = 1; i < count; ++i) goTo(i - 1, i);
    if (isClosed_) {
      goTo(count - 1, 0);
      path_.close();
    }
    return path_;
  }

 private:
  size_t next(size_t i) const { return (i + 1) % outline_.size(); }
  size_t previous(size_t i) const { return (i + outline_.size() - 1) % outline_.size(); }

  bool isStraight(size_t from, size_t to) const {
    return !outline_[from].hasOut && !outline_[to].hasIn;
  }

  /// The corner at a point; without reach where it is not to be rounded. Points with handles of
  /// their own, the ends of an open path and corners at a curve stay as they are.
  RoundedCorner corner(size_t i) const {
    const OutlinePoint& point = outline_[i];
    const bool isEnd = !isClosed_ && (i == 0 || i + 1 == outline_.size());
    RoundedCorner corner{.at = point.at,
                         .before = outline_[previous(i)].at,
                         .after = outline_[next(i)].at,
                         .style = point.style,
                         .isSmooth = isSmooth_};
    if (isEnd || outline_.size() < 3 || !isStraight(previous(i), i) || !isStraight(i, next(i))) {
      return corner;
    }
    corner.setRadius(point.radius);
    return corner;
  }

  /// Two corners that want more of a side than it has get shares in proportion.
  void shareSide(size_t i) {
    RoundedCorner &from = corners_[i], &to = corners_[next(i)];
    const double wanted = from.wanted + to.wanted;
    const double side = distance(from.at, to.at);
    if (wanted <= 0) return;
    from.roomAfter = side * from.wanted / wanted;
    to.roomBefore = side * to.wanted / wanted;
    if (wanted > side) {
      from.reach = std::min(from.reach, from.roomAfter);
      to.reach = std::min(to.reach, to.roomBefore);
    }
  }

  void goTo(size_t from, size_t to) {
    const OutlinePoint &a = outline_[from], &b = outline_[to];
    if (!isStraight(from, to)) {
      path_.curveTo(b.at, a.handleOut, b.handleIn);
    } else if (corners_[to].reach > 0) {
      path_.lineTo(corners_[to].start());
      corners_[to].draw(&path_);
    } else if (to != 0 || b.at != a.at) {
      path_.lineTo(b.at);
    }
  }

  const Outline& outline_;
  const bool isClosed_;
  const bool isSmooth_;
  std::vector<RoundedCorner> corners_;
  BezierPath path_;
};

}  // namespace

BezierPath sketchPath(const SketchJson& shape, const QSizeF& size) {
  constexpr int kDisabled = -1, kSmooth = 2;
  const bool isClosed =
      getBool(holderOf(shape, "isClosed"), "isClosed", classOf(shape) != u"shapePath");
  const int rounding = getInt(holderOf(shape, "pointRadiusBehaviour"), "pointRadiusBehaviour");
  Outline outline = outlineOf(shape, size);
  if (rounding == kDisabled) {
    for (OutlinePoint& point : outline) point.radius = 0;
  }
  const bool isSmooth = rounding == kSmooth || getNumber(cornersOf(shape), "smoothing") > 0;
  return Walk(outline, isClosed, isSmooth).path();
}

}  // namespace kelvar
