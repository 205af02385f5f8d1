#include "core/KVPersister.h"

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&KVPersister::theClass);

}  // namespace

const ClassInfo& KVPersister::theClass() {
  static const ClassInfo kClass =
      Description<KVPersister>("KVPersister")
          .initialiser("init", [] { return std::make_shared<KVPersister>(); })
          .operation("setObject:forKey:", &KVPersister::setObject)
          .operation("objectForKey:", &KVPersister::objectForKey)
          .operation("removeObjectForKey:", &KVPersister::removeObjectForKey);
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
