#pragma once

#include <sqlite3.h>

#include <QByteArray>
#include <QList>
#include <QString>
#include <memory>

#include "pixels/Result.h"

namespace kelvar {

/// A connection to an existing database file, for one thread.
///
/// Errors have SQLite's message, with the system's reason where there is one. Their kind is
/// `Damaged` if the contents of the file are the cause, `NotFound` if there is no such file, and
/// otherwise `Io`.
class SqliteDatabase {
 public:
  /// The connection is read-only if the user may not write to the file. Waits for transactions of
  /// other processes.
  static Result<SqliteDatabase> open(const QString& path);

  /// Runs statements without results.
  Result<void> execute(const char* sql);

  /// Runs one statement and returns the first column of its rows, never null. `text` (UTF-8) is
  /// its parameter ?1 and `blob` its parameter ?2, if it has any; both may contain any byte.
  Result<QList<QByteArray>> query(const char* sql, const QByteArray& text = {},
                                  const QByteArray& blob = {});

  Result<bool> hasTable(const QByteArray& name);

 private:
  struct Close {
    void operator()(sqlite3* connection) const { sqlite3_close(connection); }
  };

  explicit SqliteDatabase(sqlite3* connection) : connection_(connection) {}

  std::unique_ptr<sqlite3, Close> connection_;
};

}  // namespace kelvar
