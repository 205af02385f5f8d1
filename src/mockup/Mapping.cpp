#include "mockup/Mapping.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "geometry/WarpedImage.h"
#include "platform/QtError.h"
#include "platform/image/ImageFile.h"
#include "platform/image/PixelSnapping.h"
#include "scene/validateQuad.h"

namespace kelvar {
namespace {

constexpr double kMaxSamples = 16;

/// How much finer than an edge's mean a design may be required: enough for strong perspective,
/// without a giant image for a shape that nearly vanishes at one end.
constexpr double kFinestOverMean = 4;

const auto kCannotWarp =
    QStringLiteral("the corners are too close to a line, or there is too little memory");

/// Samples per pixel and axis that a quality asks for; 1 for NaN.
int samples(double quality) {
  return quality > 1 ? int(std::min(std::ceil(quality), kMaxSamples)) : 1;
}

Result<void> validateInput(const warp::Quad& corners, const ImageRef& design) {
  if (design && design->isValid()) return validateQuad(corners);
  return failure(Error::Kind::InvalidArgument, QStringLiteral("there is no design"));
}

double distance(const warp::Point& a, const warp::Point& b) {
  return std::hypot(a.x - b.x, a.y - b.y);
}

QRectF boundingBox(const warp::Quad& quad) {
  QPolygonF polygon;
  for (const warp::Point& corner : quad) polygon.append({corner.x, corner.y});
  return polygon.boundingRect();
}

}  // namespace

Placement Mapping::placement() const {
  warp::Quad quad = corners;
  normalizePoints(quad);
  quad = orientedQuad(quad, options.flipped, uint64_t(options.rotation));
  return extent.isEmpty()
             ? placeInBoundingBox(quad, options.quality)
             : placeInRectangle(quad, extent.width(), extent.height(), options.quality);
}

Result<ImageRef> Mapping::createOutput(const ImageRef& design) const {
  const Result<void> valid = validateInput(corners, design);
  if (!valid) return tl::unexpected(valid.error());
  const auto [width, height, quad] = placement();
  const Result<void> fits = validateOutputSize(width, height);
  if (!fits) return tl::unexpected(fits.error());
  const QImage output =
      warpedImage(design->pixels(), width, height, quad, {.sampling = options.sampling});
  if (output.isNull()) return failure(Error::Kind::TooLarge, kCannotWarp);
  return std::make_shared<Image>(output);
}

warp::Quad Mapping::quadOnPhoto() const {
  warp::Quad quad = corners;
  makeClockwise(quad);
  return orientedQuad(quad, options.flipped, uint64_t(options.rotation));
}

Result<ImageRef> Mapping::compositeOnto(const ImageRef& design, const ImageRef& photo) const {
  QImage pixels = photo ? photo->pixels() : QImage();
  const Result<void> done = compositeInto(&pixels, design);
  if (!done) return tl::unexpected(done.error());
  return std::make_shared<Image>(pixels, photo->size());
}

Result<void> Mapping::compositeInto(QImage* photo, const ImageRef& design) const {
  if (photo->isNull())
    return failure(Error::Kind::InvalidArgument, QStringLiteral("there is no photo"));
  if (const Result<void> valid = validateInput(corners, design); !valid) return valid;
  const warp::Quad quad = quadOnPhoto();
  const QRect part = clippedToPixels(boundingBox(quad), photo->size());
  if (part.isEmpty()) return {};
  warp::Quad inPart = quad;
  for (warp::Point& corner : inPart) corner = {corner.x - part.x(), corner.y - part.y()};
  const QImage warped =
      warpedImage(design->pixels(), part.width(), part.height(), inPart,
                  {.sampling = options.sampling, .oversampling = samples(options.quality)});
  if (warped.isNull()) return failure(Error::Kind::TooLarge, kCannotWarp);
  QPainter(photo).drawImage(part.topLeft(), warped);
  return {};
}

QSizeF Mapping::requiredSourceSize(const warp::Quad& quad) {
  const auto map = warp::Homography::fromRectangle(1, 1, quad);
  if (!map) return {0, 0};
  const auto& m = map->m;
  double width = 0, height = 0;
  // With p the image of (u, v) and w its divisor, dp/du = ((m0, m3) - m6 p) / w, likewise for v.
  for (const warp::Point corner : {warp::Point{0, 0}, {1, 0}, {1, 1}, {0, 1}}) {
    const double w = m[6] * corner.x + m[7] * corner.y + m[8];
    const warp::Point p = map->map(corner);
    width = std::max(width, std::hypot(m[0] - m[6] * p.x, m[3] - m[6] * p.y) / w);
    height = std::max(height, std::hypot(m[1] - m[7] * p.x, m[4] - m[7] * p.y) / w);
  }
  const double across = std::max(distance(quad[0], quad[1]), distance(quad[3], quad[2]));
  const double down = std::max(distance(quad[0], quad[3]), distance(quad[1], quad[2]));
  return {std::min(width, kFinestOverMean * across), std::min(height, kFinestOverMean * down)};
}

QSizeF Mapping::rasterizationSize(const warp::Quad& quad, double finer) {
  const double side = ImageFile::kMaxSide;
  QSizeF size = requiredSourceSize(quad) * finer;
  size = {std::clamp(size.width(), 1.0, side), std::clamp(size.height(), 1.0, side)};
  // Drawing rounds up.
  const double most = double(ImageFile::kMaxBytes) / 4 - 2 * side;
  const double area = size.width() * size.height();
  return area <= most ? size : size * std::sqrt(most / area);
}

QSizeF Mapping::rasterizationSizeOnPhoto() const {
  return rasterizationSize(quadOnPhoto(), std::clamp(options.quality, 1.0, kMaxSamples));
}

Result<void> Mapping::validateOutputSize(double width, double height) {
  if (fitsImageLimits(width, height)) return {};
  return failure(
      Error::Kind::InvalidArgument,
      QStringLiteral("the output would be %1 by %2 pixels, and no image may have more "
                     "than %3 pixels per side or take more than %4 MiB at four bytes per "
                     "pixel")
          .arg(width)
          .arg(height)
          .arg(ImageFile::kMaxSide)
          .arg(ImageFile::kMaxBytes >> 20));
}

warp::Quad quadFrom(const std::array<QPointF, 4>& corners) {
  warp::Quad quad;
  for (size_t i = 0; i < 4; ++i) quad[i] = {corners[i].x(), corners[i].y()};
  return quad;
}

}  // namespace kelvar
