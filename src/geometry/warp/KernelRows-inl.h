// Rows of a map along the axes: included inside the namespace of each target.
//
// All rows take the same x positions, and neighbouring rows often the same source rows. So a source
// row is interpolated horizontally once, and what is left of an output row is one blend of two
// such lines.

/// Source rows ahead that are prefetched.
constexpr int kRowsAhead = 4;

/// The horizontal sums of the two source rows in use. The order inside is that of a target's blend.
class RowSums {
 public:
  RowSums(const ConstPixelView& pixels, const int32_t* x, int count)
      : pixels_(pixels), x_(x), count_(count) {}

  const int16_t* of(int y) {
    Line& line = lines_[y & 1];
    if (line.y != y) fill(pixels_.row(y), line.sums);
    line.y = y;
    return line.sums;
  }

 private:
  struct Line {
    int y = -1;
    alignas(64) int16_t sums[kChunk * 4];
  };

  void fill(const uint8_t* row, int16_t* sums) const;

  const ConstPixelView& pixels_;
  const int32_t* x_;
  int count_;
  Line lines_[2];
};

#if HWY_TARGET == HWY_SCALAR

void RowSums::fill(const uint8_t* row, int16_t* sums) const {
  for (int i = 0; i < count_; ++i) {
    const uint8_t* pixel = row + ptrdiff_t(x_[i] >> kPositionBits) * 4;
    const int right = (((x_[i] & 0xFFFF) >> 1) * 255 + 0x4000) >> 15, left = 255 - right;
    for (int c = 0; c < 4; ++c) {
      sums[i * 4 + c] = int16_t((pixel[c] - 128) * left + (pixel[c + 4] - 128) * right);
    }
  }
}

void blendLine(RowSums& sums, int32_t y, int count, uint8_t* out) {
  const int16_t* top = sums.of(y >> kPositionBits);
  const int16_t* bottom = sums.of((y >> kPositionBits) + 1);
  for (int i = 0; i < count * 4; ++i) out[i] = blended(top[i], bottom[i], (y & 0xFFFF) >> 1);
}

#else

void RowSums::fill(const uint8_t* row, int16_t* sums) const {
  const I32 d;
  const U8 d8;
  const U32 d32;
  const I16 d16;
  const int n = int(hn::Lanes(d));
  for (int t = 0; t < count_; t += n) {
    const auto at = [&](int i) { return row + ptrdiff_t(x_[t + i] >> kPositionBits) * 4; };
    hwy::Prefetch(at(0) + kRowsAhead * pixels_.stride);
    hwy::Prefetch(at(n / 2) + kRowsAhead * pixels_.stride);
    const auto weights = weightsOf(hn::Load(d, x_ + t));
    const auto half = [&](int first, auto w) {
      return mulPairs(hn::BitCast(d8, w), channelPairs(loadPairs(at, first)));
    };
    hn::Store(half(0, hn::InterleaveLower(d32, weights, weights)), d16, sums + t * 4);
    hn::Store(half(2, hn::InterleaveUpper(d32, weights, weights)), d16, sums + t * 4 + n * 2);
  }
}

void blendLine(RowSums& sums, int32_t y, int count, uint8_t* out) {
  const I16 d;
  const U8 d8;
  const int n = int(hn::Lanes(I32()));
  const int16_t* top = sums.of(y >> kPositionBits);
  const int16_t* bottom = sums.of((y >> kPositionBits) + 1);
  const auto fraction = hn::Set(d, int16_t((y & 0xFFFF) >> 1));
  const auto half = [&](int i) {
    return blendRows(hn::Load(d, top + i), hn::Load(d, bottom + i), fraction);
  };
  const auto samples = [&](int t) { return pack(half(t * 4), half(t * 4 + n * 2)); };
  int t = 0;
  for (; t + n <= count; t += n) hn::StoreU(samples(t), d8, out + t * 4);
  if (t == count) return;
  alignas(64) uint8_t tail[64];
  hn::Store(samples(t), d8, tail);
  std::memcpy(out + t * 4, tail, size_t(count - t) * 4);
}

#endif  // HWY_TARGET == HWY_SCALAR
