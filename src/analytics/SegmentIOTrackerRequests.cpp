#include <cmath>
#include <stdexcept>

#include "analytics/AnalyticsSettings.h"
#include "analytics/SegmentIOTracker.h"
#include "analytics/TrackingContext.h"
#include "platform/SystemInfo.h"
#include "platform/plist/Json.h"
#include "util/MF_Base64Codec.h"

namespace kelvar {
namespace {

/// Reals that are whole become integers, so that counters and sizes have no fraction.
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
  const Result<QByteArray> text = Json::write(withPlainNumbers(body));
  if (!text) throw std::invalid_argument(text.error().message);
  request.body = *text;
  return request;
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
  if (qstrcmp(key, "hw.model") == 0) return SystemInfo::machineModel();
  if (qstrcmp(key, "hw.machine") == 0) return SystemInfo::architecture();
  return QStringLiteral("");
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
  body[QStringLiteral("context")] = trackingContext(context);
  body[QStringLiteral("timestamp")] = dateFormatter().stringFromDate(date);
  return post(QStringLiteral("/v1/track"), writeKey, body);
}

URLRequest SegmentIOTracker::identifyRequestWithEmail(const QString& email, const QString& userID,
                                                      const QString& writeKey,
                                                      const QVariantMap& properties) {
  const QString uuid = QStringLiteral("uuid");
  if (userID.isNull()) throw std::invalid_argument("to identify takes a user id");
  if (!properties.contains(uuid)) throw std::invalid_argument("to identify takes a uuid");
  QVariantMap traits{{QStringLiteral("email"), email}};
  traits.insert(properties);
  return post(QStringLiteral("/v1/identify"), writeKey,
              {{QStringLiteral("userId"), userID},
               {QStringLiteral("traits"), traits},
               {QStringLiteral("anonymousId"), properties[uuid]}});
}

URLRequest SegmentIOTracker::aliasWithId(const QString& newId, const QString& fromOld,
                                         const QString& writeKey) {
  if (newId.isNull() || fromOld.isNull())
    throw std::invalid_argument("an alias takes two identities");
  return post(QStringLiteral("/v1/alias"), writeKey,
              {{QStringLiteral("userId"), newId}, {QStringLiteral("previousId"), fromOld}});
}

QVariant SegmentIOTracker::bodyForRequest(const URLRequest& request) {
  return Json::readContainer(request.body).value_or(QVariant());
}

}  // namespace kelvar
