#pragma once

#include "platform/Export.h"
#include "platform/URLRequest.h"

namespace kelvar {

/// What was sent to the tracking API last, kept in the user's settings so that people can see it.
class KELVAR_EXPORT LastPayload {
 public:
  LastPayload() = delete;

  /// Path and body. Written when the main thread's event loop runs next: of many at once, the last.
  /// On the main thread.
  static void keep(const URLRequest& request);

  /// Such as "/v1/track"; null when nothing was ever sent.
  static QString path();
  /// JSON.
  static QByteArray body();

  /// False, and `*error` says why, when that failed.
  static bool forget(QString* error);
};

}  // namespace kelvar
