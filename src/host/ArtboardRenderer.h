#pragma once

#include <QColor>
#include <QSet>
#include <QStringList>
#include <stop_token>

#include "host/SketchDocument.h"
#include "platform/Export.h"
#include "platform/Image.h"

namespace kelvar {

/// What a drawing says that somebody stopped.
constexpr QLatin1StringView kDrawingStopped("the drawing was stopped");

/// Draws artboards, pages and layers of a Sketch document.
///
/// Made for a document and used as often as needed; a document that changed in between is drawn as
/// it is now. Text needs fonts: where there is no application object at all, one without a screen
/// is made for the time of a call, which then has to be on the main thread. Otherwise any one
/// thread for a document.
class KELVAR_EXPORT ArtboardRenderer {
 public:
  /// The longest side of a document's own picture of itself, in pixels.
  static constexpr int kPreviewSide = 2048;

  explicit ArtboardRenderer(SketchDocumentRef document) : document_(std::move(document)) {}

  /// Pictures in fills of the layers with these identifiers are left out, and so are bitmaps among
  /// them: for designs whose own pictures would show themselves.
  void setWithoutPictures(const QSet<QString>& layerIDs) { withoutPictures_ = layerIDs; }

  /// Set off from any thread, it ends a drawing early, and no other is begun: there is no picture
  /// then, and the error is `kDrawingStopped`. The drawing looks at it between layers, between the
  /// fills, shadows, borders and blurs of one, and along large blurs; what it cannot look into is a
  /// single step of the painter, which is kept to seconds.
  void setStop(const std::stop_token& stop) { stop_ = stop; }

  /// The layer alone, `scale` pixels a document unit. An artboard is its frame, with its background
  /// where that is to be exported; a page is what its layers cover; any other layer is what it
  /// covers itself, borders and shadows included, without the masks of its neighbours. The nominal
  /// size is in document units. Null, and `*error` says why, when there is nothing to draw or the
  /// picture would be too large.
  ImageRef render(const SketchLayer& layer, double scale, QString* error);

  /// Where the picture of `render` lies, in pixels from the origin of the layer's own coordinates;
  /// for what is neither an artboard nor a page, of those around it. Empty when there is nothing to
  /// draw, or it is too large.
  QRect pictureRect(const SketchLayer& layer, double scale) const;

  /// The picture that the host stores in a document: the contents of the open page on white, one
  /// pixel a unit, scaled down where a side would pass `kPreviewSide`.
  ImageRef renderPreview(QString* error);

  /// A sentence for each thing that was not drawn as the document wants it, since the last call.
  const QStringList& warnings() const { return warnings_; }

 private:
  QRectF extentOf(const SketchLayer& layer) const;
  ImageRef draw(const SketchLayer& layer, const QRectF& region, double scale,
                const QColor& background, QString* error);

  SketchDocumentRef document_;
  QSet<QString> withoutPictures_;
  std::stop_token stop_;
  QStringList warnings_;
};

}  // namespace kelvar
