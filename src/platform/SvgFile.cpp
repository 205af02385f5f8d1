#include "platform/SvgFile.h"

#include <QtMath>

#include "platform/PictureLimits.h"
#include "platform/SvgProcess.h"

namespace kelvar {
namespace {

/// The pixels to draw; empty, and why in `*error`, when they are none to be had.
QSize wantedSize(const QSizeF& natural, const std::function<QSizeF(const QSizeF&)>& vectorSize,
                 QString* error) {
  *error = sizeObjection(qRound64(natural.width()), qRound64(natural.height()));
  if (!error->isEmpty()) return {};
  const QSizeF wanted = vectorSize ? vectorSize(natural) : natural;
  // Compared as they are: an infinite or absurd size has no whole number.
  const bool absurd =
      !(wanted.width() > 0 && wanted.width() < 1e9 && wanted.height() > 0 && wanted.height() < 1e9);
  const QSize size = absurd ? QSize() : QSize(qCeil(wanted.width()), qCeil(wanted.height()));
  *error = sizeObjection(size.width(), size.height());
  return error->isEmpty() ? size : QSize();
}

}  // namespace

QImage readSvg(const QByteArray& file, const std::function<QSizeF(const QSizeF&)>& vectorSize,
               QSizeF* natural, QString* error, const SvgLimits& limits) {
  SvgProcess process(limits);
  *error = process.start(file);
  if (!error->isEmpty()) return {};
  *natural = process.naturalSize(error);
  if (!error->isEmpty()) return {};
  const QSize size = wantedSize(*natural, vectorSize, error);
  return error->isEmpty() ? process.draw(size, error) : QImage();
}

}  // namespace kelvar
