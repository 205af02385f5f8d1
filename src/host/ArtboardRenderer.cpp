#include "host/ArtboardRenderer.h"

#include <QPainter>
#include <cmath>

#include "host/SketchJson.h"
#include "host/render/LayerExtent.h"
#include "host/render/LayerPainter.h"
#include "host/render/LayerStyle.h"
#include "platform/ColorProfile.h"
#include "platform/FontsAtHand.h"
#include "platform/ImageFile.h"
#include "platform/hasAddressSpace.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

/// Pixels from the origin, beyond which numbers lose digits.
constexpr double kFarthest = 1e7;
/// Beside the picture. What finds and draws fonts breaks off where it has less.
constexpr size_t kSpaceForFonts = size_t{64} << 20;

/// To whole pixels, unless digits that were lost on the way would add one.
QRect pixelRect(const QRectF& rect) {
  constexpr double kLost = 1e-3;
  return rect.adjusted(kLost, kLost, -kLost, -kLost).toAlignedRect();
}

QRectF scaled(const QRectF& rect, double scale) {
  return {rect.topLeft() * scale, rect.size() * scale};
}

/// Of an artboard by itself.
QColor backgroundOf(const SketchLayer& layer) {
  const SketchJson& json = layer.json();
  const bool isSeen = layer.isArtboard() && flagIn(json, "hasBackgroundColor") &&
                      flagIn(json, "includeBackgroundColorInExport", true);
  return isSeen ? render::readColor(memberOf(json, "backgroundColor")) : Qt::transparent;
}

/// Why the region cannot be drawn; null when it can.
QString objectionTo(const SketchLayer& layer, const QRectF& region, double scale) {
  const QRectF wanted = scaled(region, scale);
  if (!isHoldable(std::max(1.0, wanted.width()), std::max(1.0, wanted.height()))) {
    return u"the picture of \"%1\" would be %2 by %3 pixels, which is too large"_s.arg(layer.name())
        .arg(wanted.width())
        .arg(wanted.height());
  }
  if (region.isEmpty()) return u"there is nothing to draw in \"%1\""_s.arg(layer.name());
  const bool isNear = std::abs(wanted.x()) < kFarthest && std::abs(wanted.y()) < kFarthest;
  return isNear ? QString() : u"\"%1\" lies too far away to be drawn"_s.arg(layer.name());
}

}  // namespace

QRectF ArtboardRenderer::extentOf(const SketchLayer& layer) const {
  const int version = integerIn(document_->meta(), "version");
  if (layer.isArtboard()) return {{0, 0}, layer.frameRect().size()};
  if (!layer.isPage()) return render::layerExtent(layer.json(), version);
  QRectF extent;
  for (const SketchLayerRef& child : layer.children()) {
    extent |= render::layerExtent(child->json(), version);
  }
  return extent;
}

ImageRef ArtboardRenderer::render(const SketchLayer& layer, double scale, QString* error) {
  return draw(layer, extentOf(layer), scale, backgroundOf(layer), error);
}

QRect ArtboardRenderer::pictureRect(const SketchLayer& layer, double scale) const {
  const QRectF region = extentOf(layer);
  return objectionTo(layer, region, scale).isNull() ? pixelRect(scaled(region, scale)) : QRect();
}

ImageRef ArtboardRenderer::renderPreview(QString* error) {
  const SketchLayerRef page = document_->currentPage();
  const QRectF extent = extentOf(*page);
  const double longest = std::max(extent.width(), extent.height());
  return draw(*page, extent, longest > kPreviewSide ? kPreviewSide / longest : 1, Qt::white, error);
}

ImageRef ArtboardRenderer::draw(const SketchLayer& layer, const QRectF& region, double scale,
                                const QColor& background, QString* error) {
  warnings_.clear();
  const QString objection = objectionTo(layer, region, scale);
  if (!objection.isNull()) {
    *error = objection;
    return nullptr;
  }
  const FontsAtHand fonts;
  if (!fonts) {
    *error = u"texts can only be drawn by an application with fonts (a QGuiApplication)"_s;
    return nullptr;
  }
  render::Surface surface = render::Surface::of(pixelRect(scaled(region, scale)));
  if (surface.isEmpty() || !hasAddressSpace(kSpaceForFonts)) {
    *error = u"there is too little memory for the picture of \"%1\""_s.arg(layer.name());
    return nullptr;
  }
  surface.pixels.fill(background);
  render::LayerPainter painter(*document_, withoutPictures_, stop_);
  const render::Canvas canvas{&surface, QTransform::fromScale(scale, scale), {}};
  const SketchJson& json = layer.json();
  if (layer.isArtboard() || layer.isPage()) {
    painter.paintContents(json, canvas);
  } else {
    painter.paintLayer(json, canvas);
  }
  if (stop_.stop_requested()) {
    *error = kDrawingStopped;
    return nullptr;
  }
  warnings_ = painter.warnings();
  const QImage pixels = painter.paintsDisplayP3() ? fromDisplayP3(surface.pixels) : surface.pixels;
  return std::make_shared<Image>(pixels, QSizeF(pixels.size()) / scale);
}

}  // namespace kelvar
