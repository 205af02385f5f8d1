#pragma once

#include <QUrl>

#include "platform/Export.h"

namespace kelvar {

/// Where analytics are sent and with which keys: Info.plist, overridden by environment variables.
///
/// No server is set by default. If DO_NOT_TRACK is set to anything but 0, no server counts as set:
/// nothing leaves the machine. Thread-safe.
class KELVAR_EXPORT AnalyticsSettings {
 public:
  AnalyticsSettings() = delete;

  static bool isDoNotTrack();

  /// Whether events are sent: a server is set, and its URL is allowed.
  static bool isOn();

  /// The URL of `path`, such as "/v1/track", on the server for events; empty if nothing may be
  /// sent. From KELVAR_ANALYTICS_SERVER or KVAnalyticsServer.
  static QUrl trackingAddress(const QString& path);

  /// The URL of the location service, including its key; empty if it must not be used, for example
  /// because there is no server for events. From KELVAR_LOCATION_SERVER or KVLocationServer.
  static QUrl locationAddress();

  /// Key of the analytics project. From KELVAR_ANALYTICS_WRITE_KEY or KVAnalyticsWriteKey.
  static QString writeKey();

  /// Key of the location service. From KELVAR_LOCATION_KEY or KVLocationKey.
  static QString locationKey();
};

}  // namespace kelvar
