#include "analytics/LastPayload.h"

#include <QCoreApplication>
#include <QPointer>
#include <QSet>
#include <QThreadPool>
#include <QTimer>
#include <mutex>
#include <optional>
#include <utility>

#include "platform/plist/Json.h"
#include "platform/store/UserDefaults.h"

namespace kelvar {
namespace {

const QString kKey = QStringLiteral("io.kelvarlabs.tracker.lastPayload");
const QString kPath = QStringLiteral("path");
const QString kBody = QStringLiteral("body");
const QString kNotKept = QStringLiteral("(not kept)");

/// With the settings that were current when it was sent.
struct Waiting {
  URLRequest request;
  UserDefaults settings = UserDefaults::standard();
};

std::mutex writeMutex;
std::mutex waitingMutex;
std::optional<Waiting>& waiting() {
  static std::optional<Waiting> payload;
  return payload;
}

/// Without the user's identity and location, whatever the names of the properties.
QVariant withoutPerson(const QVariant& value) {
  static const QSet<QString> kPersonal{QStringLiteral("userId"), QStringLiteral("email"),
                                       QStringLiteral("ip"), QStringLiteral("location")};
  switch (value.typeId()) {
    case QMetaType::QString:
      return value.toString().contains(u'@') ? kNotKept : value;
    case QMetaType::QVariantList: {
      QVariantList list = value.toList();
      for (QVariant& element : list) element = withoutPerson(element);
      return list;
    }
    case QMetaType::QVariantMap: {
      QVariantMap map = value.toMap();
      for (auto i = map.begin(); i != map.end(); ++i) {
        *i = kPersonal.contains(i.key()) ? kNotKept : withoutPerson(*i);
      }
      return map;
    }
    default:
      return value;
  }
}

/// Safe from any thread: of two simultaneous calls the second finds nothing left to do.
void writeWaiting() {
  const std::scoped_lock lock(writeMutex);
  std::optional<Waiting> payload;
  {
    const std::scoped_lock exchange(waitingMutex);
    payload.swap(waiting());
  }
  if (!payload) return;
  const QVariant body = withoutPerson(Json::read(payload->request.body).value_or(QVariant()));
  const QByteArray text = Json::write(body).value_or(QByteArray());
  payload->settings.setObject(
      QVariantMap{{kPath, payload->request.address.path()}, {kBody, QString::fromUtf8(text)}},
      kKey);
}

/// One per application; null without an application.
QTimer* idleTimer() {
  static QPointer<QTimer> timer;
  QCoreApplication* const application = QCoreApplication::instance();
  if (timer || !application) return timer;
  timer = new QTimer(application);
  timer->setSingleShot(true);
  timer->setInterval(std::chrono::seconds(1));
  QObject::connect(timer, &QTimer::timeout,
                   [] { QThreadPool::globalInstance()->start(writeWaiting); });
  return timer;
}

QString stored(const QString& key) {
  return UserDefaults::standard().objectForKey(kKey).toMap()[key].toString();
}

}  // namespace

void LastPayload::keep(const URLRequest& request) {
  {
    const std::scoped_lock lock(waitingMutex);
    waiting() = Waiting{request};
  }
  if (QTimer* const timer = idleTimer()) timer->start();
}

void LastPayload::write() { writeWaiting(); }

QString LastPayload::path() { return stored(kPath); }

QByteArray LastPayload::body() { return stored(kBody).toUtf8(); }

Result<void> LastPayload::forget() { return UserDefaults::standard().store().remove(kKey); }

}  // namespace kelvar
