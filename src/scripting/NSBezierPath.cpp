#include "scripting/NSBezierPath.h"

#include <algorithm>
#include <cmath>

#include "runtime/ClassInfo.h"
#include "runtime/raise.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;
using Self = NSBezierPath;
using Kind = BezierPath::Kind;
using Ref = std::shared_ptr<Self>;

const ClassInfo::Registration kRegistered(&NSBezierPath::staticClassInfo);

constexpr double kHandle = BezierPath::kQuarterHandle;

Ref withRect(const QRectF& rect) {
  const auto path = std::make_shared<Self>();
  path->appendRect(rect);
  return path;
}
Ref withOval(const QRectF& rect) {
  const auto path = std::make_shared<Self>();
  path->appendOval(rect);
  return path;
}
Ref withRoundedRect(const QRectF& rect, double xRadius, double yRadius) {
  const auto path = std::make_shared<Self>();
  path->appendRoundedRect(rect, xRadius, yRadius);
  return path;
}

void move(Self& self, const QPointF& to) { self.append({Kind::Move, {to}}); }
void line(Self& self, const QPointF& to) { self.append({Kind::Line, {to}}); }
void curve(Self& self, const QPointF& to, const QPointF& first, const QPointF& second) {
  self.append({Kind::Curve, {first, second, to}});
}
/// An empty path stays empty.
void close(Self& self) {
  if (!self.path().elements().isEmpty()) self.append({Kind::Close, {}});
}
void relativeMove(Self& self, const QPointF& by) { move(self, self.currentPoint() + by); }
void relativeLine(Self& self, const QPointF& by) { line(self, self.currentPoint() + by); }

int elementAt(const Self& self, int index) {
  const auto& elements = self.path().elements();
  if (index < 0 || index >= elements.size()) {
    raise(u"the path has no element %1, only %2 in all"_s.arg(index).arg(elements.size()));
  }
  return int(elements[index].kind);
}

ClassInfoBuilder<Self> withDrawing(ClassInfoBuilder<Self> builder) {
  return std::move(builder)
      .operation("moveToPoint:", move, "Begins a part at a point.")
      .operation("lineToPoint:", line, "Adds a line.")
      .operation("curveToPoint:controlPoint1:controlPoint2:", curve, "Adds a cubic curve.")
      .operation("relativeMoveToPoint:", relativeMove, "Begins a part, from the current point.")
      .operation("relativeLineToPoint:", relativeLine, "Adds a line, from the current point.")
      .operation("closePath", close, "Adds a line to the beginning of the part.")
      .operation(
          "appendBezierPath:", [](Self& self, const BezierPath& path) { self.append(path); },
          "Adds what is in another path.")
      .operation("appendBezierPathWithRect:", &Self::appendRect, "Adds a rectangle.")
      .operation("appendBezierPathWithOvalInRect:", &Self::appendOval, "Adds an oval.")
      .operation("appendBezierPathWithRoundedRect:xRadius:yRadius:", &Self::appendRoundedRect,
                 "Adds a rectangle with rounded corners.")
      .operation("removeAllPoints", &Self::clear, "Empties the path.");
}

/// Three decimals are enough to read.
QString text(const QPointF& point) {
  return u"{%1, %2}"_s.arg(std::round(point.x() * 1e3) / 1e3)
      .arg(std::round(point.y() * 1e3) / 1e3);
}

}  // namespace

const ClassInfo& NSBezierPath::staticClassInfo() {
  static const ClassInfo kClass =
      withDrawing(
          ClassInfoBuilder<Self>("NSBezierPath")
              .initializer(
                  "init", [] { return std::make_shared<Self>(); }, "Creates an empty path.")
              .classOperation(
                  "bezierPath", [] { return std::make_shared<Self>(); }, "Creates an empty path.")
              .classOperation("bezierPathWithRect:", withRect, "Creates a rectangle.")
              .classOperation("bezierPathWithOvalInRect:", withOval, "Creates an oval.")
              .classOperation("bezierPathWithRoundedRect:xRadius:yRadius:", withRoundedRect,
                              "Creates a rectangle with rounded corners."))
          .operation("copy", &Self::path, "Returns a copy.")
          .property(
              "bezierPathByReversingPath", [](const Self& self) { return self.path().reversed(); },
              "The same path, traversed backwards.")
          .property(
              "bezierPathByFlatteningPath",
              [](const Self& self) { return self.path().flattened(); },
              "The same path with lines instead of curves.")
          .property(
              "bounds", [](const Self& self) { return self.path().bounds(); },
              "The smallest rectangle around what the path draws; zero for an empty path.")
          .property(
              "controlPointBounds",
              [](const Self& self) { return self.path().controlPointBounds(); },
              "The rectangle around all points, with those that control curves.")
          .property("currentPoint", &Self::currentPoint, "Where the next element begins.")
          .property(
              "isEmpty", [](const Self& self) { return self.path().elements().isEmpty(); },
              "Whether there is nothing in it.")
          .property(
              "elementCount", [](const Self& self) { return int(self.path().elements().size()); },
              "How many elements it has.")
          .operation("elementAtIndex:", elementAt,
                     "Returns the kind of an element: move (0), line (1), curve (2) or close (3).");
  return kClass;
}

