#pragma once

#include <functional>

#include "core/KVPersister.h"
#include "pixels/Result.h"

namespace kelvar {

/// The short messages of the vendor's server for its users, and which of them were read.
///
/// They are stored in the settings as a list of maps, each with "id" (an integer, -1 when the
/// server gave none), "message" and "action" (strings, "" for none; the second is a URL) and "read"
/// (a boolean). Ids are unique. Messages that the server changes or withdraws later are kept as
/// they are.
class KELVAR_EXPORT ServerMessages {
 public:
  /// The list's key in the settings.
  static constexpr const char* kKey = "io.kelvarlabs.kelvar.servermessage";

  /// Maximum length of the list. Of an answer, only that many messages, the last ones, are
  /// considered.
  static constexpr qsizetype kMaxMessages = 1000;

  ServerMessages() = delete;

  /// Receives the outcome of a load.
  using Completion = std::function<void(const Result<void>& loaded)>;

  /// Returns where the list is stored when an answer arrives, or null for nowhere. Called on the
  /// network's thread.
  using Store = std::function<KVPersisterRef()>;

  /// Fetches the messages and adds the new ones to the list in `store`. Returns at once;
  /// `completion` runs exactly once, on the network's thread if there is one. Loads are not
  /// synchronized: a change made to the list while one is merging may be lost.
  static void load(Store store, Completion completion);

  /// The id of a message in the list. A string is read as the number that it begins with.
  static int64_t idOf(const QVariant& message);

  /// `stored` followed by those of the server's `records` whose ids are not in the list yet. Beyond
  /// `kMaxMessages` the oldest read messages are dropped, beginning with those that the server no
  /// longer has and so would not send again; then the oldest others, in the same order.
  static QVariantList merged(const QVariantList& stored, const QVariantList& records);

  /// The list with the message `id` marked as read. Fails if that message lacks "message" or
  /// "action", which cannot happen in a list made here.
  static Result<QVariantList> withMessageRead(const QVariantList& stored, int64_t id);
};

}  // namespace kelvar
