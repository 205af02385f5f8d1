#include "sketch/document/LayerType.h"

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
  const int behavior = getInt(layer, "groupBehavior");
  return classOf(layer) == u"group" && (behavior == 1 || behavior == 2);
}

bool clipsContent(const SketchJson& layer) {
  constexpr int kCutsNothing = 2;
  return (isSketchArtboard(layer) || isSketchFrame(layer)) &&
         getInt(layer, "clippingBehavior") != kCutsNothing;
}

}  // namespace kelvar
