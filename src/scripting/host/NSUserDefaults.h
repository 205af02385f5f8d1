#pragma once

#include <QVariantMap>

#include "platform/store/UserDefaults.h"
#include "runtime/Object.h"

namespace kelvar {

/// The user's settings as the host's scripts know them: the settings store, with defaults that are
/// registered for the time of the process.
///
/// The standard settings are those of all of Kelvar. A suite has keys of its own in the same file.
/// Values are read as another type where that is possible, and as zero, false or nil otherwise.
/// Raises where a value cannot be stored or the store cannot be read. Main thread.
class NSUserDefaults : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  static std::shared_ptr<NSUserDefaults> standard();
  /// Null for an empty name.
  static std::shared_ptr<NSUserDefaults> suite(const QString& name);

  /// Nil removes what is stored.
  void setObject(const QVariant& value, const QString& key);
  QVariant objectForKey(const QString& key) const;
  void removeObjectForKey(const QString& key);
  /// Registered defaults are found where nothing is stored.
  void registerDefaults(const QVariantMap& defaults);
  /// Also those that are registered.
  QVariantMap dictionaryRepresentation() const;
  QVariantMap storedValues() const;

 private:
  explicit NSUserDefaults(const QString& prefix) : prefix_(prefix) {}
  QString stored(const QString& key) const;

  /// Of the keys in the store; empty for the standard settings.
  const QString prefix_;
};

}  // namespace kelvar
