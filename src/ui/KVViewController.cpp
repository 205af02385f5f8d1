#include "ui/KVViewController.h"

#include <QLayout>
#include <cmath>

#include "core/ServerMessages.h"
#include "platform/Log.h"
#include "platform/MainQueue.h"
#include "platform/Workspace.h"
#include "runtime/ClassInfo.h"
#include "runtime/DelegateInfo.h"
#include "ui/InterfaceFile.h"
#include "ui/WrappedText.h"

namespace kelvar {
namespace {

using Delegate = KVViewControllerDelegate;

const ClassInfo::Registration kRegistered(&KVViewController::theClass);

constexpr int kMixed = -1;

// The banner's measures, in points.
constexpr double kTextInset = 10;
constexpr double kMaxTextHeight = 10000;
constexpr double kVerticalMargin = 20;

/// 0 for none and for what is no number.
int64_t integerValue(const QVariant& number) {
  return isNumber(number) ? numberFrom<int64_t>(number) : number.toString().toLongLong();
}

Qt::CheckState checkState(int64_t state) {
  if (state == kMixed) return Qt::PartiallyChecked;
  return state == 0 ? Qt::Unchecked : Qt::Checked;
}

int stateOf(const QCheckBox* box) {
  if (!box || box->checkState() == Qt::Unchecked) return 0;
  return box->checkState() == Qt::Checked ? 1 : kMixed;
}

/// As high as the text is in the label, at the width that it has now.
double measuredHeight(const QLabel& label, const QString& text) {
  const double height = WrappedText(text, label.font(), label.width() - kTextInset).height();
  return std::min(height, kMaxTextHeight);
}

}  // namespace

const ClassInfo& KVViewController::theClass() {
  using C = KVViewController;
  static const ClassInfo kClass =
      Description<C, KVPersister>("KVViewController")
          .initialiser("init", [] { return C::initWithNibName(); })
          .initialiser("initWithNibName:bundle:", &C::initWithNibName)
          .operation("nibName", &C::nibName)
          .operation("view", &C::viewObject)
          .operation("viewDidLoad", &C::viewDidLoad)
          .operation("reloadData", &C::reloadData)
          .operation("enableLayerButton", &C::enableLayerButton)
          .operation("disableLayerButton", &C::disableLayerButton)
          .operation("includeInArtboardButtonDidChange:", &C::includeInArtboardButtonDidChange)
          .operation("refreshButtonDidPress:", &C::refreshButtonDidPress)
          .operation("flipButtonDidPress:", &C::flipButtonDidPress)
          .operation("rotateButtonDidPress:", &C::rotateButtonDidPress)
          .operation("imageQualityPopupButtonDidChange:", &C::imageQualityPopupButtonDidChange)
          .operation("activateButtonDidPress:", &C::activateButtonDidPress)
          .operation("softBannerMessageAction:", &C::softBannerMessageAction)
          .operation("readSoftMessage:", &C::readSoftMessage)
          .operation("showSoftMessage:action:messageId:", &C::showSoftMessage)
          .operation("setMessageRead", &C::setMessageRead)
          .property("persister", &C::persister, &C::setPersister)
          .property("reuseIdentifier", &C::reuseIdentifier, &C::setReuseIdentifier)
          .property("imageQualityPopupButton", outletGetter(&C::imageQualityPopupButton),
                    outletSetter(&C::setImageQualityPopupButton))
          .property("layerRotateButton", outletGetter(&C::layerRotateButton),
                    outletSetter(&C::setLayerRotateButton))
          .property("layerFlipButton", outletGetter(&C::layerFlipButton),
                    outletSetter(&C::setLayerFlipButton))
          .property("includeInArtboardButton", outletGetter(&C::includeInArtboardButton),
                    outletSetter(&C::setIncludeInArtboardButton))
          .property("imageView", outletGetter(&C::imageView), outletSetter(&C::setImageView))
          .property("imageQuality", &C::imageQuality, &C::setImageQuality)
          .property("includeInArtboards", &C::includeInArtboards, &C::setIncludeInArtboards)
          .property("previewImage", &C::previewImage, &C::setPreviewImage)
          .property("referenceID", &C::referenceID, &C::setReferenceID)
          .property("messageLabel", outletGetter(&C::messageLabel),
                    outletSetter(&C::setMessageLabel))
          .property("actionButton", outletGetter(&C::actionButton),
                    outletSetter(&C::setActionButton))
          .property("message", &C::message, &C::setMessage)
          .property("actionTitle", &C::actionTitle, &C::setActionTitle)
          .property("actionURL", &C::actionURL, &C::setActionURL)
          .property("action", &C::action, &C::setAction)
          .property("softMessageLabel", outletGetter(&C::softMessageLabel),
                    outletSetter(&C::setSoftMessageLabel))
          .property("softCloseButton", outletGetter(&C::softCloseButton),
                    outletSetter(&C::setSoftCloseButton))
          .property("messageId", &C::messageId, &C::setMessageId)
          .property("softActionUrlString", &C::softActionUrlString, &C::setSoftActionUrlString)
          .property("delegate", &C::delegate, &C::setDelegate);
  return kClass;
}

const DelegateInfo& KVViewControllerDelegate::theDelegate() {
  using Self = KVViewControllerDelegate;
  static const DelegateInfo kDelegate =
      DelegateDescription<Self>("KVViewControllerDelegate")
          .operation("controller:didToggleIncludeInArtboards:",
                     &Self::controllerDidToggleIncludeInArtboards)
          .operation("controllerDidPressRefreshLayer:", &Self::controllerDidPressRefreshLayer)
          .operation("controllerDidPressFlipLayer:", &Self::controllerDidPressFlipLayer)
          .operation("controllerDidPressRotateLayer:", &Self::controllerDidPressRotateLayer)
          .operation("controller:didSelectImageQuality:", &Self::controllerDidSelectImageQuality)
          .operation("controllerDidPressActionButton:", &Self::controllerDidPressActionButton)
          .operation("controllerNeedToUpdateLayout:", &Self::controllerNeedToUpdateLayout)
          .operation("controllerDidPressSoftBannerActionButton:messageId:",
                     &Self::controllerDidPressSoftBannerActionButton)
          .operation("controllerDidPressReadMessageButton:messageId:",
                     &Self::controllerDidPressReadMessageButton);
  return kDelegate;
}

KVViewControllerRef KVViewController::initWithNibName(const QString& nibName,
                                                      const QString& bundle) {
  const QString name = nibName.isNull() ? QStringLiteral("KVViewController") : nibName;
  if (!InterfaceFile::exists(name, bundle)) return nullptr;
  return std::make_shared<KVViewController>(name, bundle);
}

KVViewController::KVViewController(const QString& nibName, const QString& bundle)
    : ViewController(nibName, bundle) {}

void KVViewController::viewDidLoad() {
  ViewController::viewDidLoad();
  persister_ = std::make_shared<KVPersister>();
  reloadData();
}

void KVViewController::reloadData() {
  enableLayerButton();
  if (imageQualityPopupButton_) {
    const int64_t quality = integerValue(imageQuality_);
    if (quality == kMixed) {
      imageQualityPopupButton_->setAllowsMixedState(true);
      imageQualityPopupButton_->setTitle(QStringLiteral("Multiple"));
    } else {
      const bool isIndex = quality >= 0 && quality < imageQualityPopupButton_->count();
      imageQualityPopupButton_->selectItemAtIndex(isIndex ? int(quality) : -1);
    }
  }
  if (includeInArtboardButton_) {
    const int64_t state = integerValue(includeInArtboards_);
    includeInArtboardButton_->setTristate(state == kMixed);
    includeInArtboardButton_->setCheckState(checkState(state));
  }
  if (imageView_) imageView_->setImage(previewImage_);
  if (messageLabel_ && !message_.isNull()) messageLabel_->setText(message_);
  if (actionButton_ && !actionTitle_.isNull()) actionButton_->setText(actionTitle_);
}

void KVViewController::enableLayerButton() {
  if (imageQualityPopupButton_) imageQualityPopupButton_->setEnabled(true);
  if (layerFlipButton_) layerFlipButton_->setEnabled(true);
  if (layerRotateButton_) layerRotateButton_->setEnabled(true);
}

void KVViewController::disableLayerButton() {
  MainQueue::async([this, self = shared_from_this()] {
    if (imageQualityPopupButton_) imageQualityPopupButton_->setEnabled(false);
    if (layerFlipButton_) layerFlipButton_->setEnabled(false);
    if (layerRotateButton_) layerRotateButton_->setEnabled(false);
  });
}

template <class Operation>
bool KVViewController::delegateHas(Operation Delegate::*operation) const {
  const auto delegate = delegate_.lock();
  return delegate && (*delegate).*operation;
}

template <class Operation, class... Arguments>
void KVViewController::tellDelegate(Operation Delegate::*operation, const Arguments&... arguments) {
  if (!delegateHas(operation)) return;
  const auto delegate = delegate_.lock();
  if (!delegate) return;
  // The delegate may drop its operation while it runs.
  if (const Operation told = (*delegate).*operation) told(*this, arguments...);
}

void KVViewController::includeInArtboardButtonDidChange(const ViewRef& sender) {
  tellDelegate(&Delegate::controllerDidToggleIncludeInArtboards,
               QVariant(stateOf(widgetOf<QCheckBox>(sender))));
}

void KVViewController::refreshButtonDidPress(const ViewRef&) {
  tellDelegate(&Delegate::controllerDidPressRefreshLayer);
}

void KVViewController::flipButtonDidPress(const ViewRef&) {
  tellDelegate(&Delegate::controllerDidPressFlipLayer);
}

void KVViewController::rotateButtonDidPress(const ViewRef&) {
  tellDelegate(&Delegate::controllerDidPressRotateLayer);
}

void KVViewController::imageQualityPopupButtonDidChange(const ViewRef&) {
  const int index = imageQualityPopupButton_ ? imageQualityPopupButton_->indexOfSelectedItem() : 0;
  tellDelegate(&Delegate::controllerDidSelectImageQuality, QVariant(index));
}

void KVViewController::activateButtonDidPress(const ViewRef&) {
  logLine(u"KVViewController: activateButtonDidPress: %@",
          {delegate_.expired() ? QStringLiteral("(null)")
                               : QStringLiteral("<KVViewControllerDelegate>")});
  if (const KVActionRef action = action_) {
    action->exec();
    return;
  }
  if (actionURL_.isEmpty()) return;
  Workspace::openURL(actionURL_);
  tellDelegate(&Delegate::controllerDidPressActionButton);
}

void KVViewController::softBannerMessageAction(const ViewRef&) {
  if (!delegateHas(&Delegate::controllerDidPressSoftBannerActionButton)) return;
  setMessageRead();
  if (!softActionUrlString_.isEmpty()) {
    Workspace::openURL(QUrl(softActionUrlString_, QUrl::StrictMode));
  }
  tellDelegate(&Delegate::controllerDidPressSoftBannerActionButton, messageId_);
}

void KVViewController::readSoftMessage(const ViewRef&) {
  if (!delegateHas(&Delegate::controllerDidPressReadMessageButton)) return;
  setMessageRead();
  tellDelegate(&Delegate::controllerDidPressReadMessageButton, messageId_);
  if (QWidget* const banner = view()) banner->hide();
}

void KVViewController::showSoftMessage(const QString& message, const QString& action,
                                       int64_t messageId) {
  MainQueue::async([this, self = shared_from_this(), message, action, messageId] {
    showBanner(message, action, messageId);
  });
}

void KVViewController::showBanner(const QString& message, const QString& action,
                                  int64_t messageId) {
  QWidget* const banner = view();
  if (softMessageLabel_) softMessageLabel_->setText(message);
  messageId_ = qlonglong(messageId);
  softActionUrlString_ = action;
  if (!banner) return;
  // While it is hidden, its parts do not follow its size by themselves.
  if (banner->layout()) banner->layout()->activate();
  const double height = softMessageLabel_ ? measuredHeight(*softMessageLabel_, message) : 0;
  banner->resize(banner->width(), int(std::ceil(height + kVerticalMargin)));
  tellDelegate(&Delegate::controllerNeedToUpdateLayout);
  banner->show();
}

void KVViewController::setMessageRead() {
  if (!persister_) return;
  const QString key = QLatin1String(ServerMessages::kKey);
  persister_->setObject(ServerMessages::withMessageRead(persister_->objectForKey(key).toList(),
                                                        integerValue(messageId_)),
                        key);
}

void KVViewController::setMessageLabel(QLabel* label) {
  messageLabel_ = label;
  if (label) label->setTextFormat(Qt::PlainText);
}
void KVViewController::setSoftMessageLabel(QLabel* label) {
  softMessageLabel_ = label;
  if (label) label->setTextFormat(Qt::PlainText);
}

void KVViewController::setPreviewImage(const ImageRef& image) {
  previewImage_ = image ? std::make_shared<Image>(*image) : nullptr;
}

}  // namespace kelvar
