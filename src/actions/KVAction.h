#pragma once

#include "runtime/Object.h"

namespace kelvar {

/// An action that a button runs. This is all that callers know about it.
class KELVAR_EXPORT KVAction : public Object {
 public:
  ~KVAction() override;

  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  /// Whether the action succeeded.
  virtual bool exec() = 0;
};

using KVActionRef = std::shared_ptr<KVAction>;

}  // namespace kelvar
