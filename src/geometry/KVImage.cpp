#include "geometry/KVImage.h"

#include <cmath>

#include "geometry/CGRectAspectFittingSize.h"
#include "platform/Log.h"
#include "platform/image/Canvas.h"
#include "platform/image/PixelSnapping.h"
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

const ClassInfo::Registration kRegistered(&KVImage::staticClassInfo);

}  // namespace

const ClassInfo& KVImage::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<KVImage>("KVImage")
          .classOperation("getCGImage:", &KVImage::getCGImage,
                          "Returns the image drawn into a bitmap of its nominal size, or nil if "
                          "that is less than a pixel.")
          .classOperation("scaleImage:size:", &KVImage::scaleImage,
                          "Returns a new image of this size and changes the nominal size of the "
                          "given image to it; nil for an invalid image.")
          .classOperation(
              "fillImage:insideBounds:scale:shouldTrimTransparent:",
              [](const ImageRef& image, const KVRectRef& bounds, double scale, bool trim) {
                return fillImage(image, bounds, scale, trim);
              },
              "Returns the image fitted into the scaled bounds, in proportion and centered; "
              "trimmed, the result is as large as the fitted image.")
          .classOperation(
              "fillImage:insideBounds:scale:shouldTrimTransparent:shadow:", &KVImage::fillImage,
              "Fits the image like the selector without a shadow, with the image's faint drop "
              "shadow moved by this offset.")
          .classOperation("cropImage:withBounds:", &KVImage::cropImage,
                          "Returns the part of the image within the bounds, measured in pixels "
                          "from its top left.");
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
