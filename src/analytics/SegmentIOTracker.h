#pragma once

#include <QDateTime>
#include <functional>

#include "analytics/SuperPropertiesMerging.h"
#include "analytics/Tracker.h"
#include "platform/URLRequest.h"

namespace kelvar {

struct URLAnswer;

/// Reports events to the server of `AnalyticsSettings`, in the form of Segment's HTTP tracking API:
/// one request for each, in the order in which they were tracked, without a second try.
///
/// Once in its life, before the first event, it asks the location service where the machine is,
/// and tells that with every event. Until the answer is there, events wait. If there is none, those
/// that wait are sent without it, and all later ones wait for good.
///
/// Timed events are not reported. On the main thread, whose event loop has to run; make it with
/// `std::make_shared`.
class KELVAR_EXPORT SegmentIOTracker : public Tracker, public SuperPropertiesMerging {
 public:
  /// Gets the body of the answer, read as JSON, or an invalid value and what went wrong.
  using Completion = std::function<void(const QVariant& response, const QString& error)>;

  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }

  explicit SegmentIOTracker(const QString& writeKey);

  /// Throws `std::invalid_argument`, and records nothing, when the event has to wait and lacks a
  /// name or properties, or is to be sent and has properties that are no JSON.
  void track(const QString& name, const Properties& properties) override;

  /// A request for each event that waits. One that cannot be written is left out, with a log line.
  QList<URLRequest> preparedRequests() const;
  /// Sends them. Nothing waits any more, whatever comes of it.
  void handlePendingRequests();

  /// They stay the caller's, who may change them: what counts is what they are when an event is
  /// sent. The event's own properties win.
  void setSuperProperties(const SharedProperties& properties) override {
    superProperties_ = properties;
  }
  const SharedProperties& superProperties() const { return superProperties_; }
  /// Nothing happens when there are none to add to.
  void addSuperProperties(const QVariantMap& properties) override;

  /// Takes the address on as the tracker's own, too. Throws `std::invalid_argument` when the
  /// address or the uuid is missing.
  void identifyEmail(const QString& email) override;
  /// These throw `std::invalid_argument` when an identity is missing.
  void aliasId(const QString& newId, const QString& fromOld) override;
  void aliasFromUUIDTo(const QString& newId) override;

  /// Whether the location service has been asked, ever.
  bool isObtainingLocation() const { return isObtainingLocation_; }
  void setIsObtainingLocation(bool isObtaining) { isObtainingLocation_ = isObtaining; }
  QString writeKey() const { return writeKey_; }
  void setWriteKey(const QString& writeKey) { writeKey_ = writeKey; }
  /// What the location service has answered.
  Properties context() const { return context_; }
  void setContext(const Properties& context) { context_ = context; }
  /// What waits: maps with "event", "properties" and "_date".
  const QList<QVariantMap>& pendingEvents() const { return pendingEvents_; }
  void setPendingEvents(const QList<QVariantMap>& events) { pendingEvents_ = events; }

  /// Starts the request and returns at once. `completion` may be empty; it runs on the session's
  /// thread, and not at all when the process ends before. What comes back is logged, without the
  /// credential. A request without an address fails as without a network.
  static void sendRequest(const URLRequest& request, const Completion& completion);

  // The requests. They depend on nothing but their arguments and the machine.

  class KELVAR_EXPORT DateFormatter {
   public:
    /// Local time with milliseconds and the zone's offset: 2017-03-09T14:05:31.207+0100.
    QString stringFromDate(const QDateTime& date) const;
  };
  static const DateFormatter& dateFormatter();

  /// The credential of RFC 7617. None is the empty text.
  static QString basicAuthValueForUsername(const QString& username, const QString& password);

  /// "hw.model", the machine's model, or "hw.machine", its architecture. Empty when unknown.
  static QString getSystemStringForKey(const char* key);

  /// `context` is what the location service has answered. Throws `std::invalid_argument` when the
  /// properties are no JSON.
  static URLRequest trackingRequestWithEvent(const QString& event, const QDateTime& date,
                                             const QString& writeKey, const QString& userID,
                                             const QString& anonymousID, const Properties& context,
                                             const Properties& properties);
  /// `properties` must have a "uuid". One that is named "email" replaces the address.
  static URLRequest identifyRequestWithEmail(const QString& email, const QString& userID,
                                             const QString& writeKey,
                                             const QVariantMap& properties);
  static URLRequest aliasWithId(const QString& newId, const QString& fromOld,
                                const QString& writeKey);

  /// The request's body, read as JSON; invalid when it is none.
  static QVariant bodyForRequest(const URLRequest& request);

 private:
  void obtainLocation();
  void locationObtained(const URLAnswer& answer);
  URLRequest request(const QString& event, const QDateTime& date,
                     const QVariantMap& properties) const;

  bool isObtainingLocation_ = false;
  QString writeKey_;
  Properties context_;
  QList<QVariantMap> pendingEvents_;
  SharedProperties superProperties_;
};

}  // namespace kelvar
