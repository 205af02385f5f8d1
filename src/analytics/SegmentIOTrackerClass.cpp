#include <stdexcept>

#include "analytics/SegmentIOTracker.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&SegmentIOTracker::staticClassInfo);

QVariantList pendingEventsOf(const SegmentIOTracker& tracker) {
  return {tracker.pendingEvents().begin(), tracker.pendingEvents().end()};
}

void setPendingEventsOf(SegmentIOTracker& tracker, const QVariantList& events) {
  QList<QVariantMap> pending;
  for (const QVariant& event : events) {
    const QVariantMap map = event.toMap();
    const bool isComplete = map[QStringLiteral("event")].typeId() == QMetaType::QString &&
                            map[QStringLiteral("properties")].typeId() == QMetaType::QVariantMap &&
                            map[QStringLiteral("_date")].typeId() == QMetaType::QDateTime;
    if (!isComplete) {
      throw std::invalid_argument(
          "an event that waits is a dictionary with event, properties and _date");
    }
    pending.append(map);
  }
  tracker.setPendingEvents(pending);
}

Properties superPropertiesOf(const SegmentIOTracker& tracker) {
  return tracker.superProperties() ? Properties(*tracker.superProperties()) : std::nullopt;
}

void replaceSuperProperties(SegmentIOTracker& tracker, const Properties& properties) {
  tracker.setSuperProperties(properties ? std::make_shared<QVariantMap>(*properties) : nullptr);
}

QVariantList preparedRequestsOf(const SegmentIOTracker& tracker) {
  QVariantList requests;
  for (const URLRequest& request : tracker.preparedRequests()) {
    requests.append(QVariant::fromValue(request));
  }
  return requests;
}

}  // namespace

const ClassInfo& SegmentIOTracker::staticClassInfo() {
  using This = SegmentIOTracker;
  static const ClassInfo kClass =
      ClassInfoBuilder<This, Tracker>("SegmentIOTracker")
          .initializer(
              "init", [] { return std::make_shared<This>(QString()); },
              "Creates a tracker without a project key.")
          .initializer(
              "initWithWriteKey:",
              [](const QString& writeKey) { return std::make_shared<This>(writeKey); },
              "Creates a tracker that sends events to the analytics server with this project key.")
          .operation("handlePendingRequests", &This::handlePendingRequests,
                     "Sends the events that are waiting for the location.")
          .operation("addSuperProperties:", &This::addSuperProperties,
                     "Adds to the properties that are sent with every event, if any were set; new "
                     "values replace old ones.")
          .property("isObtainingLocation", &This::isObtainingLocation,
                    &This::setIsObtainingLocation, "Whether the location service has been asked.")
          .property("writeKey", &This::writeKey, &This::setWriteKey,
                    "The key of the analytics project.")
          .property("context", &This::context, &This::setContext,
                    "What the location service answered.")
          .property("pendingEvents", pendingEventsOf, setPendingEventsOf,
                    "The events that are waiting: dictionaries with \"event\", \"properties\" and "
                    "\"_date\".")
          .property("superProperties", superPropertiesOf, replaceSuperProperties,
                    "The properties that are sent with every event: a copy, nil for none.")
          .classOperation("basicAuthValueForUsername:password:", &This::basicAuthValueForUsername,
                          "Returns the credential of a request's Authorization header; nil counts "
                          "as empty.")
          .classOperation(
              "getSystemStringForKey:",
              [](const QString& key) { return This::getSystemStringForKey(key.toLatin1()); },
              "Returns the machine's model for \"hw.model\", its architecture for \"hw.machine\", "
              "and an empty string for any other name.")
          .classOperation(
              "trackingRequestWithEvent:date:writeKey:userID:anonymousID:context:properties:",
              &This::trackingRequestWithEvent,
              "Returns the request that reports an event; what is nil is left out.")
          .classOperation("identifyRequestWithEmail:userID:writeKey:properties:",
                          &This::identifyRequestWithEmail,
                          "Returns the request that links an email address to the \"uuid\" among "
                          "the properties.")
          .classOperation("aliasWithId:fromOld:writeKey:", &This::aliasWithId,
                          "Returns the request that links a new identity to an old one.")
          .classOperation("bodyForRequest:", &This::bodyForRequest,
                          "Returns the request's body read as JSON; nil if it is none.")
          .operation("preparedRequests", preparedRequestsOf,
                     "Returns the requests for the events that are waiting, in their order.");
  return kClass;
}

}  // namespace kelvar
