#pragma once

#include <QByteArray>
#include <QImage>
#include <QSvgRenderer>
#include <optional>

#include "platform/FontsAtHand.h"

namespace kelvar {

/// An SVG that draws only what it carries: pictures, style sheets and entities from elsewhere are
/// left out before the renderer sees them, and so are embedded pictures that are no bitmaps, which
/// could refer on. Trusts the design with its time and memory: whoever calls sets the limits.
class SvgDrawing {
 public:
  /// None when it can be drawn, or why not.
  const char* load(const QByteArray& file);
  QSizeF naturalSize() const { return renderer_->defaultSize(); }
  /// Over the whole of `*image`, which is clear before.
  void draw(QImage* image);

 private:
  std::optional<FontsAtHand> fonts_;
  std::optional<QSvgRenderer> renderer_;
};

}  // namespace kelvar
