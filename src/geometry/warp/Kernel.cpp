#include "geometry/warp/Kernel.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <type_traits>

#define HWY_WANT_AVX3_DL
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "geometry/warp/Kernel.cpp"
#include <hwy/cache_control.h>
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace kelvar::warp::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

/// A chunk is sampled in blocks of this many.
constexpr int kBlock = 64;
/// Positions are held with 16 bits of fraction, walked with 22.
constexpr int kPositionBits = 16;
constexpr int kWalkBits = 22;

using I32 = hn::ScalableTag<int32_t>;
using U16 = hn::ScalableTag<uint16_t>;
using I16 = hn::ScalableTag<int16_t>;
using U8 = hn::ScalableTag<uint8_t>;
using U32 = hn::ScalableTag<uint32_t>;
using F64 = hn::ScalableTag<double>;

/// Source positions of samples, 16.16 fixed point.
struct Positions {
  alignas(64) int32_t x[kChunk];
  alignas(64) int32_t y[kChunk];
};

/// Those of a block.
struct Block {
  int32_t* x;
  int32_t* y;
};

// ---------------------------------------------------------------------------------------------
// Positions

/// The map along one line: coordinates of sample i are (n0 + i n1) / (w0 + i w1).
struct Line {
  double xn0, xn1, yn0, yn1, w0, w1;
};

Line lineOf(const Homography& map, const SampleRow& row) {
  const auto& m = map.m;
  const double x = row.x, y = row.y;
  return {m[0] * x + m[1] * y + m[2], m[0] * row.step, m[3] * x + m[4] * y + m[5], m[3] * row.step,
          m[6] * x + m[7] * y + m[8], m[6] * row.step};
}

/// The runs that make up a chunk, as parabolas: position of sample t of a run is
/// base / 2^16 + (p + d t + a t (t - 1) / 2) / 2^22.
struct Runs {
  static constexpr int kMost = kChunk / 16;
  struct Coordinate {
    alignas(64) int32_t base[kMost];
    alignas(64) int32_t p[kMost];
    alignas(64) int32_t d[kMost];
    alignas(64) int32_t a[kMost];
  } x, y;
};

/// The most source pixels that a run may pass, so that 22 bits of fraction leave it room.
constexpr double kRunSpan = 400;

/// The run length for a line, or 0 when no parabola is near enough and each position has to be
/// computed. The cubic term that a parabola through start, middle and end misses is at most
/// 0.385 h^3 |f'''| / 6 = 0.385 h |f'| e^2, with h half the length and e the relative change of
/// the denominator over h. Runs also need room for their last one to go on past the line's end,
/// by less than kRunSpan, without leaving what 16 bits hold; positions computed each do not.
int runLength(const Line& line, int count) {
  const double t = count - 1, last = line.w0 + line.w1 * t;
  const double room = 32767 - kRunSpan;
  for (const double end : {line.xn0 / line.w0, line.yn0 / line.w0, (line.xn0 + line.xn1 * t) / last,
                           (line.yn0 + line.yn1 * t) / last}) {
    if (!(std::abs(end) <= room)) return 0;
  }
  const double w = std::min(std::abs(line.w0), std::abs(last));
  // |f'| = |n1 w0 - n0 w1| / w^2 is greatest where w is least.
  const double slope = std::max(std::abs(line.xn1 * line.w0 - line.xn0 * line.w1),
                                std::abs(line.yn1 * line.w0 - line.yn0 * line.w1)) /
                       (w * w);
  for (const int length : {128, 64, 32, 16}) {
    const double half = length / 2;
    const double e = std::abs(line.w1) * half / (w - std::abs(line.w1) * length);
    if (e < 0 || !(e < 0.1)) continue;
    if (0.385 * half * slope * e * e <= 0.0003 && slope * length < kRunSpan) return length;
  }
  return 0;
}

