#pragma once

#include <QSizeF>
#include <QString>
#include <functional>
#include <optional>

#include "platform/Export.h"
#include "platform/Image.h"

namespace kelvar {

/// Picture files: PNG, JPEG, WebP and SVG in; PNG, JPEG and WebP out.
///
/// Every failure is one sentence for the person who gave the path: what was wrong, where, and what
/// to do where that is not plain. Safe to call from any thread. An SVG is drawn by a process of its
/// own, kelvar-svg, which is installed with the library; it gets 10 s and 1 GiB of memory.
class KELVAR_EXPORT ImageFile {
 public:
  /// No side longer than this, in pixels.
  static constexpr int kMaxSide = 32768;
  /// No picture whose pixels, four bytes each, take more than this. Both limits are checked against
  /// the file's header before anything is allocated.
  static constexpr qint64 kMaxBytes = qint64{1} << 30;

  struct ReadOptions {
    /// From the natural size of an SVG, the size in pixels at which it is drawn (each side is
    /// rounded up to whole pixels). When empty, the natural size. Not called for bitmaps.
    std::function<QSizeF(const QSizeF& naturalSize)> vectorSize;
  };

  /// The picture in the file, or null and a sentence in `*error`. A path of "-" is standard input.
  ///
  /// The format is told by the content, never by the ending. A colour profile that is not sRGB is
  /// converted to sRGB, no profile is taken as sRGB. A JPEG is turned upright as its EXIF
  /// orientation says. An SVG draws what it carries itself and nothing that it refers to elsewhere.
  /// The nominal size is an SVG's natural size and a bitmap's size in pixels. A file that is
  /// damaged or cut short is a failure, not half a picture.
  static ImageRef read(const QString& path, const ReadOptions& options, QString* error);

  /// The picture in these bytes. `*error` says what is wrong with them, not where they are from.
  static ImageRef fromBytes(const QByteArray& bytes, const ReadOptions& options, QString* error);

  /// Writes the picture, whole or not at all: under a temporary name beside its place, flushed to
  /// the disk, then renamed. After a failure what stood at `path` still stands there.
  ///
  /// The ending tells the format: png, jpg, jpeg or webp in any case. "-" is standard output, as
  /// PNG. JPEG is flattened over white and written at quality 92 without colour subsampling, which
  /// would smear the coloured text of a design. WebP is lossless: what Kelvar writes is often an
  /// input of the next step.
  static bool write(const Image& image, const QString& path, QString* error);

  /// Whether the path's ending names a format that write() knows; true for "-" and for devices,
  /// which get PNG.
  static bool hasKnownEnding(const QString& path);

  /// A sentence when write() to `path` cannot succeed, to be asked before the work is done: an
  /// unknown ending, a missing folder, a folder that cannot be written to, a folder's own name.
  /// None when nothing speaks against it, which is not yet a promise.
  static std::optional<QString> cannotWrite(const QString& path);
};

/// Whether a picture of this many pixels can be held: at least one, and within the limits of
/// picture files. False for not a number.
inline bool isHoldable(double width, double height) {
  return width >= 1 && height >= 1 && width <= ImageFile::kMaxSide &&
         height <= ImageFile::kMaxSide && width * height * 4 <= double(ImageFile::kMaxBytes);
}

}  // namespace kelvar
