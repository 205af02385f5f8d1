#pragma once

#include <QVariant>

#include "archive/HRCoder.h"

namespace kelvar {

/// How an `HRCoder` reads each kind of value. A value that cannot be read is invalid.
class ArchiveReader {
 public:
  explicit ArchiveReader(HRCoder& coder) : coder_(coder) {}

  QVariant object(const QVariant& tree) const;

  /// Replaces the placeholder at `path` below `root` with `object`.
  static void replacePlaceholder(const QVariant& root, const QString& path, const QVariant& object);

 private:
  QVariant fromMap(const QVariantMap& map) const;
  QVariant dictionary(const QVariantMap& map) const;
  QVariant instance(const QString& className) const;
  QVariant fromList(const QVariantList& list) const;

  HRCoder& coder_;
};

}  // namespace kelvar
