#include "platform/portable/sqlite_store.h"

#include "automation/error.h"

#include <sqlite3.h>

#include <chrono>
#include <thread>

namespace tarncom32::platform::portable {

namespace {

namespace errors = automation::errors;
using automation::Error;
using automation::String;

/// "Tarn": marks the file as the registry's.
constexpr std::int64_t kApplicationId = 0x5461726E;
constexpr std::int64_t kVersion = 2;
/// Long enough for every other writer in line, short enough to notice one that hangs.
constexpr int kPatienceMilliseconds = 30000;

// AUTOINCREMENT, so that a handle to a key that somebody deletes never means a later key.
constexpr const char* kTables = R"sql(
    CREATE TABLE keys(
        id INTEGER PRIMARY KEY AUTOINCREMENT,
        parent INTEGER REFERENCES keys(id),
        folded TEXT NOT NULL,
        name TEXT NOT NULL,
        UNIQUE(parent, folded));
    CREATE TABLE entries(
        id INTEGER PRIMARY KEY,
        key INTEGER NOT NULL REFERENCES keys(id),
        folded TEXT NOT NULL,
        name TEXT NOT NULL,
        type INTEGER NOT NULL,
        data BLOB NOT NULL,
        UNIQUE(key, folded));
    CREATE INDEX entries_in_order ON entries(key);
    INSERT INTO keys(id, folded, name) VALUES
        (-2147483648, 'HKEY_CLASSES_ROOT', 'HKEY_CLASSES_ROOT'),
        (-2147483647, 'HKEY_CURRENT_USER', 'HKEY_CURRENT_USER'),
        (-2147483646, 'HKEY_LOCAL_MACHINE', 'HKEY_LOCAL_MACHINE'),
        (-2147483645, 'HKEY_USERS', 'HKEY_USERS'),
        (-2147483643, 'HKEY_CURRENT_CONFIG', 'HKEY_CURRENT_CONFIG'),
        (-2147483642, 'HKEY_DYN_DATA', 'HKEY_DYN_DATA');
    PRAGMA application_id = 0x5461726E;
    PRAGMA user_version = 2;
)sql";

// Version 1 left two letters of its code page as they were: the micro sign and the florin sign.
constexpr const char* kFoldAllLetters = R"sql(
    UPDATE keys SET folded = replace(replace(folded, char(0xB5), char(0x39C)), char(0x192), char(0x191));
    UPDATE entries SET folded = replace(replace(folded, char(0xB5), char(0x39C)), char(0x192), char(0x191));
    PRAGMA user_version = 2;
)sql";

String refusal(const std::filesystem::path& file, std::string_view message) {
    std::string text = "The settings store " + file.string() + " ";
    text.append(message);
    return automation::fromUtf8(text + ".");
}

/// Raises 75 for a store that can be read, but not written as it was to be.
[[noreturn]] void refuseToWrite(const std::filesystem::path& file, std::string_view message) {
    throw Error(errors::PathFileAccess, refusal(file, message));
}

[[noreturn]] void raiseFor(const std::filesystem::path& file, int code, std::string_view message) {
    const auto withReason = [&](std::string_view what) {
        return std::string(what) + " (" + std::string(message) + ")";
    };
    switch (code & 0xFF) {
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
        SqliteStore::refuse(file, "is damaged, or is no settings store; it was left as it is. Move it away, or name "
                                  "another file in TARNCOM32_REGISTRY");
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        SqliteStore::refuse(file, "is held by another program; try again when that has ended");
    case SQLITE_CANTOPEN:
        SqliteStore::refuse(file, withReason("cannot be opened"));
    case SQLITE_READONLY:
    case SQLITE_PERM:
        refuseToWrite(file, "may only be read; give yourself the right to write it");
    case SQLITE_NOMEM:
        throw Error(errors::OutOfMemory);
    case SQLITE_FULL:
        throw Error(errors::DiskFull, automation::fromUtf8("The disk is full: the settings store " + file.string() +
                                                           " could not be written. What it held before is safe"));
    default:
        break;
    }
    if (code == SQLITE_CONSTRAINT_FOREIGNKEY) refuseToWrite(file, "no longer has the key: another program deleted it");
    if (code == SQLITE_IOERR_READ || code == SQLITE_IOERR_SHORT_READ)
        SqliteStore::refuse(file, withReason("cannot be read"));
    refuseToWrite(file, withReason("cannot be read or written"));
}

