#include "pixels/codec/Jpeg.h"

// jpeglib.h uses FILE without declaring it.
#include <cstdio>
// The order matters.
#include <jerror.h>
#include <jpeglib.h>

#include <cassert>
#include <csetjmp>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <utility>

#include "pixels/ImageLimits.h"
#include "pixels/codec/ExifOrientation.h"

namespace kelvar {

namespace {

constexpr int kQuality = 92;
constexpr int kExifMarker = JPEG_APP0 + 1;
constexpr int kProfileMarker = JPEG_APP0 + 2;
constexpr std::string_view kExifName("Exif\0\0", 6);

using Bytes = std::span<const uint8_t>;

/// How libjpeg fails: it jumps. No object with a destructor may live between the setjmp and the
/// calls that can jump.
struct JumpingError {
  jpeg_error_mgr manager;
  std::jmp_buf escape;
};

[[noreturn]] void jump(j_common_ptr codec) {
  std::longjmp(reinterpret_cast<JumpingError*>(codec->err)->escape, 1);
}

/// Warnings mean that pixels are missing or made up, except for a few about the form of the file.
void failOnWarning(j_common_ptr codec, int level) {
  const int code = codec->err->msg_code;
  const bool harmless = code == JWRN_EXTRANEOUS_DATA || code == JWRN_JFIF_MAJOR ||
                        code == JWRN_ADOBE_XFORM || code == JWRN_BOGUS_ICC;
  if (level < 0 && !harmless) jump(codec);
}

jpeg_error_mgr* install(JumpingError* failure) {
  jpeg_error_mgr* manager = jpeg_std_error(&failure->manager);
  manager->error_exit = &jump;
  manager->emit_message = &failOnWarning;
  manager->output_message = [](j_common_ptr) {};
  return manager;
}

/// CMYK is taken as inverted, 255 for no ink, as it is in files in practice.
uint32_t fromCmyk(const uint8_t* cmyk) {
  uint32_t pixel = 0xff;
  for (int i = 0; i < 3; ++i) pixel = pixel << 8 | (uint32_t{cmyk[i]} * cmyk[3] + 127) / 255;
  return pixel;
}

class JpegDecoder {
 public:
  explicit JpegDecoder(Bytes file) : file_(file) { codec_.err = install(&failure_); }
  ~JpegDecoder() { jpeg_destroy_decompress(&codec_); }
  JpegDecoder(const JpegDecoder&) = delete;
  JpegDecoder& operator=(const JpegDecoder&) = delete;

  bool readHeader() {
    if (setjmp(failure_.escape) != 0) return false;
    jpeg_create_decompress(&codec_);
    jpeg_mem_src(&codec_, file_.data(), static_cast<unsigned long>(file_.size()));
    jpeg_save_markers(&codec_, kExifMarker, 0xffff);
    jpeg_save_markers(&codec_, kProfileMarker, 0xffff);
    jpeg_read_header(&codec_, TRUE);
    isCmyk_ = codec_.num_components == 4;
    codec_.out_color_space = isCmyk_ ? JCS_CMYK : JCS_EXT_BGRA;
    return true;
  }

  int width() const { return static_cast<int>(codec_.image_width); }
  int height() const { return static_cast<int>(codec_.image_height); }

  int orientation() const {
    for (auto* marker = codec_.marker_list; marker; marker = marker->next) {
      const std::string_view data(reinterpret_cast<const char*>(marker->data), marker->data_length);
      if (marker->marker == kExifMarker && data.starts_with(kExifName)) {
        return exifOrientation(Bytes(marker->data, marker->data_length).subspan(kExifName.size()));
      }
    }
    return 1;
  }

  std::vector<uint8_t> profile() {
    JOCTET* bytes = nullptr;
    unsigned int size = 0;
    if (setjmp(failure_.escape) != 0 || !jpeg_read_icc_profile(&codec_, &bytes, &size)) return {};
    const std::unique_ptr<JOCTET, decltype(&std::free)> owner(bytes, &std::free);
    return {bytes, bytes + size};
  }

