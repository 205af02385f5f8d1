#pragma once

#include <QImage>
#include <functional>
#include <memory>
#include <stop_token>

#include "panel/RenderWorker.h"

namespace kelvar::cli {

/// Makes thumbnails of designs on the worker's thread; they arrive on the main thread.
class ThumbnailLoader {
 public:
  /// The worker outlives the loader's last call.
  explicit ThumbnailLoader(RenderWorker* worker) : worker_(worker) {}

  /// The longer side, in pixels.
  void setSide(int pixels) { side_ = pixels; }

  /// Makes the thumbnail of one image file.
  void load(const std::shared_ptr<Mockup>& mockup, const QString& file,
            const std::function<void(const Result<QImage>& thumbnail)>& done);
  /// Makes the thumbnails of the designs, and cancels those of an earlier call. Leaves out designs
  /// that cannot be shown.
  void loadAll(const std::shared_ptr<Mockup>& mockup, const QList<Arrangement::Design>& designs,
               const std::function<void(const QString& design, const QImage& thumbnail)>& done);
  /// Cancels what loadAll() has not made yet.
  void cancel() { stop_.request_stop(); }

 private:
  RenderWorker* worker_;
  int side_ = 128;
  std::stop_source stop_;
};

}  // namespace kelvar::cli
