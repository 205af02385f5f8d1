#include "core/ApiServer.h"

#include "platform/Bundle.h"

namespace kelvar {

QUrl addressOnApiServer(const QString& pathAndQuery) {
  const QString server = Bundle::serverAddress("KELVAR_API_SERVER", QStringLiteral("KVAPIServer"));
  if (server.isNull()) return {};
  const QByteArray escaped =
      QUrl::toPercentEncoding(server + pathAndQuery, "!$&'()*+,/:;=?@[]", QByteArray());
  return QUrl::fromEncoded(escaped);
}

QString loggedAddress(const QUrl& address) {
  return QString::fromLatin1(address.toEncoded(QUrl::RemoveUserInfo));
}

}  // namespace kelvar
