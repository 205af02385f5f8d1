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

constexpr int kMostPixels = 32768;

/// Rows that one task fills. Enough that neighbouring rows find each other's source in the cache.
constexpr int kBandRows = 96;

/// Columns that one task fills: two cache lines', or what half a megabyte holds.
int bandColumns(int height) { return std::clamp((1 << 17) / height, 4, 32); }

/// The inverse of `map`, for pixel numbers that stand for pixel centres in the source.
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
void fillPlain(const Source& source, const PixelView& dst, const Quad& quad, int first, int last) {
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
      if (count > 0) sampleLine(source, {x + 0.5, 1, y + 0.5, count}, dst.row(y) + size_t(x) * 4);
    }
  }
}

/// Whether source rows follow destination rows, and columns columns.
bool isAlongAxes(const Homography& map) {
  return map.m[1] == 0 && map.m[3] == 0 && map.m[6] == 0 && map.m[7] == 0;
}

/// As fillPlain, for a map along the axes, where all rows inside have the same span.
void fillAlongAxes(const Source& source, const PixelView& dst, const Quad& quad, int first,
                   int last) {
  Span span{};
  int top = last, bottom = first;
  for (int y = first; y < last; ++y) {
    const Span inside = centresInside(quad, y, dst.width);
    clear(dst.row(y), 0, inside.begin);
    clear(dst.row(y), inside.end, dst.width);
    if (inside.begin >= inside.end) continue;
    span = inside;
    top = std::min(top, y);
    bottom = y + 1;
  }
  for (int x = span.begin; x < span.end; x += kChunk) {
    const int count = std::min(kChunk, span.end - x);
    sampleRows(source, {x + 0.5, 1, top + 0.5, count}, bottom - top,
               {dst.row(top) + size_t(x) * 4, count, bottom - top, dst.stride});
  }
}

/// Whether the quad is the source's own rectangle, moved by whole pixels.
bool isWholeMove(const ConstPixelView& src, const Quad& quad) {
  const Point o = quad[0];
  const double w = src.width, h = src.height;
  const Quad moved{{o, {o.x + w, o.y}, {o.x + w, o.y + h}, {o.x, o.y + h}}};
  const auto same = [](Point a, Point b) { return a.x == b.x && a.y == b.y; };
  return o.x == std::floor(o.x) && o.y == std::floor(o.y) &&
         std::equal(quad.begin(), quad.end(), moved.begin(), same);
}

void copyRows(const ConstPixelView& src, const PixelView& dst, Point to, int first, int last) {
  const double left = std::clamp(to.x, 0.0, double(dst.width));
  const double right = std::clamp(to.x + src.width, left, double(dst.width));
  for (int y = first; y < last; ++y) {
    const bool inside = y >= to.y && y < to.y + src.height && right > left;
    const int begin = inside ? int(left) : 0, end = inside ? int(right) : 0;
    clear(dst.row(y), 0, begin);
    if (inside) {
      std::memcpy(dst.row(y) + size_t(begin) * 4, src.row(int(y - to.y)) + size_t(begin - to.x) * 4,
                  size_t(end - begin) * 4);
    }
    clear(dst.row(y), end, dst.width);
  }
}

/// The source as the kernel needs it, at least two pixels a side: `store` takes a copy with its
/// edge repeated where it is smaller.
ConstPixelView atLeastTwo(const ConstPixelView& src, std::vector<uint8_t>* store) {
  if (src.width >= 2 && src.height >= 2) return src;
  const int width = std::max(src.width, 2), height = std::max(src.height, 2);
  store->resize(size_t(width) * height * 4);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      std::memcpy(store->data() + (size_t(y) * width + x) * 4,
                  src.row(std::min(y, src.height - 1)) + std::min(x, src.width - 1) * 4, 4);
    }
  }
  return {store->data(), width, height, ptrdiff_t(width) * 4};
}

/// Calls `fill(first, last)` for bands of at most `rows` rows that make up [0, height).
template <typename Fill>
void eachBand(int height, int rows, int threads, const Fill& fill) {
  parallelFor((height + rows - 1) / rows, threads, [&](int band) {
    const int first = band * rows;
    fill(first, std::min(first + rows, height));
  });
}

