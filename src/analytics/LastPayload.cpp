#include "analytics/LastPayload.h"

#include <QCoreApplication>
#include <QPointer>
#include <QSet>
#include <QThreadPool>
#include <QTimer>
#include <mutex>
#include <optional>
#include <utility>

#include "platform/Json.h"
#include "platform/UserDefaults.h"

namespace kelvar {
namespace {

const QString kKey = QStringLiteral("io.kelvarlabs.tracker.lastPayload");
const QString kPath = QStringLiteral("path");
const QString kBody = QStringLiteral("body");
const QString kNotKept = QStringLiteral("(not kept)");

/// The settings are those of the time at which it was sent.
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

/// Who the user is and where, under whatever names callers tell it besides.
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

/// From any thread; of two calls at once the second waits, and has nothing left to do.
void writeWaiting() {
  const std::scoped_lock lock(writeMutex);
  std::optional<Waiting> payload;
  {
    const std::scoped_lock exchange(waitingMutex);
    payload.swap(waiting());
  }
  if (!payload) return;
  QString error;
  const QVariant body = withoutPerson(Json::read(payload->request.body, &error));
  const QByteArray text = Json::write(body, Json::Layout::Compact, &error);
  payload->settings.setObject(
      QVariantMap{{kPath, payload->request.address.path()}, {kBody, QString::fromUtf8(text)}},
      kKey);
}

/// One for the application that there is; null without one.
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

bool LastPayload::forget(QString* error) {
  return UserDefaults::standard().removeObjectForKey(kKey, error);
}

}  // namespace kelvar
