#pragma once

#include "archive/Data.h"

namespace kelvar {

/// Bytes that can change.
class KELVAR_EXPORT MutableData : public Data {
 public:
  using Data::Data;
  static std::shared_ptr<MutableData> initWithCoder(Coder& coder);
  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }

  void setBytes(const QByteArray& bytes) { bytes_ = bytes; }
};

}  // namespace kelvar
