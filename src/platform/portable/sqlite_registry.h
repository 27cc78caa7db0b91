#pragma once

#include "platform/code_page.h"
#include "platform/registry.h"

#include <filesystem>

namespace tarncom32::platform::portable {

class SqliteStore;

/// The registry of systems that have none: one SQLite file, safe for several processes at once. Nothing is opened
/// before it is needed, and reading never creates the file. Values are walked in the order in which they were first
/// written, subkeys by name.
///
/// A file that is damaged, that is something else, or that a newer version wrote, is left as it is: every use raises
/// 75 with a description that names the file. A full disk raises 61. For one thread at a time; keys are closed before
/// their registry goes.
class SqliteRegistry final : public Registry {
public:
    /// `codePage` is that of the names that callers pass; the file keeps them as Unicode.
    SqliteRegistry(std::filesystem::path file, const CodePage& codePage);
    ~SqliteRegistry() override;

    /// The file that TARNCOM32_REGISTRY names; else tarncom32/registry.sqlite in the user's data folder
    /// (XDG_DATA_HOME, or .local/share in HOME). Empty when none of the three is set, and then every use raises 75.
    static std::filesystem::path defaultFile();

    /// The file, whether it exists yet or not.
    const std::filesystem::path& file() const { return file_; }

    std::unique_ptr<RegistryKey> open(std::int32_t root, std::string_view path, RegistryAccess access) override;
    std::unique_ptr<RegistryKey> create(std::int32_t root, std::string_view path) override;

private:
    SqliteStore& store();
    bool hasFile() const;

    std::filesystem::path file_;
    const CodePage& codePage_;
    std::unique_ptr<SqliteStore> store_;
};

} // namespace tarncom32::platform::portable