/// Sets up `count` runs from the exact positions at their starts, middles and ends.
HWY_INLINE void setUp(const Line& line, int length, int count, double n0, double n1,
                      Runs::Coordinate* c) {
  const F64 d;
  const hn::Rebind<int32_t, F64> di;
  const auto set = [d](double v) { return hn::Set(d, v); };
  const auto round = [&](auto v) { return hn::Floor(hn::Add(v, set(0.5))); };
  const auto at = [&](auto t) {
    return hn::Div(hn::Add(set(n0), hn::Mul(set(n1), t)),
                   hn::Add(set(line.w0), hn::Mul(set(line.w1), t)));
  };
  const double half = length / 2;
  const auto one = set(1 << kWalkBits);
  for (int r = 0; r < count; r += int(hn::Lanes(d))) {
    const auto t = hn::Mul(hn::Iota(d, r), set(length));
    const auto u0 = at(t), u1 = at(hn::Add(t, set(half))), u2 = at(hn::Add(t, set(length)));
    const auto base = hn::Floor(u0);
    const auto p0 = round(hn::Mul(hn::Sub(u0, base), one));
    const auto p1 = round(hn::Mul(hn::Sub(u1, base), one));
    const auto p2 = round(hn::Mul(hn::Sub(u2, base), one));
    const auto bend = hn::Add(hn::Sub(p2, hn::Add(p1, p1)), p0);
    const auto mean = hn::Mul(hn::Sub(p2, p0), set(1.0 / length));
    const auto curve = round(hn::Mul(bend, set(1 / (half * half))));
    const auto start = round(hn::Sub(mean, hn::Mul(curve, set((length - 1) * 0.5))));
    const auto end = hn::Add(start, hn::Mul(curve, set(length - 1)));
    // The map is monotone along a line; where rounding makes the parabola turn, a straight line
    // is as near and keeps it so.
    const auto turns = hn::Lt(hn::Mul(start, end), hn::Zero(d));
    hn::Store(hn::ShiftLeft<kPositionBits>(hn::DemoteTo(di, base)), di, c->base + r);
    hn::Store(hn::DemoteTo(di, p0), di, c->p + r);
    hn::Store(hn::DemoteTo(di, hn::IfThenElse(turns, round(mean), start)), di, c->d + r);
    hn::Store(hn::DemoteTo(di, hn::IfThenElse(turns, hn::Zero(d), curve)), di, c->a + r);
  }
}

HWY_INLINE void walk(const Runs::Coordinate& c, int run, int length, int32_t* out) {
  const I32 d;
  constexpr int kLanes = int(hn::MaxLanes(I32()));
  const auto i = hn::Iota(d, 0);
  const auto triangle = hn::ShiftRight<1>(hn::Mul(i, hn::Sub(i, hn::Set(d, 1))));
  const auto base = hn::Set(d, c.base[run]);
  const auto step = hn::Set(d, c.d[run]);
  const auto growth = hn::Set(d, c.a[run]);
  auto position =
      hn::Add(hn::Set(d, c.p[run]), hn::Add(hn::Mul(step, i), hn::Mul(growth, triangle)));
  // From here on in steps of a vector: the difference over its lanes, and that one's growth.
  const auto wide = hn::Mul(growth, hn::Set(d, kLanes));
  auto velocity = hn::Add(hn::Mul(step, hn::Set(d, kLanes)),
                          hn::Mul(growth, hn::Add(hn::Mul(i, hn::Set(d, kLanes)),
                                                  hn::Set(d, kLanes * (kLanes - 1) / 2))));
  const auto acceleration = hn::Mul(wide, hn::Set(d, kLanes));
  for (int t = 0; t < length; t += kLanes) {
    hn::Store(hn::Add(base, hn::ShiftRight<kWalkBits - kPositionBits>(position)), d, out + t);
    position = hn::Add(position, velocity);
    velocity = hn::Add(velocity, acceleration);
  }
}

/// Whatever is not a number or lies too far away ends up at an edge.
HWY_INLINE int32_t toFixed(double position) {
  const double far = 32767.5;
  return int32_t(std::floor(std::min(far, std::max(-far, position)) * (1 << kPositionBits) + 0.5));
}

/// Positions one by one, for perspective too strong for runs.
void computeEach(const Line& line, int count, Positions* positions) {
  for (int i = 0; i < count; ++i) {
    const double w = line.w0 + line.w1 * i;
    positions->x[i] = toFixed((line.xn0 + line.xn1 * i) / w);
    positions->y[i] = toFixed((line.yn0 + line.yn1 * i) / w);
  }
}

