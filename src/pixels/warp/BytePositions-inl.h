// Source positions of the samples of a row, in 16.16 fixed point. Included for each target.
//
// A projective map requires a division per sample. To avoid that, a row is split into runs; the
// positions at the start, the middle and the end of each run are exact, and those between lie on
// the parabola through these three, evaluated by forward differences.

#if defined(KELVAR_PIXELS_WARP_BYTE_POSITIONS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef KELVAR_PIXELS_WARP_BYTE_POSITIONS_INL_H_
#undef KELVAR_PIXELS_WARP_BYTE_POSITIONS_INL_H_
#else
#define KELVAR_PIXELS_WARP_BYTE_POSITIONS_INL_H_
#endif

#include <hwy/highway.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "pixels/warp/SampleRow.h"

HWY_BEFORE_NAMESPACE();
namespace kelvar::warp::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

/// Number of samples in a block. A chunk is sampled in blocks.
constexpr int kBlock = 64;
/// Fraction bits of positions, and of the running sums in forward differences.
constexpr int kPositionBits = 16;
constexpr int kWalkBits = 22;

using I32 = hn::ScalableTag<int32_t>;
using F64 = hn::ScalableTag<double>;

struct Positions {
  alignas(64) int32_t x[kChunk];
  alignas(64) int32_t y[kChunk];
};

/// Positions of one block.
struct Block {
  int32_t* x;
  int32_t* y;
};

/// The runs that make up a chunk, as parabolas: the position of sample t of a run is
/// base / 2^16 + (p + d t + a t (t - 1) / 2) / 2^22.
struct Runs {
  static constexpr int kMaxRuns = kChunk / 16;
  struct Coordinate {
    alignas(64) int32_t base[kMaxRuns];
    alignas(64) int32_t p[kMaxRuns];
    alignas(64) int32_t d[kMaxRuns];
    alignas(64) int32_t a[kMaxRuns];
  } x, y;
};

/// A run covers fewer source pixels than this, so that 22 fraction bits do not overflow.
constexpr double kMaxRunSpan = 400;

/// The run length for a row, or 0 when no parabola is close enough and each position has to be
/// computed. A parabola through start, middle and end lacks the cubic term, which is at most
/// 0.385 h^3 |f'''| / 6 = 0.385 h |f'| e^2, with h half the length and e the relative change of
/// the denominator over h. The last run may also extend past the end of the row, by less than
/// kMaxRunSpan, and must not overflow 16 bits there; positions computed one by one cannot.
inline int runLength(const MappedRow& row, int count) {
  const double t = count - 1, last = row.w0 + row.w1 * t;
  const double limit = 32767 - kMaxRunSpan;
  for (const double end : {row.xn0 / row.w0, row.yn0 / row.w0, (row.xn0 + row.xn1 * t) / last,
                           (row.yn0 + row.yn1 * t) / last}) {
    if (!(std::abs(end) <= limit)) return 0;
  }
  const double w = std::min(std::abs(row.w0), std::abs(last));
  // |f'| = |n1 w0 - n0 w1| / w^2 is greatest where w is smallest.
  const double slope = std::max(std::abs(row.xn1 * row.w0 - row.xn0 * row.w1),
                                std::abs(row.yn1 * row.w0 - row.yn0 * row.w1)) /
                       (w * w);
  for (const int length : {128, 64, 32, 16}) {
    const double half = length / 2;
    const double e = std::abs(row.w1) * half / (w - std::abs(row.w1) * length);
    if (e < 0 || !(e < 0.1)) continue;
    if (0.385 * half * slope * e * e <= 0.0003 && slope * length < kMaxRunSpan) return length;
  }
  return 0;
}

/// Sets up `count` runs of one coordinate, (n0 + n1 t) / w, from the exact positions at their
/// starts, middles and ends.
HWY_INLINE void setUpRuns(const MappedRow& row, int length, int count, double n0, double n1,
                          Runs::Coordinate* c) {
  const F64 d;
  const hn::Rebind<int32_t, F64> di;
  const auto set = [d](double v) { return hn::Set(d, v); };
  const auto round = [&](auto v) { return hn::Floor(hn::Add(v, set(0.5))); };
  const auto at = [&](auto t) {
    return hn::Div(hn::Add(set(n0), hn::Mul(set(n1), t)),
                   hn::Add(set(row.w0), hn::Mul(set(row.w1), t)));
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
    // The map is monotone along a row. Where rounding would make the parabola reverse direction, a
    // straight line is as close and stays monotone.
    const auto reverses = hn::Lt(hn::Mul(start, end), hn::Zero(d));
    hn::Store(hn::ShiftLeft<kPositionBits>(hn::DemoteTo(di, base)), di, c->base + r);
    hn::Store(hn::DemoteTo(di, p0), di, c->p + r);
    hn::Store(hn::DemoteTo(di, hn::IfThenElse(reverses, round(mean), start)), di, c->d + r);
    hn::Store(hn::DemoteTo(di, hn::IfThenElse(reverses, hn::Zero(d), curve)), di, c->a + r);
  }
}

