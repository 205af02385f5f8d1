#include "panel/ThumbnailLoader.h"

#include "platform/files/FileName.h"

namespace kelvar::cli {
namespace {

Result<QImage> makeThumbnail(Mockup& mockup, const Arrangement::Design& design, int side,
                             const std::stop_token& stop = {}) {
  if (stop.stop_requested()) return failure(Error::Kind::Stopped, "the thumbnail was canceled");
  return mockup.designImage(design, side, stop).map([&](const ImageRef& image) {
    return ImagePyramid::within(image->pixels(), side);
  });
}

}  // namespace

void ThumbnailLoader::load(const std::shared_ptr<Mockup>& mockup, const QString& file,
                           const std::function<void(const Result<QImage>& thumbnail)>& done) {
  const auto make = [mockup, file, side = side_] {
    return makeThumbnail(*mockup, {{}, {}, absoluteFileName(file)}, side);
  };
  worker_->run(make, done);
}

void ThumbnailLoader::loadAll(
    const std::shared_ptr<Mockup>& mockup, const QList<Arrangement::Design>& designs,
    const std::function<void(const QString& design, const QImage& thumbnail)>& done) {
  cancel();
  stop_ = std::stop_source();
  for (const Arrangement::Design& design : designs) {
    const auto make = [mockup, design, side = side_, stop = stop_.get_token()] {
      return makeThumbnail(*mockup, design, side, stop);
    };
    worker_->run(make, [done, id = design.id](const Result<QImage>& thumbnail) {
      if (thumbnail) done(id, *thumbnail);
    });
  }
}

}  // namespace kelvar::cli
