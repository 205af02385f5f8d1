#include "sketch/render/ArtboardRenderer.h"

#include <QPainter>
#include <cmath>

#include "platform/QtError.h"
#include "platform/hasAddressSpace.h"
#include "platform/image/ColorProfile.h"
#include "platform/image/ImageFile.h"
#include "platform/image/OffscreenGuiApplication.h"
#include "sketch/document/DocumentFiles.h"
#include "sketch/render/displaylist/DisplayList.h"
#include "sketch/render/displaylist/ExportBounds.h"
#include "sketch/render/paint/LayerPainter.h"
#include "sketch/render/text/DocumentFonts.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

/// Pixels from the origin, beyond which numbers lose digits.
constexpr double kMaxCoordinate = 1e7;
/// Beside the image: the libraries that find and draw fonts abort when they have less.
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
  const LayerProperties& properties = layer.node().properties();
  const bool isSeen =
      layer.isArtboard() && properties.hasBackground && properties.exportsBackground;
  return isSeen ? properties.background : Qt::transparent;
}

}  // namespace

/// The pixels of an image and what they show.
struct ArtboardRenderer::Raster {
  /// In the layer's coordinates.
  QRectF region;
  /// The region in pixels.
  QRectF wanted;
  QTransform toPixels;

  /// On the pixels of the layer's own coordinates.
  static Raster of(const QRectF& region, double scale) {
    return {region, scaled(region, scale), QTransform::fromScale(scale, scale)};
  }

  /// The same at one pixel a unit. Where a side would be longer than `maxSide`, it is scaled down,
  /// and its corner is a pixel's.
  static Raster ofPreview(const QRectF& region, int maxSide) {
    const double longest = std::max(region.width(), region.height());
    if (!(longest > maxSide)) return of(region, 1);
    const double scale = maxSide / longest;
    const QSizeF size = (region.size() * scale).toSize();
    QTransform toPixels = QTransform::fromScale(scale, scale);
    toPixels.translate(-region.x(), -region.y());
    return {region, {{0, 0}, size}, toPixels};
  }

  QRect pixels() const { return pixelRect(wanted); }
};

Result<void> ArtboardRenderer::checkRaster(const SketchLayer& layer, const Raster& raster) {
  const QRectF& wanted = raster.wanted;
  if (!fitsImageLimits(std::max(1.0, wanted.width()), std::max(1.0, wanted.height()))) {
    return failure(
        Error::Kind::TooLarge,
        u"the image of \"%1\" would be %2 by %3 pixels, which is too large"_s.arg(layer.name())
            .arg(wanted.width())
            .arg(wanted.height()));
  }
  if (raster.region.isEmpty()) {
    return failure(Error::Kind::NotFound,
                   u"there is nothing to draw in \"%1\""_s.arg(layer.name()));
  }
  if (std::abs(wanted.x()) < kMaxCoordinate && std::abs(wanted.y()) < kMaxCoordinate) return {};
  return failure(Error::Kind::TooLarge,
                 u"\"%1\" lies too far away to be drawn"_s.arg(layer.name()));
}

/// What it takes to draw a layer or to measure it. The document must outlive it.
struct ArtboardRenderer::Drawing {
  Drawing(const SketchDocument& document, const SketchLayer& layer,
          const QSet<QString>& withoutImages, const std::stop_token& stop)
      : documentFonts(document),
        layer(layer),
        images(document, &warnings),
        list(document, withoutImages, &warnings, stop),
        item(list.itemOf(layer.node())) {}

  QRectF extent() {
    if (layer.isArtboard()) return {{0, 0}, layer.frameRect().size()};
    render::ExportBounds bounds(&list);
    return layer.isPage() ? bounds.ofContents(&item) : bounds.of(&item);
  }

  const OffscreenGuiApplication fonts;
  const render::DocumentFonts documentFonts;
  const SketchLayer& layer;
  render::RenderWarnings warnings;
  render::DocumentImages images;
  render::DisplayList list;
  render::DisplayItem item;
};

Result<void> ArtboardRenderer::addFonts(const QString& folder) {
  return render::DocumentFonts::addFolder(folder);
}

Result<ImageRef> ArtboardRenderer::render(const SketchLayer& layer, double scale) {
  Drawing drawing(*document_, layer, withoutImages_, stop_);
  return draw(&drawing, Raster::of(drawing.extent(), scale), backgroundOf(layer));
}

QRectF ArtboardRenderer::coveredRect(const SketchLayer& layer) const {
  return Drawing(*document_, layer, withoutImages_, stop_).extent();
}

QRect ArtboardRenderer::imageRect(const SketchLayer& layer, double scale) const {
  const Raster raster = Raster::of(coveredRect(layer), scale);
  return checkRaster(layer, raster) ? raster.pixels() : QRect();
}

Result<ImageRef> ArtboardRenderer::renderPreview() {
  const render::VersionRules rules = render::VersionRules::of(document_->files());
  const QList<SketchLayerRef> artboards = document_->artboards();
  const bool isExport = rules.previewsFirstArtboard && !artboards.isEmpty();
  const SketchLayerRef layer = isExport ? artboards.first() : document_->currentPage();
  Drawing drawing(*document_, *layer, withoutImages_, stop_);
  return draw(&drawing, Raster::ofPreview(drawing.extent(), rules.maxPreviewSide),
              isExport ? backgroundOf(*layer) : Qt::white);
}

Result<ImageRef> ArtboardRenderer::draw(Drawing* drawing, const Raster& raster,
                                        const QColor& background) {
  warnings_.clear();
  const SketchLayer& layer = drawing->layer;
  if (!drawing->fonts) {
    return failure(Error::Kind::Unsupported,
                   u"texts can only be drawn by an application with fonts (a QGuiApplication)"_s);
  }
  if (const auto checked = checkRaster(layer, raster); !checked) {
    return tl::unexpected(checked.error());
  }
  render::BitmapTile tile = render::BitmapTile::of(raster.pixels());
  if (tile.isEmpty() || !hasAddressSpace(kSpaceForFonts)) {
    return failure(Error::Kind::TooLarge,
                   u"there is too little memory for the image of \"%1\""_s.arg(layer.name()));
  }
  tile.pixels.fill(background);
  {
    render::LayerPainter painter(&drawing->list, &drawing->images);
    const render::PaintContext canvas(&tile, raster.toPixels);
    layer.isArtboard() || layer.isPage() ? painter.paintContents(&drawing->item, canvas)
                                         : painter.paintLayer(&drawing->item, canvas);
  }
  if (stop_.stop_requested()) return failure(Error::Kind::Stopped, QString(kDrawingStopped));
  warnings_ = drawing->warnings.list();
  const QImage pixels = drawing->images.usesDisplayP3() ? fromDisplayP3(tile.pixels) : tile.pixels;
  return std::make_shared<Image>(pixels, QSizeF(pixels.size()) / raster.toPixels.m11());
}

}  // namespace kelvar
