#include "platform/PngWriter.h"

#include <isa-l/crc.h>
#include <isa-l/igzip_lib.h>
#include <zlib.h>

#include <QByteArray>
#include <QtEndian>
#include <algorithm>
#include <atomic>
#include <cmath>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <optional>
#include <vector>

#include "platform/AlphaPixels.h"
#include "platform/PngDeflate.h"
#include "platform/PngFilters.h"
#include "platform/TryThread.h"

namespace kelvar {

namespace {

constexpr size_t kBandBytes = 512 << 10;
/// One row in so many is looked at for the choice of the filter, but three of a band at least.
constexpr int kSampleStep = 16, kLeastSamples = 3;
/// Above so many bits of information a byte, repetitions are chance, and telling of them costs more
/// than the bytes themselves: then only runs are looked for.
constexpr double kNoisyBits = 1.5;

/// How the pixels are written. Where none is half transparent, a colour that no opaque pixel has
/// can stand for the transparent ones, and the alpha channel, a fifth of a noisy file, is saved.
struct Layout {
  int pixelBytes = 4;          ///< 3: RGB. 4: RGBA.
  std::optional<uint8_t> key;  ///< The blue of the black that stands for transparent.
};

Layout layoutOf(const QImage& image) {
  const int width = image.width();
  uint32_t all = ~0u, partial = 0;
  bool taken[256] = {};
  for (int y = 0; y < image.height() && !partial; ++y) {
    const auto* row = reinterpret_cast<const uint32_t*>(image.constScanLine(y));
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

void appendBigEndian(std::vector<uint8_t>* out, uint32_t value) {
  const uint32_t big = qToBigEndian(value);
  const auto* bytes = reinterpret_cast<const uint8_t*>(&big);
  out->insert(out->end(), bytes, bytes + sizeof big);
}

/// A chunk in the making: room for the length, the type, then what is appended.
std::vector<uint8_t> beginChunk(const char* type) {
  std::vector<uint8_t> chunk(8);
  std::memcpy(chunk.data() + 4, type, 4);
  return chunk;
}

void endChunk(std::vector<uint8_t>* chunk) {
  qToBigEndian(static_cast<uint32_t>(chunk->size() - 8), chunk->data());
  appendBigEndian(chunk, crc32_gzip_refl(0, chunk->data() + 4, chunk->size() - 4));
}

/// The picture's rows as PNG has them, one after the other, with the one above at hand.
class RowWindow {
 public:
  RowWindow(const QImage& image, const Layout& layout)
      : image_(image),
        pixelBytes_(layout.pixelBytes),
        clear_(layout.key.value_or(0)),
        rows_{std::vector<uint8_t>(pixelBytes_ + rowBytes()),
              std::vector<uint8_t>(pixelBytes_ + rowBytes())} {}

  int pixelBytes() const { return pixelBytes_; }
  size_t rowBytes() const { return size_t(image_.width()) * size_t(pixelBytes_); }
  const uint8_t* row() const { return rows_[current_].data() + pixelBytes_; }
  const uint8_t* above() const { return rows_[1 - current_].data() + pixelBytes_; }

  /// Makes `y` the row. Costs one conversion when it follows the last one, else two.
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
    const auto* in = reinterpret_cast<const uint32_t*>(image_.constScanLine(y));
    const int width = image_.width();
    if (pixelBytes_ == 4) return unpremultiplyRow(in, out, width);
    for (int x = 0; x < width; ++x) {
      const uint32_t pixel = in[x] >> 24 ? in[x] : clear_;
      out[3 * x] = static_cast<uint8_t>(pixel >> 16);
      out[3 * x + 1] = static_cast<uint8_t>(pixel >> 8);
      out[3 * x + 2] = static_cast<uint8_t>(pixel);
    }
  }

  const QImage& image_;
  int pixelBytes_;
  uint32_t clear_;
  std::vector<uint8_t> rows_[2];
  size_t current_ = 0;
  int y_ = -2;
};

/// How often each byte occurs.
class Histogram {
 public:
  void add(const uint8_t* bytes, size_t size) {
    for (size_t i = 0; i < size; ++i) ++counts_[i % kLanes][bytes[i]];
    total_ += static_cast<double>(size);
  }
  /// Shannon's entropy, in bits a byte.
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
  /// Equal neighbours would wait for each other if they were counted in one place.
  static constexpr int kLanes = 4;
  uint32_t counts_[kLanes][256] = {};
  double total_ = 0;
};

struct Choice {
  png::Filter filter = png::Filter::None;
  double bits = 8;
};

/// One band after the other, for one thread.
class BandEncoder {
 public:
  BandEncoder(const QImage& image, const Layout& layout)
      : rows_(image, layout), sample_(rows_.rowBytes()) {}

  /// The IDAT chunk of the rows from `top` to before `bottom`, which ends on a whole byte and
  /// refers to no other band. `*adler` is the checksum of what was packed.
  std::vector<uint8_t> encode(int top, int bottom, bool first, bool last, uint32_t* adler) {
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
    if (first) chunk.insert(chunk.end(), {0x78, 0x01});
    deflate_.append(filtered_, choice.bits > kNoisyBits, last, &chunk);
    return chunk;
  }

 private:
  Choice choose(int top, int bottom) {
    Histogram histograms[png::kFilters];
    const int step = std::clamp((bottom - top) / kLeastSamples, 1, kSampleStep);
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

/// The bands, shared out among threads and written in their order.
class BandedWrite {
 public:
  BandedWrite(const QImage& image, const Layout& layout, QIODevice* device)
      : image_(image),
        layout_(layout),
        stride_(size_t(image.width()) * size_t(layout.pixelBytes) + 1),
        rowsPerBand_(static_cast<int>(std::max(kBandBytes / stride_, size_t{1}))),
        bands_((image.height() + rowsPerBand_ - 1) / rowsPerBand_),
        device_(device) {}

  bool run(int threads) {
    const int wanted = std::min(threads, bands_);
    std::vector<std::thread> helpers;
    while (static_cast<int>(helpers.size()) + 1 < wanted) {
      std::thread helper = tryThread([this] { work(); });
      if (!helper.joinable()) break;
      helpers.push_back(std::move(helper));
    }
    work();
    for (auto& helper : helpers) helper.join();
    return !failed_;
  }

 private:
  void work() {
    BandEncoder encoder(image_, layout_);
    for (int band = nextBand_++; band < bands_ && !failed_; band = nextBand_++) {
      const int top = band * rowsPerBand_;
      const int bottom = std::min(top + rowsPerBand_, image_.height());
      const bool last = band == bands_ - 1;
      uint32_t adler = 0;
      auto chunk = encoder.encode(top, bottom, band == 0, last, &adler);

      std::unique_lock lock(mutex_);
      turn_.wait(lock, [&] { return written_ == band || failed_; });
      const auto bytes = static_cast<z_off_t>(stride_ * size_t(bottom - top));
      adler_ = static_cast<uint32_t>(adler32_combine(adler_, adler, bytes));
      if (last) appendBigEndian(&chunk, adler_);
      endChunk(&chunk);
      const auto size = static_cast<qint64>(chunk.size());
      if (device_->write(reinterpret_cast<const char*>(chunk.data()), size) != size) failed_ = true;
      ++written_;
      turn_.notify_all();
    }
  }

  const QImage& image_;
  Layout layout_;
  size_t stride_;
  int rowsPerBand_;
  int bands_;
  QIODevice* device_;
  std::atomic<int> nextBand_ = 0;
  std::atomic<bool> failed_ = false;
  std::mutex mutex_;
  std::condition_variable turn_;
  int written_ = 0;
  uint32_t adler_ = 1;
};

bool writeChunk(std::vector<uint8_t> chunk, QIODevice* device) {
  endChunk(&chunk);
  const auto size = static_cast<qint64>(chunk.size());
  return device->write(reinterpret_cast<const char*>(chunk.data()), size) == size;
}

}  // namespace

bool writePng(const QImage& image, QIODevice* device, int threads) {
  if (threads < 1) threads = static_cast<int>(std::thread::hardware_concurrency());
  const Layout layout = layoutOf(image);
  auto header = beginChunk("IHDR");
  appendBigEndian(&header, static_cast<uint32_t>(image.width()));
  appendBigEndian(&header, static_cast<uint32_t>(image.height()));
  const uint8_t colourType = layout.pixelBytes == 3 ? 2 : 6;
  header.insert(header.end(), {8, colourType, 0, 0, 0});
  auto colours = beginChunk("sRGB");
  colours.push_back(0);
  auto transparent = beginChunk("tRNS");
  transparent.insert(transparent.end(), {0, 0, 0, 0, 0, layout.key.value_or(0)});

  const QByteArray signature = QByteArrayLiteral("\x89PNG\r\n\x1a\n");
  return device->write(signature) == signature.size() && writeChunk(header, device) &&
         writeChunk(colours, device) && (!layout.key || writeChunk(transparent, device)) &&
         BandedWrite(image, layout, device).run(threads) && writeChunk(beginChunk("IEND"), device);
}

}  // namespace kelvar
