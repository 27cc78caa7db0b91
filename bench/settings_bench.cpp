// Saving and retrieving an entry of a profile next to the bare SQLite statements that read and write the same rows in a
// file of the same make: finding the key level by level for each operation, walking its values, and reading or writing
// one of them.

#include "platform/portable/portable_platform.h"
#include "platform/portable/sqlite_database.h"
#include "settings/user_profile.h"
#include "settings/user_profile_entries.h"
#include "support/comparison.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace tarncom32 {
namespace {

namespace fs = std::filesystem;
using platform::portable::SqliteDatabase;
using platform::portable::SqliteRun;
using platform::portable::SqliteStatement;

constexpr std::string_view kPath[] = {"SOFTWARE", "VENDOR", "PRODUCT", "DEFAULT"}; // folded, as it is stored
constexpr int kValues[] = {1, 20, 200};

automation::String nameOf(int value) {
    return u"Setting " + automation::decimalText(value);
}

/// A profile with that many saved entries, and the last of them.
struct Profile {
    Profile(platform::Platform& platform, int values) : profile(automation::make<settings::UserProfile>(platform)) {
        profile->setProfilePath(u"Software\\Vendor\\Product");
        profile->setProfileName(u"Default");
        for (int i = 1; i <= values; ++i) {
            last = profile->profileEntries()->createNewItem();
            last->setName(nameOf(i));
            last->setValue(u"twelve and a half");
        }
        profile->saveSettings();
    }

    automation::Ref<settings::UserProfile> profile;
    automation::Ref<settings::UserProfileEntry> last;
};

/// The bare statements over a file that the library made.
class Statements {
public:
    explicit Statements(const fs::path& file)
        : database_(file, [](int, std::string_view message) { throw std::runtime_error(std::string(message)); }) {
        database_.execute("PRAGMA foreign_keys = ON; PRAGMA synchronous = FULL");
    }

    std::size_t save(std::string_view folded, std::string_view name) {
        const std::size_t seen = ensure(name);
        const SqliteRun run(write_);
        run->bind(1, key());
        run->bindText(2, folded);
        run->bindText(3, name);
        run->bind(4, 1);
        run->bindBytes(5, std::string_view("twelve and a half", 18));
        run->step();
        return seen;
    }

    std::size_t retrieve(std::string_view folded, std::string_view name) {
        ensure(name);
        const SqliteRun run(read_);
        run->bind(1, key());
        run->bindText(2, folded);
        if (!run->step()) return 0;
        return run->bytes(2).size() - 1;
    }

private:
    std::int64_t key() {
        std::int64_t key = platform::registry_root::kCurrentUser;
        for (const std::string_view level : kPath) {
            const SqliteRun run(find_);
            run->bind(1, key);
            run->bindText(2, level);
            if (!run->step()) throw std::runtime_error("no key");
            key = run->integer(0);
        }
        return key;
    }

    /// Looks for the name in every value; how many there are.
    std::size_t ensure(std::string_view name) {
        key();
        const SqliteRun run(walk_);
        run->bind(1, key());
        std::size_t values = 0;
        bool found = false;
        while (run->step()) {
            ++values;
            found = run->bytes(0).find(name) != std::string_view::npos ||
                    run->bytes(2).find(name) != std::string_view::npos || found;
        }
        if (!found) throw std::runtime_error("no value");
        return values;
    }

    SqliteDatabase database_;
    SqliteStatement find_{database_, "SELECT id FROM keys WHERE parent = ?1 AND folded = ?2"};
    SqliteStatement walk_{database_, "SELECT name, type, data FROM entries WHERE key = ?1 ORDER BY id"};
    SqliteStatement read_{database_, "SELECT name, type, data FROM entries WHERE key = ?1 AND folded = ?2"};
    SqliteStatement write_{database_, "INSERT INTO entries(key, folded, name, type, data) VALUES(?1, ?2, ?3, ?4, ?5) "
                                      "ON CONFLICT(key, folded) DO UPDATE SET type = ?4, data = ?5"};
};

/// A file of its own for each side, so that neither waits for the other.
struct Sides {
    Sides(const fs::path& folder, int values) {
        const fs::path own = folder / (std::to_string(values) + ".sqlite");
        const fs::path bare = folder / (std::to_string(values) + "-bare.sqlite");
        for (const fs::path& file : {bare, own}) {
            setenv("TARNCOM32_REGISTRY", file.c_str(), 1);
            profile.reset();
            platform = std::make_unique<platform::portable::PortablePlatform>();
            profile = std::make_unique<Profile>(*platform, values);
        }
        statements = std::make_unique<Statements>(bare);
    }

    std::unique_ptr<platform::portable::PortablePlatform> platform;
    std::unique_ptr<Profile> profile;
    std::unique_ptr<Statements> statements;
};

void addJobs(Sides& sides, int values) {
    const std::string name = automation::toUtf8(nameOf(values));
    const std::string folded = automation::toUtf8(automation::toUpper(nameOf(values)));
    const std::string among = " one of " + std::to_string(values);
    const auto count = static_cast<std::size_t>(values);
    bench::addComparison(
        "save" + among, {{"profile entry",
                          [&sides, count] {
                              const bool saved = sides.profile->last->saveSetting().isTrue();
                              return saved ? count : 0;
                          }},
                         {"bare statements", [&sides, name, folded] { return sides.statements->save(folded, name); }}});
    bench::addComparison("retrieve" + among, {{"profile entry",
                                               [&sides] {
                                                   sides.profile->last->retrieveSetting();
                                                   return sides.profile->last->value().size();
                                               }},
                                              {"bare statements", [&sides, name, folded] {
                                                   return sides.statements->retrieve(folded, name);
                                               }}});
}

} // namespace
} // namespace tarncom32

int main(int argc, char** argv) {
    using namespace tarncom32;
    const fs::path folder = fs::temp_directory_path() / ("tarncom32-bench-" + std::to_string(getpid()));
    fs::create_directories(folder);
    int status = 1;
    {
        std::vector<std::unique_ptr<Sides>> sides;
        for (const int values : kValues) {
            sides.push_back(std::make_unique<Sides>(folder, values));
            addJobs(*sides.back(), values);
        }
        status = bench::runComparisons(argc, argv);
    }
    fs::remove_all(folder);
    return status;
}
