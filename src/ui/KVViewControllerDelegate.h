#pragma once

#include <QVariant>
#include <functional>

#include "platform/Export.h"

namespace kelvar {

class DelegateInfo;
class KVViewController;

/// What a panel controller tells. An empty member is an operation that the delegate does not have:
/// the control that would call it does nothing. All on the main thread.
struct KELVAR_EXPORT KVViewControllerDelegate {
  static const DelegateInfo& theDelegate();

  using Told = std::function<void(KVViewController&)>;
  using ToldNumber = std::function<void(KVViewController&, const QVariant& number)>;

  /// With the check box's new state: 0 off, 1 on, -1 mixed.
  ToldNumber controllerDidToggleIncludeInArtboards;
  Told controllerDidPressRefreshLayer;
  Told controllerDidPressFlipLayer;
  Told controllerDidPressRotateLayer;
  /// With the index of the chosen item.
  ToldNumber controllerDidSelectImageQuality;
  /// The action button has opened its address.
  Told controllerDidPressActionButton;
  /// The banner has changed its height.
  Told controllerNeedToUpdateLayout;
  /// With the message's identifier, for both. The message is marked read before. Without these
  /// operations, the banner's controls do nothing.
  ToldNumber controllerDidPressSoftBannerActionButton;
  /// The banner is still visible, and is hidden afterwards.
  ToldNumber controllerDidPressReadMessageButton;
};

}  // namespace kelvar
