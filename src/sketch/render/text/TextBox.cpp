#include "sketch/render/text/TextBox.h"

#include <algorithm>
#include <cmath>

#include "sketch/document/SketchJson.h"
#include "sketch/render/symbols/Resizing.h"

namespace kelvar::render {

bool TextBox::showsHeight(double height) const {
  return fitsText && behavior != Behavior::Fixed && std::abs(size.height() - height) < 0.75;
}

bool TextBox::hasInkInside(double height, qsizetype lines) const {
  if (ink.isEmpty() || !fitsText || lines <= 0) return false;
  const double overhang = 0.5 * height / double(lines);
  return QRectF(0, 0, size.width(), std::max(size.height(), height))
      .adjusted(-overhang, -overhang, overhang, overhang)
      .contains(ink);
}

TextBox readTextBox(const SketchJson& layer) {
  const SketchJson& style = get(get(layer, "style"), "textStyle");
  const int vertical =
      getInt(style, "verticalAlignment",
             getInt(get(style, "encodedAttributes"), "textStyleVerticalAlignmentKey"));
  const bool isOld = getInt(layer, "lineSpacingBehaviour") < 2;
  return {.size = getRect(layer, "frame").size(),
          .behavior = TextBox::Behavior(std::clamp(getInt(layer, "textBehaviour"), 0, 2)),
          .vertical = TextBox::Vertical(std::clamp(vertical, 0, 2)),
          .hasOldLineSpacing = isOld,
          .fitsText = !getBool(layer, kHasForeignFrame),
          .path = {},
          // Old documents have the lines' extents in its place.
          .ink = isOld ? QRectF() : getTextRect(layer, "glyphBounds")};
}

}  // namespace kelvar::render
