#include "pixels/codec/PngReader.h"

#include <spng.h>

#include <algorithm>
#include <array>
#include <condition_variable>
#include <cstring>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "pixels/ImageLimits.h"
#include "pixels/codec/AlphaPremultiply.h"
#include "pixels/codec/PngChunks.h"
#include "pixels/codec/PngFilters.h"
#include "pixels/threads/ThreadPool.h"

namespace kelvar {

namespace {

constexpr size_t kBlockBytes = 256 << 10;
constexpr int kBlocks = 4;
constexpr int kMaxPalette = 256;
/// Texts and profiles larger than this are not worth their memory.
constexpr size_t kMaxChunk = 16 << 20;

using SpngContext = std::unique_ptr<spng_ctx, decltype(&spng_ctx_free)>;
using Palette = std::array<uint32_t, kMaxPalette>;
using File = std::span<const uint8_t>;

/// What precedes the pixels in the file.
struct Header {
  spng_ihdr ihdr{};
  std::optional<uint32_t> key;  ///< The opaque pixel that stands for a transparent one.
  int paletteSize = 0;
  Palette palette{};
  std::vector<uint8_t> profile;

  int channels() const {
    constexpr int kChannels[] = {1, 0, 3, 1, 2, 0, 4};
    return kChannels[ihdr.color_type];
  }
  bool isFast() const { return ihdr.bit_depth == 8 && ihdr.interlace_method == 0; }
};

tl::unexpected<Error> damaged() { return failure(Error::Kind::Damaged, "the PNG is damaged"); }

void readPalette(spng_ctx* context, bool hasAlpha, const spng_trns& trns, Header* header) {
  spng_plte plte{};
  if (spng_get_plte(context, &plte) != 0) return;
  header->paletteSize = static_cast<int>(plte.n_entries);
  for (uint32_t i = 0; i < plte.n_entries; ++i) {
    const auto& e = plte.entries[i];
    const uint32_t alpha = hasAlpha && i < trns.n_type3_entries ? trns.type3_alpha[i] : 255;
    header->palette[i] =
        premultiplied(alpha << 24 | uint32_t{e.red} << 16 | uint32_t{e.green} << 8 | e.blue);
  }
}

void readTransparency(spng_ctx* context, Header* header) {
  spng_trns trns{};
  const bool hasAlpha = spng_get_trns(context, &trns) == 0;
  if (header->ihdr.color_type == SPNG_COLOR_TYPE_INDEXED) {
    readPalette(context, hasAlpha, trns, header);
  } else if (hasAlpha) {
    const bool isGray = header->ihdr.color_type == SPNG_COLOR_TYPE_GRAYSCALE;
    // Each is stored in 16 bits, of which as many count as a sample has.
    header->key = isGray ? 0xff000000 | (trns.gray & 255) * 0x010101u
                         : 0xff000000 | (trns.red & 255u) << 16 | (trns.green & 255u) << 8 |
                               (trns.blue & 255u);
  }
}

Result<Header> readHeader(spng_ctx* context) {
  Header header;
  if (spng_get_ihdr(context, &header.ihdr) != 0) return damaged();
  if (const auto valid = validateImageSize(header.ihdr.width, header.ihdr.height); !valid) {
    return tl::unexpected(valid.error());
  }
  spng_iccp iccp{};
  const int code = spng_get_iccp(context, &iccp);
  if (code == 0) header.profile.assign(iccp.profile, iccp.profile + iccp.profile_len);
  if (code != 0 && code != SPNG_ECHUNKAVAIL) return damaged();
  readTransparency(context, &header);
  return header;
}

/// Undoes the filters and converts, row after row from the top.
class RowDecoder {
 public:
  RowDecoder(const Header& header, PixelBuffer* image)
      : header_(header),
        image_(image),
        rowBytes_(size_t{header.ihdr.width} * size_t(header.channels())),
        above_(rowBytes_ + png::kRowPadding) {}

  size_t stride() const { return rowBytes_ + 1; }

