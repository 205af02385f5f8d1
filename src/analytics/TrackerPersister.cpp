#include "analytics/TrackerPersister.h"

#include "platform/UserDefaults.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&TrackerPersister::theClass);

}  // namespace

const ClassInfo& TrackerPersister::theClass() {
  static const ClassInfo kClass =
      Description<TrackerPersister>("TrackerPersister")
          .initialiser("init", [] { return std::make_shared<TrackerPersister>(); })
          .operation("setObject:forKey:", &TrackerPersister::setObject)
          .operation("objectForKey:", &TrackerPersister::objectForKey)
          .operation("removeObjectForKey:", &TrackerPersister::removeObjectForKey);
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
