#include "core/KVPersister.h"

#include "runtime/ClassInfo.h"
#include "runtime/checkStorable.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&KVPersister::staticClassInfo);

class ScriptedPersister : public KVPersister, public Implemented {
 public:
  using Implemented::Implemented;

  void setObject(const QVariant& value, const QString& key) override {
    call("setObject:forKey:", value, key);
  }
  QVariant objectForKey(const QString& key) const override {
    return call<QVariant>("objectForKey:", key);
  }
  void removeObjectForKey(const QString& key) override { call("removeObjectForKey:", key); }
  bool isThreadSafe() const override { return false; }
};

}  // namespace

const ClassInfo& KVPersister::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<KVPersister>("KVPersister")
          .initializer(
              "init", [] { return std::make_shared<KVPersister>(); },
              "Creates a store; all stores share the user's settings.")
          .operation("setObject:forKey:", &setStorableObject<KVPersister>,
                     "Stores a property-list value under the key; nil removes the key, and any "
                     "other value is an error.")
          .operation("objectForKey:", &KVPersister::objectForKey,
                     "Returns the value stored under the key, or nil.")
          .operation("removeObjectForKey:", &KVPersister::removeObjectForKey,
                     "Removes the value stored under the key.")
          .implementable<ScriptedPersister>({QStringLiteral("setObject:forKey:"),
                                             QStringLiteral("objectForKey:"),
                                             QStringLiteral("removeObjectForKey:")});
  return kClass;
}

void KVPersister::setObject(const QVariant& value, const QString& key) {
  UserDefaults::standard().setObject(value, key);
}

QVariant KVPersister::objectForKey(const QString& key) const {
  return UserDefaults::standard().objectForKey(key);
}

void KVPersister::removeObjectForKey(const QString& key) {
  UserDefaults::standard().removeObjectForKey(key);
}

}  // namespace kelvar