void computeRuns(const Line& line, int length, int count, Positions* positions) {
  Runs runs;
  const int n = (count + length - 1) / length;
  setUp(line, length, n, line.xn0, line.xn1, &runs.x);
  setUp(line, length, n, line.yn0, line.yn1, &runs.y);
  for (int r = 0; r < n; ++r) {
    walk(runs.x, r, length, positions->x + r * length);
    walk(runs.y, r, length, positions->y + r * length);
  }
}

/// Positions of `count` samples. The last is repeated to fill the block, since what lies beyond
/// may be anywhere. False when the line crosses the horizon, where the denominator changes its
/// sign: then the positions are not in order.
bool computePositions(const Line& line, int count, Positions* positions) {
  const bool ordered = line.w0 * (line.w0 + line.w1 * (count - 1)) > 0;
  const int length = ordered ? runLength(line, count) : 0;
  if (length == 0) {
    computeEach(line, count, positions);
  } else {
    computeRuns(line, length, count, positions);
  }
  const int end = (count + kBlock - 1) / kBlock * kBlock;
  std::fill(positions->x + count, positions->x + end, positions->x[count - 1]);
  std::fill(positions->y + count, positions->y + end, positions->y[count - 1]);
  return ordered;
}

/// The one y of a line that runs along a source row, to the bit what computePositions gives.
HWY_INLINE int32_t positionAcross(const Line& line, bool byRuns) {
  const double y = line.yn0 / line.w0;
  if (!byRuns) return toFixed(y);
  const double base = std::floor(y);
  const auto p = int32_t(std::floor((y - base) * (1 << kWalkBits) + 0.5));
  return (int32_t(base) << kPositionBits) + (p >> (kWalkBits - kPositionBits));
}

/// Moves positions to [0, limit].
HWY_INLINE void clampAll(int32_t* positions, int32_t limit) {
  const I32 d;
  for (int t = 0; t < kBlock; t += int(hn::Lanes(d))) {
    const auto p = hn::Load(d, positions + t);
    hn::Store(hn::Min(hn::Max(p, hn::Zero(d)), hn::Set(d, limit)), d, positions + t);
  }
}

// ---------------------------------------------------------------------------------------------
// Samples

#if HWY_TARGET == HWY_SCALAR

/// From two rows' horizontal sums to a byte. `lower` is the weight of `bottom` in 15 bits. Both
/// products are rounded, the upper one as the negative that its weight is elsewhere.
HWY_INLINE uint8_t blended(int top, int bottom, int lower) {
  const int sum = ((bottom * lower + 0x4000) >> 15) - ((top * (lower - 0x8000) + 0x4000) >> 15);
  return uint8_t((uint32_t(sum + 0x8000) * 257) >> 16);
}

/// The samples of a block, one by one: the arithmetic that every other way repeats.
void sampleScattered(const ConstPixelView& pixels, const Block& block, ptrdiff_t, int count,
                     uint8_t* out) {
  for (int i = 0; i < count; ++i) {
    const uint8_t* top =
        pixels.row(block.y[i] >> kPositionBits) + ptrdiff_t(block.x[i] >> kPositionBits) * 4;
    const uint8_t* bottom = top + pixels.stride;
    const int right = (((block.x[i] & 0xFFFF) >> 1) * 255 + 0x4000) >> 15, left = 255 - right;
    const int lower = (block.y[i] & 0xFFFF) >> 1;
    for (int c = 0; c < 4; ++c) {
      const int t = (top[c] - 128) * left + (top[c + 4] - 128) * right;
      const int b = (bottom[c] - 128) * left + (bottom[c + 4] - 128) * right;
      out[i * 4 + c] = blended(t, b, lower);
    }
  }
}

#else

using VU8 = hn::Vec<U8>;
using VI16 = hn::Vec<I16>;
using VU16 = hn::Vec<U16>;

