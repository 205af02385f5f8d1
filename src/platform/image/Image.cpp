#include "platform/image/Image.h"

namespace kelvar {

Image::Image(const QImage& pixels) : Image(pixels, pixels.size()) {}

Image::Image(const QImage& pixels, const QSizeF& size)
    : pixels_(pixels.convertToFormat(QImage::Format_ARGB32_Premultiplied)), size_(size) {}

}  // namespace kelvar
