#pragma once

#include <sqlite3.h>

#include <QByteArray>
#include <QString>
#include <cerrno>
#include <memory>
#include <stdexcept>

namespace kelvar {

/// What SQLite answered instead of doing its work: one sentence, with the system's reason where it
/// gave one.
class SqliteError : public std::runtime_error {
 public:
  explicit SqliteError(sqlite3* connection);

  /// Whether the file's contents are to blame.
  bool isDamage() const { return code_ == SQLITE_CORRUPT || code_ == SQLITE_NOTADB; }
  /// Whether the file was not there.
  bool isMissing() const { return code_ == SQLITE_CANTOPEN && systemError_ == ENOENT; }

 private:
  int code_;
  int systemError_;
};

/// A connection to a database file that exists, for one thread. Opened for reading where writing is
/// not allowed. Waits for other processes' transactions. Throws `SqliteError`, as all calls do.
class SqliteDatabase {
 public:
  explicit SqliteDatabase(const QString& path);

  void execute(const char* sql);
  bool hasTable(const char* name);
  sqlite3* connection() const { return connection_.get(); }

 private:
  std::unique_ptr<sqlite3, int (*)(sqlite3*)> connection_;
};

/// One prepared statement. Texts and blobs may hold any byte.
class SqliteStatement {
 public:
  SqliteStatement(SqliteDatabase& database, const char* sql);

  /// Parameters count from 1. What is bound must outlive the statement.
  void bindText(int parameter, const QByteArray& utf8);
  void bindBlob(int parameter, const QByteArray& bytes);

  /// Whether there is a row.
  bool step();

  /// A copy of the row's column, which counts from 0. Never null.
  QByteArray column(int index);

 private:
  std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> statement_;
};

}  // namespace kelvar
