#pragma once

#include <functional>

#include "core/KVPersister.h"

namespace kelvar {

/// The short messages that the vendor's server has for its users, and which of them were read.
///
/// The settings keep them as a list of maps, each with "id" (an integer, -1 when the server gave
/// none), "message" and "action" (strings, "" for none; the second is an address) and "read" (a
/// boolean). No two have one id. What the server changes or withdraws later stays as it was.
class KELVAR_EXPORT ServerMessages {
 public:
  /// Where the settings have the list.
  static constexpr const char* kKey = "io.kelvarlabs.kelvar.servermessage";

  /// As many are kept, and so many of one answer are looked at, its last.
  static constexpr qsizetype kMost = 1000;

  ServerMessages() = delete;

  /// What became of a load: null, or in one sentence why nothing was fetched.
  using Completion = std::function<void(const QString& error)>;

  /// Where the list is when an answer is there; null for nowhere. Asked on the network's thread.
  using Store = std::function<KVPersisterRef()>;

  /// Fetches the messages and adds the new ones to the list in `store`. Returns at once;
  /// `completion` runs exactly once, on the network's thread where there is one. Loads that overlap
  /// do not know of one another: a change that is made to the list while one is merging may be
  /// lost.
  static void load(Store store, Completion completion);

  /// The id of a message of the list. A text is read as the number that it begins with.
  static int64_t idOf(const QVariant& message);

  /// `stored` followed by those of the server's `records` whose ids are not in the list yet. Beyond
  /// `kMost` the oldest go that were read, those first that the server has no longer and so would
  /// not send again; then the oldest of the others, in the same way.
  static QVariantList merged(const QVariantList& stored, const QVariantList& records);

  /// The list with the message `id` read. Throws `std::invalid_argument` when that one has no
  /// "message" or no "action", as no list that was made here.
  static QVariantList withMessageRead(const QVariantList& stored, int64_t id);
};

}  // namespace kelvar
