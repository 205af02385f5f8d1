#pragma once

#include "platform/image/Image.h"
#include "ui/NSControl.h"

namespace kelvar {

/// The view of an image.
class KELVAR_EXPORT NSImageView : public NSControl {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  using NSControl::NSControl;
  static std::shared_ptr<NSImageView> initWithFrame(const QRectF& frame);

  /// Null for none.
  ImageRef image() const;
  void setImage(const ImageRef& image);
};

}  // namespace kelvar