/// Writes the positions of one run by forward differences.
HWY_INLINE void walkRun(const Runs::Coordinate& c, int run, int length, int32_t* out) {
  const I32 d;
  constexpr int kLanes = int(hn::MaxLanes(I32()));
  const auto i = hn::Iota(d, 0);
  const auto triangle = hn::ShiftRight<1>(hn::Mul(i, hn::Sub(i, hn::Set(d, 1))));
  const auto base = hn::Set(d, c.base[run]);
  const auto step = hn::Set(d, c.d[run]);
  const auto growth = hn::Set(d, c.a[run]);
  auto position =
      hn::Add(hn::Set(d, c.p[run]), hn::Add(hn::Mul(step, i), hn::Mul(growth, triangle)));
  // From here on, each step is a whole vector: the first difference over kLanes samples, and its
  // growth per step.
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

inline void computeRuns(const MappedRow& row, int length, int count, Positions* positions) {
  Runs runs;
  const int n = (count + length - 1) / length;
  setUpRuns(row, length, n, row.xn0, row.xn1, &runs.x);
  setUpRuns(row, length, n, row.yn0, row.yn1, &runs.y);
  for (int r = 0; r < n; ++r) {
    walkRun(runs.x, r, length, positions->x + r * length);
    walkRun(runs.y, r, length, positions->y + r * length);
  }
}

/// NaN and positions too far away are clamped to an edge.
HWY_INLINE int32_t toFixed(double position) {
  const double far = 32767.5;
  return int32_t(std::floor(std::min(far, std::max(-far, position)) * (1 << kPositionBits) + 0.5));
}

/// Computes positions one by one, for perspective too strong for runs.
inline void computeEach(const MappedRow& row, int count, Positions* positions) {
  for (int i = 0; i < count; ++i) {
    const double w = row.w0 + row.w1 * i;
    positions->x[i] = toFixed((row.xn0 + row.xn1 * i) / w);
    positions->y[i] = toFixed((row.yn0 + row.yn1 * i) / w);
  }
}

/// Computes the positions of `count` samples. The last one is repeated to fill its block, since the
/// map may go anywhere beyond. Returns false when the row crosses the horizon, where the
/// denominator changes sign: then the positions are not in order.
inline bool computePositions(const MappedRow& row, int count, Positions* positions) {
  const bool ordered = row.w0 * (row.w0 + row.w1 * (count - 1)) > 0;
  const int length = ordered ? runLength(row, count) : 0;
  if (length == 0) {
    computeEach(row, count, positions);
  } else {
    computeRuns(row, length, count, positions);
  }
  const int end = (count + kBlock - 1) / kBlock * kBlock;
  std::fill(positions->x + count, positions->x + end, positions->x[count - 1]);
  std::fill(positions->y + count, positions->y + end, positions->y[count - 1]);
  return ordered;
}

/// The y that all samples of a row have if the row runs along a source row: bit for bit the result
/// of computePositions.
HWY_INLINE int32_t rowPosition(const MappedRow& row, bool byRuns) {
  const double y = row.yn0 / row.w0;
  if (!byRuns) return toFixed(y);
  const double base = std::floor(y);
  const auto p = int32_t(std::floor((y - base) * (1 << kWalkBits) + 0.5));
  return (int32_t(base) << kPositionBits) + (p >> (kWalkBits - kPositionBits));
}

/// The last position that has a pixel on both sides.
HWY_INLINE int32_t maxPosition(int pixels) {
  return int32_t((uint32_t(pixels - 1) << kPositionBits) - 1);
}

/// Clamps the positions of a block to [0, max].
HWY_INLINE void clampAll(int32_t* positions, int32_t max) {
  const I32 d;
  for (int t = 0; t < kBlock; t += int(hn::Lanes(d))) {
    const auto p = hn::Load(d, positions + t);
    hn::Store(hn::Min(hn::Max(p, hn::Zero(d)), hn::Set(d, max)), d, positions + t);
  }
}

/// Clamps the positions of a block to the image. If they are in order, it is enough to check the
/// first and the last.
HWY_INLINE void keepInside(const ConstPixelView& pixels, const Block& block, bool ordered) {
  const int32_t maxX = maxPosition(pixels.width), maxY = maxPosition(pixels.height);
  const auto outside = [ordered](const int32_t* p, int32_t max) {
    return !ordered || std::min(p[0], p[kBlock - 1]) < 0 || std::max(p[0], p[kBlock - 1]) > max;
  };
  if (outside(block.x, maxX)) clampAll(block.x, maxX);
  if (outside(block.y, maxY)) clampAll(block.y, maxY);
}

}  // namespace kelvar::warp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // toggled guard
