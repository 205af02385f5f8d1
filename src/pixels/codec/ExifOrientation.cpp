#include "pixels/codec/ExifOrientation.h"

#include <cassert>
#include <cstring>
#include <optional>
#include <utility>

namespace kelvar {
namespace {

constexpr uint16_t kOrientationTag = 0x0112;
constexpr uint16_t kShortType = 3;
/// More directories than any version of the format has.
constexpr int kMaxDirectories = 10;

/// Numbers in the byte order that the data declares. What lies outside of the data is 0.
class TiffReader {
 public:
  explicit TiffReader(std::span<const uint8_t> bytes) : bytes_(bytes) {
    isBigEndian_ = !bytes.empty() && bytes[0] == 'M';
  }
  uint32_t number(size_t at, size_t size) const {
    if (at > bytes_.size() || bytes_.size() - at < size) return 0;
    uint32_t value = 0;
    for (size_t i = 0; i < size; ++i) {
      value = value << 8 | bytes_[isBigEndian_ ? at + i : at + size - 1 - i];
    }
    return value;
  }
  uint16_t shortAt(size_t at) const { return static_cast<uint16_t>(number(at, 2)); }
  uint32_t longAt(size_t at) const { return number(at, 4); }

 private:
  std::span<const uint8_t> bytes_;
  bool isBigEndian_;
};

/// What a directory's entry declares, 0 for an invalid orientation; none for any other entry.
std::optional<int> orientationIn(const TiffReader& tiff, size_t entry) {
  if (tiff.shortAt(entry) != kOrientationTag) return std::nullopt;
  const bool isShort = tiff.shortAt(entry + 2) == kShortType && tiff.longAt(entry + 4) == 1;
  return isShort ? tiff.shortAt(entry + 8) : 0;
}

}  // namespace

int exifOrientation(std::span<const uint8_t> exif) {
  const TiffReader tiff(exif);
  if (exif.size() < 8 || exif[0] != exif[1] || (exif[0] != 'I' && exif[0] != 'M') ||
      tiff.shortAt(2) != 42) {
    return 1;
  }
  size_t directory = tiff.longAt(4);
  for (int i = 0; i < kMaxDirectories && directory != 0 && directory < exif.size(); ++i) {
    const size_t entries = tiff.shortAt(directory);
    for (size_t entry = 0; entry < entries; ++entry) {
      const auto orientation = orientationIn(tiff, directory + 2 + entry * 12);
      if (orientation) return *orientation >= 1 && *orientation <= 8 ? *orientation : 1;
    }
    const size_t next = tiff.longAt(directory + 2 + entries * 12);
    if (next <= directory) break;
    directory = next;
  }
  return 1;
}

Result<PixelBuffer> turnedUpright(PixelBuffer image, int orientation) {
  assert(image.format().bytesPerPixel() == 4 && orientation >= 1 && orientation <= 8);
  if (orientation == 1) return image;
  const bool isTransposed = orientation >= 5;
  const bool fromRight = orientation == 2 || orientation == 3 || orientation >= 7;
  const bool fromBottom =
      orientation == 3 || orientation == 4 || orientation == 6 || orientation == 7;
  const int width = image.width(), height = image.height();
  auto upright = isTransposed ? PixelBuffer::create(height, width, image.format())
                              : PixelBuffer::create(width, height, image.format());
  if (!upright) return upright;
  for (int y = 0; y < upright->height(); ++y) {
    uint8_t* out = upright->row(y);
    for (int x = 0; x < upright->width(); ++x, out += 4) {
      const int column = isTransposed ? y : x, row = isTransposed ? x : y;
      std::memcpy(out,
                  image.row(fromBottom ? height - 1 - row : row) +
                      4 * ptrdiff_t(fromRight ? width - 1 - column : column),
                  4);
    }
  }
  return upright;
}

}  // namespace kelvar
