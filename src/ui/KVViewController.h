#pragma once

#include <QAbstractButton>
#include <QCheckBox>
#include <QLabel>
#include <QUrl>

#include "actions/KVAction.h"
#include "core/KVPersister.h"
#include "platform/Image.h"
#include "ui/ImageView.h"
#include "ui/KVViewControllerDelegate.h"
#include "ui/PopUpButton.h"
#include "ui/ViewController.h"

namespace kelvar {

class KVViewController;
using KVViewControllerRef = std::shared_ptr<KVViewController>;

/// Controls one part of the panel: the row of a layer, a message line with an action, or the banner
/// of a server's message; its form says which.
///
/// It decides nothing: it shows what its owner puts into the properties, and reports what the user
/// does to the delegate. After changing properties, call `reloadData`. The user's actions do not
/// change them. Numbers are boxed, so that they can be none, which reads as 0. Main thread only,
/// where nothing else is said. Forms: "KVViewController" and "KVResizeViewController" (the row,
/// narrow and wide), "KVMessageLine", "KVSoftMessage" (the banner).
class KELVAR_EXPORT KVViewController : public KVPersister, public ViewController {
 public:
  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }

  /// Null when there is no such form. See `ViewController` for what stands for none.
  static KVViewControllerRef initWithNibName(const QString& nibName = {},
                                             const QString& bundle = {});

  /// Use `initWithNibName`.
  KVViewController(const QString& nibName, const QString& bundle);

  void viewDidLoad() override;
  /// Shows the properties, and enables the layer's controls.
  void reloadData();
  void enableLayerButton();
  /// From any thread: disables image quality, flip and rotate when the main queue gets to it, which
  /// is after a reload that follows at once.
  void disableLayerButton();

  /// What the controls of a form call.
  void includeInArtboardButtonDidChange(const ViewRef& sender);
  void refreshButtonDidPress(const ViewRef& sender);
  void flipButtonDidPress(const ViewRef& sender);
  void rotateButtonDidPress(const ViewRef& sender);
  void imageQualityPopupButtonDidChange(const ViewRef& sender);
  /// Runs the action, or without one opens the address and tells the delegate.
  void activateButtonDidPress(const ViewRef& sender);
  /// Marks the banner's message read, opens its address, and tells the delegate.
  void softBannerMessageAction(const ViewRef& sender);
  /// Marks the banner's message read, tells the delegate, and hides the banner.
  void readSoftMessage(const ViewRef& sender);

  /// From any thread, done when the main queue gets to it: shows the banner with a message, as high
  /// as the text needs at the width that the view has. `action` is an address, "" for none.
  void showSoftMessage(const QString& message, const QString& action, int64_t messageId);
  /// Marks the banner's message read in the settings. Throws `std::invalid_argument` for a stored
  /// message without its texts.
  void setMessageRead();

  /// Texts of labels are never read as rich text: some come from servers.
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

  /// Where `setMessageRead` reads and writes; there is one from `viewDidLoad` on.
  KVPersisterRef persister() const { return persister_; }
  void setPersister(KVPersisterRef persister) { persister_ = std::move(persister); }
  /// Kept for the owner, as is the reference.
  QString reuseIdentifier() const { return reuseIdentifier_; }
  void setReuseIdentifier(const QString& identifier) { reuseIdentifier_ = identifier; }
  QString referenceID() const { return referenceID_; }
  void setReferenceID(const QString& referenceID) { referenceID_ = referenceID; }

  /// Index of the item in the pop-up button; -1 when the row's layers differ.
  QVariant imageQuality() const { return imageQuality_; }
  void setImageQuality(const QVariant& number) { imageQuality_ = number; }
  /// 0 off, 1 on, -1 mixed.
  QVariant includeInArtboards() const { return includeInArtboards_; }
  void setIncludeInArtboards(const QVariant& number) { includeInArtboards_ = number; }
  ImageRef previewImage() const { return previewImage_; }
  /// Keeps a copy, as everywhere in the panel.
  void setPreviewImage(const ImageRef& image);

  /// Null leaves the label as it is; so does the title with the button.
  QString message() const { return message_; }
  void setMessage(const QString& message) { message_ = message; }
  QString actionTitle() const { return actionTitle_; }
  void setActionTitle(const QString& title) { actionTitle_ = title; }
  /// Opened by the action button when there is no action. Empty for none.
  QUrl actionURL() const { return actionURL_; }
  void setActionURL(const QUrl& url) { actionURL_ = url; }
  KVActionRef action() const { return action_; }
  void setAction(KVActionRef action) { action_ = std::move(action); }

  QVariant messageId() const { return messageId_; }
  void setMessageId(const QVariant& number) { messageId_ = number; }
  QString softActionUrlString() const { return softActionUrlString_; }
  void setSoftActionUrlString(const QString& address) { softActionUrlString_ = address; }

  std::weak_ptr<KVViewControllerDelegate> delegate() const { return delegate_; }
  void setDelegate(std::weak_ptr<KVViewControllerDelegate> delegate) {
    delegate_ = std::move(delegate);
  }

 private:
  template <class Operation>
  bool delegateHas(Operation KVViewControllerDelegate::*operation) const;
  template <class Operation, class... Arguments>
  void tellDelegate(Operation KVViewControllerDelegate::*operation, const Arguments&... arguments);
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
