#include "core/KVVersionChecker.h"

#include "archive/HRCoder.h"
#include "core/ApiServer.h"
#include "core/ServerReply.h"
#include "platform/Json.h"
#include "platform/Log.h"
#include "platform/MainQueue.h"
#include "platform/URLSession.h"
#include "runtime/ClassInfo.h"
#include "runtime/DelegateInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&KVVersionChecker::theClass);

QString storeKey(const QString& identifier) { return identifier + QStringLiteral(".checker"); }

QVariant failure(const QString& message) {
  return QVariantMap{{QStringLiteral("message"), message}};
}

/// None for what is no address.
QUrl urlFrom(const QString& text) {
  const QUrl url(text, QUrl::StrictMode);
  return url.isValid() ? url : QUrl();
}

bool isString(const QVariant& value) { return value.typeId() == QMetaType::QString; }

}  // namespace

const ClassInfo& KVVersionChecker::theClass() {
  using Checker = KVVersionChecker;
  static const ClassInfo kClass =
      Description<Checker>("KVVersionChecker")
          .classOperation("checkerWithIdentifier:name:", &Checker::checkerWithIdentifier)
          .initialiser("initWithIdentifier:name:",
                       [](const QString& identifier, const QString& name) {
                         return std::make_shared<Checker>(identifier, name);
                       })
          .decodable()
          .operation("persist", &Checker::persist)
          .operation("start", &Checker::start)
          .property("identifier", &Checker::identifier, &Checker::setIdentifier)
          .property("name", &Checker::name, &Checker::setName)
          .property("finished", &Checker::finished, &Checker::setFinished)
          .property("success", &Checker::success, &Checker::setSuccess)
          .property("error", &Checker::error, &Checker::setError)
          .property("result", &Checker::result, &Checker::setResult)
          .property("isExpired", &Checker::isExpired, &Checker::setIsExpired)
          .property("expiredMessage", &Checker::expiredMessage, &Checker::setExpiredMessage)
          .property("actionTitle", &Checker::actionTitle, &Checker::setActionTitle)
          .property("actionURL", &Checker::actionURL, &Checker::setActionURL)
          .property("lastCheck", &Checker::lastCheck, &Checker::setLastCheck)
          .property("delegate", &Checker::delegate, &Checker::setDelegate)
          .property("persister", &Checker::persister, &Checker::setPersister);
  return kClass;
}

const DelegateInfo& KVVersionCheckerDelegate::theDelegate() {
  using Self = KVVersionCheckerDelegate;
  static const DelegateInfo kDelegate =
      DelegateDescription<Self>("KVVersionCheckerDelegate")
          .operation("checkerDidFinish:", &Self::checkerDidFinish);
  return kDelegate;
}

KVVersionCheckerRef KVVersionChecker::checkerWithIdentifier(const QString& identifier,
                                                            const QString& name) {
  const QVariant stored = KVPersister().objectForKey(storeKey(identifier));
  if (Json::isValidObject(stored)) {
    const auto object = HRCoder::unarchiveObjectWithPlistOrJSON(stored).value<ObjectRef>();
    const auto checker = std::dynamic_pointer_cast<KVVersionChecker>(object);
    if (checker && checker->name() == name && checker->identifier() == identifier) return checker;
  }
  return std::make_shared<KVVersionChecker>(identifier, name);
}

KVVersionChecker::KVVersionChecker(const QString& identifier, const QString& name)
    : identifier_(identifier), name_(name) {}

KVVersionCheckerRef KVVersionChecker::initWithCoder(Coder& coder) {
  const auto object = [&](const char* key) { return coder.decodeObject(QLatin1String(key)); };
  const auto checker = std::make_shared<KVVersionChecker>(object("identifier").toString(),
                                                          object("name").toString());
  checker->finished_ = coder.decodeBool(QStringLiteral("finished"));
  checker->isExpired_ = coder.decodeBool(QStringLiteral("isExpired"));
  checker->expiredMessage_ = object("expiredMessage").toString();
  checker->actionTitle_ = object("actionTitle").toString();
  checker->actionURL_ = object("actionURL").toUrl();
  checker->lastCheck_ = object("lastCheck").toDateTime();
  return checker;
}

