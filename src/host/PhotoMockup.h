#pragma once

#include "host/KeptPictures.h"
#include "host/Mockup.h"

namespace kelvar {

/// Designs from picture files on a photo, saved as an arrangement file.
///
/// Pictures are kept while their files stay as they are. A design whose file has gone, or is being
/// written, is drawn as it last was, with a problem that says so.
class KELVAR_EXPORT PhotoMockup : public Mockup {
 public:
  explicit PhotoMockup(Arrangement arrangement) : arrangement_(std::move(arrangement)) {}

  Arrangement arrangement() const override { return arrangement_; }
  bool canChangeShapes() const override { return true; }
  void refresh(const Arrangement::Design& design) override;
  bool save(const Arrangement& arrangement, const QString& path, QString* error) override;

 private:
  /// The same for the window and for exports.
  Drawing makeDrawing(const Arrangement& arrangement, Purpose purpose,
                      const std::stop_token& stop) override;
  ImageRef makeDesignPicture(const Arrangement::Design& design, int side, QString* error,
                             const std::stop_token& stop) override;
  void drawShape(const Arrangement& arrangement, const Arrangement::Shape& shape, QImage* pixels,
                 Drawing* drawing);

  Arrangement arrangement_;
  KeptPictures kept_;
};

}  // namespace kelvar
