#include "geometry/KVImage.h"

#include <cmath>

#include "geometry/CGRectAspectFittingSize.h"
#include "platform/Canvas.h"
#include "platform/Log.h"
#include "platform/PixelGrid.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

constexpr double kShadowAlpha = 0.25;
constexpr double kShadowBlur = 1.0;

bool canBeDrawn(const ImageRef& image) {
  if (image && image->isValid()) return true;
  logLine(u"Invalid Image");
  return false;
}

const ClassInfo::Registration kRegistered(&KVImage::theClass);

}  // namespace

const ClassInfo& KVImage::theClass() {
  static const ClassInfo kClass =
      Description<KVImage>("KVImage")
          .classOperation("getCGImage:", &KVImage::getCGImage)
          .classOperation("scaleImage:size:", &KVImage::scaleImage)
          .classOperation("fillImage:insideBounds:scale:shouldTrimTransparent:",
                          [](const ImageRef& image, const KVRectRef& bounds, double scale,
                             bool trim) { return fillImage(image, bounds, scale, trim); })
          .classOperation("fillImage:insideBounds:scale:shouldTrimTransparent:shadow:",
                          &KVImage::fillImage)
          .classOperation("cropImage:withBounds:", &KVImage::cropImage);
  return kClass;
}

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
  const QRect pixels = clippedToPixels(frame, bitmap.size());
  return std::make_shared<Image>(pixels.isEmpty() ? QImage() : bitmap.copy(pixels), frame.size());
}

}  // namespace kelvar