  /// `block` holds `rows` rows, each behind the number of its filter. False when they are invalid.
  bool decode(uint8_t* block, int rows) {
    const uint8_t* above = above_.data();
    for (int i = 0; i < rows; ++i) {
      uint8_t* row = block + size_t(i) * stride();
      if (row[0] >= png::kFilters) return false;
      png::unfilter(png::Filter{row[0]}, row + 1, above, rowBytes_, header_.channels());
      above = row + 1;
      auto* out = reinterpret_cast<uint32_t*>(image_->row(y_++));
      if (!convert(above, out)) return false;
      if (header_.key) std::replace(out, out + image_->width(), *header_.key, 0u);
    }
    std::memcpy(above_.data(), above, rowBytes_);
    return true;
  }

 private:
  bool convert(const uint8_t* row, uint32_t* out) const {
    const int width = static_cast<int>(header_.ihdr.width);
    switch (header_.ihdr.color_type) {
      case SPNG_COLOR_TYPE_GRAYSCALE:
        for (int x = 0; x < width; ++x) out[x] = 0xff000000 | row[x] * 0x010101u;
        return true;
      case SPNG_COLOR_TYPE_GRAYSCALE_ALPHA:
        for (int x = 0; x < width; ++x) {
          out[x] = premultiplied(uint32_t{row[2 * x + 1]} << 24 | row[2 * x] * 0x010101u);
        }
        return true;
      case SPNG_COLOR_TYPE_TRUECOLOR:
        for (int x = 0; x < width; ++x) {
          const uint8_t* p = row + 3 * x;
          out[x] = 0xff000000 | uint32_t{p[0]} << 16 | uint32_t{p[1]} << 8 | p[2];
        }
        return true;
      case SPNG_COLOR_TYPE_INDEXED: {
        uint8_t greatest = 0;
        for (int x = 0; x < width; ++x) {
          greatest = std::max(greatest, row[x]);
          out[x] = header_.palette[row[x]];
        }
        return greatest < header_.paletteSize;
      }
      default:
        premultiplyRow(row, out, width);
        return true;
    }
  }

  const Header& header_;
  PixelBuffer* image_;
  size_t rowBytes_;
  std::vector<uint8_t> above_;
  int y_ = 0;
};

/// Inflates into a ring of blocks and decodes them. Two threads share this: each takes whichever of
/// the two steps the other is not at, and one alone does them in turn.
class FastDecode {
 public:
  FastDecode(File file, const Header& header, PixelBuffer* image)
      : stream_(file),
        decoder_(header, image),
        height_(image->height()),
        rowsPerBlock_(static_cast<int>(std::max(kBlockBytes / decoder_.stride(), size_t{1}))) {
    const auto blockBytes = std::min(rowsPerBlock_, height_) * decoder_.stride();
    for (auto& block : blocks_) block.resize(blockBytes + png::kRowPadding);
  }

  /// False when the data is damaged.
  bool run(int threads) {
    // Sharing less costs more than it saves.
    parallelFor(blockCount() > 2 ? 2 : 1, threads, [this](int) { work(); });
    return !failed_ && stream_.finish();
  }

 private:
  int blockCount() const { return (height_ + rowsPerBlock_ - 1) / rowsPerBlock_; }
  int rowsOf(int block) const { return std::min(rowsPerBlock_, height_ - block * rowsPerBlock_); }
  uint8_t* bytesOf(int block) { return blocks_[size_t(block) % kBlocks].data(); }

  void work() {
    std::unique_lock lock(mutex_);
    while (!failed_ && decoded_ < blockCount()) {
      if (!isDecoding_ && decoded_ < inflated_) {
        step(&lock, &isDecoding_, &decoded_,
             [this](int block) { return decoder_.decode(bytesOf(block), rowsOf(block)); });
      } else if (!isInflating_ && inflated_ < std::min(decoded_ + kBlocks, blockCount())) {
        step(&lock, &isInflating_, &inflated_, [this](int block) {
          return stream_.fill(bytesOf(block), rowsOf(block) * decoder_.stride());
        });
      } else {
        changed_.wait(lock);
      }
    }
  }

