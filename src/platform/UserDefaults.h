#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include "platform/Export.h"

namespace kelvar {

/// The user's settings: property-list values under keys, in one file that threads and processes
/// share.
///
/// An object is only a path. Each call opens the file, does its work in one transaction and closes
/// it again, so that every object and every process sees the same values, and a file that was
/// deleted or set aside meanwhile is not written any more. A write is on the disk when the call
/// returns. Calls wait for one another.
///
/// A store that is damaged is set aside under a dated name, which the user is told (`warnUser`),
/// and goes on empty. What is no store but another program's database, or one that a newer version
/// has written, is refused. Any other failure leaves the file as it was as well, and is told in
/// `*error`; where that is null, the user is told of the first one of each file. See
/// docs/settings.md.
class KELVAR_EXPORT UserDefaults {
 public:
  /// The file that the environment variable KELVAR_DEFAULTS names, otherwise
  /// $XDG_CONFIG_HOME/kelvar/settings.sqlite or ~/.config/kelvar/settings.sqlite. A name may be a
  /// mistake: what it names is never set aside unless it is a store of ours.
  static UserDefaults standard();

  /// Neither the file nor its folder need exist: the first write makes them, for the user alone.
  explicit UserDefaults(const QString& path);

  const QString& path() const { return path_; }

  /// Stores `value` and says whether it is stored. Refused are values that are none or not of a
  /// property list, and keys that are null or no valid Unicode. Any other key is taken as it is.
  bool setObject(const QVariant& value, const QString& key, QString* error = nullptr) const;

  /// Invalid when there is nothing under `key`, or it cannot be read.
  QVariant objectForKey(const QString& key, QString* error = nullptr) const;

  /// Says whether nothing is stored under `key` any more; there need not have been.
  bool removeObjectForKey(const QString& key, QString* error = nullptr) const;

  /// All keys in the order of their code points.
  QStringList keys(QString* error = nullptr) const;

 private:
  UserDefaults(const QString& path, bool mayBeMistaken);

  QString path_;
  bool mayBeMistaken_ = false;
};

}  // namespace kelvar
