#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <stop_token>

#include "host/Arrangement.h"
#include "platform/Export.h"
#include "platform/Image.h"

namespace kelvar {

/// What stands behind the panel's window: something with a picture, four-cornered shapes on it and
/// designs for them. It draws and saves arrangements, and knows of no window.
///
/// Made on one thread and then used on another, on one at a time.
///
/// Drawing takes a stop token, which any thread may set off: what is being drawn is then no longer
/// wanted. It ends early, without a picture, and the mockup can be drawn and saved as before. A
/// single step that cannot be interrupted takes a few seconds at most: the warp of a large picture,
/// reading a picture file. Opening and saving are not interrupted.
class KELVAR_EXPORT Mockup {
 public:
  /// What is drawn for: to be worked on, or to be given away, and then at its full resolution.
  enum class Purpose { Window, Export };

  /// A drawn arrangement.
  struct Drawing {
    /// Null when there is nothing to draw on; `problem` says why.
    ImageRef picture;
    QString problem;
    /// By the shape's id, a sentence for each shape that is not shown as it should be.
    QMap<QString, QString> shapeProblems;
  };

  virtual ~Mockup() = default;

  /// One of several pictures that a mockup has, each with shapes of its own.
  struct Artboard {
    QString id;
    QString name;
  };

  /// As it was opened.
  virtual Arrangement arrangement() const = 0;

  /// What an arrangement's `artboard` can be; nothing where there is but one picture.
  virtual QList<Artboard> artboards() const { return {}; }

  /// Whether shapes can be made, moved and removed.
  virtual bool canChangeShapes() const = 0;

  /// Whatever can be drawn of it; of several artboards the one that the arrangement shows.
  Drawing draw(const Arrangement& arrangement, Purpose purpose, const std::stop_token& stop = {}) {
    return makeDrawing(arrangement, purpose, stop);
  }

  /// The design by itself. What has to be drawn for it is no longer than `side` pixels; what is
  /// read is as large as it is. Null and a sentence where it cannot be had.
  ImageRef designPicture(const Arrangement::Design& design, int side, QString* error,
                         const std::stop_token& stop = {}) {
    return makeDesignPicture(design, side, error, stop);
  }

  /// Lets go of what is kept of the design, so that the next drawing reads it again.
  virtual void refresh(const Arrangement::Design& design) = 0;

  virtual bool save(const Arrangement& arrangement, const QString& path, QString* error) = 0;

  /// The picture to be given away. Null and a sentence when any shape cannot be shown as it should
  /// be: nobody is to find out later that one was left out.
  ImageRef exportPicture(const Arrangement& arrangement, QString* error,
                         const std::stop_token& stop = {});

 private:
  virtual Drawing makeDrawing(const Arrangement& arrangement, Purpose purpose,
                              const std::stop_token& stop) = 0;
  virtual ImageRef makeDesignPicture(const Arrangement::Design& design, int side, QString* error,
                                     const std::stop_token& stop) = 0;
};

}  // namespace kelvar
