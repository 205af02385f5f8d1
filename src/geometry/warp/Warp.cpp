#include "geometry/warp/Warp.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "geometry/warp/Kernel.h"
#include "geometry/warp/Span.h"
#include "geometry/warp/ThreadPool.h"

namespace kelvar::warp {
namespace {

/// Rows that one task fills. Enough that neighbouring rows find each other's source in the cache.
#ifndef BR
#define BR 32
#endif
constexpr int kBandRows = BR;

/// The inverse of the map onto `quad`, for pixel numbers that stand for pixel centres.
Homography sourceMap(const Homography& map) {
  Homography inverse = map.inverted();
  auto& m = inverse.m;
  for (int i = 0; i < 3; ++i) {
    m[i] -= 0.5 * m[6 + i];
    m[3 + i] -= 0.5 * m[6 + i];
  }
  return inverse;
}

void clear(uint8_t* row, int begin, int end) {
  if (begin < end) std::memset(row + size_t(begin) * 4, 0, size_t(end - begin) * 4);
}

/// Fills rows [first, last) with bilinear samples. The rows' chunks are taken column by column,
/// so that the source's part in use stays in the cache.
void bilinearBand(const Source& source, const PixelView& dst, const Quad& quad, int first,
                  int last) {
  Span spans[kBandRows];
  int longest = 0;
  for (int y = first; y < last; ++y) {
    Span& span = spans[y - first] = centresInside(quad, y, dst.width);
    clear(dst.row(y), 0, span.begin);
    clear(dst.row(y), span.end, dst.width);
    longest = std::max(longest, span.end - span.begin);
  }
  for (int offset = 0; offset < longest; offset += kChunk) {
    for (int y = first; y < last; ++y) {
      const int x = spans[y - first].begin + offset;
      const int count = std::min(kChunk, spans[y - first].end - x);
      if (count > 0) sampleLine(source, x + 0.5, 1, y + 0.5, count, dst.row(y) + size_t(x) * 4);
    }
  }
}

}  // namespace

bool warp(const ConstPixelView& src, const PixelView& dst, const Quad& quad,
          const Options& options) {
  const auto map = Homography::fromRectangle(src.width, src.height, quad);
  if (!map) return false;
  const Source source{src, sourceMap(*map)};
  const int bands = (dst.height + kBandRows - 1) / kBandRows;
  parallelFor(bands, options.threads, [&](int band) {
    const int first = band * kBandRows;
    bilinearBand(source, dst, quad, first, std::min(first + kBandRows, dst.height));
  });
  return true;
}

}  // namespace kelvar::warp
