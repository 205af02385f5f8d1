#include "pixels/warp/Warp.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstring>
#include <vector>

#include "pixels/threads/ThreadPool.h"
#include "pixels/warp/AreaFilter.h"
#include "pixels/warp/Kernel.h"
#include "pixels/warp/Span.h"

namespace kelvar::warp {
namespace {

/// Rows that one task fills: enough for neighboring rows to share source pixels in the cache.
constexpr int kBandRows = 96;

/// Columns that one task fills: two cache lines of four-byte pixels, or what half a megabyte holds.
int bandColumns(int height, size_t bytesPerPixel) {
  return std::clamp((1 << 19) / int(bytesPerPixel) / height, 4, 32);
}

/// The inverse of `map`, shifted so that whole numbers are the centers of source pixels.
Homography sourceMap(const Homography& map) {
  Homography inverse = map.inverted();
  auto& m = inverse.m;
  for (int i = 0; i < 3; ++i) {
    m[i] -= 0.5 * m[6 + i];
    m[3 + i] -= 0.5 * m[6 + i];
  }
  return inverse;
}

uint8_t* pixelAt(const PixelView& view, int x, int y) {
  return view.row(y) + size_t(x) * view.format.bytesPerPixel();
}

/// Zeroes pixels [begin, end) of row `y`.
void clear(const PixelView& view, int y, int begin, int end) {
  if (begin >= end) return;
  std::memset(pixelAt(view, begin, y), 0, size_t(end - begin) * view.format.bytesPerPixel());
}

/// Fills rows [first, last) with bilinear samples. Chunks are taken column by column, so that the
/// part of the source in use stays in the cache.
void fillPlain(const Source& source, const PixelView& dst, const Quad& quad, int first, int last) {
  Span spans[kBandRows];
  int longest = 0;
  for (int y = first; y < last; ++y) {
    Span& span = spans[y - first] = centersInside(quad, y, dst.width);
    clear(dst, y, 0, span.begin);
    clear(dst, y, span.end, dst.width);
    longest = std::max(longest, span.end - span.begin);
  }
  for (int offset = 0; offset < longest; offset += kChunk) {
    for (int y = first; y < last; ++y) {
      const int x = spans[y - first].begin + offset;
      const int count = std::min(kChunk, spans[y - first].end - x);
      if (count > 0) sampleRow(source, {x + 0.5, 1, y + 0.5, count}, pixelAt(dst, x, y));
    }
  }
}

/// Whether the map takes rows to rows and columns to columns.
bool isAlongAxes(const Homography& map) {
  return map.m[1] == 0 && map.m[3] == 0 && map.m[6] == 0 && map.m[7] == 0;
}

/// As fillPlain, for ByteKernel and a map along the axes, where all rows inside have the same span.
void fillAlongAxes(const Source& source, const PixelView& dst, const Quad& quad, int first,
                   int last) {
  Span span{};
  int top = last, bottom = first;
  for (int y = first; y < last; ++y) {
    const Span inside = centersInside(quad, y, dst.width);
    clear(dst, y, 0, inside.begin);
    clear(dst, y, inside.end, dst.width);
    if (inside.begin >= inside.end) continue;
    span = inside;
    top = std::min(top, y);
    bottom = y + 1;
  }
  for (int x = span.begin; x < span.end; x += kChunk) {
    const int count = std::min(kChunk, span.end - x);
    ByteKernel::sampleRows(source, {x + 0.5, 1, top + 0.5, count}, bottom - top,
                           {pixelAt(dst, x, top), count, bottom - top, dst.stride, dst.format});
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
  const size_t bytes = src.format.bytesPerPixel();
  for (int y = first; y < last; ++y) {
    const bool inside = y >= to.y && y < to.y + src.height && right > left;
    const int begin = inside ? int(left) : 0, end = inside ? int(right) : 0;
    clear(dst, y, 0, begin);
    if (inside) {
      std::memcpy(pixelAt(dst, begin, y), src.row(int(y - to.y)) + size_t(begin - to.x) * bytes,
                  size_t(end - begin) * bytes);
    }
    clear(dst, y, end, dst.width);
  }
}

/// The source with at least two pixels per side, as the kernels require: if it is smaller, a copy
/// in `store` with its edge repeated.
ConstPixelView atLeastTwo(const ConstPixelView& src, std::vector<uint8_t>* store) {
  if (src.width >= 2 && src.height >= 2) return src;
  const int width = std::max(src.width, 2), height = std::max(src.height, 2);
  const size_t bytes = src.format.bytesPerPixel();
  store->resize(size_t(width) * height * bytes);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      std::memcpy(store->data() + (size_t(y) * width + x) * bytes,
                  src.row(std::min(y, src.height - 1)) + std::min(x, src.width - 1) * bytes, bytes);
    }
  }
  return {store->data(), width, height, ptrdiff_t(width * bytes), src.format};
}

/// Calls `fill(first, last)` for the bands of at most `rows` rows that [0, height) is split into.
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
  } else if (ByteKernel::takes(dst.format) && isAlongAxes(source.map)) {
    fillAlongAxes(source, dst, quad, first, last);
  } else {
    fillPlain(source, dst, quad, first, last);
  }
}

