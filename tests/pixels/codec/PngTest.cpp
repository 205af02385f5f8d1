#include <gtest/gtest.h>
#include <spng.h>
#include <sys/mman.h>
#include <zlib.h>

#include <QImage>
#include <QtEndian>
#include <cstring>
#include <memory>
#include <new>
#include <random>
#include <set>
#include <thread>
#include <tuple>
#include <vector>

#include "pixels/codec/AlphaPremultiply.h"
#include "pixels/codec/PngDeflate.h"
#include "pixels/codec/PngReader.h"
#include "pixels/codec/PngWriter.h"
#include "platform/image/PixelViews.h"

namespace kelvar {
namespace {

/// Bytes without slack behind them, so that AddressSanitizer notices reads past the end.
Result<QImage> readExactly(const QByteArray& file) {
  const std::vector<uint8_t> exact(file.begin(), file.end());
  auto image = readPng(exact);
  if (!image) return tl::unexpected(image.error());
  return toQImage(std::move(image->pixels));
}

ByteSink sinkTo(QByteArray* bytes) {
  return [bytes](std::span<const uint8_t> part) -> Result<void> {
    bytes->append(reinterpret_cast<const char*>(part.data()), qsizetype(part.size()));
    return {};
  };
}

QByteArray written(const QImage& image, int threads = 0) {
  QByteArray bytes;
  EXPECT_TRUE(writePng(viewOf(image), sinkTo(&bytes), threads));
  return bytes;
}

QByteArray chunk(const char* type, const QByteArray& data) {
  const QByteArray body = QByteArray(type) + data;
  QByteArray out(4, 0), check(4, 0);
  qToBigEndian(uint32_t(data.size()), out.data());
  const auto* bytes = reinterpret_cast<const Bytef*>(body.constData());
  qToBigEndian(uint32_t(crc32(0, bytes, uInt(body.size()))), check.data());
  return out + body + check;
}

QByteArray packed(const QByteArray& rows) { return qCompress(rows).mid(4); }

QByteArray header(uint32_t width, uint32_t height, char depth, char colorType) {
  QByteArray ihdr(8, 0);
  qToBigEndian(width, ihdr.data());
  qToBigEndian(height, ihdr.data() + 4);
  ihdr += QByteArray{1, depth} + QByteArray{1, colorType} + QByteArray(3, 0);
  return QByteArrayLiteral("\x89PNG\r\n\x1a\n") + chunk("IHDR", ihdr);
}

const QByteArray kEnd = chunk("IEND", {});

enum class Alpha { Opaque, Soft, Cut, CutAndEveryBlack };

/// A noisy image: opaque; with opaque, transparent and translucent regions; with opaque and
/// transparent regions; or the latter with every bluish black as an opaque color.
QImage makeImage(int width, int height, Alpha kind) {
  std::mt19937 random(unsigned(width * 7919 + height));
  QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      uint32_t noise = (random() & 0x070707u) + uint32_t(x + y) % 200 * 0x010101u;
      const uint32_t alphas[] = {255, 0, kind == Alpha::Soft ? uint32_t(random() & 255) : 0};
      const uint32_t alpha = kind == Alpha::Opaque ? 255 : alphas[(x / 24 + y / 5) % 3];
      if (kind == Alpha::CutAndEveryBlack) noise = uint32_t(x + 3 * y) & 255;
      reinterpret_cast<uint32_t*>(image.scanLine(y))[x] = premultiplied(alpha << 24 | noise);
    }
  }
  return image;
}

TEST(PngWriterTest, QtReadsOutput) {
  struct Row {
    int width, height;
    Alpha kind;
  };
  // One pixel, one column, one row, a row larger than a band, many bands.
  constexpr Row kRows[] = {
      {1, 1, Alpha::Opaque},    {1, 700, Alpha::Soft},      {700, 1, Alpha::Opaque},
      {17, 33, Alpha::Soft},    {30000, 6, Alpha::Soft},    {30000, 7, Alpha::Opaque},
      {900, 1500, Alpha::Soft}, {900, 1500, Alpha::Opaque}, {700, 1, Alpha::Cut},
      {900, 1500, Alpha::Cut},  {30000, 6, Alpha::Cut},     {900, 1500, Alpha::CutAndEveryBlack}};
  for (const Row& row : kRows) {
    SCOPED_TRACE(testing::Message() << row.width << " x " << row.height << " " << int(row.kind));
    const QImage image = makeImage(row.width, row.height, row.kind);
    const QByteArray file = written(image);
    EXPECT_EQ(file[25], row.kind == Alpha::Opaque || row.kind == Alpha::Cut ? 2 : 6);
    const QImage seen = QImage::fromData(file);
    ASSERT_EQ(seen.size(), image.size());
    ASSERT_EQ(seen.hasAlphaChannel(), row.kind != Alpha::Opaque);
    const QImage straight = seen.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        const auto pixel = reinterpret_cast<const uint32_t*>(image.constScanLine(y))[x];
        const QRgb got = straight.pixel(x, y);
        ASSERT_EQ(qAlpha(got) ? got : 0, unpremultiplied(pixel)) << x << ", " << y;
      }
    }
    ASSERT_EQ(readExactly(file).value(), image);
  }
}

