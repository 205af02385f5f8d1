#include "geometry/warp/AreaFilter.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include "geometry/warp/Coverage.h"
#include "geometry/warp/Span.h"

namespace kelvar::warp {
namespace {

/// Pixels that share a sampling pattern.
constexpr int kSegment = 128;
/// Shrink factors up to which one sample does, and from which samples cover the whole pixel. In
/// between a pair of them moves apart.
constexpr double kKeep = 1.25;
constexpr double kCover = 1.8;
/// The greatest distance within a pair, in pixels. A little more than half: chosen so that a pair
/// answers to detail as the three samples do that come next.
constexpr double kWidestPair = 0.54;
/// The most samples along an axis.
constexpr double kMostSamples = 32;

/// Samples along one axis of a pixel: `count` evenly spread ones, or a pair `apart` (in pixels)
/// from each other that moves apart as the map begins to shrink.
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
    // Two samples in a shrink by two would leave a trace of aliasing; rounding must not add one.
    const double count = shrink >= kCover ? std::max(3.0, std::ceil(shrink - 0.05)) : 1.0;
    return {std::max(int(std::min(count, kMostSamples)), oversampling), 0};
  }
  // The variance of the pair grows evenly with the shrink factor.
  return {1, kWidestPair * std::sqrt((shrink - kKeep) / (kCover - kKeep))};
}

/// How many source pixels a step of one pixel along x or y covers. The derivatives of the map
/// along x are a function of y alone over the square of its denominator, and the other way round.
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

/// Whether no pixel of the rectangle shrinks: numerators are greatest, denominators least, at
/// corners.
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

/// Fills `count` (at most kSegment) pixels from pixel `x` of row `y` on with the means of grids
/// of samples.
void fillSegment(const Source& source, int x, int y, int count, Axis across, Axis down,
                 uint8_t* out) {
  const int each = across.isPair() ? 1 : across.count;  // Samples a pixel in one line.
  const int lines = across.isPair() ? 2 : 1;
  const int atOnce = std::min(count, kChunk / each);
  const double step = 1.0 / each;
  for (int done = 0; done < count; done += atOnce) {
    const int n = std::min(atOnce, count - done);
    uint16_t sums[kChunk * 4];
    std::memset(sums, 0, size_t(n) * each * 8);
    for (int j = 0; j < down.lines(); ++j) {
      for (int i = 0; i < lines; ++i) {
        addLine(source,
                {x + done + 0.5 + across.offset(i), step, y + 0.5 + down.offset(j), n * each,
                 1.0 / down.lines()},
                sums);
      }
    }
    meanOfGroups(sums, n, each, each * lines * down.lines(), out + size_t(done) * 4);
  }
}

/// Multiplies a pixel by `coverage`.
void fade(uint8_t* pixel, double coverage) {
  const int alpha = int(coverage * 255 + 0.5);
  for (int c = 0; c < 4; ++c) pixel[c] = uint8_t((pixel[c] * alpha + 127) / 255);
}

class Row {
 public:
  Row(const Source& source, const PixelView& dst, const Quad& quad, int oversampling, int y)
      : source_(source),
        oversampling_(oversampling),
        y_(y),
        out_(dst.row(y)),
        coverage_(quad, y, dst.width),
        shrink_(source.map, y + 0.5) {
    const Span touched = coverage_.touched();
    centres_ = centresInside(quad, y, dst.width);
    centres_.begin = std::clamp(centres_.begin, touched.begin, touched.end);
    centres_.end = std::clamp(centres_.end, centres_.begin, touched.end);
  }

  Span centres() const { return centres_; }

  void clearOutside(int width) {
    const Span touched = coverage_.touched();
    std::memset(out_, 0, size_t(touched.begin) * 4);
    std::memset(out_ + size_t(touched.end) * 4, 0, size_t(width - touched.end) * 4);
  }

  /// Pixels [begin, end) with centres inside, a chunk at most, from where plain sampling starts a
  /// chunk.
  void fillInside(int begin, int end, bool plain) {
    if (plain) return sampleLine(source_, {begin + 0.5, 1, y_ + 0.5, end - begin}, at(begin));
    bool sampled = false;
    for (int x = begin; x < end; x += kSegment) {
      const int count = std::min(kSegment, end - x);
      const Axis across = axis(x, count, &Shrink::alongX);
      const Axis down = axis(x, count, &Shrink::alongY);
      if (!across.isPlain() || !down.isPlain()) {
        fillSegment(source_, x, y_, count, across, down, at(x));
      } else if (!sampled) {
        // The whole rest of the chunk, so that the bytes are those of plain sampling.
        uint8_t line[kChunk * 4];
        sampleLine(source_, {begin + 0.5, 1, y_ + 0.5, end - begin}, line);
        std::memcpy(at(x), line + size_t(x - begin) * 4, size_t(end - x) * 4);
        sampled = true;
      }
    }
  }

  /// Pixels that the quad touches with their centres outside.
  void fillEdges() {
    fillEdge(coverage_.touched().begin, centres_.begin);
    fillEdge(centres_.end, coverage_.touched().end);
    fadeAll(coverage_.touched().begin, coverage_.whole().begin);
    fadeAll(coverage_.whole().end, coverage_.touched().end);
  }

 private:
  uint8_t* at(int x) const { return out_ + size_t(x) * 4; }

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
    for (int x = begin; x < end; ++x) fade(at(x), coverage_.of(x));
  }

  const Source& source_;
  int oversampling_;
  int y_;
  uint8_t* out_;
  RowCoverage coverage_;
  Shrink shrink_;
  Span centres_;
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
    longest = std::max(longest, row.centres().end - row.centres().begin);
  }
  for (int offset = 0; offset < longest; offset += kChunk) {
    double left = 1e300, right = -1e300;
    for (const Row& row : rows) {
      if (row.centres().end - row.centres().begin <= offset) continue;
      left = std::min(left, double(row.centres().begin + offset));
      right = std::max(right,
                       double(std::min(row.centres().begin + offset + kChunk, row.centres().end)));
    }
    const bool plain = oversampling == 1 && keepsAll(source.map, left, first, right, last);
    for (Row& row : rows) {
      const int begin = row.centres().begin + offset;
      const int end = std::min(begin + kChunk, row.centres().end);
      if (begin < end) row.fillInside(begin, end, plain);
    }
  }
  for (Row& row : rows) row.fillEdges();
}

}  // namespace kelvar::warp
