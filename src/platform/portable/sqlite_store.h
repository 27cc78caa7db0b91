#pragma once

#include "platform/portable/sqlite_database.h"
#include "platform/registry.h"

#include <optional>
#include <string>
#include <vector>

namespace tarncom32::platform::portable {

/// A name as the file keeps it, in UTF-8: spelled, and folded for comparing.
struct StoredName {
    std::string spelling;
    std::string folded;
};

/// The tables of the registry's file: keys and entries (values) by number. A root key has its own number as number.
class SqliteStore {
public:
    using KeyId = std::int64_t;

    /// Opens the file and creates it, with its folder and tables, where it is missing. Raises 75 for a file that is
    /// not the registry's, and leaves that as it is.
    explicit SqliteStore(const std::filesystem::path& file);

    /// Raises `UnreadableStore` with `message` and the file's name.
    [[noreturn]] static void refuse(const std::filesystem::path& file, std::string_view message);

    /// Whether the file may only be read.
    bool isReadOnly() const { return database_.isReadOnly(); }

    /// The subkey of that name, without regard to case; none when there is none.
    std::optional<KeyId> findKey(KeyId parent, const StoredName& name);
    /// The last key of `path`, which begins at `parent`; the levels that are missing are created together.
    KeyId createKeys(KeyId parent, const std::vector<StoredName>& path);
    /// Deletes a key with its entries; false when it has subkeys, and stays, or is not there any more.
    bool deleteKey(KeyId key);
    /// The spelling of the subkey at `index`, by folded name.
    std::optional<std::string> subkeyAt(KeyId key, std::uint32_t index);

    /// The statement stands on the entry, columns name, type, data; or there is none. Reset it when done.
    bool findEntry(KeyId key, const StoredName& name);
    /// The same for the entry at `index`, in the order of creation. Consecutive calls are one walk.
    bool entryAt(KeyId key, std::uint32_t index);
    /// The statements of these two.
    SqliteStatement& entry() { return findEntry_; }
    SqliteStatement& walkedEntry() { return walk_; }
    /// Creates or replaces the entry, which keeps its first spelling and place.
    void writeEntry(KeyId key, const StoredName& name, std::uint32_t type, std::string_view bytes);
    /// False when there is none of that name.
    bool deleteEntry(KeyId key, const StoredName& name);

    /// Gives up the walk over a key's entries, which else keeps the state of the file that it began with.
    void endWalk() noexcept;

private:
    static SqliteDatabase openFile(const std::filesystem::path& file);

    SqliteDatabase database_;
    SqliteStatement findKey_;
    SqliteStatement createKey_;
    SqliteStatement findEntry_;
    SqliteStatement writeEntry_;
    SqliteStatement walk_;
    std::optional<KeyId> walkedKey_;
    std::uint32_t nextInWalk_ = 0;
};

} // namespace tarncom32::platform::portable
