#include "pixels/codec/WebP.h"

#include <webp/decode.h>
#include <webp/demux.h>
#include <webp/encode.h>

#include <cassert>
#include <memory>
#include <utility>

#include "pixels/ImageLimits.h"
#include "pixels/codec/AlphaPremultiply.h"
#include "pixels/threads/ThreadPool.h"

namespace kelvar {

namespace {

/// On libwebp's scale of 0 to 9. 0 takes a quarter of the time but doubles the size of flat
/// designs; higher ones gain a few percent.
constexpr int kEffort = 1;

using Bytes = std::span<const uint8_t>;

std::vector<uint8_t> profileOf(Bytes file) {
  const WebPData data{file.data(), file.size()};
  const std::unique_ptr<WebPDemuxer, decltype(&WebPDemuxDelete)> demuxer(WebPDemux(&data),
                                                                         &WebPDemuxDelete);
  WebPChunkIterator chunk;
  if (!demuxer || !WebPDemuxGetChunk(demuxer.get(), "ICCP", 1, &chunk)) return {};
  const std::vector<uint8_t> profile(chunk.chunk.bytes, chunk.chunk.bytes + chunk.chunk.size);
  WebPDemuxReleaseChunkIterator(&chunk);
  return profile;
}

tl::unexpected<Error> error(VP8StatusCode code) {
  const bool isCut = code == VP8_STATUS_NOT_ENOUGH_DATA || code == VP8_STATUS_SUSPENDED;
  return failure(Error::Kind::Damaged, isCut ? "the WebP is cut short" : "the WebP is damaged");
}

void premultiplyInPlace(PixelBuffer* image) {
  for (int y = 0; y < image->height(); ++y) {
    auto* row = reinterpret_cast<uint32_t*>(image->row(y));
    for (int x = 0; x < image->width(); ++x) row[x] = premultiplied(row[x]);
  }
}

/// What libwebp encodes with, released at the end.
struct Encoding {
  Encoding() { WebPMemoryWriterInit(&writer); }
  ~Encoding() {
    WebPPictureFree(&picture);
    WebPMemoryWriterClear(&writer);
  }
  Encoding(const Encoding&) = delete;
  Encoding& operator=(const Encoding&) = delete;

  WebPConfig config;
  WebPPicture picture;
  WebPMemoryWriter writer;
};

/// Converts the premultiplied rows without a second image in between.
bool fillPicture(const ConstPixelView& image, WebPPicture* picture) {
  picture->use_argb = 1;
  picture->width = image.width;
  picture->height = image.height;
  if (!WebPPictureAlloc(picture)) return false;
  for (int y = 0; y < image.height; ++y) {
    const auto* in = reinterpret_cast<const uint32_t*>(image.row(y));
    uint32_t* out = picture->argb + ptrdiff_t(y) * picture->argb_stride;
    for (int x = 0; x < picture->width; ++x) out[x] = unpremultiplied(in[x]);
  }
  return true;
}

}  // namespace

Result<DecodedImage> readWebP(Bytes file, int threads) {
  WebPDecoderConfig config;
  WebPInitDecoderConfig(&config);
  const VP8StatusCode known = WebPGetFeatures(file.data(), file.size(), &config.input);
  if (known != VP8_STATUS_OK) return error(known);
  if (config.input.has_animation) {
    return failure(Error::Kind::Unsupported, "it is an animation, not one image");
  }
  const int width = config.input.width, height = config.input.height;
  if (const auto valid = validateImageSize(width, height); !valid) {
    return tl::unexpected(valid.error());
  }
  auto image = PixelBuffer::create(width, height);
  if (!image) return tl::unexpected(image.error());
  config.options.use_threads = allowedThreads(threads) > 1;
  config.output.colorspace = MODE_BGRA;
  config.output.is_external_memory = 1;
  config.output.u.RGBA = {image->row(0), int(image->stride()),
                          size_t(image->stride()) * size_t(height)};
  const VP8StatusCode code = WebPDecode(file.data(), file.size(), &config);
  if (code != VP8_STATUS_OK) return error(code);
  if (config.input.has_alpha) premultiplyInPlace(&*image);
  return DecodedImage{std::move(*image), profileOf(file)};
}

Result<void> writeWebP(const ConstPixelView& image, const ByteSink& sink, int threads) {
  assert(image.width > 0 && image.height > 0 && image.format == PixelFormat{});
  if (image.width > WEBP_MAX_DIMENSION || image.height > WEBP_MAX_DIMENSION) {
    return failure(Error::Kind::Unsupported,
                   "a WebP has at most " + std::to_string(WEBP_MAX_DIMENSION) +
                       " pixels per side and this image is " + std::to_string(image.width) + " x " +
                       std::to_string(image.height) + "; write a PNG instead");
  }
  Encoding encoding;
  const bool isReady = WebPConfigInit(&encoding.config) && WebPPictureInit(&encoding.picture) &&
                       WebPConfigLosslessPreset(&encoding.config, kEffort) &&
                       fillPicture(image, &encoding.picture);
  encoding.config.thread_level = allowedThreads(threads) > 1;
  encoding.picture.writer = &WebPMemoryWrite;
  encoding.picture.custom_ptr = &encoding.writer;
  if (isReady && WebPEncode(&encoding.config, &encoding.picture)) {
    return sink({encoding.writer.mem, encoding.writer.size});
  }
  return failure(Error::Kind::Unsupported, "the image cannot be encoded as a WebP");
}

}  // namespace kelvar
