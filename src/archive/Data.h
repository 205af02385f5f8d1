#pragma once

#include <QByteArray>

#include "runtime/Coder.h"
#include "runtime/Object.h"

namespace kelvar {

/// Bytes with an identity, which archives preserve.
class KELVAR_EXPORT Data : public Object {
 public:
  explicit Data(const QByteArray& bytes = {}) : bytes_(bytes) {}
  static std::shared_ptr<Data> initWithCoder(Coder& coder);
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  const QByteArray& bytes() const { return bytes_; }

  void encodeWithCoder(Coder& coder) const override;

 protected:
  QByteArray bytes_;
};

}  // namespace kelvar
