#include "analytics/TrackerPersister.h"

#include "platform/store/UserDefaults.h"
#include "runtime/ClassInfo.h"
#include "runtime/checkStorable.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&TrackerPersister::staticClassInfo);

class ScriptedPersister : public TrackerPersister, public Implemented {
 public:
  using Implemented::Implemented;

  void setObject(const QVariant& value, const QString& key) override {
    call("setObject:forKey:", value, key);
  }
  QVariant objectForKey(const QString& key) const override {
    return call<QVariant>("objectForKey:", key);
  }
  void removeObjectForKey(const QString& key) override { call("removeObjectForKey:", key); }
};

}  // namespace

const ClassInfo& TrackerPersister::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<TrackerPersister>("TrackerPersister")
          .initializer(
              "init", [] { return std::make_shared<TrackerPersister>(); },
              "Creates a store over the user's settings.")
          .operation("setObject:forKey:", &setStorableObject<TrackerPersister>,
                     "Stores a property-list value under the key; nil removes the key, and any "
                     "other value is an error.")
          .operation("objectForKey:", &TrackerPersister::objectForKey,
                     "Returns the value stored under the key, or nil.")
          .operation("removeObjectForKey:", &TrackerPersister::removeObjectForKey,
                     "Removes the value stored under the key.")
          .implementable<ScriptedPersister>({QStringLiteral("setObject:forKey:"),
                                             QStringLiteral("objectForKey:"),
                                             QStringLiteral("removeObjectForKey:")});
  return kClass;
}

void TrackerPersister::setObject(const QVariant& value, const QString& key) {
  UserDefaults::standard().setObject(value, key);
}

QVariant TrackerPersister::objectForKey(const QString& key) const {
  return UserDefaults::standard().objectForKey(key);
}

void TrackerPersister::removeObjectForKey(const QString& key) {
  UserDefaults::standard().removeObjectForKey(key);
}

}  // namespace kelvar
