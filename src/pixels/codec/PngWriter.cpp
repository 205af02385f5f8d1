#include "pixels/codec/PngWriter.h"

#include <isa-l/crc.h>
#include <isa-l/igzip_lib.h>
#include <zlib.h>

#include <algorithm>
#include <atomic>
#include <cassert>
#include <cmath>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "pixels/codec/AlphaPremultiply.h"
#include "pixels/codec/BigEndian.h"
#include "pixels/codec/PngDeflate.h"
#include "pixels/codec/PngFilters.h"
#include "pixels/threads/ThreadPool.h"

namespace kelvar {

namespace {

constexpr size_t kBandBytes = 512 << 10;
/// The filter is chosen by every sixteenth row of a band, but by at least three.
constexpr int kSampleStep = 16, kMinSamples = 3;
/// Above this many bits of information per byte, repetitions are chance, and encoding them takes
/// more than the bytes themselves: then only runs are looked for.
constexpr double kNoisyBits = 1.5;

/// How the pixels are written. Where none is half transparent, a color that no opaque pixel has can
/// stand for the transparent ones, which saves the alpha channel, a fifth of a noisy file.
struct Layout {
  int pixelBytes = 4;          ///< 3: RGB. 4: RGBA.
  std::optional<uint8_t> key;  ///< The blue of the black that stands for transparent.
};

Layout layoutOf(const ConstPixelView& image) {
  const int width = image.width;
  uint32_t all = ~0u, partial = 0;
  bool taken[256] = {};
  for (int y = 0; y < image.height && !partial; ++y) {
    const auto* row = reinterpret_cast<const uint32_t*>(image.row(y));
    uint32_t nearBlack = 0;
    for (int x = 0; x < width; ++x) {
      all &= row[x];
      partial |= ((row[x] >> 24) + 1) & 0xfe;
      nearBlack |= row[x] >> 8 == 0xff0000;
    }
    if (!nearBlack) continue;
    for (int x = 0; x < width; ++x) {
      if (row[x] >> 8 == 0xff0000) taken[row[x] & 255] = true;
    }
  }
  if (partial) return {};
  if (all >> 24 == 255) return {3, std::nullopt};
  const auto* free = std::find(std::begin(taken), std::end(taken), false);
  if (free == std::end(taken)) return {};
  return {3, static_cast<uint8_t>(free - taken)};
}

using Chunk = std::vector<uint8_t>;

void appendBigEndian(Chunk* out, uint32_t value) {
  out->resize(out->size() + 4);
  writeBigEndian(value, out->data() + out->size() - 4);
}

/// Room for the length, and the type. The data is appended.
Chunk beginChunk(const char* type) {
  Chunk chunk(8);
  std::memcpy(chunk.data() + 4, type, 4);
  return chunk;
}

void endChunk(Chunk* chunk) {
  writeBigEndian(static_cast<uint32_t>(chunk->size() - 8), chunk->data());
  appendBigEndian(chunk, crc32_gzip_refl(0, chunk->data() + 4, chunk->size() - 4));
}

/// The rows of the image as PNG stores them, one after the other, together with the row above.
class RowWindow {
 public:
  RowWindow(const ConstPixelView& image, const Layout& layout)
      : image_(image),
        pixelBytes_(layout.pixelBytes),
        clear_(layout.key.value_or(0)),
        rows_{std::vector<uint8_t>(pixelBytes_ + rowBytes()),
              std::vector<uint8_t>(pixelBytes_ + rowBytes())} {}

  int pixelBytes() const { return pixelBytes_; }
  size_t rowBytes() const { return size_t(image_.width) * size_t(pixelBytes_); }
  const uint8_t* row() const { return rows_[current_].data() + pixelBytes_; }
  const uint8_t* above() const { return rows_[1 - current_].data() + pixelBytes_; }

  /// Makes row `y` the current one. Costs one conversion when it follows the last one, else two.
  void moveTo(int y) {
    if (y != y_ + 1) load(y - 1);
    load(y);
    y_ = y;
  }

