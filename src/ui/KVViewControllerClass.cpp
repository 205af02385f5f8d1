#include "runtime/ClassInfo.h"
#include "runtime/DelegateInfo.h"
#include "ui/KVViewController.h"

// The selectors of KVViewController and its delegate.
namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&KVViewController::staticClassInfo);

using C = KVViewController;
using Builder = ClassInfoBuilder<C, KVPersister>;

Builder&& addRowOperations(Builder&& builder) {
  return std::move(builder)
      .initializer(
          "init", [] { return C::initWithNibName(); },
          "Creates a controller for the row of a layer.")
      .initializer("initWithNibName:bundle:", &C::initWithNibName,
                   "Creates a controller for a form; nil if there is no such form.")
      .operation("nibName", &C::nibName, "Returns the name of the form.")
      .operation("view", &C::viewObject,
                 "Returns the controller's view, loading the form on first use.")
      .operation("viewDidLoad", &C::viewDidLoad,
                 "Called when the form has loaded; creates the store and shows the properties.")
      .operation("reloadData", &C::reloadData,
                 "Shows the current properties and enables image quality, flip and rotate.")
      .operation("enableLayerButton", &C::enableLayerButton,
                 "Enables image quality, flip and rotate.")
      .operation("disableLayerButton", &C::disableLayerButton,
                 "Disables image quality, flip and rotate, on the main thread's next turn.")
      .operation("includeInArtboardButtonDidChange:", &C::includeInArtboardButtonDidChange,
                 "Action of the check box: tells the delegate its new state.")
      .operation("refreshButtonDidPress:", &C::refreshButtonDidPress,
                 "Action of the refresh button: tells the delegate.")
      .operation("flipButtonDidPress:", &C::flipButtonDidPress,
                 "Action of the flip button: tells the delegate.")
      .operation("rotateButtonDidPress:", &C::rotateButtonDidPress,
                 "Action of the rotate button: tells the delegate.")
      .operation("imageQualityPopupButtonDidChange:", &C::imageQualityPopupButtonDidChange,
                 "Action of the quality menu: tells the delegate the index of the chosen item.");
}

Builder&& addMessageOperations(Builder&& builder) {
  return std::move(builder)
      .operation("activateButtonDidPress:", &C::activateButtonDidPress,
                 "Action of the message's button: runs `action`, or without one opens "
                 "`actionURL` and tells the delegate.")
      .operation("softBannerMessageAction:", &C::softBannerMessageAction,
                 "Action of the banner: marks its message as read, opens its URL and tells the "
                 "delegate, if that handles it.")
      .operation("readSoftMessage:", &C::readSoftMessage,
                 "Action of the banner's close button: marks its message as read, tells the "
                 "delegate and hides the banner, if the delegate handles it.")
      .operation("showSoftMessage:action:messageId:", &C::showSoftMessage,
                 "Shows the banner with a message and a URL (\"\" for none), on the main "
                 "thread's next turn.")
      .operation("setMessageRead", &C::setMessageRead,
                 "Marks the banner's message as read in the settings.");
}

Builder&& addRowProperties(Builder&& builder) {
  return std::move(builder)
      .property("persister", &C::persister, &C::setPersister,
                "The store for the read messages; created by `viewDidLoad`.")
      .property("reuseIdentifier", &C::reuseIdentifier, &C::setReuseIdentifier,
                "An identifier for the owner's use.")
      .property("imageQualityPopupButton", outletGetter(&C::imageQualityPopupButton),
                outletSetter(&C::setImageQualityPopupButton), "The quality menu of the form.")
      .property("layerRotateButton", outletGetter(&C::layerRotateButton),
                outletSetter(&C::setLayerRotateButton), "The rotate button of the form.")
      .property("layerFlipButton", outletGetter(&C::layerFlipButton),
                outletSetter(&C::setLayerFlipButton), "The flip button of the form.")
      .property("includeInArtboardButton", outletGetter(&C::includeInArtboardButton),
                outletSetter(&C::setIncludeInArtboardButton), "The check box of the form.")
      .property("imageView", outletGetter(&C::imageView), outletSetter(&C::setImageView),
                "The preview of the form.")
      .property("imageQuality", &C::imageQuality, &C::setImageQuality,
                "Index of the shown quality; -1 if the row's layers differ, nil for 0.")
      .property("includeInArtboards", &C::includeInArtboards, &C::setIncludeInArtboards,
                "State of the check box: 0 off, 1 on, -1 mixed, nil for 0.")
      .property("previewImage", &C::previewImage, &C::setPreviewImage,
                "The preview; the controller keeps a copy.")
      .property("referenceID", &C::referenceID, &C::setReferenceID,
                "A reference for the owner's use.");
}

