#include "pixels/codec/PngFilters.h"

#include <algorithm>
#include <cstring>

namespace kelvar::png {

namespace {

/// A pixel as four bytes in a word: sums and means work on all of them at once.
template <int kBytes>
uint32_t load(const uint8_t* p) {
  uint32_t word = 0;
  std::memcpy(&word, p, kBytes == 3 ? 4 : kBytes);
  return word;
}

template <int kBytes>
void store(uint32_t word, uint8_t* p) {
  std::memcpy(p, &word, kBytes);
}

uint32_t bytesSum(uint32_t a, uint32_t b) {
  return ((a & 0x7f7f7f7f) + (b & 0x7f7f7f7f)) ^ ((a ^ b) & 0x80808080);
}

uint32_t bytesMean(uint32_t a, uint32_t b) { return (a & b) + (((a ^ b) & 0xfefefefe) >> 1); }

template <int kBytes>
void undoSub(uint8_t* row, size_t bytes) {
  uint32_t left = 0;
  for (size_t i = 0; i < bytes; i += kBytes) {
    left = bytesSum(load<kBytes>(row + i), left);
    store<kBytes>(left, row + i);
  }
}

void undoUp(uint8_t* row, const uint8_t* above, size_t bytes) {
  for (size_t i = 0; i < bytes; ++i) row[i] = static_cast<uint8_t>(row[i] + above[i]);
}

template <int kBytes>
void undoAverage(uint8_t* row, const uint8_t* above, size_t bytes) {
  uint32_t left = 0;
  for (size_t i = 0; i < bytes; i += kBytes) {
    left = bytesSum(load<kBytes>(row + i), bytesMean(left, load<kBytes>(above + i)));
    store<kBytes>(left, row + i);
  }
}

/// The channels of one pixel side by side, in a compiler's vector.
using Bytes = uint8_t __attribute__((vector_size(8)));
using Words = int16_t __attribute__((vector_size(16)));

template <int kBytes>
Words widened(const uint8_t* p) {
  const uint64_t pixel = load<kBytes>(p);
  Bytes bytes;
  std::memcpy(&bytes, &pixel, sizeof bytes);
  return __builtin_convertvector(bytes, Words);
}

Words magnitude(Words v) { return v < 0 ? -v : v; }

template <int kBytes>
void undoPaeth(uint8_t* row, const uint8_t* above, size_t bytes) {
  Words left{}, corner{};
  for (size_t i = 0; i < bytes; i += kBytes) {
    const Words up = widened<kBytes>(above + i);
    const Words fromLeft = up - corner, fromUp = left - corner;
    const Words toLeft = magnitude(fromLeft), toUp = magnitude(fromUp);
    const Words toCorner = magnitude(fromLeft + fromUp);
    const Words other = toUp <= toCorner ? up : corner;
    const Words least = toUp <= toCorner ? toUp : toCorner;
    left = (widened<kBytes>(row + i) + (toLeft <= least ? left : other)) & 255;
    corner = up;
    const Bytes pixel = __builtin_convertvector(left, Bytes);
    uint32_t word;
    std::memcpy(&word, &pixel, sizeof word);
    store<kBytes>(word, row + i);
  }
}

template <int kBytes>
void unfilterPixels(Filter filter, uint8_t* row, const uint8_t* above, size_t bytes) {
  switch (filter) {
    case Filter::None:
      return;
    case Filter::Sub:
      return undoSub<kBytes>(row, bytes);
    case Filter::Up:
      return undoUp(row, above, bytes);
    case Filter::Average:
      return undoAverage<kBytes>(row, above, bytes);
    case Filter::Paeth:
      return undoPaeth<kBytes>(row, above, bytes);
  }
}

inline int16_t paeth(int16_t left, int16_t up, int16_t corner) {
  const int16_t fromLeft = up - corner, fromUp = left - corner, sum = fromLeft + fromUp;
  const int16_t toLeft = fromLeft < 0 ? -fromLeft : fromLeft, toUp = fromUp < 0 ? -fromUp : fromUp;
  const int16_t toCorner = sum < 0 ? -sum : sum;
  const int16_t other = toUp <= toCorner ? up : corner;
  return toLeft <= std::min(toUp, toCorner) ? left : other;
}

}  // namespace

void unfilter(Filter filter, uint8_t* row, const uint8_t* above, size_t bytes, int pixelBytes) {
  switch (pixelBytes) {
    case 1:
      return unfilterPixels<1>(filter, row, above, bytes);
    case 2:
      return unfilterPixels<2>(filter, row, above, bytes);
    case 3:
      return unfilterPixels<3>(filter, row, above, bytes);
    default:
      return unfilterPixels<4>(filter, row, above, bytes);
  }
}

void filter(Filter filter, const uint8_t* row, const uint8_t* above, uint8_t* __restrict out,
            size_t bytes, int pixelBytes) {
  const uint8_t* left = row - pixelBytes;
  const uint8_t* corner = above - pixelBytes;
  switch (filter) {
    case Filter::None:
      std::memcpy(out, row, bytes);
      break;
    case Filter::Sub:
      for (size_t i = 0; i < bytes; ++i) out[i] = static_cast<uint8_t>(row[i] - left[i]);
      break;
    case Filter::Up:
      for (size_t i = 0; i < bytes; ++i) out[i] = static_cast<uint8_t>(row[i] - above[i]);
      break;
    case Filter::Average:
      for (size_t i = 0; i < bytes; ++i) {
        const auto mean = static_cast<uint8_t>((left[i] & above[i]) + ((left[i] ^ above[i]) >> 1));
        out[i] = static_cast<uint8_t>(row[i] - mean);
      }
      break;
    case Filter::Paeth:
      for (size_t i = 0; i < bytes; ++i) {
        out[i] = static_cast<uint8_t>(row[i] - paeth(left[i], above[i], corner[i]));
      }
      break;
  }
}

}  // namespace kelvar::png
