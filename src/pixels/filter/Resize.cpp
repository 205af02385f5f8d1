#include "pixels/filter/Resize.h"

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <vector>

namespace kelvar {
namespace {

// Positions are counted in 1/65536 of a source pixel, areas in 1/16384 of a target pixel.
constexpr int kPositionBits = 16;
constexpr uint32_t kWhole = 1 << 14;

/// The source pixels that a target pixel covers along one axis: a part of the first, then whole
/// ones, then what is left.
struct Coverage {
  int first;
  uint32_t firstShare;
  uint32_t wholeShare;
};

std::vector<Coverage> coverages(int from, int to) {
  const auto wholeShare = uint32_t(((int64_t(to) << 14) + from - 1) / from);
  const int64_t step = (int64_t(from) << kPositionBits) / to;
  std::vector<Coverage> result;
  for (int64_t i = 0, position = 0; i < to; ++i, position += step) {
    const auto rest = uint32_t(0x10000 - (position & 0xffff));
    result.push_back(
        {int(position >> kPositionBits), rest * wholeShare >> kPositionBits, wholeShare});
  }
  return result;
}

/// Calls `add(pixel, share)` for each covered pixel; the shares sum up to kWhole.
template <typename Add>
void eachShare(const Coverage& coverage, int size, const Add& add) {
  int pixel = coverage.first;
  uint32_t rest = kWhole;
  for (uint32_t share = coverage.firstShare; share < rest; share = coverage.wholeShare) {
    add(pixel, share);
    pixel = std::min(pixel + 1, size - 1);
    rest -= share;
  }
  add(pixel, rest);
}

/// The neighbors of a target pixel's center along one axis, and how near it is to the second, in
/// 1/256.
struct Neighbors {
  int first, second;
  uint32_t share;
};

std::vector<Neighbors> neighbors(int from, int to) {
  const int64_t step = (int64_t(from) << kPositionBits) / to;
  int64_t position = int64_t(0x8000) * from / to - 0x8000;
  std::vector<Neighbors> result;
  for (int i = 0; i < to; ++i, position += step) {
    const auto pixel = int(position >> kPositionBits);
    const bool isInside = pixel >= 0 && pixel < from - 1;
    const int first = std::max(pixel, 0);
    result.push_back(isInside ? Neighbors{first, first + 1, uint32_t(position >> 8 & 255)}
                              : Neighbors{first, first, 0});
  }
  return result;
}

uint32_t interpolated(uint32_t a, uint32_t b, uint32_t share) {
  return (a * (256 - share) + b * share) >> 8;
}

}  // namespace

void shrink(const ConstPixelView& from, const PixelView& to) {
  assert(from.format == to.format && to.width <= from.width && to.height <= from.height);
  const int channels = from.format.channels;
  const std::vector<Coverage> columns = coverages(from.width, to.width);
  const std::vector<Coverage> rows = coverages(from.height, to.height);
  std::vector<uint32_t> sums(size_t(to.width) * channels);
  for (int y = 0; y < to.height; ++y) {
    std::fill(sums.begin(), sums.end(), 0u);
    eachShare(rows[y], from.height, [&](int row, uint32_t share) {
      const uint8_t* const pixels = from.row(row);
      uint32_t* out = sums.data();
      for (const Coverage& column : columns) {
        uint32_t across[4] = {};
        eachShare(column, from.width, [&](int x, uint32_t part) {
          for (int c = 0; c < channels; ++c) across[c] += pixels[x * channels + c] * part;
        });
        for (int c = 0; c < channels; ++c) *out++ += (across[c] >> 4) * share;
      }
    });
    std::transform(sums.begin(), sums.end(), to.row(y),
                   [](uint32_t sum) { return uint8_t(sum >> 24); });
  }
}

void enlarge(const ConstPixelView& from, const PixelView& to) {
  assert(from.format == to.format && to.width >= from.width && to.height >= from.height);
  const int channels = from.format.channels;
  const std::vector<Neighbors> columns = neighbors(from.width, to.width);
  const std::vector<Neighbors> rows = neighbors(from.height, to.height);
  for (int y = 0; y < to.height; ++y) {
    const uint8_t* const above = from.row(rows[y].first);
    const uint8_t* const below = from.row(rows[y].second);
    uint8_t* out = to.row(y);
    for (const Neighbors& column : columns) {
      const int left = column.first * channels, right = column.second * channels;
      for (int c = 0; c < channels; ++c) {
        const uint32_t share = rows[y].share;
        const uint32_t first = interpolated(above[left + c], below[left + c], share);
        const uint32_t second = interpolated(above[right + c], below[right + c], share);
        *out++ = uint8_t(interpolated(first, second, column.share));
      }
    }
  }
}

}  // namespace kelvar