void NSBezierPath::append(const BezierPath::Element& element) {
  if (element.kind != Kind::Move && path_.elements().isEmpty()) {
    raise(u"a path begins with moveToPoint:"_s);
  }
  for (const QPointF& point : element.points) {
    if (!std::isfinite(point.x()) || !std::isfinite(point.y())) {
      raise(u"the points of a path are finite numbers"_s);
    }
  }
  const auto& [first, second, end] = element.points;
  switch (element.kind) {
    case Kind::Move:
      return path_.moveTo(first);
    case Kind::Line:
      return path_.lineTo(first);
    case Kind::Curve:
      return path_.curveTo(end, first, second);
    case Kind::Close:
      return path_.close();
  }
}

void NSBezierPath::append(const BezierPath& path) {
  for (const BezierPath::Element& element : path.elements()) append(element);
}

void NSBezierPath::appendRect(const QRectF& rect) {
  append({Kind::Move, {rect.topLeft()}});
  append({Kind::Line, {rect.topRight()}});
  append({Kind::Line, {rect.bottomRight()}});
  append({Kind::Line, {rect.bottomLeft()}});
  append({Kind::Close, {}});
}

void NSBezierPath::appendOval(const QRectF& rect) {
  const QPointF center = rect.center();
  const QPointF across(rect.width() / 2, 0), down(0, rect.height() / 2);
  const std::pair<QPointF, QPointF> quarters[] = {
      {across, down}, {down, -across}, {-across, -down}, {-down, across}};
  append({Kind::Move, {center + across}});
  for (const auto& [from, to] : quarters) {
    append(
        {Kind::Curve, {center + from + to * kHandle, center + to + from * kHandle, center + to}});
  }
  append({Kind::Close, {}});
}

void NSBezierPath::appendRoundedRect(const QRectF& rect, double xRadius, double yRadius) {
  const QPointF across(std::clamp(xRadius, 0.0, rect.width() / 2), 0);
  const QPointF down(0, std::clamp(yRadius, 0.0, rect.height() / 2));
  if (across.x() == 0 || down.y() == 0) return appendRect(rect);
  struct Corner {
    QPointF at, from, to;
  };
  const Corner corners[] = {{rect.topRight(), -across, down},
                            {rect.bottomRight(), -down, -across},
                            {rect.bottomLeft(), across, -down},
                            {rect.topLeft(), down, across}};
  append({Kind::Move, {rect.topLeft() + across}});
  for (const auto& [at, from, to] : corners) {
    append({Kind::Line, {at + from}});
    append({Kind::Curve, {at + from * (1 - kHandle), at + to * (1 - kHandle), at + to}});
  }
  append({Kind::Close, {}});
}

QPointF NSBezierPath::currentPoint() const {
  const auto& elements = path_.elements();
  if (elements.isEmpty()) raise(u"an empty path has no current point"_s);
  if (elements.last().kind != Kind::Close) return elements.last().end();
  const auto part = std::find_if(elements.rbegin(), elements.rend(),
                                 [](const auto& element) { return element.kind == Kind::Move; });
  return part == elements.rend() ? QPointF() : part->points[0];
}

QString NSBezierPath::description() const {
  static constexpr const char* kNames[] = {"move", "line", "curve", "close"};
  QStringList parts;
  for (const BezierPath::Element& element : path_.elements()) {
    QString part = QString::fromLatin1(kNames[int(element.kind)]);
    for (size_t i = 0; i < element.pointCount(); ++i) part += u' ' + text(element.points[i]);
    parts.append(part);
  }
  return u"<NSBezierPath %1>"_s.arg(parts.join(u", "));
}

}  // namespace kelvar
