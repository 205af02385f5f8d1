#pragma once

#include <QList>
#include <QPointF>
#include <QString>
#include <array>
#include <cstdint>
#include <optional>

#include "host/Mapping.h"
#include "platform/Export.h"

namespace kelvar {

/// Designs on the four-cornered shapes of one picture: which there are, where, and how each is
/// shown. A plain value: a copy is a state to go back to.
///
/// On disk it is a small JSON file (docs/panel.md describes it) in which paths are relative to the
/// file's own folder; here they are absolute. Corners are in the picture's pixels, y down.
struct KELVAR_EXPORT Arrangement {
  struct Design {
    /// Never empty, and of no other design.
    QString id;
    QString name;
    /// The picture file, or empty for a design that is none.
    QString file;
    bool operator==(const Design&) const = default;
  };

  struct KELVAR_EXPORT Shape {
    /// Never empty, and of no other shape.
    QString id;
    QString name;
    /// In drawing order, of either winding; the design's top-left corner first. They may be such
    /// that nothing can be mapped onto them: see cornersObjection().
    std::array<QPointF, 4> corners;
    /// The `id` of its design; empty for none.
    QString design;
    /// Position of the image quality: 0 for 1x to 3 for 4x.
    int quality = 0;
    /// Quarter turns of the design, counter-clockwise, 0 to 3.
    uint64_t rotation = 0;
    bool flipped = false;
    /// On a photo, whether its design is shown. In a document, whether it is seen where the layer's
    /// own artboard is a design.
    bool included = true;
    /// In a document, the `id` of the artboard that it is on. Not in files.
    QString artboard{};
    /// In a document, whether the artboard shows the layer mirrored. Not in files.
    bool isMirrored = false;
    bool operator==(const Shape&) const = default;

    /// Index of the corner where the design's top left goes, which rotation and flip move.
    size_t topLeftCorner() const;
    /// How its design comes onto the picture, with the best sampling.
    Mapping mapping() const;
  };

  static constexpr int kVersion = 1;
  static constexpr int kQualities = 4;
  /// No corner lies farther than this from the picture's top-left corner along either axis.
  static constexpr double kFarthest = 1e6;

  /// The file of what the shapes are on: a photo, or in a window a document. Empty for none.
  QString photo;
  QList<Design> designs;
  /// The later lie over the earlier.
  QList<Shape> shapes;
  /// In a document, the `id` of the artboard that is shown. Not in files.
  QString artboard{};
  bool operator==(const Arrangement&) const = default;

  /// Null when there is none of that `id`.
  const Design* design(const QString& id) const;
  const Shape* shape(const QString& id) const;
  Shape* shape(const QString& id);
  /// Those on the artboard that is shown; in a photo all.
  QList<Shape> shapesInSight() const;

  /// The id of the design in `file`, which is added unless it is there.
  QString addDesign(const QString& file);

  /// A whole arrangement or none, and then a sentence in `*error`. The photo and the designs are
  /// not looked at.
  static std::optional<Arrangement> read(const QString& path, QString* error);
  /// Replaces the file, or leaves it as it was.
  bool write(const QString& path, QString* error) const;
};

}  // namespace kelvar
