#pragma once

#include <QStringList>
#include <functional>
#include <stop_token>

#include "host/LayerMapping.h"
#include "host/LayerSettings.h"
#include "host/SketchDocument.h"

namespace kelvar {

/// Maps pictures and artboards onto layers of a document, and artboards again that were mapped
/// before. The document is changed in memory; whoever owns it saves it.
///
/// Every failure is a sentence in `*error`. After one, layers may have been filled already: throw
/// the document away. On a thread that an `ArtboardRenderer` could be on.
class KELVAR_EXPORT DocumentMapping {
 public:
  explicit DocumentMapping(SketchDocumentRef document) : document_(std::move(document)) {}

  /// The one layer that has this name or identifier and can take a design; null otherwise. Names of
  /// shapes in shape groups do not count: the group takes the design.
  SketchLayerRef layer(const QString& nameOrID, QString* error) const;
  /// The one artboard that has this name or identifier; null otherwise.
  SketchLayerRef artboard(const QString& nameOrID, QString* error) const;

  /// Of a sentence about one that does not exist, the end that lists those that do.
  static QString namesThatExist(const QList<SketchLayerRef>& layers);

  /// How designs are sampled, and on how many threads, 0 for one each processor.
  void setSampling(warp::Sampling sampling) { sampling_ = sampling; }
  void setThreads(int threads) { threads_ = threads; }
  /// Set off from any thread, it ends a mapping early, which then has failed: see
  /// `ArtboardRenderer::setStop`.
  void setStop(const std::stop_token& stop) { stop_ = stop; }

  /// Fills the layer with the design and remembers the settings, but for the artboard, on it. The
  /// design is asked for at the size in pixels at which it would best be drawn.
  using Design = std::function<ImageRef(const QSizeF& size, QString* error)>;
  bool map(const SketchLayerRef& layer, LayerSettings settings, const Design& design,
           QString* error);

  /// The same with an artboard of the document as it is now, whose identifier is remembered. The
  /// pictures of layers that are not included in artboards are left out of it. Fails where the
  /// artboards would show each other in a circle.
  bool mapArtboard(const SketchLayerRef& layer, LayerSettings settings,
                   const SketchLayerRef& artboard, QString* error);

  /// The last step of either, for a picture that was made elsewhere in the same way: fills the
  /// layer with it and remembers the settings.
  bool fill(const SketchLayerRef& layer, const LayerSettings& settings, const ImageRef& picture,
            QString* error);

  /// The artboard as it serves as a design of this size in pixels, without the pictures of layers
  /// that are not included in artboards. Null when it cannot be drawn.
  ImageRef draw(const SketchLayer& artboard, const QSizeF& size, QString* error);

  /// Maps every artboard again onto the layers that remember one, each after those that it shows.
  /// The layers, in that order.
  bool refresh(QList<SketchLayerRef>* layers, QString* error);

  /// Draws the open page's preview anew. A page with nothing on it keeps the one that it has.
  void redrawPreview();

  /// A sentence for each thing in the artboards that was not drawn as the document wants it.
  const QStringList& warnings() const { return warnings_; }

 private:
  bool refreshLayer(const SketchLayerRef& layer, QString* error);
  bool walk(const SketchLayerRef& layer, const LayerSettings& settings, const Design& design,
            QString* error);
  bool closesNoCircle(const SketchLayerRef& layer, const LayerSettings& settings,
                      const SketchLayerRef& artboard, QString* error) const;
  bool isStopped(QString* error) const;
  void keepWarnings(const QStringList& warnings);

  SketchDocumentRef document_;
  warp::Sampling sampling_ = warp::Sampling::Best;
  int threads_ = 0;
  std::stop_token stop_;
  QStringList warnings_;
};

}  // namespace kelvar
