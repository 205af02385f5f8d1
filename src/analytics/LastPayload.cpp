#include "analytics/LastPayload.h"

#include "platform/MainQueue.h"
#include "platform/UserDefaults.h"

namespace kelvar {
namespace {

const QString kKey = QStringLiteral("io.kelvarlabs.tracker.lastPayload");
const QString kPath = QStringLiteral("path");
const QString kBody = QStringLiteral("body");

/// To be written; empty when it is.
QVariantMap& waiting() {
  static QVariantMap payload;
  return payload;
}

void write() {
  if (waiting().isEmpty()) return;
  UserDefaults::standard().setObject(waiting(), kKey);
  waiting().clear();
}

QString stored(const QString& key) {
  return UserDefaults::standard().objectForKey(kKey).toMap()[key].toString();
}

}  // namespace

void LastPayload::keep(const URLRequest& request) {
  waiting() = {{kPath, request.address.path()}, {kBody, QString::fromUtf8(request.body)}};
  MainQueue::async(write);
}

QString LastPayload::path() { return stored(kPath); }

QByteArray LastPayload::body() { return stored(kBody).toUtf8(); }

bool LastPayload::forget(QString* error) {
  return UserDefaults::standard().removeObjectForKey(kKey, error);
}

}  // namespace kelvar
