#include "mockup/MockupLayer.h"

#include <algorithm>
#include <cmath>

#include "mockup/LayerMapping.h"
#include "sketch/document/Layer.h"

namespace kelvar {
namespace {

constexpr const char* kStyle = "style";
constexpr const char* kUserInfo = "userInfo";

}  // namespace

MockupLayer::MockupLayer(const SketchLayerRef& layer, const SketchLayerRef& backdrop,
                         const QTransform& toImage)
    : layer_(layer),
      settings_(LayerSettings::of(*layer)),
      style_(copyOf(kStyle)),
      userInfo_(copyOf(kUserInfo)) {
  QTransform fromLayer;
  for (SketchLayerRef ancestor = layer; ancestor != backdrop; ancestor = ancestor->parent()) {
    fromLayer *= ancestor->transform();
  }
  fromLayer *= toImage;
  isMirrored_ = fromLayer.determinant() < 0;
  const std::vector<warp::Point> corners = LayerMapping::cornersOf(layer);
  std::transform(corners.begin(), corners.end(), corners_.begin(), [&](const warp::Point& corner) {
    return fromLayer.map(QPointF(corner.x, corner.y));
  });
}

MockupLayer::Json MockupLayer::copyOf(const char* member) const {
  const SketchJson& value = get(layer_->node().json(), member);
  return value.is_null() ? nullptr : std::make_shared<const SketchJson>(value);
}

Arrangement::Shape MockupLayer::shape() const {
  Arrangement::Shape shape{
      .id = layer_->objectID(), .name = layer_->name(), .corners = corners_, .design = QString()};
  shape.isMirrored = isMirrored_;
  if (settings_) shape.options = settings_->options;
  return shape;
}

void MockupLayer::restore(SketchDocument& document) const {
  if (const auto now = LayerSettings::of(*layer_)) document.dropWhenUnused(now->image);
  restore(kStyle, style_);
  restore(kUserInfo, userInfo_);
}

void MockupLayer::restore(const char* member, const Json& value) const {
  if (value) {
    layer_->edit().change()[member] = *value;
  } else if (layer_->node().json().contains(member)) {
    layer_->edit().change().erase(member);
  }
}

}  // namespace kelvar
