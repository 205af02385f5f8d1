#pragma once

#include <QHash>
#include <QVariantMap>

#include "host/DocumentMapping.h"
#include "host/KeptPictures.h"
#include "host/Mockup.h"

namespace kelvar {

class MockupLayer;

/// The four-cornered layers on the artboards of a Sketch document, which take the document's
/// artboards, its bitmaps, and picture files as designs. A page counts as an artboard where such
/// layers lie on the page itself, and where there is no artboard at all.
///
/// What is chosen for a layer is mapped onto it in memory when it is next drawn or saved, and
/// remembered on it. A layer for which the arrangement says what it said at the opening is again,
/// member for member, what it was. Shapes and artboards are told apart by the layers' identifiers,
/// with something behind them where two have the same.
class KELVAR_EXPORT DocumentMockup : public Mockup {
 public:
  /// Names or identifiers of what is to be shown and selected.
  struct Choice {
    /// Empty: that of the layers, or else the first with a shape in perspective.
    QString artboard{};
    QStringList layers{};
    /// Takes the place of `artboard` where that is empty, if the document has it.
    QString artboardBefore{};
  };

  /// Null and a sentence when there is no such document, artboard or layer.
  static std::shared_ptr<DocumentMockup> open(const QString& path, const Choice& choice,
                                              QString* error);
  ~DocumentMockup() override;

  Arrangement arrangement() const override { return opened_; }
  QList<Artboard> artboards() const override;
  bool canChangeShapes() const override { return false; }
  /// An artboard is mapped again as it is now.
  void refresh(const Arrangement::Design& design) override;
  /// Refuses a document in which any shape would not show its design.
  bool save(const Arrangement& arrangement, const QString& path, QString* error) override;

  /// The shapes that were asked for.
  const QStringList& chosenShapes() const { return chosen_; }
  /// See `Bundle`.
  QVariantMap hostInformation() const { return document_->hostInformation(); }

  /// See `SketchDocument`.
  bool hasChangedOnDisk(const QString& path) const;
  void disregardDisk();

 private:
  struct Ground {
    Artboard artboard;
    SketchLayerRef layer;
    /// Pixels a point in the window.
    double scale = 1;
    /// From the layer's coordinates to those of its picture in the window.
    QTransform toPicture{};
  };

  /// What the document shows on a layer.
  struct Shown {
    Arrangement::Shape shape;
    /// The design file's picture, where it comes from one.
    ImageRef picture;
    /// Why it cannot be shown, or else why it may not be up to date.
    QString problem;
    QString doubt;
  };

  DocumentMockup() = default;
  /// In the window two pixels a point where that is no huge picture; in exports as many as the
  /// finest of its shapes asks for. All shapes are in both.
  Drawing makeDrawing(const Arrangement& arrangement, Purpose purpose,
                      const std::stop_token& stop) override;
  ImageRef makeDesignPicture(const Arrangement::Design& design, int side, QString* error,
                             const std::stop_token& stop) override;
  void readGrounds();
  void addGround(const SketchLayerRef& layer);
  void readDesigns();
  void readShapes(const Ground& ground);
  Arrangement::Shape readShape(const MockupLayer& layer, const Ground& ground);
  /// What is shown and selected at first. Why it cannot be, or none.
  QString choose(const Choice& choice);
  /// The identifiers here; null for what is not shown.
  QString groundOf(const SketchLayerRef& artboard) const;
  QString shapeOf(const SketchLayerRef& layer) const;
  QString mostLikelyArtboard() const;
  /// Null when there is none of that identifier.
  const Ground* ground(const QString& id) const;
  /// Brings the document up to date, or as far as it gets until it is stopped.
  void apply(const Arrangement& arrangement, const std::stop_token& stop);
  /// The picture file's picture; null for other designs, and where it never could be read.
  ImageRef filePicture(const Arrangement& arrangement, const Arrangement::Shape& shape,
                       QString* problem);
  /// Puts the design of the shape onto the layer. Why it cannot, or none.
  QString show(const Arrangement::Shape& shape, const ImageRef& filePicture,
               const std::stop_token& stop);
  QString keepPicture(const MockupLayer& layer, const Arrangement::Shape& shape) const;
  double exportScale(const Arrangement& arrangement) const;

  SketchDocumentRef document_;
  QList<Ground> grounds_;
  Arrangement opened_;
  QStringList chosen_;
  /// The identifiers that are taken, and how often they were asked for.
  QHash<QString, int> groundIds_;
  QHash<QString, int> shapeIds_;
  /// By the identifier of the design: artboards and bitmaps.
  QHash<QString, SketchLayerRef> designLayers_;
  QHash<QString, std::shared_ptr<MockupLayer>> layers_;
  QHash<QString, Shown> shown_;
  /// Shapes whose designs are mapped anew even where all is as it was opened.
  QSet<QString> refreshed_;
  KeptPictures pictures_;
  bool isPreviewOld_ = false;
};

}  // namespace kelvar