 private:
  void load(int y) {
    current_ = 1 - current_;
    uint8_t* out = rows_[current_].data() + pixelBytes_;
    if (y < 0) {
      std::memset(out, 0, rowBytes());
      return;
    }
    const auto* in = reinterpret_cast<const uint32_t*>(image_.row(y));
    const int width = image_.width;
    if (pixelBytes_ == 4) return unpremultiplyRow(in, out, width);
    for (int x = 0; x < width; ++x) {
      const uint32_t pixel = in[x] >> 24 ? in[x] : clear_;
      out[3 * x] = static_cast<uint8_t>(pixel >> 16);
      out[3 * x + 1] = static_cast<uint8_t>(pixel >> 8);
      out[3 * x + 2] = static_cast<uint8_t>(pixel);
    }
  }

  const ConstPixelView& image_;
  int pixelBytes_;
  uint32_t clear_;
  std::vector<uint8_t> rows_[2];
  size_t current_ = 0;
  int y_ = -2;
};

/// Counts how often each byte occurs.
class Histogram {
 public:
  void add(const uint8_t* bytes, size_t size) {
    for (size_t i = 0; i < size; ++i) ++counts_[i % kLanes][bytes[i]];
    total_ += static_cast<double>(size);
  }
  /// Shannon's entropy, in bits per byte.
  double bits() const {
    double sum = 0;
    for (int value = 0; value < 256; ++value) {
      double count = 0;
      for (const auto& lane : counts_) count += lane[value];
      if (count > 0) sum += count * std::log2(total_ / count);
    }
    return sum / total_;
  }

 private:
  /// Equal neighbors would wait for each other if they were counted in one place.
  static constexpr int kLanes = 4;
  uint32_t counts_[kLanes][256] = {};
  double total_ = 0;
};

struct Choice {
  png::Filter filter = png::Filter::None;
  double bits = 8;
};

/// Encodes bands, one after the other, on one thread.
class BandEncoder {
 public:
  BandEncoder(const ConstPixelView& image, const Layout& layout)
      : rows_(image, layout), sample_(rows_.rowBytes()) {}

  /// The IDAT chunk of rows [top, bottom), which ends on a whole byte and refers to no other band.
  /// `*adler` is the checksum of what was compressed.
  Chunk encode(int top, int bottom, bool first, bool last, uint32_t* adler) {
    const Choice choice = choose(top, bottom);
    const size_t stride = rows_.rowBytes() + 1;
    filtered_.resize(stride * size_t(bottom - top));
    for (int y = top; y < bottom; ++y) {
      uint8_t* out = filtered_.data() + stride * size_t(y - top);
      out[0] = static_cast<uint8_t>(choice.filter);
      rows_.moveTo(y);
      png::filter(choice.filter, rows_.row(), rows_.above(), out + 1, rows_.rowBytes(),
                  rows_.pixelBytes());
    }
    *adler = isal_adler32(1, filtered_.data(), filtered_.size());
    auto chunk = beginChunk("IDAT");
    if (first) {
      chunk.push_back(0x78);
      chunk.push_back(0x01);
    }
    deflate_.append(filtered_, choice.bits > kNoisyBits, last, &chunk);
    return chunk;
  }

 private:
  Choice choose(int top, int bottom) {
    Histogram histograms[png::kFilters];
    const int step = std::clamp((bottom - top) / kMinSamples, 1, kSampleStep);
    for (int y = top + step / 2; y < bottom; y += step) {
      rows_.moveTo(y);
      for (int f = 0; f < png::kFilters; ++f) {
        png::filter(png::Filter(f), rows_.row(), rows_.above(), sample_.data(), sample_.size(),
                    rows_.pixelBytes());
        histograms[f].add(sample_.data(), sample_.size());
      }
    }
    Choice best;
    for (int f = 0; f < png::kFilters; ++f) {
      const double bits = histograms[f].bits();
      if (bits < best.bits) best = {png::Filter(f), bits};
    }
    return best;
  }

