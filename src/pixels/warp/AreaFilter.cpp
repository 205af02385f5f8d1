#include "pixels/warp/AreaFilter.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

#include "pixels/warp/Coverage.h"
#include "pixels/warp/Kernel.h"
#include "pixels/warp/Span.h"

namespace kelvar::warp {
namespace {

/// Pixels that share a sampling pattern.
constexpr int kSegment = 128;
/// Up to the first shrink factor one sample is enough; from the second on, samples cover the whole
/// pixel. In between there is a pair of samples whose distance grows.
constexpr double kKeep = 1.25;
constexpr double kCover = 1.8;
/// The largest distance of a pair, in pixels. A little more than half, so that a pair responds to
/// detail as the three samples that come next do.
constexpr double kMaxPairDistance = 0.54;
/// Along an axis.
constexpr double kMaxSamples = 32;

/// The samples along one axis of a pixel: `count` evenly spread ones, or a pair at a distance of
/// `apart` pixels.
struct Axis {
  int count = 1;
  double apart = 0;

  bool isPair() const { return apart > 0; }
  int lines() const { return isPair() ? 2 : count; }
  double offset(int i) const { return isPair() ? (i - 0.5) * apart : (i + 0.5) / count - 0.5; }
  bool isPlain() const { return count == 1 && !isPair(); }
};

Axis axisFor(double shrink, int oversampling) {
  if (shrink <= kKeep || shrink >= kCover || oversampling > 1) {
    // Two samples for a factor of two would leave some aliasing. Rounding must not add a sample.
    const double count = shrink >= kCover ? std::max(3.0, std::ceil(shrink - 0.05)) : 1.0;
    return {std::max(int(std::min(count, kMaxSamples)), oversampling), 0};
  }
  // The variance of the pair grows linearly with the shrink factor.
  return {1, kMaxPairDistance * std::sqrt((shrink - kKeep) / (kCover - kKeep))};
}

/// How many source pixels a step of one pixel along x or y covers. The derivative of the map along
/// x is a function of y alone, divided by the square of the denominator, and vice versa.
class Shrink {
 public:
  Shrink(const Homography& map, double y) : m_(map.m), y_(y) {
    const double w = m_[7] * y + m_[8];
    alongX_ = std::hypot(m_[0] * w - (m_[1] * y + m_[2]) * m_[6],
                         m_[3] * w - (m_[4] * y + m_[5]) * m_[6]);
  }

  double alongX(double x) const { return alongX_ / square(x); }

  double alongY(double x) const {
    const double w = m_[6] * x + m_[8];
    return std::hypot(m_[1] * w - (m_[0] * x + m_[2]) * m_[7],
                      m_[4] * w - (m_[3] * x + m_[5]) * m_[7]) /
           square(x);
  }

 private:
  double square(double x) const {
    const double w = m_[6] * x + m_[7] * y_ + m_[8];
    return w * w;
  }

  const std::array<double, 9>& m_;
  double y_;
  double alongX_;
};

/// Whether no pixel of the rectangle shrinks. Numerators are largest and denominators smallest at
/// its corners.
bool keepsAll(const Homography& map, double x0, double y0, double x1, double y1) {
  double most = 0, least = 1e300, sign = 0;
  for (const double x : {x0, x1}) {
    for (const double y : {y0, y1}) {
      const double w = map.m[6] * x + map.m[7] * y + map.m[8];
      const Shrink shrink(map, y);
      most = std::max({most, shrink.alongX(x) * w * w, shrink.alongY(x) * w * w});
      least = std::min(least, std::abs(w));
      sign += w > 0 ? 1 : -1;
    }
  }
  return std::abs(sign) == 4 && most <= kKeep * least * least;
}

/// Fills `count` (at most kSegment) pixels from pixel `x` of row `y` on with the means of grids of
/// samples.
template <typename Kernel>
void fillSegmentWith(const Source& source, int x, int y, int count, Axis across, Axis down,
                     uint8_t* out) {
  const PixelFormat& format = source.pixels.format;
  const int each = across.isPair() ? 1 : across.count;  // Samples per pixel in one line.
  const int lines = across.isPair() ? 2 : 1;
  const int atOnce = std::min(count, kChunk / each);
  const double step = 1.0 / each;
  for (int done = 0; done < count; done += atOnce) {
    const int n = std::min(atOnce, count - done);
    typename Kernel::Sum sums[kChunk * 4];
    std::fill_n(sums, size_t(n) * each * format.channels, 0);
    for (int j = 0; j < down.lines(); ++j) {
      for (int i = 0; i < lines; ++i) {
        Kernel::addRow(source,
                       {x + done + 0.5 + across.offset(i), step, y + 0.5 + down.offset(j), n * each,
                        1.0 / down.lines()},
                       sums);
      }
    }
    Kernel::meanOfGroups(format, sums, n, each, each * lines * down.lines(),
                         out + size_t(done) * format.bytesPerPixel());
  }
}

void fillSegment(const Source& source, int x, int y, int count, Axis across, Axis down,
                 uint8_t* out) {
  withKernel(source.pixels.format, [&](auto kernel) {
    fillSegmentWith<decltype(kernel)>(source, x, y, count, across, down, out);
  });
}

/// Multiplies components by `coverage`, in as many steps as the type has.
template <typename T>
void fadeComponents(T* components, int count, double coverage) {
  constexpr uint32_t kMax = std::numeric_limits<T>::max();
  const auto factor = uint32_t(coverage * kMax + 0.5);
  for (int c = 0; c < count; ++c) components[c] = T((components[c] * factor + kMax / 2) / kMax);
}

/// Multiplies a pixel by `coverage`: its alpha alone if it is straight, else all components.
void fade(uint8_t* pixel, const PixelFormat& format, double coverage) {
  const int first = format.alpha == AlphaKind::Straight ? 3 : 0, count = format.channels - first;
  switch (format.component) {
    case ComponentType::UInt8:
      return fadeComponents(pixel + first, count, coverage);
    case ComponentType::UInt16:
      return fadeComponents(reinterpret_cast<uint16_t*>(pixel) + first, count, coverage);
    case ComponentType::Float32:
      float* const components = reinterpret_cast<float*>(pixel) + first;
      for (int c = 0; c < count; ++c) components[c] = float(components[c] * coverage);
  }
}

/// A destination row.
class Row {
 public:
  Row(const Source& source, const PixelView& dst, const Quad& quad, int oversampling, int y)
      : source_(source),
        oversampling_(oversampling),
        y_(y),
        out_(dst.row(y)),
        bytesPerPixel_(dst.format.bytesPerPixel()),
        coverage_(quad, y, dst.width),
        shrink_(source.map, y + 0.5) {
    const Span touched = coverage_.touched();
    centers_ = centersInside(quad, y, dst.width);
    centers_.begin = std::clamp(centers_.begin, touched.begin, touched.end);
    centers_.end = std::clamp(centers_.end, centers_.begin, touched.end);
  }

