// Our PNG codec beside libspng, by itself and with libdeflate in the place of zlib, on the example
// photograph and the example design. Prints a table for each: the size written, and for writing
// and reading the time that passes and the processor time, each the best of several runs.

#include <libdeflate.h>
#include <spng.h>

#include <QImage>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "pixels/codec/PngReader.h"
#include "pixels/codec/PngWriter.h"
#include "platform/image/ImageFile.h"
#include "platform/image/PixelViews.h"

namespace {

using Bytes = std::vector<uint8_t>;
using Context = std::unique_ptr<spng_ctx, decltype(&spng_ctx_free)>;

constexpr int kRuns = 7;

uint32_t bigEndian(const uint8_t* p) {
  return uint32_t{p[0]} << 24 | uint32_t{p[1]} << 16 | uint32_t{p[2]} << 8 | p[3];
}

void append(Bytes* out, uint32_t value) {
  for (int shift = 24; shift >= 0; shift -= 8) out->push_back(uint8_t(value >> shift));
}

/// `file` with the data of its IDAT chunks replaced by what `convert` makes of it, in one chunk.
Bytes withData(const Bytes& file, const std::function<Bytes(const Bytes&)>& convert) {
  Bytes data, out(file.begin(), file.begin() + 8), after;
  for (size_t at = 8; at < file.size();) {
    const size_t size = bigEndian(&file[at]), end = at + 12 + size;
    const bool isData = std::memcmp(&file[at + 4], "IDAT", 4) == 0;
    Bytes& to = isData ? data : data.empty() ? out : after;
    to.insert(to.end(), file.begin() + ptrdiff_t(isData ? at + 8 : at),
              file.begin() + ptrdiff_t(isData ? at + 8 + size : end));
    at = end;
  }
  const Bytes converted = convert(data);
  append(&out, uint32_t(converted.size()));
  const size_t start = out.size();
  out.insert(out.end(), {'I', 'D', 'A', 'T'});
  out.insert(out.end(), converted.begin(), converted.end());
  append(&out, libdeflate_crc32(0, &out[start], out.size() - start));
  out.insert(out.end(), after.begin(), after.end());
  return out;
}

Bytes inflated(const Bytes& data, size_t size) {
  const std::unique_ptr<libdeflate_decompressor, decltype(&libdeflate_free_decompressor)> codec(
      libdeflate_alloc_decompressor(), &libdeflate_free_decompressor);
  Bytes out(size);
  size_t actual = 0;
  if (libdeflate_zlib_decompress(codec.get(), data.data(), data.size(), out.data(), size,
                                 &actual) != LIBDEFLATE_SUCCESS) {
    std::abort();
  }
  out.resize(actual);
  return out;
}

/// Level 0 stores.
Bytes deflated(const Bytes& data, int level) {
  const std::unique_ptr<libdeflate_compressor, decltype(&libdeflate_free_compressor)> codec(
      libdeflate_alloc_compressor(level), &libdeflate_free_compressor);
  Bytes out(libdeflate_zlib_compress_bound(codec.get(), data.size()));
  out.resize(
      libdeflate_zlib_compress(codec.get(), data.data(), data.size(), out.data(), out.size()));
  return out;
}

size_t filteredSize(const QImage& image) {
  return size_t(image.height()) * (size_t(image.width()) * 4 + 1);
}

Bytes writeSpng(const QImage& image, int level) {
  bool isOpaque = true;
  for (int y = 0; y < image.height() && isOpaque; ++y) {
    const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    isOpaque = std::all_of(row, row + image.width(), [](QRgb p) { return qAlpha(p) == 255; });
  }
  const QImage samples =
      image.convertToFormat(isOpaque ? QImage::Format_RGB888 : QImage::Format_RGBA8888);
  const Context context(spng_ctx_new(SPNG_CTX_ENCODER), &spng_ctx_free);
  spng_set_option(context.get(), SPNG_ENCODE_TO_BUFFER, 1);
  spng_set_option(context.get(), SPNG_IMG_COMPRESSION_LEVEL, level);
  spng_set_option(context.get(), SPNG_FILTER_CHOICE, SPNG_FILTER_CHOICE_ALL);
  spng_ihdr header{uint32_t(image.width()),
                   uint32_t(image.height()),
                   8,
                   uint8_t(isOpaque ? SPNG_COLOR_TYPE_TRUECOLOR : SPNG_COLOR_TYPE_TRUECOLOR_ALPHA),
                   0,
                   0,
                   0};
  spng_set_ihdr(context.get(), &header);
  spng_encode_image(context.get(), nullptr, 0, SPNG_FMT_PNG,
                    SPNG_ENCODE_PROGRESSIVE | SPNG_ENCODE_FINALIZE);
  for (int y = 0; y < image.height(); ++y) {
    spng_encode_row(context.get(), samples.constScanLine(y),
                    size_t(image.width()) * (isOpaque ? 3 : 4));
  }
  size_t size = 0;
  int code = 0;
  auto* const bytes = static_cast<uint8_t*>(spng_get_png_buffer(context.get(), &size, &code));
  Bytes file(bytes, bytes + size);
  std::free(bytes);
  return file;
}

QImage readSpng(const Bytes& file, bool isChecked) {
  const Context context(spng_ctx_new(isChecked ? 0 : SPNG_CTX_IGNORE_ADLER32), &spng_ctx_free);
  if (!isChecked) spng_set_crc_action(context.get(), SPNG_CRC_USE, SPNG_CRC_USE);
  spng_set_png_buffer(context.get(), file.data(), file.size());
  spng_ihdr header{};
  spng_get_ihdr(context.get(), &header);
  QImage image(int(header.width), int(header.height), QImage::Format_RGBA8888);
  if (spng_decode_image(context.get(), image.bits(), size_t(image.sizeInBytes()), SPNG_FMT_RGBA8,
                        SPNG_DECODE_TRNS) != 0) {
    std::abort();
  }
  return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

Bytes writeOurs(const QImage& image, int threads) {
  Bytes file;
  const auto sink = [&](std::span<const uint8_t> part) -> kelvar::Result<void> {
    file.insert(file.end(), part.begin(), part.end());
    return {};
  };
  if (!kelvar::writePng(kelvar::viewOf(image), sink, threads)) std::abort();
  return file;
}

QImage readOurs(const Bytes& file, int threads) {
  auto image = kelvar::readPng(file, threads);
  if (!image) std::abort();
  return kelvar::toQImage(std::move(image->pixels));
}

struct Codec {
  std::string name;
  std::function<Bytes(const QImage&)> write;
  std::function<QImage(const Bytes&, const QImage& image)> read;
};

std::vector<Codec> codecs() {
  std::vector<Codec> all;
  for (const int threads : {1, 2}) {
    all.push_back({"ours, " + std::to_string(threads) + (threads == 1 ? " thread" : " threads"),
                   [=](const QImage& image) { return writeOurs(image, threads); },
                   [=](const Bytes& file, const QImage&) { return readOurs(file, threads); }});
  }
  for (const int level : {1, 6}) {
    all.push_back({"libspng, zlib level " + std::to_string(level),
                   [=](const QImage& image) { return writeSpng(image, level); },
                   [](const Bytes& file, const QImage&) { return readSpng(file, true); }});
  }
  // libspng cannot be told to use it: it writes stored data, which is then compressed, and reads
  // data that was inflated before and stored again. The copies take a few milliseconds.
  for (const int level : {1, 3, 6}) {
    all.push_back({"libspng, libdeflate level " + std::to_string(level),
                   [=](const QImage& image) {
                     return withData(writeSpng(image, 0), [&](const Bytes& data) {
                       return deflated(inflated(data, filteredSize(image)), level);
                     });
                   },
                   [](const Bytes& file, const QImage& image) {
                     return readSpng(withData(file,
                                              [&](const Bytes& data) {
                                                return deflated(inflated(data, filteredSize(image)),
                                                                0);
                                              }),
                                     false);
                   }});
  }
  return all;
}

struct Times {
  double wall = std::numeric_limits<double>::infinity();
  double processor = std::numeric_limits<double>::infinity();

  /// Milliseconds of the best runs.
  template <typename Work>
  void measure(const Work& work) {
    const std::clock_t before = std::clock();
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
    wall = std::min(wall, took.count());
    processor = std::min(processor, 1000.0 * double(std::clock() - before) / CLOCKS_PER_SEC);
  }
};

void compare(const char* name, const QImage& image) {
  std::printf(
      "\n| %s %d x %d | size | write | processor | read | processor |\n"
      "|---|---|---|---|---|---|\n",
      name, image.width(), image.height());
  const std::vector<Codec> all = codecs();
  std::vector<Times> write(all.size()), read(all.size());
  std::vector<size_t> sizes(all.size());
  for (int run = 0; run < kRuns; ++run) {
    for (size_t i = 0; i < all.size(); ++i) {
      Bytes file;
      QImage back;
      write[i].measure([&] { file = all[i].write(image); });
      read[i].measure([&] { back = all[i].read(file, image); });
      sizes[i] = file.size();
      if (back != image) std::printf("%s: another image came back\n", all[i].name.c_str());
    }
  }
  for (size_t i = 0; i < all.size(); ++i) {
    std::printf("| %s | %.0f kB | %.1f ms | %.1f ms | %.1f ms | %.1f ms |\n", all[i].name.c_str(),
                double(sizes[i]) / 1000, write[i].wall, write[i].processor, read[i].wall,
                read[i].processor);
  }
}

}  // namespace

int main(int argc, char** argv) {
  const QString folder = QString::fromLocal8Bit(argc > 1 ? argv[1] : "examples");
  for (const auto& [name, file] : {std::pair{"photo", "/phone.jpg"}, {"UI", "/design.png"}}) {
    const auto image = kelvar::ImageFile::read(folder + QLatin1String(file), {});
    if (!image) {
      std::fprintf(stderr, "%s\n", image.error().message.c_str());
      return 1;
    }
    compare(name, (*image)->pixels());
  }
}
