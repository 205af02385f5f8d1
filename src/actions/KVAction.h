#pragma once

#include "runtime/Object.h"

namespace kelvar {

/// Something that a button runs. Whoever holds an action knows no more of it than this.
class KELVAR_EXPORT KVAction : public Object {
 public:
  ~KVAction() override;

  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }

  /// Whether the action counts as having succeeded.
  virtual bool exec() = 0;
};

using KVActionRef = std::shared_ptr<KVAction>;

}  // namespace kelvar
