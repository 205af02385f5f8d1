#include "platform/SqliteDatabase.h"

#include <cerrno>
#include <cstring>

#include "platform/FileName.h"

namespace kelvar {
namespace {

constexpr int kPatienceMilliseconds = 30'000;

/// SQLite forgets the system's reason when a write fails; `errno` still has it.
std::string sentence(sqlite3* connection) {
  const int now = errno;
  const std::string message = sqlite3_errmsg(connection);
  const int kept = sqlite3_system_errno(connection);
  const int error = kept == 0 && sqlite3_errcode(connection) == SQLITE_IOERR ? now : kept;
  return error == 0 ? message : message + " (" + std::strerror(error) + ")";
}

void check(sqlite3* connection, int code) {
  if (code != SQLITE_OK) throw SqliteError(connection);
}

}  // namespace

SqliteError::SqliteError(sqlite3* connection)
    : std::runtime_error(sentence(connection)),
      code_(sqlite3_errcode(connection)),
      systemError_(sqlite3_system_errno(connection)) {}

SqliteDatabase::SqliteDatabase(const QString& path) : connection_(nullptr, sqlite3_close) {
  sqlite3* connection = nullptr;
  const int code = sqlite3_open_v2(fileNameBytes(path).constData(), &connection,
                                   SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
  if (!connection) throw std::bad_alloc();
  connection_.reset(connection);
  check(connection, code);
  check(connection, sqlite3_busy_timeout(connection, kPatienceMilliseconds));
}

void SqliteDatabase::execute(const char* sql) {
  check(connection(), sqlite3_exec(connection(), sql, nullptr, nullptr, nullptr));
}

bool SqliteDatabase::hasTable(const char* name) {
  SqliteStatement find(*this, "SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = ?1");
  const QByteArray text(name);
  find.bindText(1, text);
  return find.step();
}

SqliteStatement::SqliteStatement(SqliteDatabase& database, const char* sql)
    : statement_(nullptr, sqlite3_finalize) {
  sqlite3_stmt* statement = nullptr;
  check(database.connection(),
        sqlite3_prepare_v2(database.connection(), sql, -1, &statement, nullptr));
  statement_.reset(statement);
}

void SqliteStatement::bindText(int parameter, const QByteArray& utf8) {
  check(sqlite3_db_handle(statement_.get()),
        sqlite3_bind_text64(statement_.get(), parameter, utf8.constData(),
                            sqlite3_uint64(utf8.size()), SQLITE_STATIC, SQLITE_UTF8));
}

void SqliteStatement::bindBlob(int parameter, const QByteArray& bytes) {
  check(sqlite3_db_handle(statement_.get()),
        sqlite3_bind_blob64(statement_.get(), parameter, bytes.constData(),
                            sqlite3_uint64(bytes.size()), SQLITE_STATIC));
}

bool SqliteStatement::step() {
  const int code = sqlite3_step(statement_.get());
  if (code != SQLITE_ROW && code != SQLITE_DONE) {
    throw SqliteError(sqlite3_db_handle(statement_.get()));
  }
  return code == SQLITE_ROW;
}

QByteArray SqliteStatement::column(int index) {
  const auto* const bytes = static_cast<const char*>(sqlite3_column_blob(statement_.get(), index));
  const int size = sqlite3_column_bytes(statement_.get(), index);
  return size == 0 ? QByteArray("") : QByteArray(bytes, size);
}

}  // namespace kelvar
