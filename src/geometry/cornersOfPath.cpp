#include "geometry/cornersOfPath.h"

#include <cmath>

#include "geometry/PointList.h"
#include "platform/Log.h"

namespace kelvar {
namespace {

QString text(const warp::Point& point) { return stringFromPoint({point.x, point.y}); }

bool isSame(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

bool isSame(const warp::Point& a, const warp::Point& b) {
  return isSame(a.x, b.x) && isSame(a.y, b.y);
}

}  // namespace

std::vector<warp::Point> cornersOfPath(const BezierPath& path) {
  using Kind = BezierPath::Kind;
  const QList<BezierPath::Element> elements = path.flattened().elements();
  const auto endOf = [](const BezierPath::Element& element) {
    return warp::Point{element.end().x(), element.end().y()};
  };
  std::vector<warp::Point> corners;
  warp::Point last;
  for (const BezierPath::Element& element : elements) {
    if (element.kind == Kind::Move) {
      const warp::Point first = endOf(elements.first());
      logLine(u"Move line from %@ to %@", {text(last), text(first)});
      last = first;
    } else if (element.kind == Kind::Line) {
      const warp::Point point = endOf(element);
      if (corners.empty()) corners.push_back(last);
      if (!isSame(point, last)) corners.push_back(point);
      last = point;
    } else if (element.kind == Kind::Close) {
      const warp::Point first = endOf(elements.first());
      logLine(u"Close line from %@ to %@", {text(last), text(first)});
      if (isSame(last, first) && !corners.empty()) corners.pop_back();
      break;
    }
  }
  return corners;
}

}  // namespace kelvar
