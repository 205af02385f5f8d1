#include "analytics/TrackingContext.h"

#include <stdexcept>
#include <string>

#include "analytics/SegmentIOTracker.h"
#include "platform/Bundle.h"
#include "platform/SystemInfo.h"

namespace kelvar {
namespace {

const QString kNothing = QStringLiteral("");

QVariantMap screen() {
  const SystemInfo::Screen screen = SystemInfo::screen();
  return {{QStringLiteral("width"), screen.size.width()},
          {QStringLiteral("height"), screen.size.height()},
          {QStringLiteral("density"), screen.density}};
}

/// A null string, as of a document without a build number, is sent as null.
QVariant required(const QVariant& value, const char* key) {
  if (!value.isValid()) throw std::invalid_argument(std::string(key) + " is missing");
  const bool isNone = value.typeId() == QMetaType::QString && value.toString().isNull();
  return isNone ? QVariant::fromValue(nullptr) : value;
}

QVariantMap app() {
  const QVariantMap host = Bundle::hostInformation();
  const auto value = [&](const char* key) -> QVariant {
    if (host.isEmpty()) return QStringLiteral("MSDocument not available");
    return required(host.value(QLatin1String(key)), key);
  };
  return {{QStringLiteral("version"), value("CFBundleShortVersionString")},
          {QStringLiteral("build"), value("CFBundleVersion")},
          {QStringLiteral("name"), value("CFBundleName")}};
}

QVariantMap library() {
  const auto value = [](const char* key) {
    return required(Bundle::objectForInfoDictionaryKey(QLatin1String(key)), key);
  };
  return {{QStringLiteral("name"), value("CFBundleName")},
          {QStringLiteral("version"), value("CFBundleShortVersionString")}};
}

void addLocation(const QVariantMap& answer, QVariantMap* context) {
  const auto value = [&](const char* key) { return answer.value(QLatin1String(key), kNothing); };
  (*context)[QStringLiteral("location")] =
      QVariantMap{{QStringLiteral("city"), value("city")},
                  {QStringLiteral("country"), value("country")},
                  {QStringLiteral("latitude"), value("lat")},
                  {QStringLiteral("longitude"), value("lon")},
                  {QStringLiteral("region"), value("regionName")}};
  (*context)[QStringLiteral("ip")] = value("query");
}

/// The part that does not change while the process runs. Empty values are sent as well.
const QVariantMap& constantContext() {
  static const QVariantMap kContext{
      {QStringLiteral("device"),
       QVariantMap{
           {QStringLiteral("manufacturer"), kNothing},
           {QStringLiteral("name"), SegmentIOTracker::getSystemStringForKey("hw.model")},
           {QStringLiteral("model"), SegmentIOTracker::getSystemStringForKey("hw.machine")}}},
      {QStringLiteral("network"), QVariantMap{{QStringLiteral("wifi"), kNothing},
                                              {QStringLiteral("cellular"), kNothing},
                                              {QStringLiteral("carrier"), kNothing},
                                              {QStringLiteral("bluetooth"), kNothing}}},
      {QStringLiteral("os"),
       QVariantMap{{QStringLiteral("name"), kNothing},
                   {QStringLiteral("version"), SystemInfo::operatingSystemVersionString()}}},
      {QStringLiteral("library"), library()},
      {QStringLiteral("mixpanelLibrary"), kNothing}};
  return kContext;
}

}  // namespace

QVariantMap trackingContext(const Properties& location) {
  QVariantMap context = constantContext();
  context[QStringLiteral("locale")] = SystemInfo::locale();
  context[QStringLiteral("timezone")] = SystemInfo::timeZone();
  context[QStringLiteral("screen")] = screen();
  context[QStringLiteral("app")] = app();
  if (location) addLocation(*location, &context);
  return context;
}

}  // namespace kelvar
