#include "core/ServerReply.h"

#include "platform/Json.h"
#include "platform/Log.h"

namespace kelvar {

QVariant readServerReply(const QByteArray& body, QString* error) {
  error->clear();
  QVariant reply = Json::read(body, error);
  const int type = reply.typeId();
  if (reply.isValid() && type != QMetaType::QVariantMap && type != QMetaType::QVariantList) {
    *error = QStringLiteral("it is neither an object nor a list");
    reply = {};
  }
  logLine(u"Parse error: %@", {*error});
  if (isLogging()) logLine(u"result: %@", {loggedValue(reply)});
  return reply;
}

QString loggedValue(const QVariant& value) {
  if (!value.isValid()) return {};
  if (value.typeId() == QMetaType::QString) return value.toString();
  QString error;
  return QString::fromUtf8(Json::write(value, Json::Layout::Compact, &error));
}

}  // namespace kelvar
