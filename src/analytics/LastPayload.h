#pragma once

#include "pixels/Result.h"
#include "platform/Export.h"
#include "platform/network/URLRequest.h"

namespace kelvar {

/// The last payload sent to the tracking API, kept in the user's settings so that users can see it.
///
/// Email addresses, the public IP address and the location are replaced by "(not kept)". Use on the
/// main thread.
class KELVAR_EXPORT LastPayload {
 public:
  LastPayload() = delete;

  /// Stores the payload on another thread, once no other payload has arrived for a second, or as
  /// soon as `write` is called.
  static void keep(const URLRequest& request);

  /// Stores a waiting payload immediately. Call before the program exits.
  static void write();

  /// The request's path, such as "/v1/track"; null if nothing was ever sent.
  static QString path();
  /// The request's body, JSON.
  static QByteArray body();

  static Result<void> forget();
};

}  // namespace kelvar
