#include "platform/image/VectorFile.h"

#include <QtMath>

#include "pixels/ImageLimits.h"

namespace kelvar {
namespace {

/// The size in pixels to draw at.
Result<QSize> pixelSize(const QSizeF& natural,
                        const std::function<QSizeF(const QSizeF&)>& rasterizationSize) {
  const auto valid = validateImageSize(qRound64(natural.width()), qRound64(natural.height()));
  if (!valid) return tl::unexpected(valid.error());
  const QSizeF wanted = rasterizationSize ? rasterizationSize(natural) : natural;
  // Compared unrounded: an infinite or absurd size cannot be converted to integers.
  const bool isAbsurd =
      !(wanted.width() > 0 && wanted.width() < 1e9 && wanted.height() > 0 && wanted.height() < 1e9);
  const QSize size = isAbsurd ? QSize() : QSize(qCeil(wanted.width()), qCeil(wanted.height()));
  return validateImageSize(size.width(), size.height()).map([&] { return size; });
}

Result<ImageRef> readVector(const Renderer& renderer, const QByteArray& file,
                            const std::function<QSizeF(const QSizeF&)>& rasterizationSize,
                            const RendererLimits& limits) {
  RendererProcess process(renderer, limits);
  if (const auto started = process.start(file); !started) return tl::unexpected(started.error());
  const auto opened = process.open();
  if (!opened) return tl::unexpected(opened.error());
  const QSizeF natural(opened->width, opened->height);
  const auto size = pixelSize(natural, rasterizationSize);
  if (!size) return tl::unexpected(size.error());
  return process.draw(*size).map(
      [&](const QImage& pixels) { return std::make_shared<Image>(pixels, natural); });
}

}  // namespace

Result<ImageRef> readSvg(const QByteArray& file,
                         const std::function<QSizeF(const QSizeF&)>& rasterizationSize,
                         const RendererLimits& limits) {
  return readVector({KELVAR_SVG_PROGRAM, "SVG"}, file, rasterizationSize, limits);
}

Result<ImageRef> readPdf(const QByteArray& file,
                         const std::function<QSizeF(const QSizeF&)>& rasterizationSize,
                         const RendererLimits& limits) {
  return readVector({KELVAR_PDF_PROGRAM, "PDF"}, file, rasterizationSize, limits);
}

}  // namespace kelvar
