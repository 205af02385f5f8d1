#include "host/MockupLayer.h"

#include <algorithm>
#include <cmath>

#include "host/LayerMapping.h"
#include "host/SketchJson.h"

namespace kelvar {
namespace {

constexpr const char* kStyle = "style";
constexpr const char* kUserInfo = "userInfo";

/// The nearest position of the image quality.
int positionOf(double quality) {
  return int(std::clamp(std::round(quality), 1.0, double(Arrangement::kQualities))) - 1;
}

}  // namespace

MockupLayer::MockupLayer(const SketchLayerRef& layer, const SketchLayerRef& ground,
                         const QTransform& toPicture)
    : layer_(layer),
      settings_(LayerSettings::of(*layer)),
      style_(copyOf(kStyle)),
      userInfo_(copyOf(kUserInfo)) {
  QTransform fromLayer;
  for (SketchLayerRef around = layer; around != ground; around = around->parent()) {
    fromLayer *= around->transform();
  }
  fromLayer *= toPicture;
  isMirrored_ = fromLayer.determinant() < 0;
  const PointList corners = LayerMapping::cornersOf(layer);
  std::transform(corners.begin(), corners.end(), corners_.begin(),
                 [&](const QString& corner) { return fromLayer.map(pointFromString(corner)); });
}

MockupLayer::Json MockupLayer::copyOf(const char* member) const {
  const SketchJson& value = memberOf(layer_->json(), member);
  return value.is_null() ? nullptr : std::make_shared<const SketchJson>(value);
}

Arrangement::Shape MockupLayer::shape() const {
  Arrangement::Shape shape{
      .id = layer_->objectID(), .name = layer_->name(), .corners = corners_, .design = QString()};
  shape.isMirrored = isMirrored_;
  if (!settings_) return shape;
  shape.quality = positionOf(settings_->quality);
  shape.rotation = settings_->rotation;
  shape.flipped = settings_->isFlipped;
  shape.included = settings_->isIncludedInArtboards;
  return shape;
}

LayerSettings MockupLayer::settingsFor(const Arrangement::Shape& shape) const {
  // Documents know qualities between the positions, which are kept until another one is chosen.
  const bool isAsOpened = settings_ && shape.quality == positionOf(settings_->quality);
  return {.quality = isAsOpened ? settings_->quality : shape.quality + 1,
          .rotation = shape.rotation,
          .isFlipped = shape.flipped,
          .isIncludedInArtboards = shape.included};
}

void MockupLayer::restore(SketchDocument& document) const {
  if (const auto now = LayerSettings::of(*layer_)) document.dropWhenUnused(now->image);
  restore(kStyle, style_);
  restore(kUserInfo, userInfo_);
}

void MockupLayer::restore(const char* member, const Json& value) const {
  if (value) {
    layer_->edit()[member] = *value;
  } else if (layer_->json().contains(member)) {
    layer_->edit().erase(member);
  }
}

}  // namespace kelvar
