#include "platform/WebPFile.h"

#include <webp/decode.h>
#include <webp/demux.h>
#include <webp/encode.h>

#include <memory>

#include "platform/AlphaPixels.h"
#include "platform/ColorProfile.h"
#include "platform/PictureLimits.h"

namespace kelvar {

namespace {

/// On libwebp's scale of 0 to 9. The least effort takes a quarter of the time but makes flat
/// designs twice as large; more of it gains a few per cent.
constexpr int kEffort = 1;

QByteArray profileOf(const QByteArray& file) {
  const WebPData data{reinterpret_cast<const uint8_t*>(file.constData()), size_t(file.size())};
  const std::unique_ptr<WebPDemuxer, decltype(&WebPDemuxDelete)> demuxer(WebPDemux(&data),
                                                                         &WebPDemuxDelete);
  WebPChunkIterator chunk;
  if (!demuxer || !WebPDemuxGetChunk(demuxer.get(), "ICCP", 1, &chunk)) return {};
  const QByteArray profile(reinterpret_cast<const char*>(chunk.chunk.bytes),
                           qsizetype(chunk.chunk.size));
  WebPDemuxReleaseChunkIterator(&chunk);
  return profile;
}

QString problem(VP8StatusCode code) {
  return code == VP8_STATUS_NOT_ENOUGH_DATA || code == VP8_STATUS_SUSPENDED
             ? QStringLiteral("the WebP is cut short")
             : QStringLiteral("the WebP is damaged");
}

void premultiplyInPlace(QImage* image) {
  const int width = image->width();
  for (int y = 0; y < image->height(); ++y) {
    auto* row = reinterpret_cast<uint32_t*>(image->scanLine(y));
    for (int x = 0; x < width; ++x) row[x] = premultiplied(row[x]);
  }
}

struct Packing {
  Packing() { WebPMemoryWriterInit(&writer); }
  ~Packing() {
    WebPPictureFree(&picture);
    WebPMemoryWriterClear(&writer);
  }
  Packing(const Packing&) = delete;
  Packing& operator=(const Packing&) = delete;

  WebPConfig config;
  WebPPicture picture;
  WebPMemoryWriter writer;
};

/// Straight from the premultiplied rows, without a second picture in between.
bool fillPicture(const QImage& image, WebPPicture* picture) {
  picture->use_argb = 1;
  picture->width = image.width();
  picture->height = image.height();
  if (!WebPPictureAlloc(picture)) return false;
  for (int y = 0; y < image.height(); ++y) {
    const auto* in = reinterpret_cast<const uint32_t*>(image.constScanLine(y));
    uint32_t* out = picture->argb + ptrdiff_t(y) * picture->argb_stride;
    for (int x = 0; x < picture->width; ++x) out[x] = unpremultiplied(in[x]);
  }
  return true;
}

}  // namespace

QImage readWebP(const QByteArray& file, QString* error) {
  const auto* bytes = reinterpret_cast<const uint8_t*>(file.constData());
  const auto size = static_cast<size_t>(file.size());
  WebPDecoderConfig config;
  WebPInitDecoderConfig(&config);
  const VP8StatusCode known = WebPGetFeatures(bytes, size, &config.input);
  if (known != VP8_STATUS_OK) {
    *error = problem(known);
    return {};
  }
  *error = config.input.has_animation ? QStringLiteral("it is an animation, not one picture")
                                      : sizeObjection(config.input.width, config.input.height);
  if (!error->isEmpty()) return {};

  QImage image(config.input.width, config.input.height, QImage::Format_ARGB32_Premultiplied);
  if (image.isNull()) {
    *error = QStringLiteral("there is not enough memory for it");
    return {};
  }
  config.options.use_threads = 1;
  config.output.colorspace = MODE_BGRA;
  config.output.is_external_memory = 1;
  config.output.u.RGBA = {image.bits(), int(image.bytesPerLine()), size_t(image.sizeInBytes())};
  const VP8StatusCode code = WebPDecode(bytes, size, &config);
  if (code != VP8_STATUS_OK) {
    *error = problem(code);
    return {};
  }
  if (config.input.has_alpha) premultiplyInPlace(&image);
  return toSRgb(image, profileOf(file));
}

QByteArray packWebP(const QImage& image, QString* error) {
  if (image.width() > WEBP_MAX_DIMENSION || image.height() > WEBP_MAX_DIMENSION) {
    *error = QStringLiteral(
                 "a WebP has at most %1 pixels a side and this picture is %2 x %3; "
                 "write a PNG instead")
                 .arg(WEBP_MAX_DIMENSION)
                 .arg(image.width())
                 .arg(image.height());
    return {};
  }
  Packing packing;
  const bool ready = WebPConfigInit(&packing.config) && WebPPictureInit(&packing.picture) &&
                     WebPConfigLosslessPreset(&packing.config, kEffort) &&
                     fillPicture(image, &packing.picture);
  packing.config.thread_level = 1;
  packing.picture.writer = &WebPMemoryWrite;
  packing.picture.custom_ptr = &packing.writer;
  if (ready && WebPEncode(&packing.config, &packing.picture)) {
    return {reinterpret_cast<const char*>(packing.writer.mem), qsizetype(packing.writer.size)};
  }
  *error = QStringLiteral("the picture cannot be packed as a WebP");
  return {};
}

}  // namespace kelvar
