#include "platform/portable/sqlite_database.h"

#include <sqlite3.h>

#include <exception>
#include <string>

namespace tarncom32::platform::portable {

void SqliteStatement::Finalize::operator()(sqlite3_stmt* statement) const noexcept {
    sqlite3_finalize(statement);
}

SqliteStatement::SqliteStatement(SqliteDatabase& database, const char* sql) : database_(database) {
    sqlite3_stmt* statement = nullptr;
    const int code = sqlite3_prepare_v3(database.handle(), sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
    statement_.reset(statement);
    if (code != SQLITE_OK) database.raise(code);
}

void SqliteStatement::bind(int parameter, std::int64_t number) {
    if (const int code = sqlite3_bind_int64(statement_.get(), parameter, number); code != SQLITE_OK)
        database_.raise(code);
}

void SqliteStatement::bindText(int parameter, std::string_view text) {
    const int code = sqlite3_bind_text64(statement_.get(), parameter, text.data() ? text.data() : "", text.size(),
                                         SQLITE_STATIC, SQLITE_UTF8);
    if (code != SQLITE_OK) database_.raise(code);
}

void SqliteStatement::bindBytes(int parameter, std::string_view bytes) {
    // A null pointer would store NULL instead of no bytes.
    const int code =
        sqlite3_bind_blob64(statement_.get(), parameter, bytes.data() ? bytes.data() : "", bytes.size(), SQLITE_STATIC);
    if (code != SQLITE_OK) database_.raise(code);
}

bool SqliteStatement::step() {
    const int code = sqlite3_step(statement_.get());
    if (code == SQLITE_ROW) return true;
    if (code != SQLITE_DONE) database_.raise(code);
    return false;
}

void SqliteStatement::reset() noexcept {
    sqlite3_reset(statement_.get());
}

std::int64_t SqliteStatement::integer(int column) const {
    return sqlite3_column_int64(statement_.get(), column);
}

std::string_view SqliteStatement::bytes(int column) const {
    const void* data = sqlite3_column_blob(statement_.get(), column);
    return {static_cast<const char*>(data), static_cast<std::size_t>(sqlite3_column_bytes(statement_.get(), column))};
}

void SqliteDatabase::Close::operator()(sqlite3* handle) const noexcept {
    sqlite3_close_v2(handle);
}

SqliteDatabase::SqliteDatabase(const std::filesystem::path& file, SqliteFailure fail) : fail_(std::move(fail)) {
    sqlite3* handle = nullptr;
    const int code = sqlite3_open_v2(file.c_str(), &handle,
                                     SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_EXRESCODE, nullptr);
    handle_.reset(handle);
    if (code != SQLITE_OK) raise(code);
}

bool SqliteDatabase::isReadOnly() const {
    return sqlite3_db_readonly(handle(), "main") == 1;
}

void SqliteDatabase::waitFor(int milliseconds) {
    sqlite3_busy_timeout(handle(), milliseconds);
}

void SqliteDatabase::touchNothingOnClose(bool nothing) {
    sqlite3_db_config(handle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, nothing ? 1 : 0, nullptr);
}

void SqliteDatabase::execute(const char* sql) {
    if (const int code = sqlite3_exec(handle(), sql, nullptr, nullptr, nullptr); code != SQLITE_OK) raise(code);
}

std::int64_t SqliteDatabase::integer(const char* sql) {
    SqliteStatement statement(*this, sql);
    return statement.step() ? statement.integer(0) : 0;
}

void SqliteDatabase::raise(int code) const {
    const std::string message = handle() ? sqlite3_errmsg(handle()) : sqlite3_errstr(code);
    fail_(code, message);
    std::terminate(); // the handler must throw
}

void SqliteDatabase::rollBack() noexcept {
    if (!sqlite3_get_autocommit(handle())) sqlite3_exec(handle(), "ROLLBACK", nullptr, nullptr, nullptr);
}

} // namespace tarncom32::platform::portable
