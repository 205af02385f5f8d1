#pragma once

#include "mockup/ImageCache.h"
#include "pixels/Result.h"

namespace kelvar {

/// Images of photo and design files, decoded again only when a file has changed.
///
/// A file that no longer exists or is being written can still be shown as it was. One thread at a
/// time.
class KELVAR_EXPORT DesignFiles {
 public:
  /// `rasterizationSize` is for images that can be drawn at any size; empty for their natural one.
  Result<ImageRef> read(const QString& file, const QSizeF& rasterizationSize);
  /// The file's image as it was last read. Null if it never was, or is no longer in memory.
  ImageRef lastRead(const QString& file) const { return cache_.stale(file); }
  /// The next read() decodes the file, even if it looks unchanged.
  void invalidate(const QString& file) { cache_.erase(file); }

 private:
  ImageCache cache_;
};

}  // namespace kelvar
