#include "platform/store/SqliteDatabase.h"

#include <cerrno>
#include <cstring>
#include <new>

#include "platform/files/FileName.h"

namespace kelvar {
namespace {

constexpr int kPatienceMilliseconds = 30'000;

/// SQLite forgets the system's reason when a write fails; `errno` still has it.
std::string messageOf(sqlite3* connection) {
  const int now = errno;
  const std::string message = sqlite3_errmsg(connection);
  const int kept = sqlite3_system_errno(connection);
  const int error = kept == 0 && sqlite3_errcode(connection) == SQLITE_IOERR ? now : kept;
  return error == 0 ? message : message + " (" + std::strerror(error) + ")";
}

tl::unexpected<Error> lastFailure(sqlite3* connection) {
  std::string message = messageOf(connection);
  const int code = sqlite3_errcode(connection);
  const bool isDamaged = code == SQLITE_CORRUPT || code == SQLITE_NOTADB;
  const bool isMissing = code == SQLITE_CANTOPEN && sqlite3_system_errno(connection) == ENOENT;
  return failure(isDamaged   ? Error::Kind::Damaged
                 : isMissing ? Error::Kind::NotFound
                             : Error::Kind::Io,
                 std::move(message));
}

int bind(sqlite3_stmt* statement, const QByteArray& text, const QByteArray& blob) {
  const int count = sqlite3_bind_parameter_count(statement);
  int code = SQLITE_OK;
  if (count >= 1) {
    code = sqlite3_bind_text64(statement, 1, text.constData(), sqlite3_uint64(text.size()),
                               SQLITE_STATIC, SQLITE_UTF8);
  }
  if (count < 2 || code != SQLITE_OK) return code;
  return sqlite3_bind_blob64(statement, 2, blob.constData(), sqlite3_uint64(blob.size()),
                             SQLITE_STATIC);
}

QByteArray firstColumn(sqlite3_stmt* statement) {
  const auto* const bytes = static_cast<const char*>(sqlite3_column_blob(statement, 0));
  const int size = sqlite3_column_bytes(statement, 0);
  return size == 0 ? QByteArray("") : QByteArray(bytes, size);
}

}  // namespace

Result<SqliteDatabase> SqliteDatabase::open(const QString& path) {
  sqlite3* connection = nullptr;
  const int code = sqlite3_open_v2(fileNameBytes(path).constData(), &connection,
                                   SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
  if (!connection) throw std::bad_alloc();
  SqliteDatabase database(connection);
  if (code != SQLITE_OK) return lastFailure(connection);
  if (sqlite3_busy_timeout(connection, kPatienceMilliseconds) != SQLITE_OK) {
    return lastFailure(connection);
  }
  return database;
}

Result<void> SqliteDatabase::execute(const char* sql) {
  const int code = sqlite3_exec(connection_.get(), sql, nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) return lastFailure(connection_.get());
  return {};
}

Result<QList<QByteArray>> SqliteDatabase::query(const char* sql, const QByteArray& text,
                                                const QByteArray& blob) {
  sqlite3_stmt* prepared = nullptr;
  if (sqlite3_prepare_v2(connection_.get(), sql, -1, &prepared, nullptr) != SQLITE_OK) {
    return lastFailure(connection_.get());
  }
  const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> statement(prepared, sqlite3_finalize);
  if (bind(prepared, text, blob) != SQLITE_OK) return lastFailure(connection_.get());
  QList<QByteArray> rows;
  int code = SQLITE_ROW;
  while ((code = sqlite3_step(prepared)) == SQLITE_ROW) rows.append(firstColumn(prepared));
  if (code != SQLITE_DONE) return lastFailure(connection_.get());
  return rows;
}

Result<bool> SqliteDatabase::hasTable(const QByteArray& name) {
  return query("SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = ?1", name)
      .map([](const QList<QByteArray>& rows) { return !rows.isEmpty(); });
}

}  // namespace kelvar
