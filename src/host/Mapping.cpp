#include "host/Mapping.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "geometry/KVShape.h"
#include "geometry/WarpedImage.h"
#include "platform/ImageFile.h"
#include "platform/PixelGrid.h"

namespace kelvar {
namespace {

constexpr double kMostSamples = 16;

/// How much finer than an edge's mean a design is wanted: enough for strong perspective, while a
/// shape that nearly vanishes at one end asks for no giant picture.
constexpr double kFinestOverMean = 4;

/// Samples a pixel and axis that a scale asks for; 1 for not a number.
int samples(double scale) { return scale > 1 ? int(std::min(std::ceil(scale), kMostSamples)) : 1; }

double distance(const warp::Point& a, const warp::Point& b) {
  return std::hypot(a.x - b.x, a.y - b.y);
}

QRectF boundingBox(const warp::Quad& quad) {
  QPolygonF polygon;
  for (const warp::Point& corner : quad) polygon.append({corner.x, corner.y});
  return polygon.boundingRect();
}

}  // namespace

KVImageTransform Mapping::transform(const ImageRef& design) const {
  KVImageTransform transform;
  transform.setInput(design);
  const PointList corners = KVShape(nullptr, path).normalizedPoints();
  const auto corner = [&](qsizetype i) {
    return corners.size() == 4 ? pointFromString(corners[i]) : QPointF(0, 0);
  };
  transform.setTl(corner(0));
  transform.setTr(corner(1));
  transform.setBr(corner(2));
  transform.setBl(corner(3));
  transform.setScale(scale);
  transform.setRotation(rotation);
  transform.setFlipped(flipped);
  transform.setExtent(extent);
  transform.setSampling(sampling);
  return transform;
}

KVImageTransform::Placement Mapping::placement() const { return transform(nullptr).placement(); }

ImageRef Mapping::createOutput(const ImageRef& design) const {
  return transform(design).createOutput(threads);
}

warp::Quad Mapping::quadOnPhoto() const {
  const PointList corners = transform(nullptr).points();
  // Where the normalised points lie from those drawn.
  const QPointF moved = KVShape(nullptr, path).croppingRect()->CGRect().topLeft();
  warp::Quad quad;
  for (size_t i = 0; i < quad.size(); ++i) {
    const QPointF point = pointFromString(corners[qsizetype(i)]) - moved;
    quad[i] = {point.x(), point.y()};
  }
  return quad;
}

ImageRef Mapping::layOnto(const ImageRef& design, const ImageRef& photo) const {
  if (!photo) return std::make_shared<Image>();
  QImage pixels = photo->pixels();
  if (!layInto(&pixels, design)) return std::make_shared<Image>();
  return std::make_shared<Image>(pixels, photo->size());
}

bool Mapping::layInto(QImage* photo, const ImageRef& design) const {
  const warp::Quad quad = quadOnPhoto();
  if (!design || !design->isValid() || photo->isNull()) return false;
  if (!warp::Homography::fromRectangle(design->pixelWidth(), design->pixelHeight(), quad)) {
    return false;
  }
  const QRect part = clippedToPixels(boundingBox(quad), photo->size());
  if (part.isEmpty()) return true;
  warp::Quad inPart = quad;
  for (warp::Point& corner : inPart) corner = {corner.x - part.x(), corner.y - part.y()};
  const warp::Options options{
      .sampling = sampling, .oversampling = samples(scale), .threads = threads};
  const QImage laid = warpedImage(design->pixels(), part.width(), part.height(), inPart, options);
  if (laid.isNull()) return false;
  QPainter(photo).drawImage(part.topLeft(), laid);
  return true;
}

QSizeF Mapping::neededSize(const warp::Quad& quad) {
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

QSizeF Mapping::vectorSize(const warp::Quad& quad, double finer) {
  const double side = ImageFile::kMaxSide;
  QSizeF size = neededSize(quad) * finer;
  size = {std::clamp(size.width(), 1.0, side), std::clamp(size.height(), 1.0, side)};
  // Whoever draws rounds up, so a little is left for that.
  const double most = double(ImageFile::kMaxBytes) / 4 - 2 * side;
  const double area = size.width() * size.height();
  return area <= most ? size : size * std::sqrt(most / area);
}

QSizeF Mapping::vectorSizeOnPhoto() const {
  return vectorSize(quadOnPhoto(), std::clamp(scale, 1.0, kMostSamples));
}

}  // namespace kelvar
