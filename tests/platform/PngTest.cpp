#include <gtest/gtest.h>
#include <spng.h>
#include <sys/mman.h>
#include <zlib.h>

#include <QBuffer>
#include <QColorSpace>
#include <QImage>
#include <QtEndian>
#include <cstring>
#include <memory>
#include <new>
#include <random>
#include <set>
#include <tuple>
#include <vector>

#include "platform/AlphaPixels.h"
#include "platform/PngDeflate.h"
#include "platform/PngReader.h"
#include "platform/PngWriter.h"

namespace kelvar {
namespace {

/// Bytes that end where they end, so that the address sanitizer sees a read behind them.
QImage readExactly(const QByteArray& file, QString* error) {
  const std::vector<char> exact(file.begin(), file.end());
  return readPng(QByteArray::fromRawData(exact.data(), qsizetype(exact.size())), error);
}

QByteArray written(const QImage& image, int threads = 0) {
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  EXPECT_TRUE(writePng(image, &buffer, threads));
  return buffer.data();
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

QByteArray header(uint32_t width, uint32_t height, char depth, char colourType) {
  QByteArray ihdr(8, 0);
  qToBigEndian(width, ihdr.data());
  qToBigEndian(height, ihdr.data() + 4);
  ihdr += QByteArray{1, depth} + QByteArray{1, colourType} + QByteArray(3, 0);
  return QByteArrayLiteral("\x89PNG\r\n\x1a\n") + chunk("IHDR", ihdr);
}

const QByteArray kEnd = chunk("IEND", {});

enum class Alpha { Opaque, Soft, Cut, CutAndEveryBlack };

/// A noisy picture: all opaque; opaque, clear and in-between regions; opaque and clear ones; those
/// with each blueish black as an opaque colour.
QImage picture(int width, int height, Alpha kind) {
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

TEST(PngWriter, QtReadsWhatIsWritten) {
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
    const QImage image = picture(row.width, row.height, row.kind);
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
    QString error;
    ASSERT_EQ(readExactly(file, &error), image) << qPrintable(error);
  }
}

TEST(PngWriter, TheSamePixelsMakeTheSameFile) {
  // Flat cells, so that matches are found, in more bands than the most threads.
  QImage image(1800, 850, QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < image.height(); ++y) {
    auto* const row = reinterpret_cast<uint32_t*>(image.scanLine(y));
    for (int x = 0; x < image.width(); ++x) row[x] = 0xff000000 | unsigned(x / 7 * y / 5 % 31) << 9;
  }
  const QByteArray file = written(image);
  QString error;
  ASSERT_EQ(readExactly(file, &error), image) << qPrintable(error);
  for (const int threads : {1, 2, 8}) {
    for (int time = 0; time < 50; ++time) {
      ASSERT_EQ(written(image, threads), file) << threads << " threads, time " << time;
    }
  }
}

/// Short data leaves ISA-L a small table, of which a thousand addresses meet every entry.
TEST(PngWriter, PacksTheSameWhereverTheStreamLies) {
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

TEST(PngWriter, FailsWithItsDevice) {
  class FullDevice : public QBuffer {
   protected:
    qint64 writeData(const char* data, qint64 size) override {
      return buffer().size() > 100000 ? -1 : QBuffer::writeData(data, size);
    }
  } device;
  device.open(QIODevice::WriteOnly);
  EXPECT_FALSE(writePng(picture(900, 1500, Alpha::Soft), &device));
}

/// A picture of random samples, which are valid for any kind: colour type, depth, interlacing,
/// transparency chunk, filter.
using Kind = std::tuple<spng_color_type, int, bool, bool, spng_filter_choice>;

QByteArray writtenBySpng(const Kind& kind) {
  const auto [colourType, depth, interlaced, transparent, filter] = kind;
  constexpr uint32_t kWidth = 61, kHeight = 43;
  constexpr int kChannels[] = {1, 0, 3, 1, 2, 0, 4};
  const size_t rowBytes = (kWidth * size_t(kChannels[colourType] * depth) + 7) / 8;
  std::mt19937 random(unsigned(colourType * 100 + depth));
  std::vector<uint8_t> samples(rowBytes * kHeight);
  for (auto& sample : samples) sample = uint8_t(random() & random());

  spng_ctx* context = spng_ctx_new(SPNG_CTX_ENCODER);
  spng_set_option(context, SPNG_ENCODE_TO_BUFFER, 1);
  spng_set_option(context, SPNG_FILTER_CHOICE, filter);
  spng_ihdr ihdr{kWidth, kHeight, uint8_t(depth), uint8_t(colourType), 0, 0, uint8_t(interlaced)};
  spng_set_ihdr(context, &ihdr);
  if (colourType == SPNG_COLOR_TYPE_INDEXED) {
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

/// Through Qt's own codec and doubles.
uint32_t expectedPixel(const QImage& deep, int x, int y) {
  const QRgba64 pixel = reinterpret_cast<const QRgba64*>(deep.constScanLine(y))[x];
  const double alpha = pixel.alpha() / 65535.0;
  const auto channel = [&](quint16 c) { return uint32_t(c / 65535.0 * alpha * 255 + 0.5); };
  return uint32_t(alpha * 255 + 0.5) << 24 | channel(pixel.red()) << 16 |
         channel(pixel.green()) << 8 | channel(pixel.blue());
}

TEST(PngReader, AgreesWithQtOnEveryKind) {
  const std::pair<spng_color_type, std::vector<int>> kinds[] = {
      {SPNG_COLOR_TYPE_GRAYSCALE, {1, 2, 4, 8, 16}},
      {SPNG_COLOR_TYPE_TRUECOLOR, {8, 16}},
      {SPNG_COLOR_TYPE_INDEXED, {1, 2, 4, 8}},
      {SPNG_COLOR_TYPE_GRAYSCALE_ALPHA, {8, 16}},
      {SPNG_COLOR_TYPE_TRUECOLOR_ALPHA, {8, 16}}};
  constexpr spng_filter_choice kFilters[] = {SPNG_FILTER_CHOICE_NONE, SPNG_FILTER_CHOICE_SUB,
                                             SPNG_FILTER_CHOICE_UP, SPNG_FILTER_CHOICE_AVG,
                                             SPNG_FILTER_CHOICE_PAETH};
  for (const auto& [colourType, depths] : kinds) {
    for (const int depth : depths) {
      for (int variant = 0; variant < 4 * 5; ++variant) {
        const bool interlaced = variant & 1;
        // Qt's codec loses its way in deep pictures with a transparent colour.
        const bool transparent = variant & 2 && (colourType & 4) == 0 && depth < 16;
        const Kind kind{colourType, depth, interlaced, transparent, kFilters[variant / 4]};
        SCOPED_TRACE(testing::Message() << "colour type " << colourType << " depth " << depth
                                        << " variant " << variant);
        const QByteArray file = writtenBySpng(kind);
        QString error;
        const QImage image = readExactly(file, &error);
        const QImage deep = QImage::fromData(file).convertToFormat(QImage::Format_RGBA64);
        ASSERT_EQ(image.size(), deep.size()) << qPrintable(error);
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

TEST(PngReader, ADeepPicturesTransparentColourIsTransparent) {
  const QByteArray row("\0\x10\0\x20\0\x30\0\x10\0\x20\0\x30\x01", 13);
  const QByteArray colour("\x10\0\x20\0\x30\0", 6);
  QString error;
  const QImage image = readExactly(
      header(2, 1, 16, 2) + chunk("tRNS", colour) + chunk("IDAT", packed(row)) + kEnd, &error);
  ASSERT_EQ(image.width(), 2) << qPrintable(error);
  EXPECT_EQ(image.pixel(0, 0), 0u);
  EXPECT_EQ(image.pixel(1, 0), qRgb(16, 32, 48));
}

TEST(PngReader, DamageBehindGoodChecksumsIsSeen) {
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
    QString error;
    EXPECT_EQ(readExactly(row.file, &error).isNull(), !row.readable) << row.what;
    EXPECT_EQ(error.isEmpty(), row.readable) << row.what << ": " << qPrintable(error);
  }
}

TEST(PngReader, EveryCutAndEveryFlippedBitIsAnError) {
  const QByteArray small = written(picture(29, 7, Alpha::Soft));
  const QByteArray keyed = written(picture(9, 7, Alpha::Cut));
  QByteArray interlaced =
      writtenBySpng({SPNG_COLOR_TYPE_TRUECOLOR, 8, true, false, SPNG_FILTER_CHOICE_ALL});
  for (const QByteArray& file : {small, keyed, interlaced}) {
    for (qsizetype size = 0; size < file.size(); ++size) {
      QString error;
      ASSERT_TRUE(readExactly(file.left(size), &error).isNull()) << "cut to " << size;
      ASSERT_FALSE(error.isEmpty());
    }
    // The picture does not depend on what the chunk of the colour space says, and a chunk of
    // another name than the next one's says nothing.
    const qsizetype spare = file.indexOf("sRGB") - 4;
    const qsizetype spareEnd = spare < 0 ? spare : spare + (file.contains("tRNS") ? 21 : 13);
    for (qsizetype bit = 0; bit < file.size() * 8; ++bit) {
      QByteArray flipped = file;
      flipped[bit / 8] = char(flipped[bit / 8] ^ 1 << bit % 8);
      QString error;
      const bool isNull = readExactly(flipped, &error).isNull();
      if (bit / 8 >= spare && bit / 8 < spareEnd) continue;
      ASSERT_TRUE(isNull) << "bit " << bit;
    }
  }
}

TEST(PngReader, ADamagedLargePictureEndsBothThreads) {
  const QByteArray file = written(picture(1200, 1000, Alpha::Soft));
  for (int part = 0; part < 20; ++part) {
    QString error;
    const QByteArray cut = file.left(file.size() * part / 20);
    ASSERT_TRUE(readExactly(cut, &error).isNull()) << part;
    ASSERT_TRUE(error.contains(u"cut short")) << qPrintable(error);
  }
  // The decoding side gives up while the other one still fills its blocks.
  const QByteArray wrongFilter = QByteArray(1, 9) + QByteArray(4000 * 1001 - 1, 0);
  QString error;
  EXPECT_TRUE(
      readExactly(header(1000, 1000, 8, 6) + chunk("IDAT", packed(wrongFilter)) + kEnd, &error)
          .isNull());
}

TEST(PngReader, ConvertsAProfileToSRgb) {
  QImage wide(2, 1, QImage::Format_RGB32);
  wide.setPixel(0, 0, qRgb(100, 150, 200));
  wide.setPixel(1, 0, qRgb(255, 255, 255));
  for (const auto space : {QColorSpace::SRgb, QColorSpace::DisplayP3, QColorSpace::AdobeRgb}) {
    wide.setColorSpace(space);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    ASSERT_TRUE(wide.save(&buffer, "png"));
    QString error;
    const QImage seen = readExactly(buffer.data(), &error);
    const QImage expected = wide.convertedToColorSpace(QColorSpace::SRgb);
    ASSERT_EQ(seen.size(), wide.size());
    EXPECT_EQ(seen.pixel(0, 0), expected.pixel(0, 0));
    EXPECT_EQ(seen.pixel(0, 0) == wide.pixel(0, 0), space == QColorSpace::SRgb);
    EXPECT_EQ(seen.pixel(1, 0), qRgb(255, 255, 255));
  }
}

}  // namespace
}  // namespace kelvar
