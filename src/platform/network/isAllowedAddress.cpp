#include "platform/network/isAllowedAddress.h"

#include <arpa/inet.h>

namespace kelvar {
namespace {

bool isThisMachine(const QString& host) {
  const QByteArray name = host.toLatin1();
  in_addr four{};
  in6_addr six{};
  return name == "localhost" ||
         (inet_pton(AF_INET, name, &four) == 1 && ntohl(four.s_addr) >> 24 == IN_LOOPBACKNET) ||
         (inet_pton(AF_INET6, name, &six) == 1 && IN6_IS_ADDR_LOOPBACK(&six));
}

}  // namespace

bool isAllowedAddress(const QUrl& address) {
  if (address.scheme() == QStringLiteral("https")) return !address.host().isEmpty();
  return address.scheme() == QStringLiteral("http") && isThisMachine(address.host());
}

}  // namespace kelvar
