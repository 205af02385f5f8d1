#include "core/ServerReply.h"

#include "platform/Log.h"
#include "platform/QtError.h"
#include "platform/plist/Json.h"

namespace kelvar {

Result<QVariant> readServerReply(const QByteArray& body) {
  const Result<QVariant> reply = Json::readContainer(body);
  logLine(u"Parse error: %@", {reply ? QString() : messageOf(reply.error())});
  if (isLogging()) logLine(u"result: %@", {loggedValue(reply.value_or(QVariant()))});
  return reply;
}

QString loggedValue(const QVariant& value) {
  if (!value.isValid()) return {};
  if (value.typeId() == QMetaType::QString) return value.toString();
  return QString::fromUtf8(Json::write(value).value_or(QByteArray()));
}

}  // namespace kelvar
