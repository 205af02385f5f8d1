#pragma once

#include <QByteArray>
#include <QImage>
#include <QSvgRenderer>
#include <optional>

#include "pixels/Result.h"
#include "platform/image/OffscreenGuiApplication.h"

namespace kelvar {

/// Draws only an SVG's own contents: external images, style sheets and entities are removed before
/// the renderer sees them, and so are embedded images other than bitmaps, which could refer to
/// others. The caller must limit time and memory.
class SvgDrawing {
 public:
  /// Fails when the file cannot be drawn.
  Result<void> load(const QByteArray& file);
  QSizeF naturalSize() const { return renderer_->defaultSize(); }
  /// Draws the SVG over all of `*image`, which must be transparent.
  void draw(QImage* image);

 private:
  std::optional<OffscreenGuiApplication> fonts_;
  std::optional<QSvgRenderer> renderer_;
};

}  // namespace kelvar
