#include "sketch/classes/shapeWithPath.h"

#include "runtime/raise.h"
#include "sketch/classes/LayerClasses.h"
#include "sketch/classes/newLayerJson.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

struct Subpath {
  SketchJson points = SketchJson::array();
  bool isClosed = false;
};

/// The points of a path, each with its handles, in parts of the frame.
class CurvePoints {
 public:
  explicit CurvePoints(const QRectF& frame) : frame_(frame) {}

  QList<Subpath> of(const BezierPath& path) {
    for (const BezierPath::Element& element : path.elements()) add(element);
    finish();
    return subpaths_;
  }

 private:
  struct Point {
    QPointF at, from, to;
  };

  QPointF inFrame(const QPointF& point) const {
    const QPointF at = point - frame_.topLeft();
    return {frame_.width() > 0 ? at.x() / frame_.width() : 0,
            frame_.height() > 0 ? at.y() / frame_.height() : 0};
  }

  void add(const BezierPath::Element& element) {
    if (element.kind == BezierPath::Kind::Close) {
      isClosed_ = true;
      return;
    }
    const QPointF at = inFrame(element.end());
    if (element.kind == BezierPath::Kind::Move || isClosed_) finish();
    if (element.kind == BezierPath::Kind::Curve && !points_.isEmpty()) {
      points_.last().from = inFrame(element.points[0]);
      points_.append({at, at, inFrame(element.points[1])});
    } else {
      points_.append({at, at, at});
    }
  }

  /// A closed path that ends where it began has the last point twice.
  void finish() {
    if (points_.size() > 1) {
      if (isClosed_ && points_.first().at == points_.last().at) {
        points_.first().to = points_.takeLast().to;
      }
      Subpath subpath{SketchJson::array(), isClosed_};
      for (const Point& point : points_) {
        subpath.points.push_back(curvePoint(point.at, point.from, point.to));
      }
      subpaths_.append(subpath);
    }
    points_.clear();
    isClosed_ = false;
  }

  const QRectF frame_;
  QList<Point> points_;
  QList<Subpath> subpaths_;
  bool isClosed_ = false;
};

QRectF boundsOf(const BezierPath& path) {
  if (path.elements().isEmpty()) raise(u"the path has no points"_s);
  return path.bounds();
}

SketchLayerRef shapeOf(const Subpath& subpath, const QRectF& frame) {
  SketchJson json = newLayerJson("shapePath");
  json["points"] = subpath.points;
  json["isClosed"] = subpath.isClosed;
  json["edited"] = true;
  SketchLayerRef layer = SketchLayer::create(std::make_unique<Layer>(std::move(json)));
  layer->setFrame(KVRectFromCGRect(frame));
  return layer;
}

}  // namespace

SketchLayerRef layerWithPath(const BezierPath& path) {
  const QRectF frame = boundsOf(path);
  const QList<Subpath> subpaths = CurvePoints(frame).of(path);
  if (subpaths.size() != 1) {
    raise(u"the path has %1 parts; MSShapeGroup takes more than one"_s.arg(subpaths.size()));
  }
  return shapeOf(subpaths.first(), frame);
}

SketchLayerRef shapeWithPath(const QVariant& path) {
  if (const auto shape = std::dynamic_pointer_cast<SketchLayer>(path.value<ObjectRef>())) {
    if (!shape->isShape()) raise(u"\"%1\" is not a shape"_s.arg(shape->name()));
    shape->removeFromParent();
    const SketchLayerRef group = newLayerOfKind("shapeGroup", shape->frameRect());
    group->setName(shape->name());
    shape->setFrame(KVRectFromCGRect(QRectF(QPointF(), shape->frameRect().size())));
    insertOrRaise(*group, shape, 0);
    return group;
  }
  if (path.metaType() != QMetaType::fromType<BezierPath>()) {
    raise(u"shapeWithPath: takes a path or a shape"_s);
  }
  const BezierPath outline = path.value<BezierPath>();
  const QRectF frame = boundsOf(outline);
  const SketchLayerRef group = newLayerOfKind("shapeGroup", frame);
  for (const Subpath& subpath : CurvePoints(frame).of(outline)) {
    const QRectF inside(QPointF(), frame.size());
    insertOrRaise(*group, shapeOf(subpath, inside), group->children().size());
  }
  return group;
}

}  // namespace kelvar
