#pragma once

#include "platform/store/SettingsStore.h"

namespace kelvar {

/// The user's settings, for callers that cannot do anything about a failure.
///
/// Failures are logged. When the file itself cannot be read or written, the user is also warned
/// (`warnUser`), once for each file. Callers that report failures themselves use `store`. Safe from
/// any thread.
class KELVAR_EXPORT UserDefaults {
 public:
  /// The file named by the environment variable KELVAR_DEFAULTS, otherwise
  /// $XDG_CONFIG_HOME/kelvar/settings.sqlite or ~/.config/kelvar/settings.sqlite. Since the
  /// variable might name the wrong file, a file that is not a store is then refused, not set aside.
  static UserDefaults standard();

  explicit UserDefaults(const QString& path) : UserDefaults(SettingsStore(path)) {}

  const QString& path() const { return store_.path(); }
  const SettingsStore& store() const { return store_; }

  /// Returns whether `value` is stored now. See `SettingsStore::write`.
  bool setObject(const QVariant& value, const QString& key) const;

  /// Invalid if nothing is stored under `key`, or it cannot be read.
  QVariant objectForKey(const QString& key) const;

  /// Returns whether nothing is stored under `key` after the call.
  bool removeObjectForKey(const QString& key) const;

  /// Sorted by code point; empty if they cannot be read.
  QStringList keys() const;

 private:
  explicit UserDefaults(const SettingsStore& store) : store_(store) {}
  void report(const Error& error) const;

  SettingsStore store_;
};

}  // namespace kelvar
