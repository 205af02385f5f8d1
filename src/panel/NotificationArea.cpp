#include "panel/NotificationArea.h"

#include <QHBoxLayout>
#include <QPointer>
#include <QResizeEvent>
#include <QToolButton>

#include "core/ServerMessages.h"
#include "panel/InspectorPanel.h"
#include "platform/Bundle.h"
#include "platform/MainQueue.h"

namespace kelvar::cli {
namespace {

constexpr qint64 kSecondsBetweenChecks = 24 * 60 * 60;

QString information(const char* key) {
  return Bundle::objectForInfoDictionaryKey(QLatin1String(key)).toString();
}

/// Resets the height of the previous message, and hides the button if there is nothing to open.
void prepareFor(QWidget& banner, const QString& action) {
  banner.setMinimumHeight(0);
  banner.setMaximumHeight(QWIDGETSIZE_MAX);
  auto* const button = banner.findChild<QWidget*>(QStringLiteral("softActionButton"));
  if (button) button->setHidden(action.isEmpty());
}

}  // namespace

NotificationArea::NotificationArea(InspectorPanel* panel)
    : panel_(panel),
      kelvar_(std::make_shared<Kelvar>()),
      links_(std::make_shared<KVExternalActionsHandler>()) {
  makeBanner();
  makeVersionLine();
  panel_->addBelow(makeLinks());
}

void NotificationArea::makeBanner() {
  banner_ = KVViewController::initWithNibName(QStringLiteral("KVSoftMessage"));
  if (!banner_ || !banner_->view()) return;
  bannerDelegate_ = std::make_shared<KVViewControllerDelegate>();
  bannerDelegate_->controllerNeedToUpdateLayout = [](KVViewController& controller) {
    controller.view()->setFixedHeight(controller.view()->height());
  };
  bannerDelegate_->controllerDidPressSoftBannerActionButton = [this](KVViewController& controller,
                                                                     const QVariant&) {
    controller.view()->hide();
    showFirstUnread();
  };
  // The banner hides itself after this call; the next message then shows it again.
  bannerDelegate_->controllerDidPressReadMessageButton = [this](auto&, const QVariant&) {
    showFirstUnread();
  };
  banner_->setDelegate(bannerDelegate_);
  banner_->view()->hide();
  panel_->addAbove(banner_->view());
  banner_->view()->installEventFilter(this);
}

void NotificationArea::makeVersionLine() {
  versionLine_ = KVViewController::initWithNibName(QStringLiteral("KVMessageLine"));
  if (!versionLine_ || !versionLine_->view()) return;
  versionLine_->view()->hide();
  panel_->addAbove(versionLine_->view());
}

QWidget* NotificationArea::makeLinks() {
  using Press = void (KVExternalActionsHandler::*)(const QVariant&);
  static constexpr struct {
    const char* name;
    const char* title;
    Press press;
  } kLinks[] = {
      {"homepageButton", "Website", &KVExternalActionsHandler::homepageButtonDidPress},
      {"feedbackButton", "Feedback", &KVExternalActionsHandler::feedbackForumButtonDidPress},
      {"supportButton", "Support", &KVExternalActionsHandler::supportButtonDidPress},
      {"storeButton", "Store", &KVExternalActionsHandler::visitStoreButtonDidPress},
  };
  auto* const bar = new QWidget;
  auto* const line = new QHBoxLayout(bar);
  line->setContentsMargins(8, 4, 8, 4);
  line->setSpacing(2);
  const bool hasSite = KVExternalActionsHandler::hasSite();
  for (const auto& link : kLinks) {
    auto* const button = new QToolButton;
    button->setText(QLatin1String(link.title));
    button->setObjectName(QLatin1String(link.name));
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    button->setEnabled(hasSite);
    if (hasSite) {
      button->setCursor(Qt::PointingHandCursor);
    } else {
      button->setToolTip(QStringLiteral("No website is set; KELVAR_WEB_SITE names one"));
    }
    connect(button, &QToolButton::clicked, this,
            [this, press = link.press] { (*links_.*press)(QVariant()); });
    line->addWidget(button);
  }
  line->addStretch();
  return bar;
}

void NotificationArea::start() {
  showFirstUnread();
  const std::weak_ptr<KVViewControllerDelegate> here = bannerDelegate_;
  ServerMessages::load([kelvar = kelvar_] { return kelvar->persister(); },
                       [this, here](const Result<void>&) {
                         MainQueue::async([this, here] {
                           if (here.lock()) showFirstUnread();
                         });
                       });
  checker_ = KVVersionChecker::checkerWithIdentifier(information("CFBundleIdentifier"),
                                                     information("CFBundleShortVersionString"));
  checkerDelegate_ = std::make_shared<KVVersionCheckerDelegate>();
  checkerDelegate_->checkerDidFinish = [this](KVVersionChecker& checker) { showVersion(checker); };
  checker_->setDelegate(checkerDelegate_);
  showVersion(*checker_);
  const QDateTime last = checker_->lastCheck();
  if (last.isValid() && last.secsTo(QDateTime::currentDateTime()) < kSecondsBetweenChecks) return;
  checker_->start();
}

void NotificationArea::showFirstUnread() {
  if (!banner_ || !banner_->view()) return;
  const QVariant stored = KVPersister().objectForKey(QLatin1String(ServerMessages::kKey));
  for (const QVariant& value : stored.toList()) {
    const QVariantMap message = value.toMap();
    if (message.value(QStringLiteral("read")).toBool()) continue;
    const QString action = message.value(QStringLiteral("action")).toString();
    // Right before the banner is shown, so that nothing is laid out with the height between the
    // two.
    MainQueue::async([banner = QPointer<QWidget>(banner_->view()), action] {
      if (banner) prepareFor(*banner, action);
    });
    banner_->showSoftMessage(message.value(QStringLiteral("message")).toString(), action,
                             ServerMessages::idOf(message));
    return;
  }
}

void NotificationArea::showVersion(const KVVersionChecker& checker) {
  if (!versionLine_ || !versionLine_->view()) return;
  versionLine_->setMessage(checker.expiredMessage());
  versionLine_->setActionTitle(checker.actionTitle());
  versionLine_->setActionURL(checker.actionURL());
  versionLine_->reloadData();
  versionLine_->view()->setVisible(checker.isExpired());
}

/// The banner's height depends on its width.
bool NotificationArea::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize) {
    const auto* const resize = static_cast<QResizeEvent*>(event);
    if (resize->oldSize().width() != resize->size().width()) showFirstUnread();
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace kelvar::cli
