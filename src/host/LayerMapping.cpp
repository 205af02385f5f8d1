#include "host/LayerMapping.h"

#include <QBuffer>
#include <QUuid>
#include <cmath>

#include "geometry/KVImage.h"
#include "geometry/KVLayerIterator.h"
#include "host/SketchJson.h"
#include "platform/ImageFile.h"
#include "platform/PngWriter.h"

namespace kelvar {
namespace {

constexpr int kPatternFill = 4;
constexpr int kStretch = 2;
/// From this version of documents on, styles have an identifier.
constexpr int kIdentifiedStyles = 121;

SketchJson color(double white) {
  return {{"_class", "color"}, {"alpha", 1}, {"blue", white}, {"green", white}, {"red", white}};
}

/// Everything that any version of documents wants in a fill, also where a picture needs none of it.
SketchJson imageFill(const QString& reference) {
  const SketchJson stop{{"_class", "gradientStop"}, {"color", color(1)}, {"position", 0}};
  const SketchJson lastStop{{"_class", "gradientStop"}, {"color", color(0)}, {"position", 1}};
  return {{"_class", "fill"},
          {"isEnabled", true},
          {"fillType", kPatternFill},
          {"color", color(0.847)},
          {"contextSettings",
           {{"_class", "graphicsContextSettings"}, {"blendMode", 0}, {"opacity", 1}}},
          {"gradient",
           {{"_class", "gradient"},
            {"elipseLength", 0},
            {"from", "{0.5, 0}"},
            {"gradientType", 0},
            {"to", "{0.5, 1}"},
            {"stops", SketchJson::array({stop, lastStop})}}},
          {"image",
           {{"_class", "MSJSONFileReference"},
            {"_ref_class", "MSImageData"},
            {"_ref", reference.toStdString()}}},
          {"noiseIndex", 0},
          {"noiseIntensity", 0},
          {"patternFillType", kStretch},
          {"patternTileScale", 1}};
}

SketchJson emptyStyle(int documentVersion) {
  SketchJson style{{"_class", "style"}};
  if (documentVersion >= kIdentifiedStyles) {
    style["do_objectID"] =
        QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper().toStdString();
  }
  style.update({{"endMarkerType", 0},
                {"miterLimit", 10},
                {"startMarkerType", 0},
                {"windingRule", 1},
                {"borderOptions",
                 {{"_class", "borderOptions"},
                  {"isEnabled", true},
                  {"dashPattern", SketchJson::array()},
                  {"lineCapStyle", 0},
                  {"lineJoinStyle", 0}}},
                {"colorControls",
                 {{"_class", "colorControls"},
                  {"isEnabled", false},
                  {"brightness", 0},
                  {"contrast", 1},
                  {"hue", 0},
                  {"saturation", 1}}},
                {"innerShadows", SketchJson::array()}});
  return style;
}

QSizeF frameSize(const SketchLayer& layer) { return layer.frameRect().size(); }

QByteArray packed(const Image& picture) {
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  return writePng(picture.pixels(), &buffer) ? buffer.data() : QByteArray();
}

/// Removes the topmost fill where it is the picture that was mapped before.
void removePicture(SketchDocument& document, const SketchLayer& layer, SketchJson* fills) {
  const auto before = LayerSettings::of(layer);
  if (!before || before->image.isNull() || fills->empty()) return;
  if (textIn(memberOf(fills->back(), "image"), "_ref") != before->image) return;
  fills->erase(fills->size() - 1);
  document.dropWhenUnused(before->image);
}

}  // namespace

LayerMapping::LayerMapping(SketchLayerRef layer, const LayerSettings& settings)
    : layer_(std::move(layer)), settings_(settings) {
  const QSizeF frame = frameSize(*layer_);
  pixelSize_ = {std::ceil(frame.width() * settings.quality),
                std::ceil(frame.height() * settings.quality)};
  const double across = pixelSize_.width() / frame.width();
  const double down = pixelSize_.height() / frame.height();
  for (const QString& corner : cornersOf(layer_)) {
    const QPointF point = pointFromString(corner);
    points_.append(stringFromPoint({point.x() * across, point.y() * down}));
  }
}

PointList LayerMapping::cornersOf(const SketchLayerRef& layer) {
  return KVLayerIterator().extractPointsFromLayer(layer);
}

QString LayerMapping::objectionTo(const SketchLayerRef& layer) {
  const SketchLayerRef around = layer->parent();
  if (around && around->isShapeGroup()) {
    return QStringLiteral("it is a part of the shape group \"%1\", which is what takes a design")
        .arg(around->name());
  }
  if (!layer->isShape() && !layer->isShapeGroup()) {
    return QStringLiteral("it is no shape (%1)").arg(layer->kind());
  }
  const QSizeF frame = frameSize(*layer);
  if (!(frame.width() > 0 && frame.height() > 0)) return QStringLiteral("its frame is empty");
  const PointList corners = cornersOf(layer);
  if (corners.size() != 4) {
    return QStringLiteral("it has %1 corners, and a design needs four").arg(corners.size());
  }
  return !Mapping::neededSize(Mapping{.path = corners}.quadOnPhoto()).isEmpty()
             ? QString()
             : QStringLiteral(
                   "its corners lie on a line, or its sides cross: no perspective "
                   "looks like that");
}

QString LayerMapping::objection() const {
  if (isHoldable(pixelSize_.width(), pixelSize_.height())) return {};
  return QStringLiteral(
             "its picture would be %1 by %2 pixels, and no picture may have more than %3 "
             "a side or take more than %4 MiB at four bytes a pixel")
      .arg(pixelSize_.width())
      .arg(pixelSize_.height())
      .arg(ImageFile::kMaxSide)
      .arg(ImageFile::kMaxBytes >> 20);
}

KVShape LayerMapping::shape() const {
  return {KVRectMake(0, 0, pixelSize_.width(), pixelSize_.height()), points_};
}

Mapping LayerMapping::mapping() const {
  const KVShape shape = this->shape();
  const QRectF frame = shape.scaledCroppingRect()->CGRect();
  return {.path = shape.normalizedPoints(),
          .rotation = settings_.rotation,
          .flipped = settings_.isFlipped,
          .extent = shape.scaledSize().expandedTo(
              {frame.x() + frame.width(), frame.y() + frame.height()})};
}

QSizeF LayerMapping::vectorSize() const { return Mapping::vectorSize(mapping().placement().quad); }

ImageRef LayerMapping::picture(const ImageRef& design, warp::Sampling sampling, int threads) const {
  Mapping mapping = this->mapping();
  mapping.sampling = sampling;
  mapping.threads = threads;
  const ImageRef warped = mapping.createOutput(design);
  if (!warped->isValid()) return warped;
  const QSizeF ground = warped->size();
  const ImageRef filled =
      KVImage::fillImage(warped, KVRectMake(0, 0, ground.width(), ground.height()), 1, false);
  return KVImage::cropImage(filled, shape().scaledCroppingRect());
}

bool LayerMapping::fill(SketchDocument& document, const ImageRef& picture, QString* error) {
  const QByteArray png = packed(*picture);
  if (png.isEmpty()) {
    *error = QStringLiteral("the picture for \"%1\" cannot be packed").arg(layer_->name());
    return false;
  }
  SketchJson& style = layer_->edit()["style"];
  if (!style.is_object()) style = emptyStyle(integerIn(document.meta(), "version"));
  SketchJson& fills = style["fills"];
  if (!fills.is_array()) fills = SketchJson::array();
  removePicture(document, *layer_, &fills);
  for (SketchJson& below : fills) {
    if (below.is_object()) below["isEnabled"] = false;
  }
  settings_.image = document.addImage(png);
  fills.push_back(imageFill(settings_.image));
  settings_.rememberOn(*layer_);
  return true;
}

void LayerMapping::clear(SketchDocument& document, SketchLayer& layer) {
  if (!LayerSettings::of(layer)) return;
  if (const size_t before = listIn(memberOf(layer.json(), "style"), "fills").size(); before > 0) {
    SketchJson& fills = layer.edit()["style"]["fills"];
    removePicture(document, layer, &fills);
    const bool isRemoved = fills.size() < before;
    if (isRemoved && !fills.empty() && fills.back().is_object()) fills.back()["isEnabled"] = true;
  }
  LayerSettings::forgetOn(layer);
}

}  // namespace kelvar
