#include "sketch/render/paint/LayerBlur.h"

#include <QLineF>
#include <algorithm>
#include <cmath>

#include "pixels/filter/GaussianBlur.h"
#include "platform/image/PixelViews.h"
#include "sketch/render/displaylist/LayerBounds.h"
#include "sketch/render/paint/ColorAdjustment.h"
#include "sketch/render/paint/DirectionalBlur.h"
#include "sketch/render/paint/FillPainter.h"
#include "sketch/render/paint/compose.h"

namespace kelvar::render {
namespace {

int blurMargin(const Blur& blur, double scale) {
  if (blur.kind == Blur::Kind::Background || !(blur.radius > 0)) return 0;
  const double radius = std::min(blur.radius * scale, kMaxBlur);
  return blur.kind == Blur::Kind::Gaussian ? blurReach(radius) : int(std::ceil(radius));
}

/// A motion runs the blur's radius either way; a zoom runs as far at the corners.
void blurOnce(const LayerContext& context, const Blur& blur, const QRect& neededInTile,
              BitmapTile* tile, const std::stop_token& stop) {
  const QTransform& toImage = context.canvas.toImage();
  const double scale = scaleOf(toImage), radius = std::min(blur.radius * scale, kMaxBlur);
  if (blur.kind == Blur::Kind::Gaussian) return kelvar::blur(viewOf(&tile->pixels), radius, stop);
  if (blur.kind == Blur::Kind::Motion) {
    const QPointF direction = QLineF::fromPolar(radius, blur.angle).p2();
    const auto everywhere = [=](const QPointF&) { return direction; };
    return blurAlong(&tile->pixels, neededInTile, radius, everywhere, stop);
  }
  if (blur.kind != Blur::Kind::Zoom) return;
  const QPointF origin = tile->origin;
  const QSizeF size = context.box().size();
  const QPointF center =
      toImage.map(QPointF(blur.center.x() * size.width(), blur.center.y() * size.height()));
  const double half = std::hypot(size.width(), size.height()) / 2 * scale;
  const auto outwards = [=](const QPointF& at) {
    return (at + origin - center) * (radius / std::max(half, 1.0));
  };
  blurAlong(&tile->pixels, neededInTile, radius, outwards, stop);
}

}  // namespace

int ownBlurMargin(const LayerStyle& style, double scale) {
  int margin = 0;
  for (const Blur& blur : style.blurs) margin += blurMargin(blur, scale);
  return std::min(margin, int(3 * kMaxBlur));
}

void blurLayer(const LayerContext& context, const QRect& needed, BitmapTile* tile,
               const std::stop_token& stop) {
  const double scale = scaleOf(context.canvas.toImage());
  int later = 0;
  for (const Blur& blur : context.style().blurs) later += blurMargin(blur, scale);
  for (const Blur& blur : context.style().blurs) {
    // The blurs that follow look around what is needed in the end.
    later -= blurMargin(blur, scale);
    const QRect inTile = needed.translated(-tile->origin).adjusted(-later, -later, later, later);
    blurOnce(context, blur, inTile, tile, stop);
  }
}

void blurBackground(const LayerContext& context, const Blur& blur, const QPainterPath& outline,
                    const std::stop_token& stop) {
  const double deviation = std::min(blur.radius * scaleOf(context.canvas.toImage()), kMaxBlur);
  const BitmapTile& below = context.canvas.tile();
  const QRect rect = touchedPixels(outline.boundingRect(), blurReach(deviation), below.rect());
  if (rect.isEmpty()) return;
  BitmapTile seen{below.pixels.copy(rect.translated(-below.origin)), rect.topLeft()};
  kelvar::blur(viewOf(&seen.pixels), deviation, stop);
  if (blur.saturation != 1) {
    seen.pixels = applyColorControls(seen.pixels, {{.saturation = blur.saturation}});
  }
  compose(seen, context.canvas.clippedInImage(outline), BlendMode::Normal, 1);
}

}  // namespace kelvar::render
