#pragma once

#include <QVariant>

#include "archive/HRCoder.h"

namespace kelvar {

/// How an `HRCoder` writes each kind of value. A value that cannot be written is invalid.
class ArchiveWriter {
 public:
  explicit ArchiveWriter(HRCoder& coder) : coder_(coder) {}

  QVariant tree(const QVariant& object) const;

 private:
  bool isJson() const { return coder_.outputFormat() == HRCoder::kJson; }
  QVariant reference(const ObjectRef& object) const;
  QVariant object(const ObjectRef& object) const;
  QVariant map(const QVariantMap& map) const;
  QVariant list(const QVariantList& list) const;
  QVariant bytes(const QByteArray& bytes, const QString& className) const;

  HRCoder& coder_;
};

}  // namespace kelvar
