#include "geometry/KVImage.h"

#include <algorithm>
#include <cmath>

#include "geometry/CGRectAspectFittingSize.h"
#include "platform/Canvas.h"
#include "platform/Log.h"
#include "platform/PixelGrid.h"

namespace kelvar {
namespace {

constexpr double kShadowAlpha = 0.25;
constexpr double kShadowBlur = 1.0;

bool canBeDrawn(const ImageRef& image) {
  if (image && image->isValid()) return true;
  logLine(u"Invalid Image");
  return false;
}

/// `rect` within (0, 0, width, height), widened to whole pixels; empty for not a number.
QRect clippedToPixels(const QRectF& rect, int width, int height) {
  const QRectF box = rect.normalized();
  if (!(box.width() > 0 && box.height() > 0)) return {};
  // In this order of arguments, what is not a number stays so and fails the comparison below.
  const double left = std::max(floorToPixel(box.left()), 0.0);
  const double top = std::max(floorToPixel(box.top()), 0.0);
  const double right = std::min(ceilToPixel(box.right()), double(width));
  const double bottom = std::min(ceilToPixel(box.bottom()), double(height));
  if (!(left < right && top < bottom)) return {};
  return {int(left), int(top), int(right - left), int(bottom - top)};
}

}  // namespace

QImage KVImage::getCGImage(const ImageRef& image) {
  const QSizeF size = image ? image->size() : QSizeF(0, 0);
  Canvas canvas({std::trunc(size.width()), std::trunc(size.height())});
  if (image) canvas.drawImage(*image, {QPointF(0, 0), size}, Canvas::Operation::Copy);
  return canvas.pixels();
}

ImageRef KVImage::scaleImage(const ImageRef& image, const QSizeF& size) {
  if (!canBeDrawn(image)) return nullptr;
  image->setSize(size);
  Canvas canvas(size);
  canvas.drawImage(*image, {QPointF(0, 0), size}, Canvas::Operation::Copy);
  return std::make_shared<Image>(canvas.image());
}

ImageRef KVImage::fillImage(const ImageRef& image, const KVRectRef& insideBounds, double scale,
                            bool shouldTrimTransparent, const QSizeF& shadow) {
  if (!canBeDrawn(image)) return nullptr;
  const double f = scale == 0 ? 1.0 : scale;
  const QSizeF frame = rectOrZero(insideBounds).size() * f;
  const QSizeF bounds(std::abs(frame.width()), std::abs(frame.height()));
  const QSizeF fitted = CGRectAspectFittingSize(image->size(), {{0, 0}, bounds}).size();
  const QSizeF size = shouldTrimTransparent ? fitted : bounds;
  const QPointF origin((size.width() - fitted.width()) * 0.5,
                       (size.height() - fitted.height()) * 0.5);
  Canvas canvas(size);
  canvas.setShadow(QColor::fromRgbF(0, 0, 0, kShadowAlpha), kShadowBlur, shadow);
  canvas.drawImage(*image, {origin, fitted}, Canvas::Operation::SourceOver);
  return std::make_shared<Image>(canvas.image());
}

ImageRef KVImage::cropImage(const ImageRef& image, const KVRectRef& withBounds) {
  const QImage bitmap = getCGImage(image);
  const QRectF frame = rectOrZero(withBounds);
  const QRect pixels = clippedToPixels(frame, bitmap.width(), bitmap.height());
  return std::make_shared<Image>(pixels.isEmpty() ? QImage() : bitmap.copy(pixels), frame.size());
}

}  // namespace kelvar
