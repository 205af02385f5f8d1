#include "analytics/SegmentIOTracker.h"

#include <stdexcept>

#include "analytics/AnalyticsSettings.h"
#include "analytics/LastPayload.h"
#include "platform/Log.h"
#include "platform/MainQueue.h"
#include "platform/QtError.h"
#include "platform/network/URLSession.h"
#include "platform/network/isAllowedAddress.h"
#include "platform/plist/Json.h"

namespace kelvar {
namespace {

const QString kEvent = QStringLiteral("event");
const QString kProperties = QStringLiteral("properties");
const QString kDate = QStringLiteral("_date");
const QString kNone = QStringLiteral("(null)");
const QString kHidden = QStringLiteral("***");

QString orNone(const QString& text) { return text.isNull() ? kNone : text; }

QString written(const QVariant& value) {
  if (!value.isValid()) return kNone;
  return QString::fromUtf8(Json::write(value).value_or(QByteArray()));
}

/// Logs get shared, and servers may echo the credential.
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

/// Without a server the request fails as without a network.
void startTask(const URLRequest& request, const URLSession::Completion& completion) {
  URLSession* const session = request.address.isEmpty() ? nullptr : URLSession::shared();
  if (session) return session->dataTask(request, completion);
  const auto fail = [completion] {
    URLResponse answer;
    answer.error = Error{Error::Kind::NotFound, "there is no server to talk to"};
    completion(answer);
  };
  MainQueue::async(fail, PendingTasks::Kind::Report);
}

}  // namespace

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
    sendRequest(request, [request](const QVariant& response, const std::optional<Error>& error) {
      logLine(u"Segment: response %@ error %@",
              {withoutCredential(written(response), request), messageOf(error)});
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
  startTask(request, [self](const URLResponse& answer) {
    MainQueue::async([self, answer] { self->locationObtained(answer); },
                     PendingTasks::Kind::Report);
  });
}

void SegmentIOTracker::locationObtained(const URLResponse& answer) {
  const QVariant location = Json::read(answer.body).value_or(QVariant());
  if (!answer.error && location.typeId() == QMetaType::QVariantMap) {
    context_ = location.toMap();
  }
  if (!answer.body.isNull() || answer.error) handlePendingRequests();
}

void SegmentIOTracker::sendRequest(const URLRequest& request, const Completion& completion) {
  if (isAllowedAddress(request.address)) LastPayload::keep(request);
  startTask(request, [request, completion](const URLResponse& answer) {
    logLine(u"data %@", {withoutCredential(orNone(QString::fromUtf8(answer.body)), request)});
    logLine(u"response %@", {answer.status == 0 ? kNone : QString::number(answer.status)});
    logLine(u"error %@", {messageOf(answer.error)});
    if (!completion) return;
    if (answer.body.isNull()) return completion({}, answer.error);
    const Result<QVariant> response = Json::readContainer(answer.body);
    completion(response.value_or(QVariant()), response ? answer.error : response.error());
  });
}

}  // namespace kelvar
