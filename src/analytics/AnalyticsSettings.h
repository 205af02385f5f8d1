#pragma once

#include <QUrl>

#include "platform/Export.h"

namespace kelvar {

/// Where analytics go and with which keys: what Info.plist says, overridden by the environment.
///
/// No server is set by default, and none whatever is set while DO_NOT_TRACK is anything but empty
/// or 0: then nothing leaves the machine. Safe from any thread.
class KELVAR_EXPORT AnalyticsSettings {
 public:
  AnalyticsSettings() = delete;

  static bool isDoNotTrack();

  /// Whether events are sent: there is an address for them, and a request may go there.
  static bool isOn();

  /// Where the tracking API has `path`, such as "/v1/track"; empty when nothing is to be sent.
  /// KELVAR_ANALYTICS_SERVER, KVAnalyticsServer.
  static QUrl trackingAddress(const QString& path);

  /// Where the location service tells where this machine is, with its key; empty when it is not to
  /// be asked, as without a server for events. KELVAR_LOCATION_SERVER, KVLocationServer.
  static QUrl locationAddress();

  /// Of the analytics project. KELVAR_ANALYTICS_WRITE_KEY, KVAnalyticsWriteKey.
  static QString writeKey();

  /// Of the location service. KELVAR_LOCATION_KEY, KVLocationKey.
  static QString locationKey();
};

}  // namespace kelvar
