#include "geometry/KVImageTransform.h"

#include <algorithm>
#include <stdexcept>

#include "geometry/WarpedImage.h"
#include "platform/PixelGrid.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&KVImageTransform::theClass);

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

const ClassInfo& KVImageTransform::theClass() {
  using Self = KVImageTransform;
  static const ClassInfo kClass =
      Description<Self>("KVImageTransform")
          .initialiser("init", [] { return std::make_shared<Self>(); })
          .property("input", &Self::input, &Self::setInput)
          .property("scale", &Self::scale, &Self::setScale)
          .property("rotation", &Self::rotation, &Self::setRotation)
          .property("flipped", &Self::flipped, &Self::setFlipped)
          .property("sampling", samplingName, setSamplingName)
          .property("extent", &Self::extent, &Self::setExtent)
          .property("tl", &Self::tl, &Self::setTl)
          .property("tr", &Self::tr, &Self::setTr)
          .property("br", &Self::br, &Self::setBr)
          .property("bl", &Self::bl, &Self::setBl)
          .operation("points", &Self::points)
          .operation("createOutput", [](const Self& self) { return self.createOutput(); })
          .operation("getCIImageFromNSImage:", &Self::getCIImageFromNSImage)
          .operation("getNSImage:", &Self::getNSImage);
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

PointList KVImageTransform::points() const {
  PointList list;
  if (flipped_) {
    list = {stringFromPoint(tr_), stringFromPoint(tl_), stringFromPoint(bl_), stringFromPoint(br_)};
  } else {
    list = {stringFromPoint(tl_), stringFromPoint(tr_), stringFromPoint(br_), stringFromPoint(bl_)};
  }
  // Each step moves the last entry to the front; four of them change nothing.
  for (uint64_t step = 0; step < rotation_ % 4; ++step) list.prepend(list.takeLast());
  return list;
}

KVImageTransform::Placement KVImageTransform::placement() const {
  const double f = scale_ == 0 ? 1.0 : scale_;
  Placement placement;
  const PointList list = points();
  for (size_t i = 0; i < 4; ++i) {
    const QPointF point = pointFromString(list[qsizetype(i)]) * f;
    placement.quad[i] = {point.x(), point.y()};
  }
  if (!extent_.isEmpty()) {
    placement.width = ceilToPixel(extent_.width() * f);
    placement.height = ceilToPixel(extent_.height() * f);
    return placement;
  }
  const auto byX = [](auto a, auto b) { return a.x < b.x; };
  const auto byY = [](auto a, auto b) { return a.y < b.y; };
  const auto [left, right] = std::minmax_element(placement.quad.begin(), placement.quad.end(), byX);
  const auto [top, bottom] = std::minmax_element(placement.quad.begin(), placement.quad.end(), byY);
  // Bottom-up the lowest point has y = 0, so that only the top edge is widened.
  const double origin = floorToPixel(left->x), lowest = bottom->y;
  placement.width = ceilToPixel(right->x) - origin;
  placement.height = ceilToPixel(lowest - top->y);
  for (warp::Point& corner : placement.quad) {
    corner = {corner.x - origin, placement.height - (lowest - corner.y)};
  }
  return placement;
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