  Span centers() const { return centers_; }

  void clearOutside(int width) {
    const Span touched = coverage_.touched();
    std::memset(out_, 0, size_t(touched.begin) * bytesPerPixel_);
    std::memset(at(touched.end), 0, size_t(width - touched.end) * bytesPerPixel_);
  }

  /// Fills pixels [begin, end), whose centers are inside: one chunk of plain sampling. `plain`:
  /// none of them shrinks.
  void fillInside(int begin, int end, bool plain) {
    if (plain) return sampleRow(source_, {begin + 0.5, 1, y_ + 0.5, end - begin}, at(begin));
    bool sampled = false;
    for (int x = begin; x < end; x += kSegment) {
      const int count = std::min(kSegment, end - x);
      const Axis across = axis(x, count, &Shrink::alongX);
      const Axis down = axis(x, count, &Shrink::alongY);
      if (!across.isPlain() || !down.isPlain()) {
        fillSegment(source_, x, y_, count, across, down, at(x));
      } else if (!sampled) {
        // The whole chunk at once, so that the bytes are those of plain sampling.
        alignas(float) uint8_t row[kChunk * 16];
        sampleRow(source_, {begin + 0.5, 1, y_ + 0.5, end - begin}, row);
        std::memcpy(at(x), row + size_t(x - begin) * bytesPerPixel_,
                    size_t(end - x) * bytesPerPixel_);
        sampled = true;
      }
    }
  }

  /// Fills the pixels that the quad touches with their centers outside, and applies coverage.
  void fillEdges() {
    fillEdge(coverage_.touched().begin, centers_.begin);
    fillEdge(centers_.end, coverage_.touched().end);
    fadeAll(coverage_.touched().begin, coverage_.whole().begin);
    fadeAll(coverage_.whole().end, coverage_.touched().end);
  }

 private:
  uint8_t* at(int x) const { return out_ + size_t(x) * bytesPerPixel_; }

  Axis axis(int x, int count, double (Shrink::*along)(double) const) const {
    const double middle = (shrink_.*along)(x + count * 0.5);
    return axisFor(middle, oversampling_);
  }

  void fillEdge(int begin, int end) {
    for (int x = begin; x < end; x += kSegment) {
      const int count = std::min(kSegment, end - x);
      fillSegment(source_, x, y_, count, axis(x, count, &Shrink::alongX),
                  axis(x, count, &Shrink::alongY), at(x));
    }
  }

  void fadeAll(int begin, int end) {
    for (int x = begin; x < end; ++x) fade(at(x), source_.pixels.format, coverage_.of(x));
  }

  const Source& source_;
  int oversampling_;
  int y_;
  uint8_t* out_;
  size_t bytesPerPixel_;
  RowCoverage coverage_;
  Shrink shrink_;
  Span centers_;
};

}  // namespace

void fillFiltered(const Source& source, const PixelView& dst, const Quad& quad, int oversampling,
                  int first, int last) {
  std::vector<Row> rows;
  rows.reserve(size_t(last - first));
  int longest = 0;
  for (int y = first; y < last; ++y) {
    Row& row = rows.emplace_back(source, dst, quad, oversampling, y);
    row.clearOutside(dst.width);
    longest = std::max(longest, row.centers().end - row.centers().begin);
  }
  for (int offset = 0; offset < longest; offset += kChunk) {
    double left = 1e300, right = -1e300;
    for (const Row& row : rows) {
      if (row.centers().end - row.centers().begin <= offset) continue;
      left = std::min(left, double(row.centers().begin + offset));
      right = std::max(right,
                       double(std::min(row.centers().begin + offset + kChunk, row.centers().end)));
    }
    const bool plain = oversampling == 1 && keepsAll(source.map, left, first, right, last);
    for (Row& row : rows) {
      const int begin = row.centers().begin + offset;
      const int end = std::min(begin + kChunk, row.centers().end);
      if (begin < end) row.fillInside(begin, end, plain);
    }
  }
  for (Row& row : rows) row.fillEdges();
}

}  // namespace kelvar::warp
