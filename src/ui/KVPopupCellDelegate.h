#pragma once

#include <functional>

namespace kelvar {

class KVPopupCell;

/// What a chooser tells. An empty member is not called.
struct KVPopupCellDelegate {
  /// The user has chosen an item, perhaps the same one again.
  std::function<void(KVPopupCell&)> popupCellSelectedDidChange;
};

}  // namespace kelvar