Builder&& addMessageProperties(Builder&& builder) {
  return std::move(builder)
      .property("messageLabel", outletGetter(&C::messageLabel), outletSetter(&C::setMessageLabel),
                "The message's label of the form.")
      .property("actionButton", outletGetter(&C::actionButton), outletSetter(&C::setActionButton),
                "The message's button of the form.")
      .property("message", &C::message, &C::setMessage,
                "The text of the message; nil leaves the label unchanged.")
      .property("actionTitle", &C::actionTitle, &C::setActionTitle,
                "The title of the message's button; nil leaves it unchanged.")
      .property("actionURL", &C::actionURL, &C::setActionURL,
                "The URL that the message's button opens if there is no action.")
      .property("action", &C::action, &C::setAction,
                "The action that the message's button runs, or nil.")
      .property("softMessageLabel", outletGetter(&C::softMessageLabel),
                outletSetter(&C::setSoftMessageLabel), "The banner's label of the form.")
      .property("softCloseButton", outletGetter(&C::softCloseButton),
                outletSetter(&C::setSoftCloseButton), "The banner's close button of the form.")
      .property("messageId", &C::messageId, &C::setMessageId, "The number of the banner's message.")
      .property("softActionUrlString", &C::softActionUrlString, &C::setSoftActionUrlString,
                "The URL that the banner opens.")
      .property("delegate", &C::delegate, &C::setDelegate,
                "Told what the user does with the controls; held weakly.");
}

}  // namespace

const ClassInfo& KVViewController::staticClassInfo() {
  static const ClassInfo kClass = addMessageProperties(
      addRowProperties(addMessageOperations(addRowOperations(Builder("KVViewController")))));
  return kClass;
}

const DelegateInfo& KVViewControllerDelegate::staticDelegateInfo() {
  using Self = KVViewControllerDelegate;
  static const DelegateInfo kDelegate =
      DelegateInfoBuilder<Self>("KVViewControllerDelegate")
          .operation("controller:didToggleIncludeInArtboards:",
                     &Self::controllerDidToggleIncludeInArtboards,
                     "Called after the user has changed the check box, with its new state: 0 off, "
                     "1 on, -1 mixed.")
          .operation("controllerDidPressRefreshLayer:", &Self::controllerDidPressRefreshLayer,
                     "Called after the user has clicked the refresh button.")
          .operation("controllerDidPressFlipLayer:", &Self::controllerDidPressFlipLayer,
                     "Called after the user has clicked the flip button.")
          .operation("controllerDidPressRotateLayer:", &Self::controllerDidPressRotateLayer,
                     "Called after the user has clicked the rotate button.")
          .operation(
              "controller:didSelectImageQuality:", &Self::controllerDidSelectImageQuality,
              "Called after the user has chosen an image quality, with the index of the item.")
          .operation("controllerDidPressActionButton:", &Self::controllerDidPressActionButton,
                     "Called after the message's button has opened its URL; not called if the "
                     "controller has an action.")
          .operation("controllerNeedToUpdateLayout:", &Self::controllerNeedToUpdateLayout,
                     "Called after the banner has changed its height, so that the owner can lay "
                     "out its views again.")
          .operation(
              "controllerDidPressSoftBannerActionButton:messageId:",
              &Self::controllerDidPressSoftBannerActionButton,
              "Called after the user has clicked the banner, with the number of its message, which "
              "is marked as read; without this operation the click does nothing.")
          .operation("controllerDidPressReadMessageButton:messageId:",
                     &Self::controllerDidPressReadMessageButton,
                     "Called after the user has clicked the banner's close button, with the number "
                     "of its message, which is marked as read; the banner is hidden after this "
                     "call, and without this operation the click does nothing.");
  return kDelegate;
}

}  // namespace kelvar
