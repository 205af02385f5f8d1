#include "cli/ServerCommand.h"

#include <QCoreApplication>

#include "core/ApiServer.h"

namespace kelvar::cli {

Result<void> checkApiServer() {
  if (!addressOnApiServer(QStringLiteral("/")).isEmpty()) return {};
  return failure(Error::Kind::Unsupported,
                 "no server is configured: set KELVAR_API_SERVER to its URL");
}

void runRequest(const std::function<void()>& start) {
  static char name[] = "kelvar";
  static char* arguments[] = {name, nullptr};
  static int count = 1;
  const QCoreApplication application(count, arguments);
  start();
  QCoreApplication::exec();
}

}  // namespace kelvar::cli