  RowWindow rows_;
  png::Deflate deflate_;
  std::vector<uint8_t> sample_;
  std::vector<uint8_t> filtered_;
};

/// Encodes the bands on several threads and writes them in order.
class BandedWrite {
 public:
  BandedWrite(const ConstPixelView& image, const Layout& layout, const ByteSink& sink)
      : image_(image),
        layout_(layout),
        stride_(size_t(image.width) * size_t(layout.pixelBytes) + 1),
        rowsPerBand_(static_cast<int>(std::max(kBandBytes / stride_, size_t{1}))),
        bands_((image.height + rowsPerBand_ - 1) / rowsPerBand_),
        sink_(sink) {}

  Result<void> run(int threads) {
    if (threads < 1) threads = static_cast<int>(std::thread::hardware_concurrency());
    parallelFor(std::clamp(threads, 1, bands_), threads, [this](int) { work(); });
    return result_;
  }

 private:
  void work() {
    BandEncoder encoder(image_, layout_);
    for (int band = nextBand_++; band < bands_ && !failed_; band = nextBand_++) {
      const int top = band * rowsPerBand_;
      const int bottom = std::min(top + rowsPerBand_, image_.height);
      uint32_t adler = 0;
      Chunk chunk = encoder.encode(top, bottom, band == 0, band == bands_ - 1, &adler);
      writeInTurn(band, stride_ * size_t(bottom - top), adler, &chunk);
    }
  }

  /// Waits for the bands before. They have been started, so that their turns come.
  void writeInTurn(int band, size_t bytes, uint32_t adler, Chunk* chunk) {
    std::unique_lock lock(mutex_);
    turn_.wait(lock, [&] { return written_ == band || failed_; });
    if (failed_) return;
    adler_ = static_cast<uint32_t>(adler32_combine(adler_, adler, static_cast<z_off_t>(bytes)));
    if (band == bands_ - 1) appendBigEndian(chunk, adler_);
    endChunk(chunk);
    result_ = sink_(*chunk);
    failed_ = !result_;
    ++written_;
    turn_.notify_all();
  }

  const ConstPixelView image_;
  const Layout layout_;
  const size_t stride_;
  const int rowsPerBand_;
  const int bands_;
  const ByteSink& sink_;
  std::atomic<int> nextBand_ = 0;
  std::atomic<bool> failed_ = false;
  std::mutex mutex_;  ///< Guards what follows.
  std::condition_variable turn_;
  int written_ = 0;
  uint32_t adler_ = 1;
  Result<void> result_;
};

/// The signature and the chunks before the pixels.
Chunk headOf(const ConstPixelView& image, const Layout& layout) {
  Chunk header = beginChunk("IHDR");
  appendBigEndian(&header, static_cast<uint32_t>(image.width));
  appendBigEndian(&header, static_cast<uint32_t>(image.height));
  const uint8_t colorType = layout.pixelBytes == 3 ? 2 : 6;
  header.insert(header.end(), {8, colorType, 0, 0, 0});
  Chunk colors = beginChunk("sRGB");
  colors.push_back(0);
  Chunk transparent = beginChunk("tRNS");
  transparent.insert(transparent.end(), {0, 0, 0, 0, 0, layout.key.value_or(0)});

  Chunk head = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
  for (Chunk* chunk : {&header, &colors, &transparent}) {
    if (chunk == &transparent && !layout.key) continue;
    endChunk(chunk);
    head.insert(head.end(), chunk->begin(), chunk->end());
  }
  return head;
}

}  // namespace

Result<void> writePng(const ConstPixelView& image, const ByteSink& sink, int threads) {
  assert(image.width > 0 && image.height > 0 && image.format == PixelFormat{});
  const Layout layout = layoutOf(image);
  Chunk end = beginChunk("IEND");
  endChunk(&end);
  return sink(headOf(image, layout))
      .and_then([&] { return BandedWrite(image, layout, sink).run(threads); })
      .and_then([&] { return sink(end); });
}

}  // namespace kelvar
