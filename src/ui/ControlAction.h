#pragma once

#include "platform/Export.h"
#include "runtime/DelegateFunction.h"

namespace kelvar {

class DelegateInfo;
class View;

/// What a control does besides the action that its form gives it. On the main thread.
struct KELVAR_EXPORT ControlAction {
  static const DelegateInfo& staticDelegateInfo();

  /// Called after the user has used the control, with the control.
  DelegateFunction<void(View&)> controlDidAct;
};

}  // namespace kelvar
