#include "pixels/PixelBuffer.h"

#include <sys/mman.h>

#include <cassert>
#include <utility>

namespace kelvar {
namespace {

constexpr size_t kHugePage = size_t{2} << 20;

uint8_t* allocate(size_t bytes) {
  if (bytes < 2 * kHugePage) return static_cast<uint8_t*>(std::malloc(bytes));
  const size_t whole = (bytes + kHugePage - 1) / kHugePage * kHugePage;
  auto* const memory = static_cast<uint8_t*>(std::aligned_alloc(kHugePage, whole));
  // Advice: where the system has no huge pages, small ones serve.
  if (memory) ::madvise(memory, whole, MADV_HUGEPAGE);
  return memory;
}

}  // namespace

Result<PixelBuffer> PixelBuffer::create(int width, int height, const PixelFormat& format) {
  assert(width > 0 && height > 0 && format.isValid());
  const size_t stride = (size_t(width) * format.bytesPerPixel() + 3) / 4 * 4;
  PixelBuffer buffer;
  buffer.bytes_.reset(allocate(stride * size_t(height)));
  if (!buffer.bytes_) {
    return failure(Error::Kind::TooLarge, "there is not enough memory for it");
  }
  buffer.view_ = {buffer.bytes_.get(), width, height, ptrdiff_t(stride), format};
  return buffer;
}

PixelBuffer::PixelBuffer(PixelBuffer&& other) noexcept
    : bytes_(std::move(other.bytes_)), view_(std::exchange(other.view_, {})) {}

PixelBuffer& PixelBuffer::operator=(PixelBuffer&& other) noexcept {
  bytes_ = std::move(other.bytes_);
  view_ = std::exchange(other.view_, {});
  return *this;
}

}  // namespace kelvar
