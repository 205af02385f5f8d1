#include "platform/PictureLimits.h"

#include "platform/ImageFile.h"

namespace kelvar {

QString sizeObjection(qint64 width, qint64 height) {
  if (width < 1 || height < 1) {
    return QStringLiteral("it declares a picture of %1 x %2 pixels").arg(width).arg(height);
  }
  const bool fits = width <= ImageFile::kMaxSide && height <= ImageFile::kMaxSide &&
                    width * height * 4 <= ImageFile::kMaxBytes;
  if (fits) return {};
  return QStringLiteral("it declares %1 x %2 pixels, and the limit is %3 a side and 1 GiB in all")
      .arg(width)
      .arg(height)
      .arg(ImageFile::kMaxSide);
}

}  // namespace kelvar