/// Sums of neighbouring products: unsigned weights by signed values. Exact as used here.
HWY_INLINE VI16 mulPairs(VU8 weights, VU8 values) {
#if HWY_TARGET == HWY_AVX3 || HWY_TARGET == HWY_AVX3_DL
  return VI16{_mm512_maddubs_epi16(weights.raw, values.raw)};
#elif HWY_TARGET == HWY_AVX2
  return VI16{_mm256_maddubs_epi16(weights.raw, values.raw)};
#elif HWY_TARGET == HWY_SSE4 || HWY_TARGET == HWY_SSSE3
  return VI16{_mm_maddubs_epi16(weights.raw, values.raw)};
#else
  const I16 d;
  const auto w = hn::BitCast(d, weights), v = hn::BitCast(d, values);
  const auto low = hn::Set(d, 0xFF);
  const auto even = hn::Mul(hn::And(w, low), hn::ShiftRight<8>(hn::ShiftLeft<8>(v)));
  const auto odd =
      hn::Mul(hn::BitCast(d, hn::ShiftRight<8>(hn::BitCast(U16(), w))), hn::ShiftRight<8>(v));
  return hn::Add(even, odd);
#endif
}

/// From the two rows' horizontal sums (255 (pixel - 128)) to pixels 0 … 255 in 16 bits.
/// `fraction` is the vertical weight of `bottom` in 15 bits.
HWY_INLINE VU16 blendRows(VI16 top, VI16 bottom, VI16 fraction) {
  const I16 d;
  const auto complement = hn::Xor(fraction, hn::Set(d, int16_t(-32768)));
  const auto sum =
      hn::Sub(hn::MulFixedPoint15(bottom, fraction), hn::MulFixedPoint15(top, complement));
  // (s + 128) * 257 / 65536 is s / 255, rounded.
  const U16 du;
  return hn::MulHigh(hn::Xor(hn::BitCast(du, sum), hn::Set(du, 0x8000)), hn::Set(du, 257));
}

/// 16-bit values to bytes; in each 128-bit part `a`'s come before `b`'s.
HWY_INLINE VU8 pack(VU16 a, VU16 b) {
#if HWY_TARGET == HWY_AVX3 || HWY_TARGET == HWY_AVX3_DL
  return VU8{_mm512_packus_epi16(a.raw, b.raw)};
#elif HWY_TARGET == HWY_AVX2
  return VU8{_mm256_packus_epi16(a.raw, b.raw)};
#elif HWY_TARGET == HWY_SSE4 || HWY_TARGET == HWY_SSSE3
  return VU8{_mm_packus_epi16(a.raw, b.raw)};
#else
  const U8 d;
  alignas(16) static constexpr uint8_t kOrder[16] = {0, 2, 4, 6, 8, 10, 12, 14,
                                                     1, 3, 5, 7, 9, 11, 13, 15};
  const auto both = hn::Or(a, hn::ShiftLeft<8>(b));
  return hn::TableLookupBytes(hn::BitCast(d, both), hn::LoadDup128(d, kOrder));
#endif
}

/// Two neighbouring pixels of one row for each of some samples, 8 bytes each, from `at(sample)`:
/// `first`, `first + 1`, then the same 4, 8, … further on.
template <typename At>
HWY_INLINE VU8 loadPairs(const At& at, int first) {
  const hn::CappedTag<uint64_t, 2> d;
  const U8 d8;
  const auto two = [&](int i) {
    const hn::CappedTag<uint64_t, 1> half;
    const auto load = [&](int k) {
      uint64_t v;
      std::memcpy(&v, at(k), 8);
      return hn::Set(half, v);
    };
    return hn::Combine(d, load(i + 1), load(i));
  };
  const hn::ScalableTag<uint64_t> d64;
#if HWY_TARGET == HWY_AVX3 || HWY_TARGET == HWY_AVX3_DL
  const hn::Half<decltype(d64)> h;
  return hn::BitCast(d8, hn::Combine(d64, hn::Combine(h, two(first + 12), two(first + 8)),
                                     hn::Combine(h, two(first + 4), two(first))));
#elif HWY_TARGET == HWY_AVX2
  return hn::BitCast(d8, hn::Combine(d64, two(first + 4), two(first)));
#else
  return hn::BitCast(d8, two(first));
#endif
}

/// Pairs of pixels as pairs of their channels, less 128.
HWY_INLINE VU8 channelPairs(VU8 pairs) {
  const U8 d;
  alignas(16) static constexpr uint8_t kInterleave[16] = {0, 4,  1, 5,  2,  6,  3,  7,
                                                          8, 12, 9, 13, 10, 14, 11, 15};
  return hn::Xor(hn::TableLookupBytes(pairs, hn::LoadDup128(d, kInterleave)), hn::Set(d, 0x80));
}

