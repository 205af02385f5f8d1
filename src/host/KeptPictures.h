#pragma once

#include <QList>
#include <QSizeF>
#include <QString>

#include "platform/FileName.h"
#include "platform/Image.h"

namespace kelvar {

/// The pictures of design files, read again only when a file has changed. What a file showed last
/// stays, for the time that it is gone or is being written. One thread at a time.
class KELVAR_EXPORT KeptPictures {
 public:
  /// `vectorSize` is for what can be drawn at any size; empty for the natural one. Null, and a
  /// sentence in `*error`, when it cannot be read.
  ImageRef read(const QString& file, const QSizeF& vectorSize, QString* error);
  /// The file's picture as it last was, or null.
  ImageRef last(const QString& file) const;
  /// The file is read again next time, as if it had changed.
  void forget(const QString& file);

 private:
  /// A file's picture, and what told that it had not changed.
  struct Kept {
    QString file;
    ImageRef picture;
    bool isVector = false;
    /// The size asked for, of a vector.
    QSizeF vectorSize;
    FileState state{};
    bool isForgotten = false;
  };
  void keep(const Kept& fresh);

  /// The least recently used first.
  QList<Kept> kept_;
};

}  // namespace kelvar
