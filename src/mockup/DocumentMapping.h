#pragma once

#include <QStringList>
#include <functional>
#include <stop_token>

#include "mockup/LayerMapping.h"
#include "mockup/LayerSettings.h"
#include "sketch/document/SketchDocument.h"

namespace kelvar {

/// Maps images and artboards onto layers of a document, and repeats earlier mappings of artboards.
/// The document is changed in memory; its owner saves it.
///
/// After a failure, layers may have been filled already: discard the document. Runs on any thread
/// that an `ArtboardRenderer` may run on.
class KELVAR_EXPORT DocumentMapping {
 public:
  explicit DocumentMapping(SketchDocumentRef document) : document_(std::move(document)) {}

  /// The one layer that has this name or identifier and can take a design. Shapes within shape
  /// groups are not considered: the group takes the design.
  Result<SketchLayerRef> layer(const QString& nameOrID) const;
  /// The one artboard that has this name or identifier.
  Result<SketchLayerRef> artboard(const QString& nameOrID) const;

  /// The end of an error message about a layer that does not exist: a list of those that do.
  static QString namesThatExist(const QList<SketchLayerRef>& layers);

  /// Requesting a stop, from any thread, makes a mapping fail early: see
  /// `ArtboardRenderer::setStop`.
  void setStop(const std::stop_token& stop) { stop_ = stop; }

  /// Returns a design, preferably of this size in pixels.
  using Design = std::function<Result<ImageRef>(const QSizeF& size)>;
  /// Fills the layer with the design and stores the settings, except the artboard, in it.
  Result<void> map(const SketchLayerRef& layer, LayerSettings settings, const Design& design);

  /// The same with an artboard of the document in its current state; the layer remembers its
  /// identifier. The artboard is drawn without the images of layers that are not included in
  /// artboards. Fails if the artboards would show each other in a cycle.
  Result<void> mapArtboard(const SketchLayerRef& layer, LayerSettings settings,
                           const SketchLayerRef& artboard);

  /// The last step of both, for an image that was made elsewhere in the same way: fills the layer
  /// with it and remembers the settings.
  Result<void> fill(const SketchLayerRef& layer, const LayerSettings& settings,
                    const ImageRef& image);

  /// The artboard as a design of this size in pixels, without the images of layers that are not
  /// included in artboards.
  Result<ImageRef> draw(const SketchLayer& artboard, const QSizeF& size);

  /// Maps artboards again onto all layers that remember one, each layer after those that its
  /// artboard shows. Returns the layers in that order.
  Result<QList<SketchLayerRef>> refresh();

  /// Draws the preview of the open page again. The preview of an empty page is kept.
  void redrawPreview();

  /// One message for each feature in the artboards that was not drawn as the document specifies.
  const QStringList& warnings() const { return warnings_; }

 private:
  Result<void> refreshLayer(const SketchLayerRef& layer);
  Result<void> mapAndFill(const SketchLayerRef& layer, const LayerSettings& settings,
                          const Design& design);
  Result<void> checkAcyclic(const SketchLayerRef& layer, const LayerSettings& settings,
                            const SketchLayerRef& artboard) const;
  Result<void> checkStop() const;
  void addWarnings(const QStringList& warnings);

  SketchDocumentRef document_;
  std::stop_token stop_;
  QStringList warnings_;
};

}  // namespace kelvar
