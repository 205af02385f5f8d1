#pragma once

#include "archive/Data.h"

namespace kelvar {

/// Mutable bytes with an identity.
class KELVAR_EXPORT MutableData : public Data {
 public:
  using Data::Data;
  static std::shared_ptr<MutableData> initWithCoder(Coder& coder);
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  void setBytes(const QByteArray& bytes) { bytes_ = bytes; }
};

}  // namespace kelvar
