#pragma once

#include <QList>
#include <QPointF>
#include <QString>
#include <array>
#include <cstdint>

#include "mockup/Mapping.h"
#include "pixels/Result.h"
#include "platform/Export.h"

namespace kelvar {

/// The designs and four-cornered shapes of one image: where the shapes are, and how each shows its
/// design. A plain value; undo and redo keep copies.
///
/// On disk it is a small JSON file (see docs/panel.md) with paths relative to the file's own
/// folder; here they are absolute. Corners are in pixels of the image, y down.
struct KELVAR_EXPORT Arrangement {
  struct Design {
    /// Unique among the designs; never empty.
    QString id;
    QString name;
    /// The image file; empty for a design that is part of a document.
    QString file;
    bool operator==(const Design&) const = default;
  };

  struct KELVAR_EXPORT Shape {
    /// Unique among the shapes; never empty.
    QString id;
    QString name;
    /// Along the outline in either direction, the design's top-left corner first. They are not
    /// necessarily a valid quad: see validateQuad().
    std::array<QPointF, 4> corners;
    /// The `id` of its design; empty for none.
    QString design;
    /// In files, the quality is 1 to `kQualities`; documents may have other values.
    MappingOptions options{};
    /// In a document, the `id` of its artboard. Not in files.
    QString artboard{};
    /// In a document, whether the artboard shows the layer mirrored. Not in files.
    bool isMirrored = false;
    bool operator==(const Shape&) const = default;

    /// Index of the corner to which the design's top-left corner goes; depends on rotation and
    /// flip.
    size_t topLeftCorner() const;
    /// How its design is mapped onto the image.
    Mapping mapping() const;
  };

  static constexpr int kVersion = 1;
  static constexpr int kQualities = 4;
  /// Maximum distance of a corner from the image's top-left corner along either axis, in pixels.
  static constexpr double kMaxCoordinate = 1e6;

  /// The file that contains the shapes: a photo or, in the panel's window, a document. Empty for
  /// none.
  QString photo;
  QList<Design> designs;
  /// Later shapes are drawn over earlier ones.
  QList<Shape> shapes;
  /// In a document, the `id` of the artboard that is shown. Not in files.
  QString artboard{};
  bool operator==(const Arrangement&) const = default;

  /// Null if there is none with that `id`.
  const Design* design(const QString& id) const;
  const Shape* shape(const QString& id) const;
  Shape* shape(const QString& id);
  /// The shapes on the artboard that is shown; on a photo, all shapes.
  QList<Shape> shapesOnArtboard() const;

  /// The id of the design in `file`, added if it is new.
  QString addDesign(const QString& file);

  /// Fails unless the whole file is valid. Does not check the photo and the design files.
  static Result<Arrangement> read(const QString& path);
  /// Replaces the file atomically.
  Result<void> write(const QString& path) const;
};

}  // namespace kelvar
