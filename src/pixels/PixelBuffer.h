#pragma once

#include <cstdlib>
#include <memory>

#include "pixels/Export.h"
#include "pixels/PixelView.h"
#include "pixels/Result.h"

namespace kelvar {

/// Owns the memory of an image's pixels. Can be moved but not copied: pass a view to read or write.
///
/// Rows start at multiples of four bytes, as other image classes expect. Large buffers request huge
/// pages from the system, because touching memory for the first time costs as much as processing
/// it.
class KELVAR_PIXELS_EXPORT PixelBuffer {
 public:
  /// Empty: no pixels.
  PixelBuffer() = default;

  /// `width` by `height` pixels with unspecified content. Both must be at least 1. Fails if there
  /// is not enough memory.
  static Result<PixelBuffer> create(int width, int height, const PixelFormat& format = {});

  PixelBuffer(PixelBuffer&&) noexcept;
  PixelBuffer& operator=(PixelBuffer&&) noexcept;

  bool isEmpty() const { return !bytes_; }
  int width() const { return view_.width; }
  int height() const { return view_.height; }
  /// Distance between the starts of two rows, in bytes.
  ptrdiff_t stride() const { return view_.stride; }
  const PixelFormat& format() const { return view_.format; }

  /// Valid until the buffer is assigned to or destroyed; moving the buffer keeps its views valid.
  const PixelView& view() { return view_; }
  ConstPixelView view() const { return view_; }
  uint8_t* row(int y) { return view_.row(y); }
  const uint8_t* row(int y) const { return view_.row(y); }

 private:
  struct Free {
    void operator()(uint8_t* bytes) const { std::free(bytes); }
  };

  std::unique_ptr<uint8_t, Free> bytes_;
  PixelView view_;
};

}  // namespace kelvar
