#include "geometry/KVImageTransform.h"

#include <stdexcept>

#include "geometry/WarpedImage.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&KVImageTransform::staticClassInfo);

const auto kBest = QStringLiteral("best");
const auto kBilinear = QStringLiteral("bilinear");

QString samplingName(const KVImageTransform& self) {
  return self.sampling() == warp::Sampling::Best ? kBest : kBilinear;
}

void setSamplingName(KVImageTransform& self, const QString& name) {
  if (name != kBest && name != kBilinear) {
    throw std::invalid_argument("sampling is \"best\" or \"bilinear\"");
  }
  self.setSampling(name == kBest ? warp::Sampling::Best : warp::Sampling::Bilinear);
}

}  // namespace

const ClassInfo& KVImageTransform::staticClassInfo() {
  using Self = KVImageTransform;
  static const ClassInfo kClass =
      ClassInfoBuilder<Self>("KVImageTransform")
          .initializer(
              "init", [] { return std::make_shared<Self>(); },
              "Creates a transform without an input.")
          .property(
              "input", &Self::input, &Self::setInput,
              "The image to warp; setting it moves the four corners to the image's own rectangle.")
          .property("scale", &Self::scale, &Self::setScale,
                    "Factor for the four corners; 0 counts as 1.")
          .property("rotation", &Self::rotation, &Self::setRotation,
                    "Quarter turns of the image within the shape, counter-clockwise on screen, "
                    "applied after the flip.")
          .property("flipped", &Self::flipped, &Self::setFlipped,
                    "Whether the image is mirrored left to right.")
          .property(
              "sampling", samplingName, setSamplingName,
              "How pixels are read: \"bilinear\", or \"best\" for area filtering and smooth edges.")
          .property("extent", &Self::extent, &Self::setExtent,
                    "Size that the output covers from (0, 0), in the corners' units; empty for the "
                    "corners' bounding box.")
          .property("tl", &Self::tl, &Self::setTl,
                    "Where the image's top-left corner goes, in the target shape's units.")
          .property("tr", &Self::tr, &Self::setTr, "Where the image's top-right corner goes.")
          .property("br", &Self::br, &Self::setBr, "Where the image's bottom-right corner goes.")
          .property("bl", &Self::bl, &Self::setBl, "Where the image's bottom-left corner goes.")
          .operation("points", &Self::points,
                     "Returns where the image's top-left, top-right, bottom-right and bottom-left "
                     "corners go after flip and rotation, unscaled.")
          .operation(
              "createOutput", [](const Self& self) { return self.createOutput(); },
              "Returns the warped image, transparent outside the corners; an invalid image of size "
              "zero if it cannot be made.")
          .operation("getCIImageFromNSImage:", &Self::getCIImageFromNSImage,
                     "Returns the image's pixels without its nominal size.")
          .operation("getNSImage:", &Self::getNSImage,
                     "Returns an image of these pixels, one point each.");
  return kClass;
}

void KVImageTransform::setInput(ImageRef input) {
  input_ = std::move(input);
  const QSizeF size = input_ ? input_->size() : QSizeF(0, 0);
  tl_ = {0, 0};
  tr_ = {size.width(), 0};
  br_ = {size.width(), size.height()};
  bl_ = {0, size.height()};
}

warp::Quad KVImageTransform::quad() const {
  const warp::Quad corners{
      {{tl_.x(), tl_.y()}, {tr_.x(), tr_.y()}, {br_.x(), br_.y()}, {bl_.x(), bl_.y()}}};
  return orientedQuad(corners, flipped_, rotation_);
}

PointList KVImageTransform::points() const { return stringsFromPoints(quad()); }

Placement KVImageTransform::placement() const {
  if (extent_.isEmpty()) return placeInBoundingBox(quad(), scale_);
  return placeInRectangle(quad(), extent_.width(), extent_.height(), scale_);
}

ImageRef KVImageTransform::createOutput(int threads) const {
  const auto [width, height, quad] = placement();
  return getNSImage(warpedImage(getCIImageFromNSImage(input_), width, height, quad,
                                {.sampling = sampling_, .threads = threads}));
}

QImage KVImageTransform::getCIImageFromNSImage(const ImageRef& image) const {
  return image ? image->pixels() : QImage();
}

ImageRef KVImageTransform::getNSImage(const QImage& pixels) const {
  return std::make_shared<Image>(pixels);
}

}  // namespace kelvar
