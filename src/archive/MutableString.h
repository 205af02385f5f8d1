#pragma once

#include "runtime/Coder.h"
#include "runtime/Object.h"

namespace kelvar {

/// A string with an identity, which archives preserve.
class KELVAR_EXPORT MutableString : public Object {
 public:
  explicit MutableString(const QString& string = QStringLiteral("")) : string_(string) {}
  static std::shared_ptr<MutableString> initWithCoder(Coder& coder);
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  QString string() const { return string_; }
  void setString(const QString& string) { string_ = string; }

  QString description() const override { return string_; }
  void encodeWithCoder(Coder& coder) const override;

 private:
  QString string_;
};

}  // namespace kelvar