/// The map for the destination's mirror image about the diagonal, without its first `rows` rows.
Homography mirrored(const Homography& map, double rows) {
  const auto& m = map.m;
  return {{m[1], m[0], m[2] + m[0] * rows, m[4], m[3], m[5] + m[3] * rows, m[7], m[6],
           m[8] + m[6] * rows}};
}

/// The quad for the same.
Quad mirrored(const Quad& quad, double rows) {
  Quad result;
  for (size_t i = 0; i < 4; ++i) result[i] = {quad[i].y, quad[i].x - rows};
  return result;
}

/// Whether a step along a destination row crosses more source rows than a step along a column.
bool isSteep(const Homography& map, const Quad& quad) {
  const Point center{(quad[0].x + quad[1].x + quad[2].x + quad[3].x) / 4,
                     (quad[0].y + quad[1].y + quad[2].y + quad[3].y) / 4};
  const double here = map.map(center).y;
  return std::abs(map.map({center.x + 1, center.y}).y - here) >
         std::abs(map.map({center.x, center.y + 1}).y - here);
}

/// Copies the mirror image of `columns` about the diagonal to `dst`, from column `first` on.
template <size_t kBytes>
void transpose(const PixelView& columns, const PixelView& dst, int first) {
  for (int y = 0; y < dst.height; ++y) {
    uint8_t* const to = dst.row(y) + size_t(first) * kBytes;
    const uint8_t* from = columns.data + size_t(y) * kBytes;
    for (int x = 0; x < columns.height; ++x, from += columns.stride) {
      std::memcpy(to + x * kBytes, from, kBytes);
    }
  }
}

using Transpose = void (*)(const PixelView&, const PixelView&, int);

Transpose transposeFor(const PixelFormat& format) {
  switch (format.bytesPerPixel()) {
    case 1:
      return transpose<1>;
    case 2:
      return transpose<2>;
    case 3:
      return transpose<3>;
    case 4:
      return transpose<4>;
    case 6:
      return transpose<6>;
    case 8:
      return transpose<8>;
    case 12:
      return transpose<12>;
    default:
      return transpose<16>;
  }
}

/// Fills columns [first, last) of `dst` as the rows of its mirror image about the diagonal, so that
/// sampling goes along the source's rows and not across them.
void fillColumns(const Source& source, const PixelView& dst, const Quad& quad,
                 const Options& options, int first, int last) {
  // An odd number of cache lines, so that the pixels of a column do not compete for one.
  const ptrdiff_t stride =
      (ptrdiff_t(dst.height * dst.format.bytesPerPixel()) + 63) / 128 * 128 + 64;
  std::vector<uint8_t> store(size_t(stride) * size_t(last - first));
  const PixelView columns{store.data(), dst.height, last - first, stride, dst.format};
  fillBand({source.pixels, mirrored(source.map, first)}, columns, mirrored(quad, first), options, 0,
           columns.height);
  transposeFor(dst.format)(columns, dst, first);
}

bool isTooLarge(const ConstPixelView& view) {
  return view.width > kMaxSide || view.height > kMaxSide;
}

[[maybe_unused]] bool isAligned(const ConstPixelView& view) {
  const size_t component = view.format.bytesPerComponent();
  return reinterpret_cast<uintptr_t>(view.data) % component == 0 &&
         size_t(view.stride) % component == 0;
}

}  // namespace

bool warp(const ConstPixelView& src, const PixelView& dst, const Quad& quad,
          const Options& options) {
  assert(src.format.isValid() && src.format == dst.format);
  assert(isAligned(src) && isAligned(dst));
  const auto map = isTooLarge(src) || isTooLarge(dst)
                       ? std::nullopt
                       : Homography::fromRectangle(src.width, src.height, quad);
  if (!map) {
    for (int y = 0; y < dst.height; ++y) clear(dst, y, 0, dst.width);
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
    eachBand(dst.width, bandColumns(dst.height, dst.format.bytesPerPixel()), options.threads,
             [&](int first, int last) { fillColumns(source, dst, quad, options, first, last); });
  } else {
    eachBand(dst.height, kBandRows, options.threads,
             [&](int first, int last) { fillBand(source, dst, quad, options, first, last); });
  }
  return true;
}

}  // namespace kelvar::warp
