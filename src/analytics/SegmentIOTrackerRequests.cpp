#include <cmath>
#include <stdexcept>

#include "analytics/AnalyticsSettings.h"
#include "analytics/SegmentIOTracker.h"
#include "platform/Bundle.h"
#include "platform/Json.h"
#include "platform/SystemFacts.h"
#include "util/MF_Base64Codec.h"

namespace kelvar {
namespace {

const QString kNothing = QStringLiteral("");

[[noreturn]] void refuse(const QString& why) { throw std::invalid_argument(why.toStdString()); }

/// Whole numbers without a fraction, as counters and sizes are written.
QVariant withPlainNumbers(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::Float:
    case QMetaType::Double: {
      const double real = value.toDouble();
      return std::abs(real) < 0x1p53 && real == std::floor(real) ? QVariant(qlonglong(real))
                                                                 : value;
    }
    case QMetaType::QVariantList: {
      QVariantList list = value.toList();
      for (QVariant& element : list) element = withPlainNumbers(element);
      return list;
    }
    case QMetaType::QVariantMap: {
      QVariantMap map = value.toMap();
      for (QVariant& element : map) element = withPlainNumbers(element);
      return map;
    }
    default:
      return value;
  }
}

URLRequest post(const QString& path, const QString& writeKey, const QVariantMap& body) {
  URLRequest request{
      .method = "POST", .address = AnalyticsSettings::trackingAddress(path), .isReport = true};
  const QString credential = SegmentIOTracker::basicAuthValueForUsername(writeKey, QString());
  request.headers = {{"Authorization", "Basic " + credential.toLatin1()},
                     {"Content-Type", "application/json"},
                     {"Accept-Encoding", "gzip"}};
  QString error;
  request.body = Json::write(withPlainNumbers(body), Json::Layout::Compact, &error);
  if (request.body.isEmpty()) refuse(error);
  return request;
}

QVariantMap screen() {
  const SystemFacts::Screen screen = SystemFacts::screen();
  return {{QStringLiteral("width"), screen.size.width()},
          {QStringLiteral("height"), screen.size.height()},
          {QStringLiteral("density"), screen.density}};
}

/// A text that is none, as of a document that names no build, is sent so.
QVariant required(const QVariant& value, const char* key) {
  if (!value.isValid()) refuse(QStringLiteral("%1 is missing").arg(QLatin1String(key)));
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

/// What does not change while the process runs. What is empty here is sent so.
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
                   {QStringLiteral("version"), SystemFacts::operatingSystemVersionString()}}},
      {QStringLiteral("library"), library()},
      {QStringLiteral("mixpanelLibrary"), kNothing}};
  return kContext;
}

QVariantMap contextWith(const Properties& location) {
  QVariantMap context = constantContext();
  context[QStringLiteral("locale")] = SystemFacts::locale();
  context[QStringLiteral("timezone")] = SystemFacts::timeZone();
  context[QStringLiteral("screen")] = screen();
  context[QStringLiteral("app")] = app();
  if (location) addLocation(*location, &context);
  return context;
}

}  // namespace

QString SegmentIOTracker::DateFormatter::stringFromDate(const QDateTime& date) const {
  const QDateTime local = date.toLocalTime();
  const int minutes = std::abs(local.offsetFromUtc()) / 60;
  return local.toString(QStringLiteral("yyyy-MM-dd'T'HH:mm:ss.zzz")) +
         QStringLiteral("%1%2%3")
             .arg(QLatin1Char(local.offsetFromUtc() < 0 ? '-' : '+'))
             .arg(minutes / 60, 2, 10, QLatin1Char('0'))
             .arg(minutes % 60, 2, 10, QLatin1Char('0'));
}

const SegmentIOTracker::DateFormatter& SegmentIOTracker::dateFormatter() {
  static const DateFormatter kFormatter;
  return kFormatter;
}

QString SegmentIOTracker::basicAuthValueForUsername(const QString& username,
                                                    const QString& password) {
  return base64String(QString(username + u':' + password));
}

QString SegmentIOTracker::getSystemStringForKey(const char* key) {
  if (qstrcmp(key, "hw.model") == 0) return SystemFacts::machineModel();
  if (qstrcmp(key, "hw.machine") == 0) return SystemFacts::architecture();
  return kNothing;
}

URLRequest SegmentIOTracker::trackingRequestWithEvent(
    const QString& event, const QDateTime& date, const QString& writeKey, const QString& userID,
    const QString& anonymousID, const Properties& context, const Properties& properties) {
  QVariantMap body;
  const auto addUnlessNone = [&](const QString& key, const QString& value) {
    if (!value.isNull()) body[key] = value;
  };
  if (properties) body[QStringLiteral("properties")] = *properties;
  addUnlessNone(QStringLiteral("event"), event);
  addUnlessNone(QStringLiteral("userId"), userID);
  addUnlessNone(QStringLiteral("anonymousId"), anonymousID);
  body[QStringLiteral("context")] = contextWith(context);
  body[QStringLiteral("timestamp")] = dateFormatter().stringFromDate(date);
  return post(QStringLiteral("/v1/track"), writeKey, body);
}

URLRequest SegmentIOTracker::identifyRequestWithEmail(const QString& email, const QString& userID,
                                                      const QString& writeKey,
                                                      const QVariantMap& properties) {
  const QString uuid = QStringLiteral("uuid");
  if (userID.isNull()) refuse(QStringLiteral("to identify takes a user id"));
  if (!properties.contains(uuid)) refuse(QStringLiteral("to identify takes a uuid"));
  QVariantMap traits{{QStringLiteral("email"), email}};
  traits.insert(properties);
  return post(QStringLiteral("/v1/identify"), writeKey,
              {{QStringLiteral("userId"), userID},
               {QStringLiteral("traits"), traits},
               {QStringLiteral("anonymousId"), properties[uuid]}});
}

URLRequest SegmentIOTracker::aliasWithId(const QString& newId, const QString& fromOld,
                                         const QString& writeKey) {
  if (newId.isNull() || fromOld.isNull()) refuse(QStringLiteral("an alias takes two identities"));
  return post(QStringLiteral("/v1/alias"), writeKey,
              {{QStringLiteral("userId"), newId}, {QStringLiteral("previousId"), fromOld}});
}

QVariant SegmentIOTracker::bodyForRequest(const URLRequest& request) {
  QString error;
  const QVariant body = Json::read(request.body, &error);
  return Json::isValidObject(body) ? body : QVariant();
}

}  // namespace kelvar
