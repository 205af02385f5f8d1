#include "analytics/LastPayload.h"

#include <utility>

#include "platform/MainQueue.h"
#include "platform/UserDefaults.h"

namespace kelvar {
namespace {

const QString kKey = QStringLiteral("io.kelvarlabs.tracker.lastPayload");
const QString kPath = QStringLiteral("path");
const QString kBody = QStringLiteral("body");

/// To be written; without a body when it is.
URLRequest& waiting() {
  static URLRequest request;
  return request;
}

void write() {
  const URLRequest request = std::exchange(waiting(), {});
  if (request.body.isNull()) return;
  const QVariantMap payload{{kPath, request.address.path()},
                            {kBody, QString::fromUtf8(request.body)}};
  UserDefaults::standard().setObject(payload, kKey);
}

QString stored(const QString& key) {
  return UserDefaults::standard().objectForKey(kKey).toMap()[key].toString();
}

}  // namespace

void LastPayload::keep(const URLRequest& request) {
  waiting() = request;
  MainQueue::async(write);
}

QString LastPayload::path() { return stored(kPath); }

QByteArray LastPayload::body() { return stored(kBody).toUtf8(); }

bool LastPayload::forget(QString* error) {
  return UserDefaults::standard().removeObjectForKey(kKey, error);
}

}  // namespace kelvar
