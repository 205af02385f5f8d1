#include "analytics/SegmentIOTracker.h"

#include <stdexcept>

#include "analytics/AnalyticsSettings.h"
#include "analytics/LastPayload.h"
#include "platform/Json.h"
#include "platform/Log.h"
#include "platform/MainQueue.h"
#include "platform/URLSession.h"
#include "platform/isAllowedAddress.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&SegmentIOTracker::theClass);

const QString kEvent = QStringLiteral("event");
const QString kProperties = QStringLiteral("properties");
const QString kDate = QStringLiteral("_date");
const QString kNone = QStringLiteral("(null)");
const QString kHidden = QStringLiteral("***");

QString orNone(const QString& text) { return text.isNull() ? kNone : text; }

QString written(const QVariant& value) {
  if (!value.isValid()) return kNone;
  QString error;
  return QString::fromUtf8(Json::write(value, Json::Layout::Compact, &error));
}

/// Invalid, and `*error` says why, when it is neither an object nor a list in JSON.
QVariant readContainer(const QByteArray& bytes, QString* error) {
  QVariant value = Json::read(bytes, error);
  if (!value.isValid() || Json::isValidObject(value)) return value;
  *error = QStringLiteral("it is neither an object nor a list");
  return {};
}

/// For the log, which is shown around: servers may say what they were told.
QString withoutCredential(QString text, const URLRequest& request) {
  for (const auto& [name, value] : request.headers) {
    if (name != "Authorization") continue;
    const QByteArray credential = value.mid(value.indexOf(' ') + 1);
    const QString key = QString::fromUtf8(QByteArray::fromBase64(credential).chopped(1));
    if (key.isEmpty()) continue;
    text.replace(QLatin1String(credential), kHidden).replace(key, kHidden);
  }
  return text;
}

/// Where nothing is to be sent, as without a network.
void startTask(const URLRequest& request, const URLSession::Completion& completion) {
  URLSession* const session = request.address.isEmpty() ? nullptr : URLSession::shared();
  if (session) return session->dataTask(request, completion);
  const auto fail = [completion] {
    URLAnswer answer;
    answer.error = QStringLiteral("there is no server to talk to");
    completion(answer);
  };
  MainQueue::async(fail, PendingWork::Kind::Report);
}

}  // namespace

const ClassInfo& SegmentIOTracker::theClass() {
  using This = SegmentIOTracker;
  static const ClassInfo kClass =
      Description<This, Tracker>("SegmentIOTracker")
          .initialiser("initWithWriteKey:",
                       [](const QString& writeKey) { return std::make_shared<This>(writeKey); })
          .operation("handlePendingRequests", &This::handlePendingRequests)
          .operation("addSuperProperties:", &This::addSuperProperties)
          .property("isObtainingLocation", &This::isObtainingLocation,
                    &This::setIsObtainingLocation)
          .property("writeKey", &This::writeKey, &This::setWriteKey)
          .property("context", &This::context, &This::setContext);
  return kClass;
}

SegmentIOTracker::SegmentIOTracker(const QString& writeKey) : writeKey_(writeKey) {}

void SegmentIOTracker::track(const QString& name, const Properties& properties) {
  const QDateTime now = QDateTime::currentDateTime();
  if (context_) {
    handlePendingRequests();
    return sendRequest(request(name, now, properties.value_or(QVariantMap())), {});
  }
  if (!isObtainingLocation_) {
    isObtainingLocation_ = true;
    obtainLocation();
  }
  if (name.isNull()) throw std::invalid_argument("an event that has to wait needs a name");
  if (!properties) throw std::invalid_argument("an event that has to wait needs properties");
  pendingEvents_.append({{kEvent, name}, {kProperties, *properties}, {kDate, now}});
}

URLRequest SegmentIOTracker::request(const QString& event, const QDateTime& date,
                                     const QVariantMap& properties) const {
  QVariantMap merged = superProperties_ ? *superProperties_ : QVariantMap();
  merged.insert(properties);
  return trackingRequestWithEvent(event, date, writeKey_, email(), uuid(), context_, merged);
}

QList<URLRequest> SegmentIOTracker::preparedRequests() const {
  QList<URLRequest> requests;
  requests.reserve(pendingEvents_.size());
  for (const QVariantMap& event : pendingEvents_) {
    try {
      requests.append(
          request(event[kEvent].toString(), event[kDate].toDateTime(), event[kProperties].toMap()));
    } catch (const std::invalid_argument& problem) {
      logLine(u"Segment: event left out: %@", {QString::fromUtf8(problem.what())});
    }
  }
  return requests;
}

void SegmentIOTracker::handlePendingRequests() {
  for (const URLRequest& request : preparedRequests()) {
    sendRequest(request, [request](const QVariant& response, const QString& error) {
      logLine(u"Segment: response %@ error %@",
              {withoutCredential(written(response), request), orNone(error)});
    });
  }
  pendingEvents_.clear();
}

void SegmentIOTracker::addSuperProperties(const QVariantMap& properties) {
  if (superProperties_) superProperties_->insert(properties);
}

void SegmentIOTracker::identifyEmail(const QString& email) {
  setEmail(email);
  QVariantMap properties;
  if (!uuid().isNull()) properties[QStringLiteral("uuid")] = uuid();
  sendRequest(identifyRequestWithEmail(email, email, writeKey_, properties), {});
}

void SegmentIOTracker::aliasId(const QString& newId, const QString& fromOld) {
  sendRequest(aliasWithId(newId, fromOld, writeKey_), {});
}

void SegmentIOTracker::aliasFromUUIDTo(const QString& newId) { aliasId(newId, uuid()); }

void SegmentIOTracker::obtainLocation() {
  const auto self = std::static_pointer_cast<SegmentIOTracker>(shared_from_this());
  const URLRequest request{.address = AnalyticsSettings::locationAddress(), .isReport = true};
  startTask(request, [self](const URLAnswer& answer) {
    MainQueue::async([self, answer] { self->locationObtained(answer); }, PendingWork::Kind::Report);
  });
}

void SegmentIOTracker::locationObtained(const URLAnswer& answer) {
  QString error;
  const QVariant location = answer.body.isNull() ? QVariant() : Json::read(answer.body, &error);
  if (answer.error.isNull() && location.typeId() == QMetaType::QVariantMap) {
    context_ = location.toMap();
  }
  if (!answer.body.isNull() || !answer.error.isNull()) handlePendingRequests();
}

void SegmentIOTracker::sendRequest(const URLRequest& request, const Completion& completion) {
  if (isAllowedAddress(request.address)) LastPayload::keep(request);
  startTask(request, [request, completion](const URLAnswer& answer) {
    logLine(u"data %@", {withoutCredential(orNone(QString::fromUtf8(answer.body)), request)});
    logLine(u"response %@", {answer.status == 0 ? kNone : QString::number(answer.status)});
    logLine(u"error %@", {orNone(answer.error)});
    if (!completion) return;
    QString problem;
    const QVariant response =
        answer.body.isNull() ? QVariant() : readContainer(answer.body, &problem);
    completion(response, problem.isNull() ? answer.error : problem);
  });
}

}  // namespace kelvar
