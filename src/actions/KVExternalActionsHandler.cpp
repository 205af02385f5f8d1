#include "actions/KVExternalActionsHandler.h"

#include "analytics/TrackerManager.h"
#include "platform/Bundle.h"
#include "platform/Format.h"
#include "platform/Log.h"
#include "platform/SystemFacts.h"
#include "platform/UserEmail.h"
#include "platform/Workspace.h"
#include "runtime/ClassInfo.h"
#include "util/Each.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&KVExternalActionsHandler::theClass);

/// Null for none.
QString site() { return Bundle::serverAddress("KELVAR_WEB_SITE", QStringLiteral("KVWebSite")); }

/// Null for a page on no site.
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
      {ours("KVPluginCode"), SystemFacts::operatingSystemVersionString(),
       host[QStringLiteral("CFBundleShortVersionString")].toString(),
       host[QStringLiteral("CFBundleVersion")].toString(), ours("KVPluginName"),
       ours("CFBundleShortVersionString"), ours("CFBundleVersion"), ours("KVPluginEnv"),
       userEmail()});
}

}  // namespace

const ClassInfo& KVExternalActionsHandler::theClass() {
  using Handler = KVExternalActionsHandler;
  static const ClassInfo kClass =
      Description<Handler>("KVExternalActionsHandler")
          .initialiser("init", [] { return std::make_shared<Handler>(); })
          .operation("urlWithPath:", &Handler::urlWithPath)
          .operation("homepageButtonDidPress:", &Handler::homepageButtonDidPress)
          .operation("feedbackForumButtonDidPress:", &Handler::feedbackForumButtonDidPress)
          .operation("supportButtonDidPress:", &Handler::supportButtonDidPress)
          .operation("visitStoreButtonDidPress:", &Handler::visitStoreButtonDidPress);
  return kClass;
}

bool KVExternalActionsHandler::hasSite() { return !site().isNull(); }

QUrl KVExternalActionsHandler::urlWithPath(const QString& path) const {
  QUrl url(path, QUrl::StrictMode);
  if (!url.isValid()) return {};
  // Escaped as one text: what separates parameters does so in a value as well.
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
  } catch (const UnrecognizedOperation&) {  // Nobody counts: the page opens all the same.
  }
  Workspace::openURL(urlWithPath(addressOfPage(page)));
}

}  // namespace kelvar
