#pragma once

#include "mockup/DesignFiles.h"
#include "mockup/Mockup.h"

namespace kelvar {

/// Designs from image files on a photo, saved as an arrangement file.
///
/// A design whose file no longer exists or is being written is drawn as it was last read, with a
/// problem reported for its shape.
class KELVAR_EXPORT PhotoMockup : public Mockup {
 public:
  explicit PhotoMockup(Arrangement arrangement) : arrangement_(std::move(arrangement)) {}

  Arrangement arrangement() const override { return arrangement_; }
  bool canChangeShapes() const override { return true; }
  void refresh(const Arrangement::Design& design) override;
  Result<void> save(const Arrangement& arrangement, const QString& path) override;

 private:
  /// The same for the window and for exports.
  Drawing makeDrawing(const Arrangement& arrangement, Purpose purpose,
                      const std::stop_token& stop) override;
  Result<ImageRef> makeDesignImage(const Arrangement::Design& design, int side,
                                   const std::stop_token& stop) override;
  /// Fails if the shape is not drawn, or not with what its design file contains now.
  Result<void> drawShape(const Arrangement& arrangement, const Arrangement::Shape& shape,
                         QImage* pixels);

  Arrangement arrangement_;
  DesignFiles files_;
};

}  // namespace kelvar
