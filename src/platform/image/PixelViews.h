#pragma once

#include <QByteArray>
#include <QImage>
#include <memory>
#include <span>
#include <utility>

#include "pixels/PixelBuffer.h"
#include "pixels/PixelView.h"

namespace kelvar {

/// Conversion between Qt's classes and those of the pixel library, without copying pixels.

inline std::span<const uint8_t> bytesOf(const QByteArray& bytes) {
  return {reinterpret_cast<const uint8_t*>(bytes.constData()), size_t(bytes.size())};
}

/// The format of the pixels: 32-bit formats are assumed to be premultiplied, 8-bit formats to be a
/// single channel.
inline PixelFormat pixelFormatOf(const QImage& image) {
  if (image.depth() == 8) return {.channels = 1, .alpha = AlphaKind::None};
  Q_ASSERT(image.depth() == 32);
  return {};
}

/// A read-only view, valid until the image is changed or destroyed.
inline ConstPixelView viewOf(const QImage& image) {
  return {image.constBits(), image.width(), image.height(), image.bytesPerLine(),
          pixelFormatOf(image)};
}

/// A writable view. Pixels shared with other images are copied first.
inline PixelView viewOf(QImage* image) {
  return {image->bits(), image->width(), image->height(), image->bytesPerLine(),
          pixelFormatOf(*image)};
}

/// An image that owns these pixels, which are premultiplied 8-bit BGRA.
inline QImage toQImage(PixelBuffer pixels) {
  auto owner = std::make_unique<PixelBuffer>(std::move(pixels));
  const PixelView view = owner->view();
  return {view.data,
          view.width,
          view.height,
          view.stride,
          QImage::Format_ARGB32_Premultiplied,
          [](void* buffer) { delete static_cast<PixelBuffer*>(buffer); },
          owner.release()};
}

}  // namespace kelvar