/// Weights of the left and right pixel as a pair of bytes, 255 - f and f, twice a sample.
HWY_INLINE hn::Vec<U32> weightsOf(hn::Vec<I32> x) {
  const U32 d;
  const auto fx = hn::BitCast(
      d, hn::MulFixedPoint15(hn::BitCast(I16(), hn::ShiftRight<1>(hn::BitCast(U16(), x))),
                             hn::BitCast(I16(), hn::Set(d, 0x000000FF))));
  const auto pair = hn::Xor(hn::Or(fx, hn::ShiftLeft<8>(fx)), hn::Set(d, 0x000000FF));
  return hn::Or(pair, hn::ShiftLeft<16>(pair));
}

/// The samples of a block, any map. Positions must be inside.
void sampleScattered(const ConstPixelView& pixels, const Block& block, ptrdiff_t ahead, int count,
                     uint8_t* out) {
  const I32 d;
  const U8 d8;
  const U32 d32;
  const int n = int(hn::Lanes(d));
  alignas(64) uint8_t tail[kBlock * 4];
  const bool whole = count == kBlock;
  for (int t = 0; t < count; t += n) {
    const auto x = hn::Load(d, block.x + t), y = hn::Load(d, block.y + t);
    const auto at = [&](int i) {
      return pixels.data + ptrdiff_t(block.y[t + i] >> 16) * pixels.stride +
             ptrdiff_t(block.x[t + i] >> 16) * 4;
    };
    const auto below = [&](int i) { return at(i) + pixels.stride; };
    hwy::Prefetch(at(0) + ahead);
    const auto weights = weightsOf(x);
    const auto fy = hn::And(hn::ShiftRight<1>(hn::BitCast(d32, y)), hn::Set(d32, 0x7FFF));
    const auto fraction = hn::Or(fy, hn::ShiftLeft<16>(fy));
    const auto half = [&](int first, auto w, auto f) {
      const auto w8 = hn::BitCast(d8, w);
      return blendRows(mulPairs(w8, channelPairs(loadPairs(at, first))),
                       mulPairs(w8, channelPairs(loadPairs(below, first))), hn::BitCast(I16(), f));
    };
    const auto a = half(0, hn::InterleaveLower(d32, weights, weights),
                        hn::InterleaveLower(d32, fraction, fraction));
    const auto b = half(2, hn::InterleaveUpper(d32, weights, weights),
                        hn::InterleaveUpper(d32, fraction, fraction));
    hn::StoreU(pack(a, b), d8, whole ? out + t * 4 : tail + t * 4);
  }
  if (!whole) std::memcpy(out, tail, size_t(count) * 4);
}

#endif  // HWY_TARGET == HWY_SCALAR

#if HWY_TARGET == HWY_AVX3_DL
#include "geometry/warp/KernelWindows-inl.h"
#endif

#include "geometry/warp/KernelRows-inl.h"

/// Rows ahead for which the source is prefetched.
constexpr int kAhead = 6;

/// How many bytes further on in the source lies what the row needs that comes kAhead later.
ptrdiff_t aheadOf(const Source& source, const SampleRow& row) {
  const Point here{row.x + (row.count - 1) * row.step / 2, row.y};
  const Point from = source.map.map(here);
  const Point to = source.map.map({here.x, here.y + kAhead * row.pitch});
  // In this order of arguments not a number becomes a number.
  const auto whole = [](double d) { return ptrdiff_t(std::min(1e4, std::max(-1e4, d))); };
  return whole(to.y - from.y) * source.pixels.stride + whole(to.x - from.x) * 4;
}

/// The last position that has a pixel on either side.
HWY_INLINE int32_t limitOf(int pixels) {
  return int32_t((uint32_t(pixels - 1) << kPositionBits) - 1);
}

/// Keeps a block's positions inside the picture. Of those in order only the ends need a look.
HWY_INLINE void keepInside(const ConstPixelView& pixels, const Block& block, bool ordered) {
  const int32_t limitX = limitOf(pixels.width), limitY = limitOf(pixels.height);
  const auto outside = [ordered](const int32_t* p, int32_t limit) {
    return !ordered || std::min(p[0], p[kBlock - 1]) < 0 || std::max(p[0], p[kBlock - 1]) > limit;
  };
  if (outside(block.x, limitX)) clampAll(block.x, limitX);
  if (outside(block.y, limitY)) clampAll(block.y, limitY);
}

