#pragma once

#include <QByteArray>
#include <QSizeF>
#include <QString>
#include <functional>

#include "pixels/ImageLimits.h"
#include "pixels/Result.h"
#include "platform/Export.h"
#include "platform/image/Image.h"

namespace kelvar {

/// Image files: PNG, JPEG, WebP and SVG are read; PNG, JPEG and WebP are written.
///
/// Error messages are for the user who gave the path: what was wrong, where, and what to do about
/// it unless that is obvious. Safe from any thread. An SVG is drawn by a separate process,
/// kelvar-svg, which is installed with the library and may use 10 s and 1 GiB of memory.
class KELVAR_EXPORT ImageFile {
 public:
  /// The limits of pixels/ImageLimits.h.
  static constexpr int kMaxSide = kMaxImageSide;
  static constexpr qint64 kMaxBytes = kMaxImageBytes;

  struct ReadOptions {
    /// Returns the size in pixels at which to draw an SVG, given its natural size. Each side is
    /// rounded up to whole pixels. If empty, SVGs are drawn at their natural size. Not called for
    /// bitmaps.
    std::function<QSizeF(const QSizeF& naturalSize)> rasterizationSize;
  };

  ImageFile() = delete;

  /// The image in the file; a path of "-" is standard input.
  ///
  /// The content determines the format, not the extension. Colors are converted to sRGB from the
  /// profile in the file; without one, they are read as sRGB. A JPEG is turned upright according to
  /// its EXIF orientation. An SVG draws only its own contents, not external resources. The nominal
  /// size is an SVG's natural size and a bitmap's size in pixels. A damaged or truncated file is an
  /// error; no partial image is returned.
  static Result<ImageRef> read(const QString& path, const ReadOptions& options);

  /// The image in these bytes. Error messages do not say where the bytes come from.
  static Result<ImageRef> fromBytes(const QByteArray& bytes, const ReadOptions& options);

  /// Writes the image atomically: to a temporary file in the same folder, which is flushed to the
  /// disk and then renamed. After a failure, the file at `path` is unchanged.
  ///
  /// The extension determines the format: png, jpg, jpeg or webp, in upper or lower case. "-" is
  /// standard output, as PNG. JPEG is flattened over white and written at quality 92 without chroma
  /// subsampling, which would smear the colored text of a design. WebP is lossless, because
  /// Kelvar's output is often the input of another step. The bytes do not depend on the number of
  /// threads.
  static Result<void> write(const Image& image, const QString& path);

  /// The bytes of a PNG file of a valid image.
  static QByteArray toPng(const Image& image);

  /// Whether write() knows the path's extension; true for "-" and for devices, which get PNG.
  static bool hasSupportedExtension(const QString& path);

  /// Call before starting work: fails if write() to `path` could not succeed because of an unknown
  /// extension, a missing or read-only folder, or a folder with that name. Success does not
  /// guarantee that write() will succeed.
  static Result<void> checkWritable(const QString& path);
};

}  // namespace kelvar
