#pragma once

#include <functional>

#include "core/KVPersister.h"

namespace kelvar {

/// The short messages that the vendor's server has for its users, and which of them were read.
///
/// The settings keep them as a list of maps, each with "id" (an integer, -1 when the server gave
/// none), "message" and "action" (strings, "" for none; the second is an address) and "read" (a
/// boolean). No two have one id. The list only grows: what the server changes or withdraws later
/// stays as it was.
class KELVAR_EXPORT ServerMessages {
 public:
  /// Where the settings have the list.
  static constexpr const char* kKey = "io.kelvarlabs.kelvar.servermessage";

  ServerMessages() = delete;

  /// What became of a load: null, or in one sentence why nothing was fetched.
  using Completion = std::function<void(const QString& error)>;

  /// Fetches the messages and adds the new ones to the list that `persister` has. Without a
  /// persister they go nowhere. Returns at once; `completion` runs exactly once, on the network's
  /// thread where there is one. Loads that overlap do not know of one another: a change that is
  /// made to the list while one is merging may be lost.
  static void load(const KVPersisterRef& persister, Completion completion);

  /// `stored` followed by those of the server's `records` whose ids are not in the list yet.
  static QVariantList merged(const QVariantList& stored, const QVariantList& records);

  /// The list with the message `id` read. Throws `std::invalid_argument` when that one has no
  /// "message" or no "action", as no list that was made here.
  static QVariantList withMessageRead(const QVariantList& stored, int64_t id);
};

}  // namespace kelvar