/// Whether the file holds the registry's tables already; refuses a file that holds anything else.
bool holdsRegistry(SqliteDatabase& database, const std::filesystem::path& file) {
    const std::int64_t application = database.integer("PRAGMA application_id");
    if (application == kApplicationId) {
        if (database.integer("PRAGMA user_version") > kVersion)
            SqliteStore::refuse(file, "was written by a newer version of this library; it was left as it is");
        return true;
    }
    if (application != 0 || database.integer("SELECT count(*) FROM sqlite_schema") != 0)
        SqliteStore::refuse(file, "is a database of another program; it was left as it is. Name another file in "
                                  "TARNCOM32_REGISTRY");
    return false;
}

/// Makes a store of version 1 one of this version: its names are found by the same rule as those to come.
void foldAllLetters(SqliteDatabase& database) {
    constexpr const char* kAskVersion = "PRAGMA user_version";
    if (database.integer(kAskVersion) == kVersion) return;
    database.transaction([&] {
        // Another process may have been faster.
        if (database.integer(kAskVersion) != kVersion) database.execute(kFoldAllLetters);
    });
}

/// The write-ahead log lets others read while one writes. While others have the file open in the old mode the change
/// is refused at once instead of waited for.
void useWriteAheadLog(SqliteDatabase& database) {
    SqliteStatement mode(database, "PRAGMA journal_mode");
    const bool already = mode.step() && mode.bytes(0) == "wal";
    mode.reset();
    if (already) return;
    for (int attempt = 0; attempt < 50; ++attempt) {
        const int code = sqlite3_exec(database.handle(), "PRAGMA journal_mode = WAL", nullptr, nullptr, nullptr);
        if ((code & 0xFF) != SQLITE_BUSY) {
            if (code != SQLITE_OK) database.raise(code);
            return;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    // The file works in its old mode as well; the next process tries again.
}

} // namespace

void SqliteStore::refuse(const std::filesystem::path& file, std::string_view message) {
    throw UnreadableStore(refusal(file, message));
}

SqliteDatabase SqliteStore::openFile(const std::filesystem::path& file) {
    std::error_code failure;
    if (file.has_parent_path()) std::filesystem::create_directories(file.parent_path(), failure);
    if (failure)
        refuseToWrite(file, "cannot be created: its folder is missing and cannot be made (" + failure.message() + ")");
    SqliteDatabase database(file, [file](int code, std::string_view message) { raiseFor(file, code, message); });
    database.touchNothingOnClose(true);
    database.waitFor(kPatienceMilliseconds);
    // Of one moment: between two readings another process may make the tables.
    if (!database.snapshot([&] { return holdsRegistry(database, file); })) {
        database.transaction([&] {
            // Another process may have been faster.
            if (!holdsRegistry(database, file)) database.execute(kTables);
        });
    }
    if (!database.isReadOnly()) {
        useWriteAheadLog(database);
        foldAllLetters(database);
    }
    database.execute("PRAGMA foreign_keys = ON; PRAGMA synchronous = FULL");
    database.touchNothingOnClose(false);
    return database;
}

SqliteStore::SqliteStore(const std::filesystem::path& file)
    : database_(openFile(file)), findKey_(database_, "SELECT id FROM keys WHERE parent = ?1 AND folded = ?2"),
      createKey_(database_, "INSERT INTO keys(parent, folded, name) VALUES(?1, ?2, ?3)"),
      findEntry_(database_, "SELECT name, type, data FROM entries WHERE key = ?1 AND folded = ?2"),
      writeEntry_(database_, "INSERT INTO entries(key, folded, name, type, data) VALUES(?1, ?2, ?3, ?4, ?5) "
                             "ON CONFLICT(key, folded) DO UPDATE SET type = ?4, data = ?5"),
      walk_(database_, "SELECT name, type, data FROM entries INDEXED BY entries_in_order WHERE key = ?1 ORDER BY id") {}

std::optional<SqliteStore::KeyId> SqliteStore::findKey(KeyId parent, const StoredName& name) {
    endWalk();
    const SqliteRun run(findKey_);
    run->bind(1, parent);
    run->bindText(2, name.folded);
    if (!run->step()) return std::nullopt;
    return run->integer(0);
}

SqliteStore::KeyId SqliteStore::createKeys(KeyId parent, const std::vector<StoredName>& path) {
    endWalk();
    KeyId key = parent;
    database_.transaction([&] {
        for (const StoredName& name : path) {
            if (const std::optional<KeyId> found = findKey(key, name)) {
                key = *found;
                continue;
            }
            const SqliteRun run(createKey_);
            run->bind(1, key);
            run->bindText(2, name.folded);
            run->bindText(3, name.spelling);
            run->step();
            key = sqlite3_last_insert_rowid(database_.handle());
        }
    });
    return key;
}

bool SqliteStore::deleteKey(KeyId key) {
    endWalk();
    bool deleted = false;
    database_.transaction([&] {
        SqliteStatement subkeys(database_, "SELECT 1 FROM keys WHERE parent = ?1");
        subkeys.bind(1, key);
        if (subkeys.step()) return;
        for (const char* sql : {"DELETE FROM entries WHERE key = ?1", "DELETE FROM keys WHERE id = ?1"}) {
            SqliteStatement statement(database_, sql);
            statement.bind(1, key);
            statement.step();
        }
        // Another process may have been faster.
        deleted = sqlite3_changes(database_.handle()) > 0;
    });
    return deleted;
}

std::optional<std::string> SqliteStore::subkeyAt(KeyId key, std::uint32_t index) {
    endWalk();
    SqliteStatement statement(database_, "SELECT name FROM keys WHERE parent = ?1 ORDER BY folded LIMIT 1 OFFSET ?2");
    statement.bind(1, key);
    statement.bind(2, index);
    if (!statement.step()) return std::nullopt;
    return std::string(statement.bytes(0));
}

bool SqliteStore::findEntry(KeyId key, const StoredName& name) {
    endWalk();
    findEntry_.bind(1, key);
    findEntry_.bindText(2, name.folded);
    return findEntry_.step();
}

bool SqliteStore::entryAt(KeyId key, std::uint32_t index) {
    const bool goesOn = walkedKey_ == key && nextInWalk_ == index;
    if (!goesOn) {
        endWalk();
        walk_.bind(1, key);
    }
    // Before it stands on the entry it is no walk: a step that fails must leave none to go on with.
    walkedKey_.reset();
    for (std::uint32_t next = goesOn ? index : 0; next <= index; ++next) {
        if (walk_.step()) continue;
        endWalk();
        return false;
    }
    walkedKey_ = key;
    nextInWalk_ = index + 1;
    return true;
}

void SqliteStore::writeEntry(KeyId key, const StoredName& name, std::uint32_t type, std::string_view bytes) {
    endWalk();
    const SqliteRun run(writeEntry_);
    run->bind(1, key);
    run->bindText(2, name.folded);
    run->bindText(3, name.spelling);
    run->bind(4, type);
    run->bindBytes(5, bytes);
    run->step();
}

bool SqliteStore::deleteEntry(KeyId key, const StoredName& name) {
    endWalk();
    SqliteStatement statement(database_, "DELETE FROM entries WHERE key = ?1 AND folded = ?2");
    statement.bind(1, key);
    statement.bindText(2, name.folded);
    statement.step();
    return sqlite3_changes(database_.handle()) > 0;
}

void SqliteStore::endWalk() noexcept {
    walk_.reset();
    walkedKey_.reset();
}

} // namespace tarncom32::platform::portable