  bool readPixels(const PixelView& pixels) {
    if (setjmp(failure_.escape) != 0) return false;
    jpeg_start_decompress(&codec_);
    while (codec_.output_scanline < codec_.output_height) {
      uint8_t* row = pixels.row(static_cast<int>(codec_.output_scanline));
      jpeg_read_scanlines(&codec_, &row, 1);
      if (isCmyk_) convertCmyk(row);
    }
    jpeg_finish_decompress(&codec_);
    return true;
  }

  tl::unexpected<Error> error() const {
    const int code = codec_.err->msg_code;
    const bool isCut = code == JWRN_JPEG_EOF || code == JERR_INPUT_EOF || code == JERR_INPUT_EMPTY;
    return failure(Error::Kind::Damaged, isCut ? "the JPEG is cut short" : "the JPEG is damaged");
  }

 private:
  void convertCmyk(uint8_t* row) const {
    auto* out = reinterpret_cast<uint32_t*>(row);
    for (JDIMENSION x = 0; x < codec_.output_width; ++x) out[x] = fromCmyk(row + 4 * x);
  }

  Bytes file_;
  JumpingError failure_{};
  jpeg_decompress_struct codec_{};
  bool isCmyk_ = false;
};

/// Premultiplied over white: what alpha lacks is added to each color.
void flattenRow(const uint8_t* bgra, uint8_t* out, int width) {
  for (int x = 0; x < width; ++x, bgra += 4, out += 4) {
    for (int i = 0; i < 4; ++i) out[i] = static_cast<uint8_t>(bgra[i] + 255 - bgra[3]);
  }
}

/// `row` has room for one row.
bool compress(const ConstPixelView& image, uint8_t* row, JumpingError* failure,
              unsigned char** bytes, unsigned long* size) {
  jpeg_compress_struct codec{};
  codec.err = install(failure);
  if (setjmp(failure->escape) != 0) {
    jpeg_destroy_compress(&codec);
    return false;
  }
  jpeg_create_compress(&codec);
  jpeg_mem_dest(&codec, bytes, size);
  codec.image_width = static_cast<JDIMENSION>(image.width);
  codec.image_height = static_cast<JDIMENSION>(image.height);
  codec.input_components = 4;
  codec.in_color_space = JCS_EXT_BGRX;
  jpeg_set_defaults(&codec);
  jpeg_set_quality(&codec, kQuality, TRUE);
  codec.comp_info[0].h_samp_factor = codec.comp_info[0].v_samp_factor = 1;
  jpeg_start_compress(&codec, TRUE);
  while (codec.next_scanline < codec.image_height) {
    flattenRow(image.row(static_cast<int>(codec.next_scanline)), row, image.width);
    jpeg_write_scanlines(&codec, &row, 1);
  }
  jpeg_finish_compress(&codec);
  jpeg_destroy_compress(&codec);
  return true;
}

}  // namespace

Result<DecodedImage> readJpeg(Bytes file) {
  JpegDecoder decoder(file);
  if (!decoder.readHeader()) return decoder.error();
  if (const auto valid = validateImageSize(decoder.width(), decoder.height()); !valid) {
    return tl::unexpected(valid.error());
  }
  // Both are lost once the pixels are read.
  std::vector<uint8_t> profile = decoder.profile();
  const int orientation = decoder.orientation();
  auto image = PixelBuffer::create(decoder.width(), decoder.height());
  if (!image) return tl::unexpected(image.error());
  if (!decoder.readPixels(image->view())) return decoder.error();
  image = turnedUpright(std::move(*image), orientation);
  if (!image) return tl::unexpected(image.error());
  return DecodedImage{std::move(*image), std::move(profile)};
}

Result<void> writeJpeg(const ConstPixelView& image, const ByteSink& sink) {
  assert(image.width > 0 && image.height > 0 && image.format == PixelFormat{});
  std::vector<uint8_t> row(size_t(image.width) * 4);
  JumpingError failure{};
  unsigned char* bytes = nullptr;
  unsigned long size = 0;
  const bool compressed = compress(image, row.data(), &failure, &bytes, &size);
  const std::unique_ptr<unsigned char, decltype(&std::free)> owner(bytes, &std::free);
  if (compressed) return sink({bytes, size});
  return kelvar::failure(Error::Kind::Unsupported, "the image cannot be encoded as a JPEG");
}

}  // namespace kelvar
