#pragma once

#include <QAbstractButton>
#include <QCheckBox>
#include <QLabel>
#include <QUrl>

#include "actions/KVAction.h"
#include "core/KVPersister.h"
#include "platform/image/Image.h"
#include "ui/ImageView.h"
#include "ui/KVViewControllerDelegate.h"
#include "ui/PopUpButton.h"
#include "ui/ViewController.h"

namespace kelvar {

class KVViewController;
using KVViewControllerRef = std::shared_ptr<KVViewController>;

/// Controls one part of the panel, depending on its form: the row of a layer, a message line with a
/// button, or the banner of a server's message.
///
/// It shows the properties that its owner sets, and reports the user's actions to the delegate. It
/// makes no decisions: the user's actions do not change the properties. After changing properties,
/// call `reloadData`. Numbers are boxed so that they can be none, which reads as 0. Main thread
/// only, unless noted. Forms: "KVViewController" and "KVResizeViewController" (the row,
/// narrow and wide), "KVMessageLine", "KVSoftMessage" (the banner).
class KELVAR_EXPORT KVViewController : public KVPersister, public ViewController {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  /// Null if there is no such form. See `ViewController` for the defaults.
  static KVViewControllerRef initWithNibName(const QString& nibName = {},
                                             const QString& bundle = {});

  /// Use `initWithNibName`.
  KVViewController(const QString& nibName, const QString& bundle);

  void viewDidLoad() override;
  /// Shows the properties and enables the layer's controls.
  void reloadData();
  void enableLayerButton();
  /// Disables image quality, flip and rotate asynchronously on the main queue, and therefore after
  /// a reload that follows immediately. Any thread.
  void disableLayerButton();

  /// Actions of the form's controls.
  void includeInArtboardButtonDidChange(const ViewRef& sender);
  void refreshButtonDidPress(const ViewRef& sender);
  void flipButtonDidPress(const ViewRef& sender);
  void rotateButtonDidPress(const ViewRef& sender);
  void imageQualityPopupButtonDidChange(const ViewRef& sender);
  /// Runs the action; without one, opens the URL and calls the delegate.
  void activateButtonDidPress(const ViewRef& sender);
  /// Marks the banner's message as read, opens its URL, and calls the delegate.
  void softBannerMessageAction(const ViewRef& sender);
  /// Marks the banner's message as read, calls the delegate, and hides the banner.
  void readSoftMessage(const ViewRef& sender);

  /// Shows the banner with a message, as high as the text needs at the view's width, asynchronously
  /// on the main queue. `action` is a URL, "" for none. Any thread.
  void showSoftMessage(const QString& message, const QString& action, int64_t messageId);
  /// Marks the banner's message as read in the settings. A stored message without its texts is left
  /// as it is, with a log line.
  void setMessageRead();

  /// Outlets. Labels show plain text only, as some texts come from servers.
  PopUpButton* imageQualityPopupButton() const { return imageQualityPopupButton_; }
  void setImageQualityPopupButton(PopUpButton* button) { imageQualityPopupButton_ = button; }
  QAbstractButton* layerRotateButton() const { return layerRotateButton_; }
  void setLayerRotateButton(QAbstractButton* button) { layerRotateButton_ = button; }
  QAbstractButton* layerFlipButton() const { return layerFlipButton_; }
  void setLayerFlipButton(QAbstractButton* button) { layerFlipButton_ = button; }
  QCheckBox* includeInArtboardButton() const { return includeInArtboardButton_; }
  void setIncludeInArtboardButton(QCheckBox* button) { includeInArtboardButton_ = button; }
  ImageView* imageView() const { return imageView_; }
  void setImageView(ImageView* view) { imageView_ = view; }
  QLabel* messageLabel() const { return messageLabel_; }
  void setMessageLabel(QLabel* label);
  QAbstractButton* actionButton() const { return actionButton_; }
  void setActionButton(QAbstractButton* button) { actionButton_ = button; }
  QLabel* softMessageLabel() const { return softMessageLabel_; }
  void setSoftMessageLabel(QLabel* label);
  QAbstractButton* softCloseButton() const { return softCloseButton_; }
  void setSoftCloseButton(QAbstractButton* button) { softCloseButton_ = button; }

