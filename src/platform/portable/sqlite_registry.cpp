#include "platform/portable/sqlite_registry.h"

#include "automation/error.h"
#include "platform/portable/sqlite_store.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace tarncom32::platform::portable {

namespace {

namespace fs = std::filesystem;

/// What the system's registry allows.
constexpr std::size_t kMaxLevelCharacters = 255;
constexpr std::size_t kMaxNameCharacters = 16383;

StoredName storedName(const CodePage& codePage, std::string_view name) {
    const automation::String text = codePage.decode(name);
    return {automation::toUtf8(text), automation::toUtf8(automation::toUpper(text))};
}

/// The levels of a path; none when the path is invalid. Repeated and trailing separators mean nothing.
std::optional<std::vector<StoredName>> levels(const CodePage& codePage, std::string_view path) {
    if (path.starts_with('\\')) return std::nullopt;
    std::vector<StoredName> found;
    for (std::size_t start = 0; start < path.size();) {
        const std::size_t end = std::min(path.find('\\', start), path.size());
        const std::string_view level = path.substr(start, end - start);
        if (level.size() > kMaxLevelCharacters) return std::nullopt;
        if (!level.empty()) found.push_back(storedName(codePage, level));
        start = end + 1;
    }
    return found;
}

bool isRoot(std::int32_t root) {
    return root >= registry_root::kClassesRoot && root <= registry_root::kDynamicData &&
           root != registry_root::kUsers + 1;
}

/// The key at the end of `path`; none when a level is missing.
std::optional<SqliteStore::KeyId> findPath(SqliteStore& store, SqliteStore::KeyId from,
                                           const std::vector<StoredName>& path) {
    std::optional<SqliteStore::KeyId> key = from;
    for (const StoredName& level : path) {
        key = store.findKey(*key, level);
        if (!key) break;
    }
    return key;
}

class SqliteKey final : public RegistryKey {
public:
    SqliteKey(SqliteStore& store, const CodePage& codePage, SqliteStore::KeyId key)
        : store_(store), codePage_(codePage), key_(key) {}
    ~SqliteKey() override { store_.endWalk(); }

    RegistryRead read(std::string_view name, std::size_t dataLimit, RegistryValue& value) override {
        const StoredName stored = storedName(codePage_, name);
        const SqliteRun run(store_.entry());
        if (!store_.findEntry(key_, stored)) return RegistryRead::Absent;
        return take(store_.entry(), std::string::npos, dataLimit, value);
    }

    RegistryRead valueAt(std::uint32_t index, std::size_t nameLimit, std::size_t dataLimit,
                         RegistryValue& value) override {
        if (!store_.entryAt(key_, index)) return RegistryRead::Absent;
        return take(store_.walkedEntry(), nameLimit, dataLimit, value);
    }

    bool subkeyAt(std::uint32_t index, std::string& name) override {
        const std::optional<std::string> found = store_.subkeyAt(key_, index);
        if (found) name = codePage_.encode(automation::fromUtf8(*found));
        return found.has_value();
    }

    void write(std::string_view name, std::uint32_t type, std::string_view bytes) override {
        if (name.size() > kMaxNameCharacters) throw automation::Error(automation::errors::InvalidProcedureCall);
        store_.writeEntry(key_, storedName(codePage_, name), type, bytes);
    }

    bool deleteValue(std::string_view name) override { return store_.deleteEntry(key_, storedName(codePage_, name)); }

    bool deleteSubkey(std::string_view path) override {
        const std::optional<std::vector<StoredName>> names = levels(codePage_, path);
        if (!names || names->empty()) return false;
        const std::optional<SqliteStore::KeyId> key = findPath(store_, key_, *names);
        return key && store_.deleteKey(*key);
    }

private:
    RegistryRead take(const SqliteStatement& entry, std::size_t nameLimit, std::size_t dataLimit,
                      RegistryValue& value) const {
        const std::string_view bytes = entry.bytes(2);
        if (bytes.size() > dataLimit) return RegistryRead::TooBig;
        encode(entry.bytes(0), value.name);
        if (value.name.size() >= nameLimit) return RegistryRead::TooBig;
        value.type = static_cast<std::uint32_t>(entry.integer(1));
        value.bytes = bytes;
        return RegistryRead::Done;
    }

    void encode(std::string_view utf8, std::string& name) const {
        // Most names are the same in UTF-8 and in every code page.
        if (std::ranges::all_of(utf8, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; }))
            name = utf8;
        else
            name = codePage_.encode(automation::fromUtf8(utf8));
    }

    SqliteStore& store_;
    const CodePage& codePage_;
    SqliteStore::KeyId key_;
};

/// The variable's value; empty when it is not set.
fs::path environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? fs::path(value) : fs::path();
}

} // namespace

SqliteRegistry::SqliteRegistry(fs::path file, const CodePage& codePage) : file_(std::move(file)), codePage_(codePage) {}

SqliteRegistry::~SqliteRegistry() = default;

fs::path SqliteRegistry::defaultFile() {
    if (const fs::path named = environment("TARNCOM32_REGISTRY"); !named.empty()) return named;
    const fs::path below = fs::path("tarncom32") / "registry.sqlite";
    // A data folder that is no absolute path is to be ignored.
    if (const fs::path data = environment("XDG_DATA_HOME"); data.is_absolute()) return data / below;
    if (const fs::path home = environment("HOME"); !home.empty()) return home / ".local" / "share" / below;
    return {};
}

bool SqliteRegistry::hasFile() const {
    if (file_.empty())
        throw UnreadableStore(u"There is no place for the settings store: set TARNCOM32_REGISTRY to the name of a "
                              u"file, or HOME to your home folder.");
    std::error_code failure;
    const bool exists = fs::exists(file_, failure);
    if (failure) SqliteStore::refuse(file_, "cannot be read (" + failure.message() + ")");
    return exists;
}

SqliteStore& SqliteRegistry::store() {
    if (!store_) store_ = std::make_unique<SqliteStore>(file_);
    return *store_;
}

std::unique_ptr<RegistryKey> SqliteRegistry::open(std::int32_t root, std::string_view path, RegistryAccess access) {
    if (!isRoot(root)) return nullptr;
    const std::optional<std::vector<StoredName>> names = levels(codePage_, path);
    if (!names) return nullptr;
    // Only a root that is written to needs a file that is not there yet.
    const bool mayCreate = names->empty() && access == RegistryAccess::Full;
    if (!store_ && !hasFile() && !mayCreate) return nullptr;
    if (access == RegistryAccess::Full && store().isReadOnly()) return nullptr;
    const std::optional<SqliteStore::KeyId> key = findPath(store(), root, *names);
    if (!key) return nullptr;
    return std::make_unique<SqliteKey>(store(), codePage_, *key);
}

std::unique_ptr<RegistryKey> SqliteRegistry::create(std::int32_t root, std::string_view path) {
    const std::optional<std::vector<StoredName>> names = levels(codePage_, path);
    if (!isRoot(root) || !names)
        throw automation::Error(automation::errors::PathNotFound, u"The registry path is invalid: " +
                                                                      codePage_.decode(path) +
                                                                      u". It must begin with the name of a key.");
    if (std::unique_ptr<RegistryKey> existing = open(root, path, RegistryAccess::Full)) return existing;
    return std::make_unique<SqliteKey>(store(), codePage_, store().createKeys(root, *names));
}

} // namespace tarncom32::platform::portable
