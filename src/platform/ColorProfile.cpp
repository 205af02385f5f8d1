#include "platform/ColorProfile.h"

#include <QColorSpace>

namespace kelvar {

QImage toSRgb(const QImage& image, const QByteArray& iccProfile) {
  if (iccProfile.isEmpty()) return image;
  const QColorSpace space = QColorSpace::fromIccProfile(iccProfile);
  const QColorSpace sRgb(QColorSpace::SRgb);
  if (!space.isValid() || space == sRgb) return image;

  QImage converted = image;
  converted.setColorSpace(space);
  converted.convertToColorSpace(sRgb);
  converted.setColorSpace(QColorSpace());
  return converted.convertToFormat(image.format());
}

}  // namespace kelvar
