#include "host/SketchKind.h"

namespace kelvar {

bool isSketchShape(const SketchJson& layer) {
  const QString kind = classOf(layer);
  return kind == u"rectangle" || kind == u"oval" || kind == u"triangle" || kind == u"polygon" ||
         kind == u"star" || kind == u"shapePath";
}

bool isSketchArtboard(const SketchJson& layer) {
  const QString kind = classOf(layer);
  return kind == u"artboard" || kind == u"symbolMaster";
}

bool isSketchFrame(const SketchJson& layer) {
  const int behaviour = integerIn(layer, "groupBehavior");
  return classOf(layer) == u"group" && (behaviour == 1 || behaviour == 2);
}

bool cutsItsContents(const SketchJson& layer) {
  constexpr int kCutsNothing = 2;
  return (isSketchArtboard(layer) || isSketchFrame(layer)) &&
         integerIn(layer, "clippingBehavior") != kCutsNothing;
}

}  // namespace kelvar
