#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>
#include <functional>

#include "pixels/Result.h"
#include "platform/Export.h"

namespace kelvar {

class SqliteDatabase;

/// Property-list values under keys, in one file that threads and processes share.
///
/// An object is only a path. Each call opens the file, does its work in one transaction and closes
/// it again, so that every object and every process sees the same values, and a file that has since
/// been deleted or set aside is no longer written to. A write is on disk when the call returns.
/// Concurrent calls wait for one another.
///
/// A damaged store is renamed, with a date in its new name and a warning for the user (`warnUser`),
/// and an empty one takes its place. Another program's database, or a store that a newer version
/// has written, is refused. A refused file stays unchanged, as does the file after any other
/// failure.
///
/// When the file itself cannot be read or written, the error is of kind `Io`. Errors about one key
/// or value are of other kinds. See docs/settings.md.
class KELVAR_EXPORT SettingsStore {
 public:
  /// What to do with a file that is not a store at all, such as a text file.
  enum class UnknownFile : uint8_t { SetAside, Refuse };

  /// Neither the file nor its folder needs to exist: the first write creates them, accessible only
  /// to the user.
  explicit SettingsStore(const QString& path, UnknownFile unknown = UnknownFile::SetAside);

  const QString& path() const { return path_; }

  /// Fails for values that are not property-list values, and for keys that are null or not valid
  /// Unicode.
  Result<void> write(const QVariant& value, const QString& key) const;

  /// Invalid when nothing is stored under `key`.
  Result<QVariant> read(const QString& key) const;

  /// Also succeeds if nothing was stored under `key`.
  Result<void> remove(const QString& key) const;

  /// Sorted by code point.
  Result<QStringList> keys() const;

 private:
  enum class Access : uint8_t { Read, Write };
  using Work = std::function<Result<void>(SqliteDatabase&)>;

  Result<void> run(Access access, const Work& work) const;
  Result<void> attempt(Access access, const Work& work) const;
  Result<void> checkFile() const;
  void setAside() const;

  QString path_;
  UnknownFile unknown_;
};

}  // namespace kelvar
