#include "platform/image/ColorProfile.h"

#include <QColorSpace>

namespace kelvar {
namespace {

QImage converted(const QImage& image, const QColorSpace& from, const QColorSpace& to) {
  QImage converted = image;
  converted.setColorSpace(from);
  converted.convertToColorSpace(to);
  converted.setColorSpace(QColorSpace());
  return converted.convertToFormat(image.format());
}

}  // namespace

QImage toSRgb(const QImage& image, const QByteArray& iccProfile) {
  if (iccProfile.isEmpty()) return image;
  const QColorSpace space = QColorSpace::fromIccProfile(iccProfile);
  const QColorSpace sRgb(QColorSpace::SRgb);
  if (!space.isValid() || space == sRgb) return image;

  return converted(image, space, sRgb);
}

QImage fromDisplayP3(const QImage& image) {
  return converted(image, QColorSpace::DisplayP3, QColorSpace::SRgb);
}

QImage toDisplayP3(const QImage& image) {
  return converted(image, QColorSpace::SRgb, QColorSpace::DisplayP3);
}

}  // namespace kelvar
