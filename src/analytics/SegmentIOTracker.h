#pragma once

#include <QDateTime>
#include <functional>
#include <optional>

#include "analytics/SuperPropertiesMerging.h"
#include "analytics/Tracker.h"
#include "pixels/Result.h"
#include "platform/network/URLRequest.h"

namespace kelvar {

struct URLResponse;

/// Reports events to the server of `AnalyticsSettings`, using Segment's HTTP tracking API: one
/// request per event, in the order of tracking, without retries.
///
/// Once in its life, before the first event, it asks the location service where the machine is, and
/// adds the answer to every event. Events wait for the answer. If there is none, the waiting events
/// are sent without a location, and later events are never sent.
///
/// Timed events are not reported. Use on the main thread, whose event loop must run. Create with
/// `std::make_shared`.
class KELVAR_EXPORT SegmentIOTracker : public Tracker, public SuperPropertiesMerging {
 public:
  /// Receives the body of the answer, read as JSON, or an invalid value and the error.
  using Completion =
      std::function<void(const QVariant& response, const std::optional<Error>& error)>;

  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  explicit SegmentIOTracker(const QString& writeKey);

  /// Throws `std::invalid_argument` and records nothing if the event has to wait and lacks a name
  /// or properties, or if it is sent and its properties are not valid JSON.
  void track(const QString& name, const Properties& properties) override;

  /// One request for each waiting event. Events that cannot be serialized are left out and logged.
  QList<URLRequest> preparedRequests() const;
  /// Sends the waiting events. Afterward, none wait, even if sending failed.
  void handlePendingRequests();

  /// Shared with the caller, who may change them: they are read when an event is sent. The event's
  /// own properties take precedence.
  void setSuperProperties(const SharedProperties& properties) override {
    superProperties_ = properties;
  }
  const SharedProperties& superProperties() const { return superProperties_; }
  /// Does nothing if there are no super properties.
  void addSuperProperties(const QVariantMap& properties) override;

  /// Also sets the tracker's own email address. Throws `std::invalid_argument` if the address or
  /// the uuid is missing.
  void identifyEmail(const QString& email) override;
  /// These throw `std::invalid_argument` if an identity is missing.
  void aliasId(const QString& newId, const QString& fromOld) override;
  void aliasFromUUIDTo(const QString& newId) override;

  /// Whether the location service was ever asked.
  bool isObtainingLocation() const { return isObtainingLocation_; }
  void setIsObtainingLocation(bool isObtaining) { isObtainingLocation_ = isObtaining; }
  QString writeKey() const { return writeKey_; }
  void setWriteKey(const QString& writeKey) { writeKey_ = writeKey; }
  /// The location service's answer.
  Properties context() const { return context_; }
  void setContext(const Properties& context) { context_ = context; }
  /// The waiting events: maps with "event", "properties" and "_date".
  const QList<QVariantMap>& pendingEvents() const { return pendingEvents_; }
  void setPendingEvents(const QList<QVariantMap>& events) { pendingEvents_ = events; }

  /// Starts the request and returns immediately. `completion` may be empty. It runs on the
  /// session's thread, or not at all if the process ends first. The response is logged without the
  /// credential. A request without a URL fails like one without a network.
  static void sendRequest(const URLRequest& request, const Completion& completion);

  // Building requests. These depend only on their arguments and on the machine.

  class KELVAR_EXPORT DateFormatter {
   public:
    /// Local time with milliseconds and the zone's offset: 2017-03-09T14:05:31.207+0100.
    QString stringFromDate(const QDateTime& date) const;
  };
  static const DateFormatter& dateFormatter();

  /// The credential of RFC 7617; an empty string for none.
  static QString basicAuthValueForUsername(const QString& username, const QString& password);

  /// `name` is "hw.model" for the machine's model or "hw.machine" for its architecture. Empty if
  /// unknown.
  static QString getSystemStringForKey(const char* key);

  /// `context` is the location service's answer. Throws `std::invalid_argument` if the properties
  /// are not valid JSON.
  static URLRequest trackingRequestWithEvent(const QString& event, const QDateTime& date,
                                             const QString& writeKey, const QString& userID,
                                             const QString& anonymousID, const Properties& context,
                                             const Properties& properties);
  /// `properties` must contain "uuid". A property named "email" replaces the address.
  static URLRequest identifyRequestWithEmail(const QString& email, const QString& userID,
                                             const QString& writeKey,
                                             const QVariantMap& properties);
  static URLRequest aliasWithId(const QString& newId, const QString& fromOld,
                                const QString& writeKey);

  /// The request's body, parsed as JSON; invalid if it is not JSON.
  static QVariant bodyForRequest(const URLRequest& request);

 private:
  void obtainLocation();
  void locationObtained(const URLResponse& answer);
  URLRequest request(const QString& event, const QDateTime& date,
                     const QVariantMap& properties) const;

  bool isObtainingLocation_ = false;
  QString writeKey_;
  Properties context_;
  QList<QVariantMap> pendingEvents_;
  SharedProperties superProperties_;
};

}  // namespace kelvar
