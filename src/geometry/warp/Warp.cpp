#include "geometry/warp/Warp.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include "geometry/warp/AreaFilter.h"
#include "geometry/warp/Kernel.h"
#include "geometry/warp/Span.h"
#include "geometry/warp/ThreadPool.h"

namespace kelvar::warp {
namespace {

/// Rows that one task fills. Enough that neighbouring rows find each other's source in the cache.
constexpr int kBandRows = 32;

/// Pieces of rows that run steeply through the source.
constexpr int kSteepChunk = 128;

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
void fillPlain(const Source& source, const PixelView& dst, const Quad& quad, int first,
                  int last) {
  Span spans[kBandRows];
  int longest = 0;
  for (int y = first; y < last; ++y) {
    Span& span = spans[y - first] = centresInside(quad, y, dst.width);
    clear(dst.row(y), 0, span.begin);
    clear(dst.row(y), span.end, dst.width);
    longest = std::max(longest, span.end - span.begin);
  }
  for (int offset = 0; offset < longest; offset += source.chunk) {
    for (int y = first; y < last; ++y) {
      const int x = spans[y - first].begin + offset;
      const int count = std::min(source.chunk, spans[y - first].end - x);
      if (count > 0) sampleLine(source, {x + 0.5, 1, y + 0.5, count}, dst.row(y) + size_t(x) * 4);
    }
  }
}

/// Where rows of the destination run across many rows of the source, short pieces keep the
/// source's part in use in the cache.
int chunkFor(const Homography& map, const Quad& quad) {
  const Point centre{(quad[0].x + quad[1].x + quad[2].x + quad[3].x) / 4,
                     (quad[0].y + quad[1].y + quad[2].y + quad[3].y) / 4};
  const Point a = map.map(centre), b = map.map({centre.x + 1, centre.y});
  return std::abs(b.y - a.y) > 0.3 ? kSteepChunk : kChunk;
}

}  // namespace

bool warp(const ConstPixelView& src, const PixelView& dst, const Quad& quad,
          const Options& options) {
  const auto map = Homography::fromRectangle(src.width, src.height, quad);
  if (!map) return false;
  const Homography inverse = sourceMap(*map);
  const Source source{src, inverse, chunkFor(inverse, quad)};
  const int bands = (dst.height + kBandRows - 1) / kBandRows;
  parallelFor(bands, options.threads, [&](int band) {
    const int first = band * kBandRows, last = std::min(first + kBandRows, dst.height);
    if (options.sampling == Sampling::Best || options.oversampling > 1) {
      fillFiltered(source, dst, quad, std::clamp(options.oversampling, 1, 16), first, last);
    } else {
      fillPlain(source, dst, quad, first, last);
    }
  });
  return true;
}

}  // namespace kelvar::warp
