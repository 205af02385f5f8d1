#include "analytics/AnalyticsSettings.h"

#include "platform/Bundle.h"
#include "platform/network/isAllowedAddress.h"

namespace kelvar {
namespace {

QString setting(const char* variable, const char* key) {
  const QString given = qEnvironmentVariable(variable);
  if (!given.isEmpty()) return given;
  return Bundle::objectForInfoDictionaryKey(QLatin1String(key)).toString();
}

QUrl address(const char* variable, const char* key, const QString& pathAndQuery) {
  if (AnalyticsSettings::isDoNotTrack()) return {};
  const QString server = Bundle::serverAddress(variable, QLatin1String(key));
  return server.isNull() ? QUrl() : QUrl(server + pathAndQuery);
}

}  // namespace

bool AnalyticsSettings::isDoNotTrack() {
  const QByteArray value = qgetenv("DO_NOT_TRACK");
  return !value.isEmpty() && value != "0";
}

bool AnalyticsSettings::isOn() { return isAllowedAddress(trackingAddress(QString())); }

QUrl AnalyticsSettings::trackingAddress(const QString& path) {
  return address("KELVAR_ANALYTICS_SERVER", "KVAnalyticsServer", path);
}

QUrl AnalyticsSettings::locationAddress() {
  if (trackingAddress(QString()).isEmpty()) return {};
  const QByteArray key = QUrl::toPercentEncoding(locationKey());
  return address("KELVAR_LOCATION_SERVER", "KVLocationServer",
                 QStringLiteral("/json/?key=") + QString::fromLatin1(key));
}

QString AnalyticsSettings::writeKey() {
  return setting("KELVAR_ANALYTICS_WRITE_KEY", "KVAnalyticsWriteKey");
}

QString AnalyticsSettings::locationKey() { return setting("KELVAR_LOCATION_KEY", "KVLocationKey"); }

}  // namespace kelvar
