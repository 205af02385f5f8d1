#include "core/KVVersionChecker.h"

#include "archive/HRCoder.h"
#include "core/ApiServer.h"
#include "core/ServerReply.h"
#include "platform/Log.h"
#include "platform/MainQueue.h"
#include "platform/QtError.h"
#include "platform/network/URLSession.h"
#include "platform/plist/Json.h"
#include "runtime/ClassInfo.h"
#include "runtime/DelegateInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&KVVersionChecker::staticClassInfo);

QString storeKey(const QString& identifier) { return identifier + QStringLiteral(".checker"); }

QVariant errorDictionary(const QString& message) {
  return QVariantMap{{QStringLiteral("message"), message}};
}

/// Empty for text that is no URL.
QUrl urlFrom(const QString& text) {
  const QUrl url(text, QUrl::StrictMode);
  return url.isValid() ? url : QUrl();
}

bool isString(const QVariant& value) { return value.typeId() == QMetaType::QString; }

}  // namespace

const ClassInfo& KVVersionChecker::staticClassInfo() {
  using Checker = KVVersionChecker;
  static const ClassInfo kClass =
      ClassInfoBuilder<Checker>("KVVersionChecker")
          .classOperation(
              "checkerWithIdentifier:name:", &Checker::checkerWithIdentifier,
              "Returns the stored checker for this identifier and version name, or a new one.")
          .initializer(
              "init", [] { return std::make_shared<Checker>(QString(), QString()); },
              "Creates a checker without an identifier or a name.")
          .initializer(
              "initWithIdentifier:name:",
              [](const QString& identifier, const QString& name) {
                return std::make_shared<Checker>(identifier, name);
              },
              "Creates a checker that is stored under the identifier and asks about the version "
              "with this name.")
          .decodable()
          .operation("persist", &Checker::persist, "Stores the checker in the settings.")
          .operation(
              "start", &Checker::start,
              "Starts a check and returns at once; the delegate is called when it has finished.")
          .property("identifier", &Checker::identifier, &Checker::setIdentifier,
                    "Identifies the checker in the settings.")
          .property("name", &Checker::name, &Checker::setName,
                    "The version to ask about, as the server knows it.")
          .property("finished", &Checker::finished, &Checker::setFinished,
                    "Whether a check has finished, in this session or an earlier one.")
          .property("success", &Checker::success, &Checker::setSuccess,
                    "Whether a check of this session got a valid answer.")
          .property("error", &Checker::error, &Checker::setError,
                    "The last failure, a dictionary with a \"message\" or what the server sent; a "
                    "later success does not clear it.")
          .property("result", &Checker::result, &Checker::setResult,
                    "The server's last valid answer, a dictionary.")
          .property("isExpired", &Checker::isExpired, &Checker::setIsExpired,
                    "Whether the server considers the version outdated.")
          .property("expiredMessage", &Checker::expiredMessage, &Checker::setExpiredMessage,
                    "The server's message about the outdated version.")
          .property("actionTitle", &Checker::actionTitle, &Checker::setActionTitle,
                    "The title of the update button.")
          .property("actionURL", &Checker::actionURL, &Checker::setActionURL,
                    "The URL that the update button opens.")
          .property("lastCheck", &Checker::lastCheck, &Checker::setLastCheck,
                    "When the last check finished.")
          .property("delegate", &Checker::delegate, &Checker::setDelegate,
                    "Told when a check has finished; held weakly.")
          .property("persister", &Checker::persister, &Checker::setPersister,
                    "The store that `persist` writes to.");
  return kClass;
}

const DelegateInfo& KVVersionCheckerDelegate::staticDelegateInfo() {
  using Self = KVVersionCheckerDelegate;
  static const DelegateInfo kDelegate =
      DelegateInfoBuilder<Self>("KVVersionCheckerDelegate")
          .operation("checkerDidFinish:", &Self::checkerDidFinish,
                     "Called on the main thread after a check has finished, successfully or not; "
                     "the checker's properties say how.");
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
  session->dataTask(address, [self, address](const URLResponse& answer) {
    logLine(u"url: %@", {loggedAddress(address)});
    logLine(u"body: %@", {QString::fromUtf8(answer.body)});
    logLine(u"response: %@", {QString::number(answer.status)});
    logLine(u"error: %@", {messageOf(answer.error)});
    MainQueue::async([self, answer] { self->complete(answer); });
  });
}

void KVVersionChecker::complete(const URLResponse& answer) {
  if (answer.error) {
    error_ = errorDictionary(messageOf(answer.error));
  } else if (answer.body.isNull()) {
    error_ = errorDictionary(QStringLiteral("no connection"));
  } else {
    read(answer.body);
  }
  lastCheck_ = QDateTime::currentDateTimeUtc();
  finished_ = true;
  tellDelegate();
  persist();
}

/// An exception must not keep the answer from being stored.
void KVVersionChecker::tellDelegate() {
  const auto delegate = delegate_.lock();
  if (!delegate || !delegate->checkerDidFinish) return;
  QString thrown = QStringLiteral("an exception of no known kind");
  try {
    return delegate->checkerDidFinish(*this);
  } catch (const std::exception& exception) {
    thrown = QString::fromUtf8(exception.what());
  } catch (...) {  // Logged below.
  }
  logLine(u"KVVersionChecker: the delegate has thrown: %@", {thrown});
}

void KVVersionChecker::read(const QByteArray& body) {
  const Result<QVariant> answer = readServerReply(body);
  if (answer) return apply(answer->toMap());
  logLine(u"KVVersionChecker: failed checking with update. error: %@", {messageOf(answer.error())});
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
  // A null message, which settings cannot hold, counts as missing.
  expiredMessage_ = fields[QStringLiteral("Expired Message")].toString();
  const QVariant url = fields[QStringLiteral("Action URL")];
  if (isString(url)) actionURL_ = urlFrom(url.toString());
  const QVariant title = fields[QStringLiteral("Action Title")];
  if (isString(title)) actionTitle_ = title.toString();
}

}  // namespace kelvar
