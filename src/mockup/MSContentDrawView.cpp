#include "mockup/MSContentDrawView.h"

#include <QRectF>

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

using Self = MSContentDrawView;

const ClassInfo::Registration kRegistered(&MSContentDrawView::staticClassInfo);

void ignore(Self&) {}
void ignoreRect(Self&, const QRectF&) {}
void ignoreAnimated(Self&, const QRectF&, bool) {}

}  // namespace

const ClassInfo& MSContentDrawView::staticClassInfo() {
  constexpr const char* kNothing = "Does nothing, as there is no canvas.";
  static const ClassInfo kClass = ClassInfoBuilder<Self>("MSContentDrawView")
                                      .operation("refresh", ignore, kNothing)
                                      .operation("zoomToSelection", ignore, kNothing)
                                      .operation("zoomToFitRect:", ignoreRect, kNothing)
                                      .operation("centerRect:", ignoreRect, kNothing)
                                      .operation("centerRect:animated:", ignoreAnimated, kNothing);
  return kClass;
}

}  // namespace kelvar
