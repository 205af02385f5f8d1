#include "platform/JpegFile.h"

// jpeglib.h uses FILE without declaring it.
#include <cstdio>
// The order matters.
#include <jerror.h>
#include <jpeglib.h>

#include <QBuffer>
#include <QImageReader>
#include <QTransform>
#include <csetjmp>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "platform/ColorProfile.h"
#include "platform/PictureLimits.h"

namespace kelvar {

namespace {

constexpr int kQuality = 92;
constexpr int kExifMarker = JPEG_APP0 + 1;
constexpr int kProfileMarker = JPEG_APP0 + 2;
constexpr std::string_view kExifName("Exif\0", 5);

/// libjpeg's way of failing: it jumps. Nothing with a destructor may live between the setjmp and
/// the calls that can jump.
struct Failure {
  jpeg_error_mgr manager;
  std::jmp_buf escape;
};

[[noreturn]] void jump(j_common_ptr codec) {
  std::longjmp(reinterpret_cast<Failure*>(codec->err)->escape, 1);
}

/// Warnings are about pixels that are missing or made up, but for a few that are mere manners.
void takeWarningsSeriously(j_common_ptr codec, int level) {
  const int code = codec->err->msg_code;
  const bool harmless = code == JWRN_EXTRANEOUS_DATA || code == JWRN_JFIF_MAJOR ||
                        code == JWRN_ADOBE_XFORM || code == JWRN_BOGUS_ICC;
  if (level < 0 && !harmless) jump(codec);
}

jpeg_error_mgr* install(Failure* failure) {
  jpeg_error_mgr* manager = jpeg_std_error(&failure->manager);
  manager->error_exit = &jump;
  manager->emit_message = &takeWarningsSeriously;
  manager->output_message = [](j_common_ptr) {};
  return manager;
}

/// Adobe's CMYK, which is what is met, stands inverted: 255 is no ink.
uint32_t fromCmyk(const uint8_t* cmyk, bool inverted) {
  uint32_t pixel = 0xff;
  const uint32_t flip = inverted ? 0 : 255;
  for (int i = 0; i < 3; ++i) {
    pixel = pixel << 8 | ((cmyk[i] ^ flip) * (cmyk[3] ^ flip) + 127) / 255;
  }
  return pixel;
}

class JpegDecoder {
 public:
  explicit JpegDecoder(const QByteArray& file) : file_(file) { codec_.err = install(&failure_); }
  ~JpegDecoder() { jpeg_destroy_decompress(&codec_); }
  JpegDecoder(const JpegDecoder&) = delete;
  JpegDecoder& operator=(const JpegDecoder&) = delete;

  bool readHeader() {
    if (setjmp(failure_.escape) != 0) return false;
    jpeg_create_decompress(&codec_);
    jpeg_mem_src(&codec_, reinterpret_cast<const uint8_t*>(file_.constData()),
                 static_cast<unsigned long>(file_.size()));
    jpeg_save_markers(&codec_, kExifMarker, kExifName.size());
    jpeg_save_markers(&codec_, kProfileMarker, 0xffff);
    jpeg_read_header(&codec_, TRUE);
    isCmyk_ = codec_.num_components == 4;
    codec_.out_color_space = isCmyk_ ? JCS_CMYK : JCS_EXT_BGRA;
    return true;
  }

  QSize size() const { return {int(codec_.image_width), int(codec_.image_height)}; }

  bool hasExif() const {
    for (auto* marker = codec_.marker_list; marker; marker = marker->next) {
      const std::string_view start(reinterpret_cast<const char*>(marker->data),
                                   marker->data_length);
      if (marker->marker == kExifMarker && start == kExifName) return true;
    }
    return false;
  }

  QByteArray profile() {
    JOCTET* bytes = nullptr;
    unsigned int size = 0;
    if (setjmp(failure_.escape) != 0 || !jpeg_read_icc_profile(&codec_, &bytes, &size)) return {};
    const QByteArray profile(reinterpret_cast<const char*>(bytes), qsizetype(size));
    std::free(bytes);
    return profile;
  }

  bool readPixels(uint8_t* pixels, ptrdiff_t stride) {
    if (setjmp(failure_.escape) != 0) return false;
    jpeg_start_decompress(&codec_);
    while (codec_.output_scanline < codec_.output_height) {
      uint8_t* row = pixels + ptrdiff_t(codec_.output_scanline) * stride;
      jpeg_read_scanlines(&codec_, &row, 1);
      if (isCmyk_) convertCmyk(row);
    }
    jpeg_finish_decompress(&codec_);
    return true;
  }

