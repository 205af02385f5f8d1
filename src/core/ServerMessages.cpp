#include "core/ServerMessages.h"

#include <QSet>
#include <algorithm>

#include "core/ApiServer.h"
#include "core/ServerReply.h"
#include "platform/Bundle.h"
#include "platform/Format.h"
#include "platform/Log.h"
#include "platform/MainQueue.h"
#include "platform/QtError.h"
#include "platform/SystemInfo.h"
#include "platform/network/URLSession.h"
#include "runtime/Conversion.h"
#include "runtime/leadingNumber.h"

namespace kelvar {
namespace {

constexpr int64_t kNoId = -1;

QString key() { return QLatin1String(ServerMessages::kKey); }

/// 0 for values that are not numbers.
int64_t integer(const QVariant& value) {
  if (value.typeId() == QMetaType::QString) return leadingNumber<int64_t>(value.toString());
  return fromVariant<int64_t>(value).value_or(0);
}

QVariantMap message(int64_t id, const QString& text, const QString& action, bool read) {
  return {{QStringLiteral("id"), qlonglong(id)},
          {QStringLiteral("message"), text},
          {QStringLiteral("action"), action},
          {QStringLiteral("read"), read}};
}

/// The id of the message that is made from a server's record.
int64_t idOfRecord(const QVariant& record) {
  const int64_t given = integer(valueForKeyPath(record, QStringLiteral("fields.ID")));
  return given == 0 ? kNoId : given;
}

/// Messages of the least worth are dropped first.
int worth(const QVariant& message, const QSet<int64_t>& offered) {
  const bool isRead = message.toMap()[QStringLiteral("read")].toBool();
  return (isRead ? 0 : 2) + int(offered.contains(ServerMessages::idOf(message)));
}

void dropExcess(QVariantList* list, const QSet<int64_t>& offered) {
  constexpr int kMaxWorth = 3;
  qsizetype excess = list->size() - ServerMessages::kMaxMessages;
  for (int least = 0; excess > 0 && least <= kMaxWorth; ++least) {
    list->removeIf([&](const QVariant& message) {
      return excess > 0 && worth(message, offered) == least && excess-- > 0;
    });
  }
}

/// A string in a server's record, "" for none.
QString text(const QVariant& record, const QString& keyPath) {
  const QVariant value = valueForKeyPath(record, keyPath);
  return value.typeId() == QMetaType::QString ? value.toString() : QStringLiteral("");
}

QString pathAndQuery() {
  const auto version = [](const QVariant& number, const QVariant& build) {
    return formatted(u"%@.%@", {number.toString(), build.toString()});
  };
  const QString number = QStringLiteral("CFBundleShortVersionString");
  const QString build = QStringLiteral("CFBundleVersion");
  const QVariantMap host = Bundle::hostInformation();
  return formatted(u"/r/get_messages?version=%@&skVersion=%@&osVersion=%@",
                   {version(Bundle::objectForInfoDictionaryKey(number),
                            Bundle::objectForInfoDictionaryKey(build)),
                    version(host[number], host[build]),
                    SystemInfo::operatingSystemVersionString().section(u' ', 1, 1)});
}

/// The messages in the server's answer.
Result<QVariantList> recordsIn(const URLResponse& answer) {
  if (answer.error) return tl::unexpected(*answer.error);
  if (answer.body.isEmpty()) {
    return failure(Error::Kind::Damaged, QStringLiteral("the server's answer is empty"));
  }
  const Result<QVariant> reply = readServerReply(answer.body);
  if (!reply) return failureIn(QStringLiteral("the server's answer is not JSON"), reply.error());
  return reply->toMap()[QStringLiteral("messages")].toList();
}

void merge(const QVariantList& records, const KVPersisterRef& persister) {
  const QVariantList stored = persister->objectForKey(key()).toList();
  persister->setObject(ServerMessages::merged(stored, records), key());
}

/// Calls `completion` when everything is stored.
void handle(const URLResponse& answer, const ServerMessages::Store& store,
            const ServerMessages::Completion& completion) {
  const Result<QVariantList> records = recordsIn(answer);
  if (!records) return completion(tl::unexpected(records.error()));
  const KVPersisterRef persister = store();
  if (records->isEmpty() || !persister) return completion({});
  if (persister->isThreadSafe()) {
    merge(*records, persister);
    return completion({});
  }
  MainQueue::async([records = *records, persister, completion] {
    merge(records, persister);
    completion({});
  });
}

}  // namespace

void ServerMessages::load(Store store, Completion completion) {
  const QString wanted = pathAndQuery();
  const QUrl address = addressOnApiServer(wanted);
  logLine(u"Loading message with version: %@",
          {address.isEmpty() ? wanted : loggedAddress(address)});
  URLSession* const session = address.isEmpty() ? nullptr : URLSession::shared();
  if (!session) return completion(failure(Error::Kind::Io, QStringLiteral("no connection")));
  session->dataTask(address, [store = std::move(store), completion = std::move(completion)](
                                 const URLResponse& answer) { handle(answer, store, completion); });
}

int64_t ServerMessages::idOf(const QVariant& message) {
  return integer(message.toMap()[QStringLiteral("id")]);
}

QVariantList ServerMessages::merged(const QVariantList& stored, const QVariantList& records) {
  QSet<int64_t> ids;
  for (const QVariant& each : stored) ids.insert(idOf(each));
  QSet<int64_t> offered;
  QVariantList list = stored;
  for (const QVariant& record : records.last(std::min(records.size(), kMaxMessages))) {
    if (record.typeId() != QMetaType::QVariantMap) continue;
    const int64_t id = idOfRecord(record);
    offered.insert(id);
    if (ids.contains(id)) continue;
    ids.insert(id);
    list.append(message(id, text(record, QStringLiteral("fields.Message")),
                        text(record, QStringLiteral("fields.Action Link")), false));
  }
  dropExcess(&list, offered);
  return list;
}

Result<QVariantList> ServerMessages::withMessageRead(const QVariantList& stored, int64_t id) {
  QVariantList list = stored;
  for (QVariant& each : list) {
    if (idOf(each) != id) continue;
    const QVariantMap old = each.toMap();
    const QVariant text = old[QStringLiteral("message")];
    const QVariant action = old[QStringLiteral("action")];
    if (!text.isValid() || !action.isValid()) {
      return failure(Error::Kind::Damaged,
                     QStringLiteral("a message without text or address cannot be marked read"));
    }
    each = message(id, text.toString(), action.toString(), true);
  }
  return list;
}

}  // namespace kelvar
