#pragma once

#include <QHash>
#include <QSet>
#include <QVariantMap>

#include "mockup/DesignFiles.h"
#include "mockup/DocumentChoice.h"
#include "mockup/Mockup.h"
#include "sketch/document/SketchDocument.h"

namespace kelvar {

class DocumentContents;
class MockupLayer;

/// The four-cornered layers on the artboards of a Sketch document. Designs are the document's
/// artboards, its bitmaps, and image files.
///
/// A design chosen for a layer is mapped onto it in memory when it is next drawn or saved, and the
/// choice is stored on the layer. If a layer's shape returns to the state in which it was opened,
/// the layer is restored member for member.
class KELVAR_EXPORT DocumentMockup : public Mockup {
 public:
  ~DocumentMockup() override;

  /// Fails if there is no such document, artboard or layer.
  static Result<std::shared_ptr<DocumentMockup>> open(const QString& path,
                                                      const DocumentChoice& choice);

  Arrangement arrangement() const override;
  QList<Artboard> artboards() const override;
  bool canChangeShapes() const override { return false; }
  /// Also maps an artboard again, in its current state.
  void refresh(const Arrangement::Design& design) override;
  /// Fails if any shape in the document would not show its design.
  Result<void> save(const Arrangement& arrangement, const QString& path) override;

  /// The shapes that were chosen when the document was opened.
  const QStringList& chosenShapes() const { return chosen_; }
  /// See `Bundle`.
  QVariantMap hostInformation() const { return document_->hostInformation(); }

  /// See `SketchDocument`.
  bool hasChangedOnDisk(const QString& path) const;
  void acceptDiskVersion();

 private:
  /// The state of a layer in the document.
  struct Shown {
    Arrangement::Shape shape;
    /// The design file's image, if the design is a file.
    ImageRef image;
    /// Fails if the design cannot be shown.
    Result<void> mapped;
    /// Fails if the design is shown, but may be out of date.
    Result<void> isCurrent;
  };

  DocumentMockup(SketchDocumentRef document, const QString& path);
  /// For the window, draws two pixels per point unless that image would be huge; for exports, as
  /// many as the most detailed shape requires. Both show all shapes.
  Drawing makeDrawing(const Arrangement& arrangement, Purpose purpose,
                      const std::stop_token& stop) override;
  Result<ImageRef> makeDesignImage(const Arrangement::Design& design, int side,
                                   const std::stop_token& stop) override;
  /// Brings the document up to date, or as far as possible before it is stopped.
  void apply(const Arrangement& arrangement, const std::stop_token& stop);
  /// Null if the design is not a file.
  Result<ImageRef> fileImage(const Arrangement& arrangement, const Arrangement::Shape& shape);
  /// Maps the design of the shape onto its layer, or restores the layer.
  Result<void> show(const Arrangement::Shape& shape, const ImageRef& fileImage,
                    const std::stop_token& stop);
  Result<void> map(const MockupLayer& layer, const Arrangement::Shape& shape,
                   const ImageRef& fileImage, const std::stop_token& stop);
  /// Keeps the image that was mapped in an earlier session.
  Result<void> keepImage(const MockupLayer& layer, const Arrangement::Shape& shape) const;
  double exportScale(const Arrangement& arrangement) const;

  SketchDocumentRef document_;
  std::unique_ptr<DocumentContents> contents_;
  QStringList chosen_;
  /// By the shape's id.
  QHash<QString, Shown> shown_;
  /// Shapes whose designs are mapped again even if the shape is as it was opened.
  QSet<QString> refreshed_;
  DesignFiles files_;
  bool isPreviewOutdated_ = false;
};

}  // namespace kelvar
