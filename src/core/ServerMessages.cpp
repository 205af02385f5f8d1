#include "core/ServerMessages.h"

#include <QSet>
#include <algorithm>
#include <stdexcept>

#include "core/ApiServer.h"
#include "core/ServerReply.h"
#include "platform/Bundle.h"
#include "platform/Format.h"
#include "platform/Log.h"
#include "platform/SystemFacts.h"
#include "platform/URLSession.h"
#include "runtime/Conversion.h"
#include "runtime/leadingNumber.h"

namespace kelvar {
namespace {

constexpr int64_t kNoId = -1;

QString key() { return QLatin1String(ServerMessages::kKey); }

/// 0 for what is no number.
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

/// The id that the message gets, or has already, of which this is the server's record.
int64_t idOfRecord(const QVariant& record) {
  const int64_t given = integer(valueForKeyPath(record, QStringLiteral("fields.ID")));
  return given == 0 ? kNoId : given;
}

/// What goes first is least.
int worth(const QVariant& message, const QSet<int64_t>& offered) {
  const bool isRead = message.toMap()[QStringLiteral("read")].toBool();
  return (isRead ? 0 : 2) + int(offered.contains(ServerMessages::idOf(message)));
}

void dropWhatIsTooMuch(QVariantList* list, const QSet<int64_t>& offered) {
  constexpr int kMostWorth = 3;
  qsizetype excess = list->size() - ServerMessages::kMost;
  for (int least = 0; excess > 0 && least <= kMostWorth; ++least) {
    list->removeIf([&](const QVariant& message) {
      return excess > 0 && worth(message, offered) == least && excess-- > 0;
    });
  }
}

/// The string in a server's record, "" for none.
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
                    SystemFacts::operatingSystemVersionString().section(u' ', 1, 1)});
}

/// Null, or why there is nothing in the answer.
QString merge(const URLAnswer& answer, const ServerMessages::Store& store) {
  if (!answer.error.isNull()) return answer.error;
  if (answer.body.isEmpty()) return QStringLiteral("the server's answer is empty");
  QString error;
  const QVariant reply = readServerReply(answer.body, &error);
  if (!reply.isValid()) return QStringLiteral("the server's answer is no JSON: ") + error;
  const QVariantList records = reply.toMap()[QStringLiteral("messages")].toList();
  const KVPersisterRef persister = store();
  if (records.isEmpty() || !persister) return {};
  const QVariantList stored = persister->objectForKey(key()).toList();
  persister->setObject(ServerMessages::merged(stored, records), key());
  return {};
}

}  // namespace

void ServerMessages::load(Store store, Completion completion) {
  const QString wanted = pathAndQuery();
  const QUrl address = addressOnApiServer(wanted);
  logLine(u"Loading message with version: %@",
          {address.isEmpty() ? wanted : loggedAddress(address)});
  URLSession* const session = address.isEmpty() ? nullptr : URLSession::shared();
  if (!session) return completion(QStringLiteral("no connection"));
  session->dataTask(address, [store = std::move(store), completion = std::move(completion)](
                                 const URLAnswer& answer) { completion(merge(answer, store)); });
}

int64_t ServerMessages::idOf(const QVariant& message) {
  return integer(message.toMap()[QStringLiteral("id")]);
}

QVariantList ServerMessages::merged(const QVariantList& stored, const QVariantList& records) {
  QSet<int64_t> ids;
  for (const QVariant& each : stored) ids.insert(idOf(each));
  QSet<int64_t> offered;
  QVariantList list = stored;
  for (const QVariant& record : records.last(std::min(records.size(), kMost))) {
    if (record.typeId() != QMetaType::QVariantMap) continue;
    const int64_t id = idOfRecord(record);
    offered.insert(id);
    if (ids.contains(id)) continue;
    ids.insert(id);
    list.append(message(id, text(record, QStringLiteral("fields.Message")),
                        text(record, QStringLiteral("fields.Action Link")), false));
  }
  dropWhatIsTooMuch(&list, offered);
  return list;
}

QVariantList ServerMessages::withMessageRead(const QVariantList& stored, int64_t id) {
  QVariantList list = stored;
  for (QVariant& each : list) {
    if (idOf(each) != id) continue;
    const QVariantMap old = each.toMap();
    const QVariant text = old[QStringLiteral("message")];
    const QVariant action = old[QStringLiteral("action")];
    if (!text.isValid() || !action.isValid()) {
      throw std::invalid_argument("a message without text or address cannot be marked read");
    }
    each = message(id, text.toString(), action.toString(), true);
  }
  return list;
}

}  // namespace kelvar