void SampleLine(const Source& source, const SampleRow& row, uint8_t* out) {
  const int count = row.count;
  Positions positions;
  const bool ordered = computePositions(lineOf(source.map, row), count, &positions);
  const ptrdiff_t ahead = aheadOf(source, row);
#if HWY_TARGET == HWY_AVX3_DL
  const Course course = courseOf(positions, count);
#endif
  for (int t = 0; t < count; t += kBlock) {
    const Block block{positions.x + t, positions.y + t};
    const int n = std::min(kBlock, count - t);
    keepInside(source.pixels, block, ordered);
#if HWY_TARGET == HWY_AVX3_DL
    if (ordered && sampleWindows(source.pixels, block, course, ahead, n, out + t * 4)) continue;
#endif
    sampleScattered(source.pixels, block, ahead, n, out + t * 4);
  }
}

void SampleRows(const Source& source, SampleRow row, int rows, const PixelView& out) {
  const int count = row.count;
  const Line line = lineOf(source.map, row);
  Positions positions;
  computePositions(line, count, &positions);
  for (int t = 0; t < count; t += kBlock) {
    keepInside(source.pixels, {positions.x + t, positions.y + t}, true);
  }
  RowSums sums(source.pixels, positions.x, count);
  const int32_t limit = limitOf(source.pixels.height);
  const bool byRuns = runLength(line, count) != 0;
  for (int i = 0; i < rows; ++i, ++row.y) {
    const int32_t y = positionAcross(lineOf(source.map, row), byRuns);
    blendLine(sums, std::min(std::max(y, 0), limit), count, out.row(i));
  }
}

void AddLine(const Source& source, const SampleRow& row, uint16_t* sums) {
  alignas(64) uint8_t line[kChunk * 4];
  SampleLine(source, row, line);
  for (int i = 0; i < row.count * 4; ++i) sums[i] = uint16_t(sums[i] + line[i]);
}

template <int kEach>
HWY_INLINE void meanOf(const uint16_t* sums, int count, int each, uint32_t reciprocal,
                       uint8_t* out) {
  if (kEach != 0) each = kEach;
  for (int i = 0; i < count; ++i) {
    uint32_t total[4] = {};
    for (int k = 0; k < each; ++k) {
      for (int c = 0; c < 4; ++c) total[c] += sums[(i * each + k) * 4 + c];
    }
    for (int c = 0; c < 4; ++c) {
      out[i * 4 + c] = uint8_t((total[c] * reciprocal + (1u << 23)) >> 24);
    }
  }
}

void MeanOfGroups(const uint16_t* sums, int count, int each, int samples, uint8_t* out) {
  const uint32_t reciprocal = uint32_t((1u << 24) / double(samples) + 0.5);
  switch (each) {
    case 1:
      return meanOf<1>(sums, count, each, reciprocal, out);
    case 2:
      return meanOf<2>(sums, count, each, reciprocal, out);
    case 3:
      return meanOf<3>(sums, count, each, reciprocal, out);
    case 4:
      return meanOf<4>(sums, count, each, reciprocal, out);
    default:
      return meanOf<0>(sums, count, each, reciprocal, out);
  }
}

}  // namespace kelvar::warp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kelvar::warp {

HWY_EXPORT(SampleLine);
HWY_EXPORT(SampleRows);
HWY_EXPORT(AddLine);
HWY_EXPORT(MeanOfGroups);

void sampleLine(const Source& source, const SampleRow& row, uint8_t* out) {
  HWY_DYNAMIC_DISPATCH(SampleLine)(source, row, out);
}

void sampleRows(const Source& source, SampleRow row, int rows, const PixelView& out) {
  HWY_DYNAMIC_DISPATCH(SampleRows)(source, row, rows, out);
}

void addLine(const Source& source, const SampleRow& row, uint16_t* sums) {
  HWY_DYNAMIC_DISPATCH(AddLine)(source, row, sums);
}

void meanOfGroups(const uint16_t* sums, int count, int each, int samples, uint8_t* out) {
  HWY_DYNAMIC_DISPATCH(MeanOfGroups)(sums, count, each, samples, out);
}

}  // namespace kelvar::warp
#endif
