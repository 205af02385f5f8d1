#pragma once

#include <QDateTime>
#include <QList>

#include "host/Mockup.h"

namespace kelvar {

/// Designs from picture files on a photo, saved as an arrangement file.
///
/// Pictures are kept while their files stay as they are. A design whose file has gone, or is being
/// written, is drawn as it last was, with a problem that says so.
class KELVAR_EXPORT PhotoMockup : public Mockup {
 public:
  explicit PhotoMockup(Arrangement arrangement) : arrangement_(std::move(arrangement)) {}

  Arrangement arrangement() const override { return arrangement_; }
  bool canChangeShapes() const override { return true; }
  Drawing draw(const Arrangement& arrangement, Shapes shapes) override;
  ImageRef designPicture(const Arrangement::Design& design, QString* error) override;
  void refresh(const Arrangement::Design& design) override;
  bool save(const Arrangement& arrangement, const QString& path, QString* error) override;

 private:
  /// A file's picture, and what told that it had not changed.
  struct Kept {
    QString file;
    ImageRef picture;
    bool isVector = false;
    /// The size asked for, of a vector.
    QSizeF vectorSize;
    QDateTime changed;
    qint64 bytes = -1;
  };

  /// `vectorSize` empty: at the natural size.
  ImageRef read(const QString& file, const QSizeF& vectorSize, QString* error);
  void keep(const Kept& fresh);
  /// The file's picture as it last was, or null.
  ImageRef lastPicture(const QString& file) const;
  void drawShape(const Arrangement& arrangement, const Arrangement::Shape& shape, QImage* pixels,
                 Drawing* drawing);

  Arrangement arrangement_;
  /// The least recently used first.
  QList<Kept> kept_;
};

}  // namespace kelvar