  /// Works on block number `*done`, without the lock.
  template <typename Work>
  void step(std::unique_lock<std::mutex>* lock, bool* isBusy, int* done, const Work& work) {
    const int block = *done;
    *isBusy = true;
    lock->unlock();
    const bool succeeded = work(block);
    lock->lock();
    *isBusy = false;
    if (succeeded)
      ++*done;
    else
      failed_ = true;
    changed_.notify_all();
  }

  png::PixelStream stream_;
  RowDecoder decoder_;
  const int height_;
  const int rowsPerBlock_;
  std::array<std::vector<uint8_t>, kBlocks> blocks_;
  std::mutex mutex_;  ///< Guards what follows.
  std::condition_variable changed_;
  int inflated_ = 0, decoded_ = 0;  ///< In blocks.
  bool isInflating_ = false, isDecoding_ = false, failed_ = false;
};

/// round(v * 255 / 65535), exactly.
uint32_t toByte(uint32_t v) { return (v * 255 + 32895) >> 16; }

uint32_t pixelFrom16(const uint16_t* rgba) {
  constexpr uint64_t kFull = uint64_t{65535} * 65535;
  const auto scaled = [alpha = uint64_t{rgba[3]}](uint16_t c) {
    return static_cast<uint32_t>((c * alpha * 255 + kFull / 2) / kFull);
  };
  return toByte(rgba[3]) << 24 | scaled(rgba[0]) << 16 | scaled(rgba[1]) << 8 | scaled(rgba[2]);
}

/// Row by row, each into the places that its interlacing pass owns. False when the data is damaged.
bool decodeWithSpng(spng_ctx* context, const Header& header, PixelBuffer* image) {
  const bool deep = header.ihdr.bit_depth == 16;
  const bool interlaced = header.ihdr.interlace_method != 0;
  constexpr int kFirst[] = {0, 4, 0, 2, 0, 1, 0}, kStep[] = {8, 8, 4, 4, 2, 2, 1};
  std::vector<uint16_t> row(size_t{header.ihdr.width} * (deep ? 4 : 2));

  int code = spng_decode_image(context, nullptr, 0, deep ? SPNG_FMT_RGBA16 : SPNG_FMT_RGBA8,
                               SPNG_DECODE_TRNS | SPNG_DECODE_PROGRESSIVE);
  while (code == 0) {
    spng_row_info info{};
    code = spng_get_row_info(context, &info);
    if (code == 0) code = spng_decode_row(context, row.data(), row.size() * sizeof row[0]);
    if (code != 0 && code != SPNG_EOI) break;
    auto* out = reinterpret_cast<uint32_t*>(image->row(int(info.row_num)));
    const auto* bytes = reinterpret_cast<const uint8_t*>(row.data());
    const int step = interlaced ? kStep[info.pass] : 1;
    for (int x = interlaced ? kFirst[info.pass] : 0; x < image->width(); x += step) {
      if (deep) out[x] = pixelFrom16(&row[size_t(x) * 4]);
      if (!deep) premultiplyRow(bytes + size_t(x) * 4, out + x, 1);
    }
  }
  return code == SPNG_EOI;
}

}  // namespace

Result<DecodedImage> readPng(File file, int threads) {
  if (const auto valid = png::Chunks(file).validate(); !valid) {
    return tl::unexpected(valid.error());
  }
  const SpngContext context(spng_ctx_new(0), &spng_ctx_free);
  spng_set_crc_action(context.get(), SPNG_CRC_ERROR, SPNG_CRC_DISCARD);
  spng_set_chunk_limits(context.get(), kMaxChunk, 4 * kMaxChunk);
  spng_set_png_buffer(context.get(), file.data(), file.size());
  auto header = readHeader(context.get());
  if (!header) return tl::unexpected(header.error());

  auto image = PixelBuffer::create(int(header->ihdr.width), int(header->ihdr.height));
  if (!image) return tl::unexpected(image.error());
  const bool decoded = header->isFast() ? FastDecode(file, *header, &*image).run(threads)
                                        : decodeWithSpng(context.get(), *header, &*image);
  if (!decoded) return damaged();
  return DecodedImage{std::move(*image), std::move(header->profile)};
}

}  // namespace kelvar
