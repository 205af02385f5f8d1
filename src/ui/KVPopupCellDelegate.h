#pragma once

#include "platform/Export.h"
#include "runtime/DelegateFunction.h"

namespace kelvar {

class DelegateInfo;
class KVPopupCell;

/// What a chooser reports. An empty member is not called. All on the main thread.
struct KELVAR_EXPORT KVPopupCellDelegate {
  static const DelegateInfo& staticDelegateInfo();

  /// Called after the user has chosen an item, even if it was already selected. The chooser
  /// already shows it.
  DelegateFunction<void(KVPopupCell&)> popupCellSelectedDidChange;
};

}  // namespace kelvar