  /// The settings that `setMessageRead` changes; set by `viewDidLoad`.
  KVPersisterRef persister() const { return persister_; }
  void setPersister(KVPersisterRef persister) { persister_ = std::move(persister); }
  /// Not used here, as is `referenceID`: they are for the owner.
  QString reuseIdentifier() const { return reuseIdentifier_; }
  void setReuseIdentifier(const QString& identifier) { reuseIdentifier_ = identifier; }
  QString referenceID() const { return referenceID_; }
  void setReferenceID(const QString& referenceID) { referenceID_ = referenceID; }

  /// The index of the item in the pop-up button; -1 if the row's layers differ.
  QVariant imageQuality() const { return imageQuality_; }
  void setImageQuality(const QVariant& number) { imageQuality_ = number; }
  /// 0 off, 1 on, -1 mixed.
  QVariant includeInArtboards() const { return includeInArtboards_; }
  void setIncludeInArtboards(const QVariant& number) { includeInArtboards_ = number; }
  ImageRef previewImage() const { return previewImage_; }
  /// Keeps a copy.
  void setPreviewImage(const ImageRef& image);

  /// Null leaves the label as it is; likewise the title and the button.
  QString message() const { return message_; }
  void setMessage(const QString& message) { message_ = message; }
  QString actionTitle() const { return actionTitle_; }
  void setActionTitle(const QString& title) { actionTitle_ = title; }
  /// Opened by the action button if there is no action. Empty for none.
  QUrl actionURL() const { return actionURL_; }
  void setActionURL(const QUrl& url) { actionURL_ = url; }
  KVActionRef action() const { return action_; }
  void setAction(KVActionRef action) { action_ = std::move(action); }

  QVariant messageId() const { return messageId_; }
  void setMessageId(const QVariant& number) { messageId_ = number; }
  QString softActionUrlString() const { return softActionUrlString_; }
  void setSoftActionUrlString(const QString& url) { softActionUrlString_ = url; }

  std::weak_ptr<KVViewControllerDelegate> delegate() const { return delegate_; }
  void setDelegate(std::weak_ptr<KVViewControllerDelegate> delegate) {
    delegate_ = std::move(delegate);
  }

 private:
  /// False, with a log line, for a damaged message.
  bool markMessageRead();
  template <class Operation>
  bool delegateHas(Operation KVViewControllerDelegate::*operation) const;
  template <class Operation, class... Arguments>
  void callDelegate(Operation KVViewControllerDelegate::*operation, const Arguments&... arguments);
  void showBanner(const QString& message, const QString& action, int64_t messageId);

  QPointer<PopUpButton> imageQualityPopupButton_;
  QPointer<QAbstractButton> layerRotateButton_;
  QPointer<QAbstractButton> layerFlipButton_;
  QPointer<QCheckBox> includeInArtboardButton_;
  QPointer<ImageView> imageView_;
  QPointer<QLabel> messageLabel_;
  QPointer<QAbstractButton> actionButton_;
  QPointer<QLabel> softMessageLabel_;
  QPointer<QAbstractButton> softCloseButton_;

  KVPersisterRef persister_;
  QString reuseIdentifier_;
  QString referenceID_;
  QVariant imageQuality_;
  QVariant includeInArtboards_;
  ImageRef previewImage_;
  QString message_;
  QString actionTitle_;
  QUrl actionURL_;
  KVActionRef action_;
  QVariant messageId_;
  QString softActionUrlString_;
  std::weak_ptr<KVViewControllerDelegate> delegate_;
};

}  // namespace kelvar
