#include "platform/PngReader.h"

#include <isa-l/crc.h>
#include <isa-l/igzip_lib.h>
#include <spng.h>

#include <QSemaphore>
#include <QtEndian>
#include <array>
#include <atomic>
#include <cstring>
#include <memory>
#include <optional>
#include <vector>

#include "platform/AlphaPixels.h"
#include "platform/ColorProfile.h"
#include "platform/PictureLimits.h"
#include "platform/PngFilters.h"
#include "platform/TryThread.h"

namespace kelvar {

namespace {

const QString kCutShort = QStringLiteral("the PNG is cut short");
const QString kDamaged = QStringLiteral("the PNG is damaged");
constexpr qsizetype kSignature = 8;
constexpr size_t kBlockBytes = 256 << 10;
constexpr int kBlocks = 4;
constexpr int kMaxPalette = 256;
/// A text or a profile larger than this is not worth its memory.
constexpr size_t kMaxChunk = 16 << 20;

using SpngContext = std::unique_ptr<spng_ctx, decltype(&spng_ctx_free)>;
using Palette = std::array<uint32_t, kMaxPalette>;

/// What stands in the file before the pixels.
struct Header {
  spng_ihdr ihdr{};
  std::optional<uint32_t> key;  ///< The opaque pixel that stands for a clear one.
  int paletteSize = 0;
  Palette palette{};
  QByteArray profile;

  int channels() const {
    constexpr int kChannels[] = {1, 0, 3, 1, 2, 0, 4};
    return kChannels[ihdr.color_type];
  }
  bool fast() const { return ihdr.bit_depth == 8 && ihdr.interlace_method == 0; }
};

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

bool readHeader(spng_ctx* context, Header* header, QString* error) {
  int code = spng_get_ihdr(context, &header->ihdr);
  if (code == 0) {
    *error = sizeObjection(header->ihdr.width, header->ihdr.height);
    if (!error->isEmpty()) return false;
    spng_iccp iccp{};
    code = spng_get_iccp(context, &iccp);
    if (code == 0) header->profile = QByteArray(iccp.profile, qsizetype(iccp.profile_len));
  }
  if (code != 0 && code != SPNG_ECHUNKAVAIL) {
    *error = kDamaged;
    return false;
  }
  spng_trns trns{};
  const bool hasAlpha = spng_get_trns(context, &trns) == 0;
  const bool indexed = header->ihdr.color_type == SPNG_COLOR_TYPE_INDEXED;
  if (indexed) {
    readPalette(context, hasAlpha, trns, header);
  } else if (hasAlpha) {
    const bool grey = header->ihdr.color_type == SPNG_COLOR_TYPE_GRAYSCALE;
    // Of the 16 bits of each, as many count as a sample has.
    header->key =
        grey ? 0xff000000 | (trns.gray & 255) * 0x010101u
             : 0xff000000 | (trns.red & 255u) << 16 | (trns.green & 255u) << 8 | (trns.blue & 255u);
  }
  return true;
}

/// The chunks of a file, from the first to IEND. Stands on one of them.
class Chunks {
 public:
  explicit Chunks(const QByteArray& file)
      : bytes_(reinterpret_cast<const uint8_t*>(file.constData())), size_(file.size()) {}

  /// None, or what is wrong: a chunk that the file's end cuts off, a checksum that does not hold
  /// for what the pixels depend on. The members below may be called on a sound file alone.
  QString problem() {
    for (; size_ - at_ >= kFrame && size_ - at_ - kFrame >= qint64{bytes()}; next()) {
      const bool needed = (bytes_[at_ + 4] & 0x20) == 0 || is("tRNS");
      if (needed && crc32_gzip_refl(0, bytes_ + at_ + 4, bytes() + 4) !=
                        qFromBigEndian<uint32_t>(data() + bytes())) {
        return kDamaged;
      }
      if (is("IEND")) return {};
    }
    return kCutShort;
  }

  bool is(const char* type) const { return std::memcmp(bytes_ + at_ + 4, type, 4) == 0; }
  uint32_t bytes() const { return qFromBigEndian<uint32_t>(bytes_ + at_); }
  const uint8_t* data() const { return bytes_ + at_ + 8; }
  void next() { at_ += kFrame + qint64{bytes()}; }

 private:
  /// Length, type and checksum.
  static constexpr qint64 kFrame = 12;
  const uint8_t* bytes_;
  qint64 size_;
  qint64 at_ = kSignature;
};

/// The unpacked bytes of all IDAT chunks, one after the other.
class PixelStream {
 public:
  explicit PixelStream(const QByteArray& file) : chunks_(file) {
    isal_inflate_init(state_.get());
    state_->crc_flag = ISAL_ZLIB;
    while (!chunks_.is("IDAT") && !chunks_.is("IEND")) chunks_.next();
  }

  /// Exactly `bytes` bytes, or false.
  bool fill(uint8_t* out, size_t bytes) {
    state_->next_out = out;
    state_->avail_out = static_cast<uint32_t>(bytes);
    while (inflate()) {
      if (state_->avail_out == 0) return true;
      if (finished() || (state_->avail_in == 0 && !openChunk())) return false;
    }
    return false;
  }

  /// To be called when all rows are read: compares the stream's own checksum. More data than the
  /// picture needs is no harm.
  bool finish() {
    uint8_t surplus[16];
    while (!finished()) {
      state_->next_out = surplus;
      state_->avail_out = sizeof surplus;
      if (!inflate()) return false;
      if (state_->avail_out < sizeof surplus) return true;
      if (!finished() && state_->avail_in == 0 && !openChunk()) return false;
    }
    return true;
  }

