#pragma once

#include <QHash>
#include <QTransform>

#include "mockup/DocumentChoice.h"
#include "mockup/Mockup.h"
#include "mockup/MockupLayer.h"
#include "pixels/Result.h"

namespace kelvar {

/// The parts of a Sketch document that matter to a mockup, as they were when it was opened: the
/// artboards to show, their four-cornered layers, and the designs.
///
/// A page counts as an artboard if such layers lie on the page itself, or if the document has no
/// artboard. Shapes and artboards are identified by the layers' identifiers, with a suffix if two
/// layers have the same one.
class DocumentContents {
 public:
  /// An artboard or a page as the background of its shapes.
  struct Backdrop {
    Mockup::Artboard artboard;
    SketchLayerRef layer;
    /// Pixels per point in the window.
    double scale = 1;
    /// From the layer's coordinates to the pixels of its image in the window.
    QTransform toImage{};
  };

  /// Reads the contents; `path` is the document's file.
  DocumentContents(SketchDocumentRef document, const QString& path);

  /// As the document was opened.
  const Arrangement& arrangement() const { return arrangement_; }
  const QList<Backdrop>& backdrops() const { return backdrops_; }
  /// Null if there is none with that identifier.
  const Backdrop* backdrop(const QString& id) const;
  /// The layer of the shape with that identifier. Null if there is none.
  const MockupLayer* layer(const QString& shape) const;
  /// The artboard or bitmap that is the design with that identifier. Null if there is none.
  SketchLayerRef designLayer(const QString& design) const { return designLayers_.value(design); }

  /// Makes the arrangement show the chosen artboard, and returns the identifiers of the chosen
  /// shapes. Fails if the document lacks an artboard or layer that `choice` names, or cannot show
  /// it.
  Result<QStringList> choose(const DocumentChoice& choice);

 private:
  void readBackdrops();
  void addBackdrop(const SketchLayerRef& layer);
  void readDesigns();
  void addDesign(const SketchLayerRef& layer);
  void readShapes(const Backdrop& backdrop);
  Arrangement::Shape readShape(const MockupLayer& layer, const Backdrop& backdrop);
  Result<QList<SketchLayerRef>> layersNamed(const QStringList& names) const;
  /// The identifier of the backdrop to show for the choice.
  Result<QString> artboardFor(const DocumentChoice& choice,
                              const QList<SketchLayerRef>& layers) const;
  /// The identifiers; null for layers that are not shown.
  QString backdropOf(const SketchLayerRef& layer) const;
  QString shapeOf(const SketchLayerRef& layer) const;
  QString mostLikelyArtboard() const;

  SketchDocumentRef document_;
  Arrangement arrangement_;
  QList<Backdrop> backdrops_;
  /// The identifiers in use, and how often each was requested.
  QHash<QString, int> backdropIds_;
  QHash<QString, int> shapeIds_;
  QHash<QString, SketchLayerRef> designLayers_;
  QHash<QString, std::shared_ptr<const MockupLayer>> layers_;
};

}  // namespace kelvar