void KVVersionChecker::encodeWithCoder(Coder& coder) const {
  coder.encodeObject(toVariant(identifier_), QStringLiteral("identifier"));
  coder.encodeObject(toVariant(name_), QStringLiteral("name"));
  coder.encodeBool(finished_, QStringLiteral("finished"));
  coder.encodeBool(success_, QStringLiteral("success"));
  coder.encodeBool(isExpired_, QStringLiteral("isExpired"));
  coder.encodeObject(toVariant(expiredMessage_), QStringLiteral("expiredMessage"));
  coder.encodeObject(toVariant(actionTitle_), QStringLiteral("actionTitle"));
  if (actionURL_.isValid()) coder.encodeObject(actionURL_, QStringLiteral("actionURL"));
  if (lastCheck_.isValid()) coder.encodeObject(lastCheck_, QStringLiteral("lastCheck"));
}

void KVVersionChecker::persist() {
  const QVariant tree = HRCoder::archivedJSONWithRootObject(toVariant(shared_from_this()));
  const QString key = storeKey(identifier_);
  if (persister_) persister_->setObject(tree, key);
  logLine(u"KVVersionChecker: persisting key %@ with %@", {key, loggedValue(tree)});
}

void KVVersionChecker::start() {
  logLine(u"KVVersionChecker: checking for update...");
  const auto self = std::static_pointer_cast<KVVersionChecker>(shared_from_this());
  const QUrl address = addressOnApiServer(QStringLiteral("/r/check_version?id=") + name_);
  URLSession* const session = address.isEmpty() ? nullptr : URLSession::shared();
  if (!session) return MainQueue::async([self] { self->complete({}); });
  session->dataTask(address, [self, address](const URLAnswer& answer) {
    logLine(u"url: %@", {loggedAddress(address)});
    logLine(u"body: %@", {QString::fromUtf8(answer.body)});
    logLine(u"response: %@", {QString::number(answer.status)});
    logLine(u"error: %@", {answer.error});
    MainQueue::async([self, answer] { self->complete(answer); });
  });
}

void KVVersionChecker::complete(const URLAnswer& answer) {
  if (!answer.error.isNull()) {
    error_ = failure(answer.error);
  } else if (answer.body.isNull()) {
    error_ = failure(QStringLiteral("no connection"));
  } else {
    read(answer.body);
  }
  lastCheck_ = QDateTime::currentDateTimeUtc();
  finished_ = true;
  tellDelegate();
  persist();
}

/// Whatever it does, the answer is stored.
void KVVersionChecker::tellDelegate() {
  const auto delegate = delegate_.lock();
  if (!delegate || !delegate->checkerDidFinish) return;
  QString thrown = QStringLiteral("an exception of no known kind");
  try {
    return delegate->checkerDidFinish(*this);
  } catch (const std::exception& exception) {
    thrown = QString::fromUtf8(exception.what());
  } catch (...) {  // Told below.
  }
  logLine(u"KVVersionChecker: the delegate has thrown: %@", {thrown});
}

void KVVersionChecker::read(const QByteArray& body) {
  QString error;
  const QVariant answer = readServerReply(body, &error);
  if (answer.isValid()) return apply(answer.toMap());
  logLine(u"KVVersionChecker: failed checking with update. error: %@", {error});
}

void KVVersionChecker::apply(const QVariantMap& answer) {
  if (!fromVariant<bool>(answer[QStringLiteral("success")]).value_or(false)) {
    error_ = answer[QStringLiteral("error")];
    logLine(u"KVVersionChecker: update checked with error %@", {loggedValue(error_)});
    return;
  }
  logLine(u"KVVersionChecker: success checking with update. %@", {loggedValue(answer)});
  success_ = true;
  const QVariant record = answer[QStringLiteral("records")].toList().value(0);
  result_ = record.toMap()[QStringLiteral("fields")];
  const QVariantMap fields = result_.toMap();
  isExpired_ = fromVariant<bool>(fields[QStringLiteral("Expired")]).value_or(false);
  // A null message, which no settings can keep, is a missing one.
  expiredMessage_ = fields[QStringLiteral("Expired Message")].toString();
  const QVariant url = fields[QStringLiteral("Action URL")];
  if (isString(url)) actionURL_ = urlFrom(url.toString());
  const QVariant title = fields[QStringLiteral("Action Title")];
  if (isString(title)) actionTitle_ = title.toString();
}

}  // namespace kelvar