void fillBand(const Source& source, const PixelView& dst, const Quad& quad, const Options& options,
              int first, int last) {
  if (options.sampling == Sampling::Best || options.oversampling > 1) {
    fillFiltered(source, dst, quad, std::clamp(options.oversampling, 1, 16), first, last);
  } else if (isAlongAxes(source.map)) {
    fillAlongAxes(source, dst, quad, first, last);
  } else {
    fillPlain(source, dst, quad, first, last);
  }
}

/// The map and the quad for the destination's mirror image about the diagonal, less `rows` of its
/// rows.
Homography mirrored(const Homography& map, double rows) {
  const auto& m = map.m;
  return {{m[1], m[0], m[2] + m[0] * rows, m[4], m[3], m[5] + m[3] * rows, m[7], m[6],
           m[8] + m[6] * rows}};
}

Quad mirrored(const Quad& quad, double rows) {
  Quad result;
  for (size_t i = 0; i < 4; ++i) result[i] = {quad[i].y, quad[i].x - rows};
  return result;
}

/// Whether the source's rows pass faster along the destination's rows than along its columns.
bool isSteep(const Homography& map, const Quad& quad) {
  const Point centre{(quad[0].x + quad[1].x + quad[2].x + quad[3].x) / 4,
                     (quad[0].y + quad[1].y + quad[2].y + quad[3].y) / 4};
  const double here = map.map(centre).y;
  return std::abs(map.map({centre.x + 1, centre.y}).y - here) >
         std::abs(map.map({centre.x, centre.y + 1}).y - here);
}

/// Fills columns [first, last) of `dst` as the rows of its mirror image about the diagonal, so that
/// sampling goes along the source's rows and not across them.
void fillColumns(const Source& source, const PixelView& dst, const Quad& quad,
                 const Options& options, int first, int last) {
  // An odd number of cache lines, so that a column of the mirror does not compete for one.
  const ptrdiff_t stride = (ptrdiff_t(dst.height) * 4 + 63) / 128 * 128 + 64;
  std::vector<uint8_t> columns(size_t(stride) * size_t(last - first));
  const PixelView mirror{columns.data(), dst.height, last - first, stride};
  fillBand({source.pixels, mirrored(source.map, first)}, mirror, mirrored(quad, first), options, 0,
           mirror.height);
  for (int y = 0; y < dst.height; ++y) {
    uint8_t* const to = dst.row(y) + size_t(first) * 4;
    const uint8_t* from = columns.data() + size_t(y) * 4;
    for (int x = 0; x < mirror.height; ++x, from += stride) std::memcpy(to + x * 4, from, 4);
  }
}

bool tooLarge(int width, int height) { return width > kMostPixels || height > kMostPixels; }

}  // namespace

bool warp(const ConstPixelView& src, const PixelView& dst, const Quad& quad,
          const Options& options) {
  const auto map = tooLarge(src.width, src.height) || tooLarge(dst.width, dst.height)
                       ? std::nullopt
                       : Homography::fromRectangle(src.width, src.height, quad);
  if (!map) {
    for (int y = 0; y < dst.height; ++y) clear(dst.row(y), 0, dst.width);
    return false;
  }
  if (isWholeMove(src, quad) && options.oversampling <= 1) {
    eachBand(dst.height, kBandRows, options.threads,
             [&](int first, int last) { copyRows(src, dst, quad[0], first, last); });
    return true;
  }
  std::vector<uint8_t> store;
  const Source source{atLeastTwo(src, &store), sourceMap(*map)};
  if (isSteep(source.map, quad)) {
    eachBand(dst.width, bandColumns(dst.height), options.threads,
             [&](int first, int last) { fillColumns(source, dst, quad, options, first, last); });
  } else {
    eachBand(dst.height, kBandRows, options.threads,
             [&](int first, int last) { fillBand(source, dst, quad, options, first, last); });
  }
  return true;
}

}  // namespace kelvar::warp
