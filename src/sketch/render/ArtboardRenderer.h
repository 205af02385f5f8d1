#pragma once

#include <QColor>
#include <QSet>
#include <QStringList>
#include <stop_token>

#include "pixels/Result.h"
#include "platform/Export.h"
#include "platform/image/Image.h"
#include "sketch/document/SketchDocument.h"

namespace kelvar {

/// The message of errors of kind `Stopped`.
constexpr QLatin1StringView kDrawingStopped("the drawing was stopped");

/// Draws artboards, pages and layers of a Sketch document.
///
/// Can be used any number of times; each drawing shows the document as it is at that time. Text
/// requires an application object for its fonts: if there is none, an offscreen one is created for
/// the duration of each call, which must then be on the main thread. Otherwise, use the document's
/// thread.
class KELVAR_EXPORT ArtboardRenderer {
 public:
  explicit ArtboardRenderer(SketchDocumentRef document) : document_(std::move(document)) {}

  /// Omits the image fills of the layers with these identifiers, and the images of bitmaps among
  /// these layers. This is for designs that would otherwise contain themselves.
  void setWithoutImages(const QSet<QString>& layerIDs) { withoutImages_ = layerIDs; }

  /// Makes the fonts in a folder available to all drawings of this process. Fails if there are
  /// none. Call it before drawing on other threads.
  static Result<void> addFonts(const QString& folder);

  /// Requesting a stop, from any thread, ends a drawing early with an error of kind `Stopped`, and
  /// prevents further drawings. The token is checked between layers, between the fills, shadows,
  /// borders and blurs of a layer, and during large blurs. A single step of the painter cannot be
  /// interrupted; it is limited to a few seconds.
  void setStop(const std::stop_token& stop) { stop_ = stop; }

  /// Draws the layer alone, at `scale` pixels per document unit. For an artboard, the image shows
  /// its frame, with the background if it is to be exported; for a page, the area that its layers
  /// cover; for any other layer, the area that it covers, including borders and shadows, without
  /// masks by its neighbors. The nominal size is in document units. Fails if there is nothing to
  /// draw or the image would be too large.
  Result<ImageRef> render(const SketchLayer& layer, double scale);

  /// What an image of the layer shows, in document units, in the coordinates that `imageRect`
  /// describes. Empty if there is nothing to draw.
  QRectF coveredRect(const SketchLayer& layer) const;

  /// The position and size of the image from `render`, in pixels. The position is relative to the
  /// origin of the layer's own coordinates for an artboard or a page, and of its parent's
  /// coordinates for any other layer. Empty if there is nothing to draw or the image would be too
  /// large.
  QRect imageRect(const SketchLayer& layer, double scale) const;

  /// The preview that Sketch stores in a document: the contents of the open page on white or, from
  /// Sketch 95 on, an export of the first artboard. One pixel per document unit, scaled down if a
  /// side would exceed 2048 pixels (1024 in Sketch 91 and 92).
  Result<ImageRef> renderPreview();

  /// Features that the last call did not draw as the document specifies, one sentence each.
  const QStringList& warnings() const { return warnings_; }

 private:
  struct Drawing;
  struct Raster;

  static Result<void> checkRaster(const SketchLayer& layer, const Raster& raster);
  Result<ImageRef> draw(Drawing* drawing, const Raster& raster, const QColor& background);

  SketchDocumentRef document_;
  QSet<QString> withoutImages_;
  std::stop_token stop_;
  QStringList warnings_;
};

}  // namespace kelvar
