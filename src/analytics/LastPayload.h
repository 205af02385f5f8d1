#pragma once

#include "platform/Export.h"
#include "platform/URLRequest.h"

namespace kelvar {

/// What was sent to the tracking API last, kept in the user's settings so that people can see it.
///
/// E-mail addresses, the public address and the place are left out: what stands there instead says
/// so. On the main thread.
class KELVAR_EXPORT LastPayload {
 public:
  LastPayload() = delete;

  /// Written, on another thread, once the main thread's event loop has run for a second without a
  /// next one, or by `write`.
  static void keep(const URLRequest& request);

  /// Writes what waits for that, as before the program ends.
  static void write();

  /// Such as "/v1/track"; null when nothing was ever sent.
  static QString path();
  /// JSON.
  static QByteArray body();

  /// False, and `*error` says why, when that failed.
  static bool forget(QString* error);
};

}  // namespace kelvar