TEST(PngWriterTest, SamePixelsGiveSameFile) {
  // Flat cells, which contain matches, in more bands than the maximum number of threads.
  QImage image(1800, 850, QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < image.height(); ++y) {
    auto* const row = reinterpret_cast<uint32_t*>(image.scanLine(y));
    for (int x = 0; x < image.width(); ++x) row[x] = 0xff000000 | unsigned(x / 7 * y / 5 % 31) << 9;
  }
  const QByteArray file = written(image);
  ASSERT_EQ(readExactly(file).value(), image);
  for (const int threads : {1, 2, 8}) {
    for (int time = 0; time < 50; ++time) {
      ASSERT_EQ(written(image, threads), file) << threads << " threads, time " << time;
    }
  }
}

/// Short data leaves ISA-L a small table, so that a thousand addresses cover every entry.
TEST(PngWriterTest, OutputDoesNotDependOnStreamAddress) {
  constexpr size_t kStep = 1 << 16, kPlaces = 1024;
  constexpr size_t kRoom = kPlaces * kStep + sizeof(png::Deflate);
  void* const room = ::mmap(nullptr, kRoom, PROT_READ | PROT_WRITE,
                            MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  ASSERT_NE(room, MAP_FAILED);
  std::vector<uint8_t> band(200);
  band[0] = 2;
  std::set<std::vector<uint8_t>> seen;
  for (size_t place = 0; place < kPlaces; ++place) {
    auto* const deflate = new (static_cast<char*>(room) + place * kStep) png::Deflate;
    std::vector<uint8_t> out;
    deflate->append(band, false, true, &out);
    seen.insert(out);
    std::destroy_at(deflate);
  }
  ::munmap(room, kRoom);
  EXPECT_EQ(seen.size(), 1u);
}

TEST(PngWriterTest, FailsWithItsSink) {
  size_t room = 100000;
  const auto sink = [&](std::span<const uint8_t> part) -> Result<void> {
    if (part.size() > room) return failure(Error::Kind::Io, "no room");
    room -= part.size();
    return {};
  };
  const QImage image = makeImage(900, 1500, Alpha::Soft);
  const auto result = writePng(viewOf(image), sink);
  ASSERT_FALSE(result);
  EXPECT_EQ(result.error().message, "no room");
}

TEST(PngWriterTest, OneThreadIsTheCallers) {
  std::set<std::thread::id> threads;
  const auto sink = [&](std::span<const uint8_t>) -> Result<void> {
    threads.insert(std::this_thread::get_id());
    return {};
  };
  const QImage image = makeImage(900, 1500, Alpha::Soft);
  ASSERT_TRUE(writePng(viewOf(image), sink, 1));
  EXPECT_EQ(threads, std::set{std::this_thread::get_id()});
}

/// An image of random samples, which are valid for any variant: color type, depth, interlacing,
/// transparency chunk, filter.
using Kind = std::tuple<spng_color_type, int, bool, bool, spng_filter_choice>;

QByteArray writtenBySpng(const Kind& kind) {
  const auto [colorType, depth, interlaced, transparent, filter] = kind;
  constexpr uint32_t kWidth = 61, kHeight = 43;
  constexpr int kChannels[] = {1, 0, 3, 1, 2, 0, 4};
  const size_t rowBytes = (kWidth * size_t(kChannels[colorType] * depth) + 7) / 8;
  std::mt19937 random(unsigned(colorType * 100 + depth));
  std::vector<uint8_t> samples(rowBytes * kHeight);
  for (auto& sample : samples) sample = uint8_t(random() & random());

  spng_ctx* context = spng_ctx_new(SPNG_CTX_ENCODER);
  spng_set_option(context, SPNG_ENCODE_TO_BUFFER, 1);
  spng_set_option(context, SPNG_FILTER_CHOICE, filter);
  spng_ihdr ihdr{kWidth, kHeight, uint8_t(depth), uint8_t(colorType), 0, 0, uint8_t(interlaced)};
  spng_set_ihdr(context, &ihdr);
  if (colorType == SPNG_COLOR_TYPE_INDEXED) {
    spng_plte plte{};
    plte.n_entries = 1u << depth;
    for (auto& entry : plte.entries) {
      entry = {uint8_t(random()), uint8_t(random()), uint8_t(random()), 255};
    }
    spng_set_plte(context, &plte);
  }
  if (transparent) {
    spng_trns trns{};
    trns.n_type3_entries = 2;
    trns.type3_alpha[0] = 99;
    EXPECT_EQ(spng_set_trns(context, &trns), 0);
  }
  EXPECT_EQ(spng_encode_image(context, samples.data(), samples.size(), SPNG_FMT_PNG,
                              SPNG_ENCODE_FINALIZE),
            0);
  size_t size = 0;
  int code = 0;
  auto* bytes = static_cast<char*>(spng_get_png_buffer(context, &size, &code));
  const QByteArray file(bytes, qsizetype(size));
  std::free(bytes);
  spng_ctx_free(context);
  return file;
}

/// Decodes with Qt's own codec and doubles.
uint32_t expectedPixel(const QImage& deep, int x, int y) {
  const QRgba64 pixel = reinterpret_cast<const QRgba64*>(deep.constScanLine(y))[x];
  const double alpha = pixel.alpha() / 65535.0;
  const auto channel = [&](quint16 c) { return uint32_t(c / 65535.0 * alpha * 255 + 0.5); };
  return uint32_t(alpha * 255 + 0.5) << 24 | channel(pixel.red()) << 16 |
         channel(pixel.green()) << 8 | channel(pixel.blue());
}

TEST(PngReaderTest, MatchesQtOnEveryVariant) {
  const std::pair<spng_color_type, std::vector<int>> kinds[] = {
      {SPNG_COLOR_TYPE_GRAYSCALE, {1, 2, 4, 8, 16}},
      {SPNG_COLOR_TYPE_TRUECOLOR, {8, 16}},
      {SPNG_COLOR_TYPE_INDEXED, {1, 2, 4, 8}},
      {SPNG_COLOR_TYPE_GRAYSCALE_ALPHA, {8, 16}},
      {SPNG_COLOR_TYPE_TRUECOLOR_ALPHA, {8, 16}}};
  constexpr spng_filter_choice kFilters[] = {SPNG_FILTER_CHOICE_NONE, SPNG_FILTER_CHOICE_SUB,
                                             SPNG_FILTER_CHOICE_UP, SPNG_FILTER_CHOICE_AVG,
                                             SPNG_FILTER_CHOICE_PAETH};
  for (const auto& [colorType, depths] : kinds) {
    for (const int depth : depths) {
      for (int variant = 0; variant < 4 * 5; ++variant) {
        const bool interlaced = variant & 1;
        // Qt's codec mishandles 16-bit images with a transparent color.
        const bool transparent = variant & 2 && (colorType & 4) == 0 && depth < 16;
        const Kind kind{colorType, depth, interlaced, transparent, kFilters[variant / 4]};
        SCOPED_TRACE(testing::Message()
                     << "color type " << colorType << " depth " << depth << " variant " << variant);
        const QByteArray file = writtenBySpng(kind);
        const QImage image = readExactly(file).value();
        const QImage deep = QImage::fromData(file).convertToFormat(QImage::Format_RGBA64);
        ASSERT_EQ(image.size(), deep.size());
        for (int y = 0; y < image.height(); ++y) {
          for (int x = 0; x < image.width(); ++x) {
            ASSERT_EQ(reinterpret_cast<const uint32_t*>(image.constScanLine(y))[x],
                      expectedPixel(deep, x, y))
                << x << ", " << y;
          }
        }
      }
    }
  }
}

TEST(PngReaderTest, AppliesTransparentColorOf16BitImages) {
  const QByteArray row("\0\x10\0\x20\0\x30\0\x10\0\x20\0\x30\x01", 13);
  const QByteArray color("\x10\0\x20\0\x30\0", 6);
  const QImage image =
      readExactly(header(2, 1, 16, 2) + chunk("tRNS", color) + chunk("IDAT", packed(row)) + kEnd)
          .value();
  ASSERT_EQ(image.width(), 2);
  EXPECT_EQ(image.pixel(0, 0), 0u);
  EXPECT_EQ(image.pixel(1, 0), qRgb(16, 32, 48));
}

TEST(PngReaderTest, DetectsDamageBehindValidChecksums) {
  const QByteArray rows("\0abcdef\1ghijkl", 14);
  const QByteArray head = header(2, 2, 8, 2);
  QByteArray wrongFilter = rows, wrongSum = packed(rows), stray = packed(rows);
  wrongFilter[7] = 5;
  wrongSum.back() = char(~wrongSum.back());
  stray[0] = 0;
  const QByteArray indexed = header(2, 1, 8, 3) + chunk("PLTE", "abcdef");
  struct Row {
    const char* what;
    QByteArray file;
    bool readable;
  };
  const Row kTable[] = {
      {"whole", head + chunk("IDAT", packed(rows)) + kEnd, true},
      {"surplus rows", head + chunk("IDAT", packed(rows + rows)) + kEnd, true},
      {"data in two chunks around an empty one",
       head + chunk("IDAT", packed(rows).left(5)) + chunk("IDAT", {}) +
           chunk("IDAT", packed(rows).mid(5)) + kEnd,
       true},
      {"a row missing", head + chunk("IDAT", packed(rows.left(7))) + kEnd, false},
      {"half of the packed data", head + chunk("IDAT", packed(rows).left(9)) + kEnd, false},
      {"no checksum of the data", head + chunk("IDAT", packed(rows).chopped(4)) + kEnd, false},
      {"wrong checksum of the data", head + chunk("IDAT", wrongSum) + kEnd, false},
      {"unknown filter", head + chunk("IDAT", packed(wrongFilter)) + kEnd, false},
      {"no packed data at all", head + chunk("IDAT", stray) + kEnd, false},
      {"no data chunk", head + kEnd, false},
      {"no end", head + chunk("IDAT", packed(rows)), false},
      {"palette", indexed + chunk("IDAT", packed(QByteArray("\0\0\1", 3))) + kEnd, true},
      {"outside the palette", indexed + chunk("IDAT", packed(QByteArray("\0\0\2", 3))) + kEnd,
       false},
      {"no palette", header(2, 1, 8, 3) + chunk("IDAT", packed(QByteArray("\0\0\1", 3))) + kEnd,
       false},
      {"60000 x 60000", header(60000, 60000, 8, 2) + chunk("IDAT", packed(rows)) + kEnd, false},
      {"more than 1 GiB", header(32768, 8193, 8, 0) + chunk("IDAT", packed(rows)) + kEnd, false},
      {"no width", header(0, 2, 8, 2) + chunk("IDAT", packed(rows)) + kEnd, false}};
  for (const Row& row : kTable) {
    EXPECT_EQ(readExactly(row.file).has_value(), row.readable) << row.what;
  }
}

TEST(PngReaderTest, TruncationAndBitFlipsAreErrors) {
  const QByteArray small = written(makeImage(29, 7, Alpha::Soft));
  const QByteArray keyed = written(makeImage(9, 7, Alpha::Cut));
  QByteArray interlaced =
      writtenBySpng({SPNG_COLOR_TYPE_TRUECOLOR, 8, true, false, SPNG_FILTER_CHOICE_ALL});
  for (const QByteArray& file : {small, keyed, interlaced}) {
    for (qsizetype size = 0; size < file.size(); ++size) {
      const Result<QImage> image = readExactly(file.left(size));
      ASSERT_FALSE(image) << "cut to " << size;
      ASSERT_FALSE(image.error().message.empty());
    }
    // The image does not depend on the contents of the color space chunk. A chunk whose damaged
    // name no longer matches is ignored.
    const qsizetype spare = file.indexOf("sRGB") - 4;
    const qsizetype spareEnd = spare < 0 ? spare : spare + (file.contains("tRNS") ? 21 : 13);
    for (qsizetype bit = 0; bit < file.size() * 8; ++bit) {
      QByteArray flipped = file;
      flipped[bit / 8] = char(flipped[bit / 8] ^ 1 << bit % 8);
      const bool isRead = readExactly(flipped).has_value();
      if (bit / 8 >= spare && bit / 8 < spareEnd) continue;
      ASSERT_FALSE(isRead) << "bit " << bit;
    }
  }
}

TEST(PngReaderTest, DamagedLargeImageStopsBothThreads) {
  const QByteArray file = written(makeImage(1200, 1000, Alpha::Soft));
  for (int part = 0; part < 20; ++part) {
    const Result<QImage> image = readExactly(file.left(file.size() * part / 20));
    ASSERT_FALSE(image) << part;
    ASSERT_NE(image.error().message.find("cut short"), std::string::npos) << image.error().message;
  }
  // The decoding thread gives up while the other one is still filling its blocks.
  const QByteArray wrongFilter = QByteArray(1, 9) + QByteArray(4000 * 1001 - 1, 0);
  EXPECT_FALSE(readExactly(header(1000, 1000, 8, 6) + chunk("IDAT", packed(wrongFilter)) + kEnd));
}

}  // namespace
}  // namespace kelvar
