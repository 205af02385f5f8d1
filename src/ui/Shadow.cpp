#include "ui/Shadow.h"

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&Shadow::staticClassInfo);

}  // namespace

const ClassInfo& Shadow::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<Shadow>("NSShadow")
          .initializer(
              "init", [] { return std::make_shared<Shadow>(); },
              "Creates a shadow without a color, which is invisible.")
          .property("shadowOffset", &Shadow::offset, &Shadow::setOffset,
                    "How far the shadow is moved, in points; a positive height moves it up.")
          .property("shadowBlurRadius", &Shadow::blurRadius, &Shadow::setBlurRadius,
                    "The blur radius in points, twice the standard deviation of the Gaussian.")
          .property("shadowColor", &Shadow::color, &Shadow::setColor,
                    "The shadow's color, or nil for no shadow.");
  return kClass;
}

}  // namespace kelvar
