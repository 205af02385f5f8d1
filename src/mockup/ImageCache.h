#pragma once

#include <QList>
#include <QSizeF>
#include <QString>
#include <optional>

#include "platform/Export.h"
#include "platform/files/FileName.h"
#include "platform/image/Image.h"

namespace kelvar {

/// Decoded images of files, each valid for one state of its file.
///
/// Holds at most `capacity` bytes of pixels. Beyond that, the least recently used images are
/// evicted first; the last one inserted stays, however large it is. One thread at a time.
class KELVAR_EXPORT ImageCache {
 public:
  static constexpr qsizetype kDefaultCapacity = qsizetype{1} << 30;

  struct Entry {
    QString file;
    /// The file's state when it was read.
    FileState state{};
    /// The requested size of an image that can be drawn at any size; none for one with its own
    /// pixels.
    std::optional<QSizeF> rasterizationSize;
    ImageRef image;
  };

  explicit ImageCache(qsizetype capacity = kDefaultCapacity) : capacity_(capacity) {}

  /// The image of the file in that state, at that size if it can be drawn at any size. Null if
  /// there is none.
  ImageRef lookup(const QString& file, const FileState& state, const QSizeF& rasterizationSize);
  /// The image of the file that was used last, in whatever state the file was. Null if there is
  /// none.
  ImageRef stale(const QString& file) const;
  /// Adds an image, and drops those of earlier states of its file. `entry.image` is not null.
  void insert(const Entry& entry);
  /// From now on, lookup() finds no image of the file; stale() does until the next insert().
  void erase(const QString& file);

 private:
  struct Slot {
    Entry entry;
    bool isErased = false;
  };

  qsizetype capacity_;
  /// The least recently used first.
  QList<Slot> slots_;
};

}  // namespace kelvar
