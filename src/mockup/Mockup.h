#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <stop_token>

#include "mockup/Arrangement.h"
#include "pixels/Result.h"
#include "platform/Export.h"
#include "platform/image/Image.h"

namespace kelvar {

/// A background image with four-cornered shapes on it and designs for them, as shown in the panel's
/// window. Draws and saves arrangements; independent of widgets.
///
/// May be created on one thread and used on others, but only by one thread at a time.
///
/// Drawing takes a stop token, which any thread may trigger when the result is no longer needed.
/// The drawing then fails early, and the mockup can be drawn and saved as before. A single step
/// that cannot be interrupted takes a few seconds at most: the warp of a large image, or reading
/// an image file. Opening and saving are not interrupted.
class KELVAR_EXPORT Mockup {
 public:
  /// Whether to draw for editing on screen or for export at full resolution.
  enum class Purpose { Window, Export };

  /// A drawn arrangement.
  struct Drawing {
    /// Fails if there is nothing to draw on.
    Result<ImageRef> image;
    /// By the shape's id, a message for each shape that is not shown correctly.
    QMap<QString, QString> shapeProblems{};
  };

  /// One of several images that a mockup can have, each with its own shapes.
  struct Artboard {
    QString id;
    QString name;
  };

  virtual ~Mockup() = default;

  /// The arrangement as it was opened.
  virtual Arrangement arrangement() const = 0;

  /// The possible values of an arrangement's `artboard`; empty if there is only one image.
  virtual QList<Artboard> artboards() const { return {}; }

  /// Whether shapes can be created, moved and removed.
  virtual bool canChangeShapes() const = 0;

  /// Draws as much as possible. If there are several artboards, draws the one that the arrangement
  /// shows.
  Drawing draw(const Arrangement& arrangement, Purpose purpose, const std::stop_token& stop = {}) {
    return makeDrawing(arrangement, purpose, stop);
  }

  /// The design alone. If it has to be drawn, its longer side is at most `side` pixels; if it is
  /// read from a file, it has its own size.
  Result<ImageRef> designImage(const Arrangement::Design& design, int side,
                               const std::stop_token& stop = {}) {
    return makeDesignImage(design, side, stop);
  }

  /// Discards the cached image of the design, so that the next drawing reads it again.
  virtual void refresh(const Arrangement::Design& design) = 0;

  /// Writes the arrangement to `path` atomically.
  virtual Result<void> save(const Arrangement& arrangement, const QString& path) = 0;

  /// The image at full resolution. Fails if any shape on the artboard cannot be shown correctly, so
  /// that no export silently lacks a design.
  Result<ImageRef> exportImage(const Arrangement& arrangement, const std::stop_token& stop = {});

 private:
  virtual Drawing makeDrawing(const Arrangement& arrangement, Purpose purpose,
                              const std::stop_token& stop) = 0;
  virtual Result<ImageRef> makeDesignImage(const Arrangement::Design& design, int side,
                                           const std::stop_token& stop) = 0;
};

}  // namespace kelvar
