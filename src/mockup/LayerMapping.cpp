#include "mockup/LayerMapping.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "geometry/KVImage.h"
#include "geometry/KVLayerIterator.h"
#include "platform/QtError.h"
#include "platform/image/ImageFile.h"
#include "scene/validateQuad.h"
#include "sketch/document/DocumentFiles.h"
#include "sketch/document/newStyle.h"

namespace kelvar {
namespace {

/// From this version of documents on, styles have an identifier.
constexpr int kIdentifiedStyles = 121;

/// What Sketch writes for a shape without fills, borders and shadows.
SketchJson emptyStyle(int documentVersion) {
  SketchJson style = newStyle();
  if (documentVersion < kIdentifiedStyles) style.erase("do_objectID");
  for (const char* list : {"borders", "contextSettings", "fills", "shadows"}) style.erase(list);
  return style;
}

QSizeF frameSize(const SketchLayer& layer) { return layer.frameRect().size(); }

/// Removes the topmost fill if it is the image that was mapped before.
void removeImage(SketchDocument& document, const SketchLayer& layer, SketchJson* fills) {
  const auto before = LayerSettings::of(layer);
  if (!before || before->image.isNull() || fills->empty()) return;
  if (getString(get(fills->back(), "image"), "_ref") != before->image) return;
  fills->erase(fills->size() - 1);
  document.dropWhenUnused(before->image);
}

}  // namespace

LayerMapping::LayerMapping(SketchLayerRef layer, const LayerSettings& settings)
    : layer_(std::move(layer)), settings_(settings) {
  const QSizeF frame = frameSize(*layer_);
  pixelSize_ = {std::ceil(frame.width() * settings.options.scale()),
                std::ceil(frame.height() * settings.options.scale())};
  const double across = pixelSize_.width() / frame.width();
  const double down = pixelSize_.height() / frame.height();
  const std::vector<warp::Point> corners = cornersOf(layer_);
  assert(corners.size() == 4);
  std::transform(corners.begin(), corners.end(), corners_.begin(), [&](const warp::Point& corner) {
    return warp::Point{corner.x * across, corner.y * down};
  });
}

std::vector<warp::Point> LayerMapping::cornersOf(const SketchLayerRef& layer) {
  return KVLayerIterator::cornersOfLayer(layer);
}

Result<void> LayerMapping::validateTarget(const SketchLayerRef& layer) {
  const auto refuse = [](const QString& reason) {
    return failure(Error::Kind::InvalidArgument, reason);
  };
  const SketchLayerRef around = layer->parent();
  if (around && around->isShapeGroup()) {
    return refuse(
        QStringLiteral("it is a part of the shape group \"%1\", which is what takes a design")
            .arg(around->name()));
  }
  if (!layer->isShape() && !layer->isShapeGroup()) {
    return refuse(QStringLiteral("it is not a shape (%1)").arg(layer->kind()));
  }
  const QSizeF frame = frameSize(*layer);
  if (!(frame.width() > 0 && frame.height() > 0)) {
    return refuse(QStringLiteral("its frame is empty"));
  }
  const std::vector<warp::Point> corners = cornersOf(layer);
  if (corners.size() != 4) {
    return refuse(QStringLiteral("it has %1 corners, and a design needs four").arg(corners.size()));
  }
  return validateQuad({corners[0], corners[1], corners[2], corners[3]});
}

Result<void> LayerMapping::validateSize() const {
  return Mapping::validateOutputSize(pixelSize_.width(), pixelSize_.height());
}

KVRectRef LayerMapping::croppingRect() const {
  const BoxWithOrigin box = boxWithOrigin(corners_);
  return KVRectMake(-box.left, -box.top, pixelSize_.width(), pixelSize_.height());
}

Mapping LayerMapping::mapping() const {
  const BoxWithOrigin box = boxWithOrigin(corners_);
  const QRectF frame = croppingRect()->CGRect();
  MappingOptions options = settings_.options;
  options.quality = 1;  // The corners are in pixels.
  return {.corners = corners_,
          .options = options,
          .extent = QSizeF(box.width(), box.height())
                        .expandedTo({frame.x() + frame.width(), frame.y() + frame.height()})};
}

QSizeF LayerMapping::rasterizationSize() const {
  return Mapping::rasterizationSize(mapping().placement().quad);
}

Result<ImageRef> LayerMapping::createImage(const ImageRef& design) const {
  const Result<ImageRef> warped = mapping().createOutput(design);
  if (!warped) return warped;
  const QSizeF size = (*warped)->size();
  const ImageRef filled =
      KVImage::fillImage(*warped, KVRectMake(0, 0, size.width(), size.height()), 1, false);
  return KVImage::cropImage(filled, croppingRect());
}

Result<void> LayerMapping::fill(SketchDocument& document, const ImageRef& image) {
  if (!image->isValid()) {
    return failure(Error::Kind::Unsupported,
                   QStringLiteral("the image for \"%1\" cannot be encoded").arg(layer_->name()));
  }
  SketchJson& style = layer_->edit().change()["style"];
  if (!style.is_object()) style = emptyStyle(document.files().version());
  SketchJson& fills = style["fills"];
  if (!fills.is_array()) fills = SketchJson::array();
  removeImage(document, *layer_, &fills);
  for (SketchJson& below : fills) {
    if (below.is_object()) below["isEnabled"] = false;
  }
  settings_.image = document.addImage(ImageFile::toPng(*image));
  fills.push_back(newStretchedImageFill(settings_.image));
  settings_.rememberOn(*layer_);
  return {};
}

void LayerMapping::clear(SketchDocument& document, SketchLayer& layer) {
  if (!LayerSettings::of(layer)) return;
  if (const size_t before = getArray(get(layer.node().json(), "style"), "fills").size();
      before > 0) {
    SketchJson& fills = layer.edit().change()["style"]["fills"];
    removeImage(document, layer, &fills);
    const bool isRemoved = fills.size() < before;
    if (isRemoved && !fills.empty() && fills.back().is_object()) fills.back()["isEnabled"] = true;
  }
  LayerSettings::forgetOn(layer);
}

}  // namespace kelvar