  QString problem() const {
    const int code = codec_.err->msg_code;
    return code == JWRN_JPEG_EOF || code == JERR_INPUT_EOF || code == JERR_INPUT_EMPTY
               ? QStringLiteral("the JPEG is cut short")
               : QStringLiteral("the JPEG is damaged");
  }

 private:
  void convertCmyk(uint8_t* row) const {
    auto* out = reinterpret_cast<uint32_t*>(row);
    for (JDIMENSION x = 0; x < codec_.output_width; ++x) {
      out[x] = fromCmyk(row + 4 * x, codec_.saw_Adobe_marker);
    }
  }

  const QByteArray& file_;
  Failure failure_{};
  jpeg_decompress_struct codec_{};
  bool isCmyk_ = false;
};

QImage upright(const QImage& image, QImageIOHandler::Transformations how) {
  QImage turned = image.mirrored(how & QImageIOHandler::TransformationMirror,
                                 how & QImageIOHandler::TransformationFlip);
  if (how & QImageIOHandler::TransformationRotate90) {
    turned = turned.transformed(QTransform().rotate(90));
  }
  return turned.convertToFormat(image.format());
}

/// Qt's reader looks at the header alone for this.
QImageIOHandler::Transformations orientation(QByteArray file) {
  QBuffer buffer(&file);
  return QImageReader(&buffer, "jpeg").transformation();
}

bool compress(const QImage& flat, Failure* failure, unsigned char** bytes, unsigned long* size) {
  jpeg_compress_struct codec{};
  codec.err = install(failure);
  if (setjmp(failure->escape) != 0) {
    jpeg_destroy_compress(&codec);
    return false;
  }
  jpeg_create_compress(&codec);
  jpeg_mem_dest(&codec, bytes, size);
  codec.image_width = static_cast<JDIMENSION>(flat.width());
  codec.image_height = static_cast<JDIMENSION>(flat.height());
  codec.input_components = 4;
  codec.in_color_space = JCS_EXT_BGRX;
  jpeg_set_defaults(&codec);
  jpeg_set_quality(&codec, kQuality, TRUE);
  codec.comp_info[0].h_samp_factor = codec.comp_info[0].v_samp_factor = 1;
  jpeg_start_compress(&codec, TRUE);
  while (codec.next_scanline < codec.image_height) {
    auto* row = const_cast<uint8_t*>(flat.constScanLine(int(codec.next_scanline)));
    jpeg_write_scanlines(&codec, &row, 1);
  }
  jpeg_finish_compress(&codec);
  jpeg_destroy_compress(&codec);
  return true;
}

/// Premultiplied over white: what the alpha lacks is added to each colour.
QImage overWhite(const QImage& image) {
  QImage flat(image.size(), QImage::Format_RGB32);
  for (int y = 0; y < flat.height(); ++y) {
    const auto* in = reinterpret_cast<const uint32_t*>(image.constScanLine(y));
    auto* out = reinterpret_cast<uint32_t*>(flat.scanLine(y));
    for (int x = 0; x < flat.width(); ++x) out[x] = in[x] + (255 - (in[x] >> 24)) * 0x01010101u;
  }
  return flat;
}

}  // namespace

QImage readJpeg(const QByteArray& file, QString* error) {
  JpegDecoder decoder(file);
  if (!decoder.readHeader()) {
    *error = decoder.problem();
    return {};
  }
  *error = sizeObjection(decoder.size().width(), decoder.size().height());
  if (!error->isEmpty()) return {};

  // Both are forgotten once the pixels are read.
  const QByteArray profile = decoder.profile();
  const bool hasExif = decoder.hasExif();
  QImage image(decoder.size(), QImage::Format_ARGB32_Premultiplied);
  if (image.isNull() || !decoder.readPixels(image.bits(), image.bytesPerLine())) {
    *error =
        image.isNull() ? QStringLiteral("there is not enough memory for it") : decoder.problem();
    return {};
  }
  image = toSRgb(image, profile);
  return hasExif ? upright(image, orientation(file)) : image;
}

QByteArray packJpeg(const QImage& image, QString* error) {
  const QImage flat = image.isNull() ? image : overWhite(image);
  Failure failure{};
  unsigned char* bytes = nullptr;
  unsigned long size = 0;
  if (!flat.isNull() && compress(flat, &failure, &bytes, &size)) {
    const std::unique_ptr<unsigned char, decltype(&std::free)> owner(bytes, &std::free);
    return {reinterpret_cast<const char*>(bytes), qsizetype(size)};
  }
  *error = QStringLiteral("the picture cannot be packed as a JPEG");
  return {};
}

}  // namespace kelvar
