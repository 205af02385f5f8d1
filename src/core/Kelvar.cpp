#include "core/Kelvar.h"

#include <stdexcept>

#include "analytics/AnalyticsSettings.h"
#include "analytics/SegmentIOTracker.h"
#include "core/ServerMessages.h"
#include "platform/Bundle.h"
#include "platform/Log.h"
#include "platform/store/UserEmail.h"
#include "runtime/ClassInfo.h"
#include "util/Each.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&Kelvar::staticClassInfo);

QString required(const char* key) {
  const QVariant value = Bundle::objectForInfoDictionaryKey(QLatin1String(key));
  if (!value.isValid()) throw std::logic_error(std::string("Info.plist has no ") + key);
  return value.toString();
}

}  // namespace

const ClassInfo& Kelvar::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<Kelvar, KVPersister>("Kelvar")
          .initializer(
              "init", [] { return std::make_shared<Kelvar>(); },
              "Creates the plug-in's main object; the first one in a process starts analytics.")
          .operation("trackForEvent:properties:", &Kelvar::trackForEvent,
                     "Records an event with its properties and returns the event's name.")
          .operation("loadServerNotification", &Kelvar::loadServerNotification,
                     "Fetches the server's messages in the background and adds the new ones to the "
                     "list in `persister`.")
          .property("tracker", &Kelvar::tracker, &Kelvar::setTracker,
                    "The tracker that records events, shared by all objects of the process.")
          .property("env", &Kelvar::env, &Kelvar::setEnv,
                    "The plug-in's environment, which is sent with every event.")
          .property("pluginName", &Kelvar::pluginName, &Kelvar::setPluginName,
                    "The plug-in's name, which is sent with every event.")
          .property("persister", &Kelvar::persister, &Kelvar::setPersister,
                    "The store for the server's messages; without one they are dropped.");
  return kClass;
}

Kelvar::Kelvar() {
  if (activateCount_ != 0) {
    tracker_ = TrackerManager::sharedInstance();
  } else {
    start();
  }
  ++activateCount_;
}

void Kelvar::start() {
  const auto client = std::make_shared<SegmentIOTracker>(AnalyticsSettings::writeKey());
  tracker_ = std::make_shared<TrackerManager>(TrackerList{client},
                                              QStringLiteral("io.kelvarlabs.kelvar.tracker"));
  setPersister(std::make_shared<KVPersister>());
  env_ = required("KVPluginEnv");
  pluginName_ = required("KVPluginName");
  const auto properties = std::make_shared<QVariantMap>(
      QVariantMap{{QStringLiteral("Plugin Version"), required("CFBundleShortVersionString")},
                  {QStringLiteral("Plugin Build"), required("CFBundleVersion")},
                  {QStringLiteral("Plugin Environment"), env_},
                  {QStringLiteral("Plugin Name"), pluginName_}});
  identifyUser(properties.get());
  // In this order, so that the first event already has the properties.
  tracker_->setSuperProperties(properties);
  tracker_->track(QStringLiteral("Started"), QVariantMap());
  tracker_->setAsSharedInstance();
}

void Kelvar::identifyUser(QVariantMap* superProperties) {
  const QString email = userEmail();
  if (email.isNull()) return;
  superProperties->insert(QStringLiteral("email"), email);
  // The anonymous identity is linked to the user once, in the first run in which analytics are on.
  const QString aliased = QStringLiteral("io.kelvarlabs.kelvar.identifiedUser");
  if (AnalyticsSettings::isOn() && !objectForKey(aliased).isValid()) {
    setObject(email, aliased);
    tracker_->aliasFromUUIDTo(email);
  }
  tracker_->identifyEmail(email);
}

QString Kelvar::trackForEvent(const QString& event, const Properties& properties) {
  try {
    if (tracker_) tracker_->track(event, properties);
  } catch (const UnrecognizedOperation& problem) {
    logLine(u"Kelvar: %@ is not tracked: %@", {event, QString::fromUtf8(problem.what())});
  }
  return event;
}

void Kelvar::loadServerNotification() {
  const auto self = std::static_pointer_cast<Kelvar>(shared_from_this());
  ServerMessages::load([self] { return self->persister(); }, [](const Result<void>&) {});
}

KVPersisterRef Kelvar::persister() const {
  const std::lock_guard lock(persisterMutex_);
  return persister_;
}

void Kelvar::setPersister(const KVPersisterRef& persister) {
  const std::lock_guard lock(persisterMutex_);
  persister_ = persister;
}

}  // namespace kelvar
