#include "ui/KVViewController.h"

#include <QLayout>
#include <cmath>

#include "core/ServerMessages.h"
#include "platform/Log.h"
#include "platform/MainQueue.h"
#include "platform/QtError.h"
#include "platform/Workspace.h"
#include "ui/InterfaceFile.h"
#include "ui/WrappedText.h"

namespace kelvar {
namespace {

using Delegate = KVViewControllerDelegate;

constexpr int kMixed = -1;

// The banner's measures, in points.
constexpr double kTextInset = 10;
constexpr double kMaxTextHeight = 10000;
constexpr double kVerticalMargin = 20;

/// 0 for none and for values that are not numbers.
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

/// The height of the text at the label's current width.
double measuredHeight(const QLabel& label, const QString& text) {
  const double height = WrappedText(text, label.font(), label.width() - kTextInset).height();
  return std::min(height, kMaxTextHeight);
}

}  // namespace

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
void KVViewController::callDelegate(Operation Delegate::*operation, const Arguments&... arguments) {
  if (!delegateHas(operation)) return;
  const auto delegate = delegate_.lock();
  if (!delegate) return;
  // A copy, as the delegate may remove its operation while it runs.
  if (const Operation copy = (*delegate).*operation) copy(*this, arguments...);
}

void KVViewController::includeInArtboardButtonDidChange(const ViewRef& sender) {
  callDelegate(&Delegate::controllerDidToggleIncludeInArtboards,
               QVariant(stateOf(widgetOf<QCheckBox>(sender))));
}

void KVViewController::refreshButtonDidPress(const ViewRef&) {
  callDelegate(&Delegate::controllerDidPressRefreshLayer);
}

void KVViewController::flipButtonDidPress(const ViewRef&) {
  callDelegate(&Delegate::controllerDidPressFlipLayer);
}

void KVViewController::rotateButtonDidPress(const ViewRef&) {
  callDelegate(&Delegate::controllerDidPressRotateLayer);
}

void KVViewController::imageQualityPopupButtonDidChange(const ViewRef&) {
  const int index = imageQualityPopupButton_ ? imageQualityPopupButton_->indexOfSelectedItem() : 0;
  callDelegate(&Delegate::controllerDidSelectImageQuality, QVariant(index));
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
  callDelegate(&Delegate::controllerDidPressActionButton);
}

void KVViewController::softBannerMessageAction(const ViewRef&) {
  if (!delegateHas(&Delegate::controllerDidPressSoftBannerActionButton)) return;
  if (!markMessageRead()) return;
  if (!softActionUrlString_.isEmpty()) {
    Workspace::openURL(QUrl(softActionUrlString_, QUrl::StrictMode));
  }
  callDelegate(&Delegate::controllerDidPressSoftBannerActionButton, messageId_);
}

void KVViewController::readSoftMessage(const ViewRef&) {
  if (!delegateHas(&Delegate::controllerDidPressReadMessageButton)) return;
  if (!markMessageRead()) return;
  callDelegate(&Delegate::controllerDidPressReadMessageButton, messageId_);
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
  // The layout of a hidden widget is not updated automatically.
  if (banner->layout()) banner->layout()->activate();
  const double height = softMessageLabel_ ? measuredHeight(*softMessageLabel_, message) : 0;
  viewObject()->setFrameSize({double(banner->width()), std::ceil(height + kVerticalMargin)});
  callDelegate(&Delegate::controllerNeedToUpdateLayout);
  banner->show();
}

void KVViewController::setMessageRead() { markMessageRead(); }

bool KVViewController::markMessageRead() {
  if (!persister_) return true;
  const QString key = QLatin1String(ServerMessages::kKey);
  const Result<QVariantList> marked = ServerMessages::withMessageRead(
      persister_->objectForKey(key).toList(), integerValue(messageId_));
  if (!marked) {
    logLine(u"KVViewController: %@", {messageOf(marked.error())});
    return false;
  }
  persister_->setObject(*marked, key);
  return true;
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
