#pragma once

#include "scripting/bridge/ClassBridge.h"
#include "scripting/bridge/EngineContext.h"
#include "scripting/bridge/WrapperTable.h"

namespace kelvar {

/// Gives the runtime's own JavaScript what it needs of us, as `native` of the prelude: questions
/// about wrappers, and the functions of the foundation and the host. Main thread.
class NativeFunctions {
 public:
  NativeFunctions(const EngineContext& context, WrapperTable& wrappers, ClassBridge& classes);

 private:
  void defineQuestions(JSObjectRef native) const;

  const EngineContext& context_;
  WrapperTable& wrappers_;
};

}  // namespace kelvar
