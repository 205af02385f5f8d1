#pragma once

#include <QImage>
#include <QSizeF>
#include <memory>

#include "platform/Export.h"

namespace kelvar {

/// An image: pixels and a nominal size in points.
///
/// Pixels are 32-bit premultiplied BGRA in sRGB (`QImage::Format_ARGB32_Premultiplied`); any other
/// format is converted on the way in. The nominal size is independent of the pixel size: a
/// high-resolution image has more pixels than points. Shared by reference, because
/// `KVImage::scaleImage` changes its caller's image; the pixels themselves are copied on write. Not
/// synchronized between threads.
class KELVAR_EXPORT Image {
 public:
  /// An invalid image of size (0, 0).
  Image() = default;
  /// Nominal size: that of the pixels, one point each.
  explicit Image(const QImage& pixels);
  Image(const QImage& pixels, const QSizeF& size);

  const QImage& pixels() const { return pixels_; }
  int pixelWidth() const { return pixels_.width(); }
  int pixelHeight() const { return pixels_.height(); }

  /// Nominal size in points.
  QSizeF size() const { return size_; }
  void setSize(const QSizeF& size) { size_ = size; }

  /// False when there are no pixels to draw.
  bool isValid() const { return !pixels_.isNull(); }

 private:
  QImage pixels_;
  QSizeF size_{0, 0};
};

/// Null means no image.
using ImageRef = std::shared_ptr<Image>;

}  // namespace kelvar
