#include "ui/NSImageView.h"

#include "runtime/ClassInfo.h"
#include "ui/ImageView.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&NSImageView::staticClassInfo);

}  // namespace

const ClassInfo& NSImageView::staticClassInfo() {
  using V = NSImageView;
  static const ClassInfo kClass =
      ClassInfoBuilder<V, NSControl>("NSImageView")
          .initializer(
              "init", [] { return V::initWithFrame({}); }, "Creates an image view of size zero.")
          .initializer("initWithFrame:", &V::initWithFrame, "Creates an image view without image.")
          .property("image", &V::image, &V::setImage,
                    "The image, which is centered and scaled down to fit, or nil.");
  return kClass;
}

std::shared_ptr<NSImageView> NSImageView::initWithFrame(const QRectF& frame) {
  return std::static_pointer_cast<NSImageView>(View::adopt(new ImageView, frame));
}

ImageRef NSImageView::image() const {
  const auto* const view = qobject_cast<ImageView*>(widget());
  return view ? view->image() : nullptr;
}

void NSImageView::setImage(const ImageRef& image) {
  if (auto* const view = qobject_cast<ImageView*>(widget())) view->setImage(image);
}

}  // namespace kelvar
