#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace tarncom32::platform::portable {

/// Turns a failure of SQLite (extended result code and text) into the exception to throw.
using SqliteFailure = std::function<void(int code, std::string_view message)>;

class SqliteDatabase;

/// A prepared statement. Parameters and columns are numbered as SQLite does it: parameters from 1, columns from 0.
class SqliteStatement {
public:
    SqliteStatement(SqliteDatabase& database, const char* sql);

    /// Texts and bytes that are bound must stay until the statement is reset.
    void bind(int parameter, std::int64_t number);
    void bindText(int parameter, std::string_view text);
    void bindBytes(int parameter, std::string_view bytes);
    /// Runs up to the next row; false when there is none.
    bool step();
    /// Ends the run and with it the statement's hold on the database.
    void reset() noexcept;

    std::int64_t integer(int column) const;
    /// Valid until the next step or reset.
    std::string_view bytes(int column) const;

private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const noexcept;
    };
    SqliteDatabase& database_;
    std::unique_ptr<sqlite3_stmt, Finalize> statement_;
};

/// Resets a statement when the scope ends.
class SqliteRun {
public:
    explicit SqliteRun(SqliteStatement& statement) : statement_(statement) {}
    ~SqliteRun() { statement_.reset(); }
    SqliteRun(const SqliteRun&) = delete;
    SqliteRun& operator=(const SqliteRun&) = delete;
    SqliteStatement* operator->() const { return &statement_; }

private:
    SqliteStatement& statement_;
};

/// A connection to an SQLite file. Every failure goes to the handler, which throws.
class SqliteDatabase {
public:
    /// Opens the file, for reading only where it may not be written, and creates it where it is missing.
    SqliteDatabase(const std::filesystem::path& file, SqliteFailure fail);

    bool isReadOnly() const;
    /// How long a statement waits for another process.
    void waitFor(int milliseconds);
    /// Closing the last connection to a file usually tidies it up; for a file that is not ours it must not.
    void touchNothingOnClose(bool nothing);
    void execute(const char* sql);
    /// The first column of the first row.
    std::int64_t integer(const char* sql);

    /// Calls `body` in a write transaction that is undone when `body` throws.
    template <class Body>
    void transaction(Body&& body) {
        execute("BEGIN IMMEDIATE");
        Rollback rollback(*this);
        body();
        execute("COMMIT");
    }

    /// Calls `body` in a read transaction: everything that it reads is of one moment.
    template <class Body>
    auto snapshot(Body&& body) {
        execute("BEGIN");
        Rollback rollback(*this);
        return body();
    }

    /// Hands the failure `code` to the handler.
    [[noreturn]] void raise(int code) const;
    sqlite3* handle() const { return handle_.get(); }

private:
    /// Undoes the transaction that is open when the scope ends.
    class Rollback {
    public:
        explicit Rollback(SqliteDatabase& database) : database_(database) {}
        ~Rollback() { database_.rollBack(); }
        Rollback(const Rollback&) = delete;
        Rollback& operator=(const Rollback&) = delete;

    private:
        SqliteDatabase& database_;
    };
    struct Close {
        void operator()(sqlite3* handle) const noexcept;
    };

    void rollBack() noexcept;

    std::unique_ptr<sqlite3, Close> handle_;
    SqliteFailure fail_;
};

} // namespace tarncom32::platform::portable