 private:
  bool inflate() {
    const int result = isal_inflate(state_.get());
    return result >= 0 && result != ISAL_NEED_DICT;
  }
  bool finished() const { return state_->block_state == ISAL_BLOCK_FINISH; }

  bool openChunk() {
    if (!chunks_.is("IDAT")) return false;
    state_->next_in = const_cast<uint8_t*>(chunks_.data());
    state_->avail_in = chunks_.bytes();
    chunks_.next();
    return true;
  }

  Chunks chunks_;
  std::unique_ptr<inflate_state> state_ = std::make_unique<inflate_state>();
};

/// Undoes the filters and converts, row after row from the top.
class RowDecoder {
 public:
  RowDecoder(const Header& header, QImage* image)
      : header_(header),
        image_(image),
        rowBytes_(size_t{header.ihdr.width} * size_t(header.channels())),
        above_(rowBytes_ + png::kRowPadding) {}

  size_t stride() const { return rowBytes_ + 1; }

  /// `block` holds `rows` rows, each after its filter's number. False when they make no sense.
  bool decode(uint8_t* block, int rows) {
    const uint8_t* above = above_.data();
    for (int i = 0; i < rows; ++i) {
      uint8_t* row = block + size_t(i) * stride();
      if (row[0] >= png::kFilters) return false;
      png::unfilter(png::Filter{row[0]}, row + 1, above, rowBytes_, header_.channels());
      above = row + 1;
      auto* out = reinterpret_cast<uint32_t*>(image_->scanLine(y_++));
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
  QImage* image_;
  size_t rowBytes_;
  std::vector<uint8_t> above_;
  int y_ = 0;
};

/// One thread inflates into a ring of blocks, the caller's decodes them. When the
/// picture is too small to share, or there is no thread to be had, the caller does both in turns.
class FastDecode {
 public:
  FastDecode(const QByteArray& file, const Header& header, QImage* image)
      : stream_(file),
        decoder_(header, image),
        height_(image->height()),
        rowsPerBlock_(static_cast<int>(std::max(kBlockBytes / decoder_.stride(), size_t{1}))) {
    const auto blockBytes = std::min(rowsPerBlock_, height_) * decoder_.stride();
    for (auto& block : blocks_) block.resize(blockBytes + png::kRowPadding);
  }

  /// False when the data is damaged.
  bool run() {
    std::thread helper;
    if (blockCount() > 2) helper = tryThread([this] { produce(); });
    const bool shared = helper.joinable();
    const bool decoded = shared ? consume() : inTurns();
    if (shared) {
      stop_ = true;
      free_.release();
      helper.join();
    }
    return decoded && stream_.finish();
  }

 private:
  int blockCount() const { return (height_ + rowsPerBlock_ - 1) / rowsPerBlock_; }
  int rowsOf(int block) const { return std::min(rowsPerBlock_, height_ - block * rowsPerBlock_); }
  uint8_t* bytesOf(int block) { return blocks_[size_t(block) % kBlocks].data(); }
  bool fill(int block) { return stream_.fill(bytesOf(block), rowsOf(block) * decoder_.stride()); }

  void produce() {
    bool filled = true;
    for (int block = 0; block < blockCount() && filled; ++block) {
      free_.acquire();
      if (stop_) return;
      filled = fill(block);
      if (!filled) failed_ = true;
      full_.release();
    }
  }

  bool consume() {
    for (int block = 0; block < blockCount(); ++block) {
      full_.acquire();
      if (failed_ || !decoder_.decode(bytesOf(block), rowsOf(block))) return false;
      free_.release();
    }
    return true;
  }

  bool inTurns() {
    for (int block = 0; block < blockCount(); ++block) {
      if (!fill(block) || !decoder_.decode(bytesOf(block), rowsOf(block))) return false;
    }
    return true;
  }

  PixelStream stream_;
  RowDecoder decoder_;
  int height_;
  int rowsPerBlock_;
  std::array<std::vector<uint8_t>, kBlocks> blocks_;
  QSemaphore free_{kBlocks}, full_;
  std::atomic<bool> stop_ = false, failed_ = false;
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

/// Row after row, each into the places that its interlacing pass owns.
/// False when the data is damaged.
bool decodeWithSpng(spng_ctx* context, const Header& header, QImage* image) {
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
    auto* out = reinterpret_cast<uint32_t*>(image->scanLine(int(info.row_num)));
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

QImage readPng(const QByteArray& file, QString* error) {
  *error = Chunks(file).problem();
  if (!error->isEmpty()) return {};
  const SpngContext context(spng_ctx_new(0), &spng_ctx_free);
  spng_set_crc_action(context.get(), SPNG_CRC_ERROR, SPNG_CRC_DISCARD);
  spng_set_chunk_limits(context.get(), kMaxChunk, 4 * kMaxChunk);
  spng_set_png_buffer(context.get(), file.constData(), size_t(file.size()));
  Header header;
  if (!readHeader(context.get(), &header, error)) return {};

  QImage image(int(header.ihdr.width), int(header.ihdr.height),
               QImage::Format_ARGB32_Premultiplied);
  if (image.isNull()) {
    *error = QStringLiteral("there is not enough memory for it");
    return {};
  }
  const bool sound = header.fast() ? FastDecode(file, header, &image).run()
                                   : decodeWithSpng(context.get(), header, &image);
  if (sound) return toSRgb(image, header.profile);
  *error = kDamaged;
  return {};
}

}  // namespace kelvar
