#pragma once

#include <QVariant>

#include "platform/Export.h"
#include "runtime/DelegateFunction.h"

namespace kelvar {

class DelegateInfo;
class KVViewController;

/// What a panel controller reports: what the user did with its controls. The controller changes
/// none of its own properties; that is up to the delegate.
///
/// An empty member is an operation that the delegate does not implement: the control that would
/// call it does nothing. All on the main thread. No operation returns an answer.
struct KELVAR_EXPORT KVViewControllerDelegate {
  static const DelegateInfo& staticDelegateInfo();

  using Handler = DelegateFunction<void(KVViewController&)>;
  using NumberHandler = DelegateFunction<void(KVViewController&, const QVariant& number)>;

  /// Called after the user has changed the check box, with its new state: 0 off, 1 on, -1 mixed.
  NumberHandler controllerDidToggleIncludeInArtboards;
  /// Called after the user has clicked the refresh button: map the layer again.
  Handler controllerDidPressRefreshLayer;
  /// Called after the user has clicked the flip button.
  Handler controllerDidPressFlipLayer;
  /// Called after the user has clicked the rotate button.
  Handler controllerDidPressRotateLayer;
  /// Called after the user has chosen an image quality, with the index of the item.
  NumberHandler controllerDidSelectImageQuality;
  /// Called after the message's button has opened its URL. Not called if the controller has an
  /// action, which runs instead.
  Handler controllerDidPressActionButton;
  /// Called after the banner has changed its height: lay out the views around it again.
  Handler controllerNeedToUpdateLayout;
  /// Called after the user has clicked the banner, with the number of its message, which is marked
  /// as read, and whose URL is open. Without this operation the click does nothing.
  NumberHandler controllerDidPressSoftBannerActionButton;
  /// Called after the user has clicked the banner's close button, with the number of its message,
  /// which is marked as read. The banner is hidden after this call. Without this operation the
  /// click does nothing.
  NumberHandler controllerDidPressReadMessageButton;
};

}  // namespace kelvar
