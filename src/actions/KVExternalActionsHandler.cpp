#include "actions/KVExternalActionsHandler.h"

#include "analytics/TrackerManager.h"
#include "platform/Bundle.h"
#include "platform/Format.h"
#include "platform/Log.h"
#include "platform/SystemInfo.h"
#include "platform/Workspace.h"
#include "platform/store/UserEmail.h"
#include "runtime/ClassInfo.h"
#include "util/Each.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&KVExternalActionsHandler::staticClassInfo);

/// Null for none.
QString site() { return Bundle::serverAddress("KELVAR_WEB_SITE", QStringLiteral("KVWebSite")); }

/// Null without a site.
QString addressOfPage(const char* page) {
  const QString address = site();
  if (address.isNull()) return {};
  const bool isHost = !address.contains(QStringLiteral("://"));
  return (isHost ? QStringLiteral("http://") : QString()) + address + QLatin1String(page);
}

QString setup() {
  const auto ours = [](const char* key) {
    return Bundle::objectForInfoDictionaryKey(QLatin1String(key)).toString();
  };
  const QVariantMap host = Bundle::hostInformation();
  return formatted(
      u"code=%@&osVersion=%@&sketchVersion=%@&sketchBuild=%@&pluginName=%@"
      u"&pluginVersion=%@&pluginBuild=%@&pluginEnv=%@&email=%@",
      {ours("KVPluginCode"), SystemInfo::operatingSystemVersionString(),
       host[QStringLiteral("CFBundleShortVersionString")].toString(),
       host[QStringLiteral("CFBundleVersion")].toString(), ours("KVPluginName"),
       ours("CFBundleShortVersionString"), ours("CFBundleVersion"), ours("KVPluginEnv"),
       userEmail()});
}

}  // namespace

const ClassInfo& KVExternalActionsHandler::staticClassInfo() {
  using Handler = KVExternalActionsHandler;
  static const ClassInfo kClass =
      ClassInfoBuilder<Handler>("KVExternalActionsHandler")
          .initializer(
              "init", [] { return std::make_shared<Handler>(); },
              "Creates a handler for the buttons that link to the vendor's web site.")
          .operation("urlWithPath:", &Handler::urlWithPath,
                     "Returns the URL with the user's setup as its query.")
          .operation("homepageButtonDidPress:", &Handler::homepageButtonDidPress,
                     "Records the click and opens the vendor's home page.")
          .operation("feedbackForumButtonDidPress:", &Handler::feedbackForumButtonDidPress,
                     "Records the click and opens the feedback forum.")
          .operation("supportButtonDidPress:", &Handler::supportButtonDidPress,
                     "Records the click and opens the support page.")
          .operation("visitStoreButtonDidPress:", &Handler::visitStoreButtonDidPress,
                     "Records the click and opens the store.");
  return kClass;
}

bool KVExternalActionsHandler::hasSite() { return !site().isNull(); }

QUrl KVExternalActionsHandler::urlWithPath(const QString& path) const {
  QUrl url(path, QUrl::StrictMode);
  if (!url.isValid()) return {};
  // Escaped as a whole: separators within values are not escaped.
  const QByteArray query = QUrl::toPercentEncoding(setup(), "!$&'*+,/:;=?@");
  url.setQuery(QString::fromLatin1(query), QUrl::StrictMode);
  return url;
}

void KVExternalActionsHandler::homepageButtonDidPress(const QVariant&) {
  press("homepageButtonDidPress", "Clicked HomepageButton", "/kelvar/");
}

void KVExternalActionsHandler::feedbackForumButtonDidPress(const QVariant&) {
  press("feedbackForumButtonDidPress", "Clicked FeedbackButton", "/kelvar/feedback");
}

void KVExternalActionsHandler::supportButtonDidPress(const QVariant&) {
  press("supportButtonDidPress", "Clicked SupportButton", "/kelvar/support");
}

void KVExternalActionsHandler::visitStoreButtonDidPress(const QVariant&) {
  press("visitStoreButtonDidPress", "Clicked VisitStoreButton", "/kelvar/pro");
}

void KVExternalActionsHandler::press(const char* operation, const char* event,
                                     const char* page) const {
  logLine(QString::fromLatin1(operation));
  try {
    TrackerManager::sharedInstance()->track(QLatin1String(event), QVariantMap());
  } catch (const UnrecognizedOperation&) {  // No tracker: open the page anyway.
  }
  Workspace::openURL(urlWithPath(addressOfPage(page)));
}

}  // namespace kelvar
