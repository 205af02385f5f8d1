#pragma once

#include <functional>

#include "platform/Export.h"

namespace kelvar {

class DelegateInfo;
class KVPopupCell;

/// What a chooser tells. An empty member is not called.
struct KELVAR_EXPORT KVPopupCellDelegate {
  static const DelegateInfo& theDelegate();

  /// The user has chosen an item, perhaps the same one again.
  std::function<void(KVPopupCell&)> popupCellSelectedDidChange;
};

}  // namespace kelvar
