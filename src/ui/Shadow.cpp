#include "ui/Shadow.h"

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&Shadow::theClass);

}  // namespace

const ClassInfo& Shadow::theClass() {
  static const ClassInfo kClass =
      Description<Shadow>("NSShadow")
          .initialiser("init", [] { return std::make_shared<Shadow>(); })
          .property("shadowOffset", &Shadow::offset, &Shadow::setOffset)
          .property("shadowBlurRadius", &Shadow::blurRadius, &Shadow::setBlurRadius)
          .property("shadowColor", &Shadow::color, &Shadow::setColor);
  return kClass;
}

}  // namespace kelvar
