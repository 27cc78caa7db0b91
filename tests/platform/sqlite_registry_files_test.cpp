#include "platform/portable/sqlite_database.h"
#include "sqlite_fixture.h"

#include <unistd.h>

#include <cstdlib>
#include <map>
#include <optional>

namespace tarncom32::platform::portable {
namespace {

namespace fs = std::filesystem;
namespace errors = automation::errors;
using testing::HasSubstr;

void runSql(const fs::path& file, const char* sql) {
    SqliteDatabase(file, [](int, std::string_view message) {
        throw std::runtime_error(std::string(message));
    }).execute(sql);
}

TEST_F(SqliteRegistryTest, ReadingCreatesNothing) {
    EXPECT_EQ(open("Software\\Vendor"), nullptr);
    EXPECT_EQ(open("", RegistryAccess::Read), nullptr);
    EXPECT_FALSE(fs::exists(file_.parent_path()));
    create("Software");
    EXPECT_TRUE(fs::exists(file_));
}

TEST_F(SqliteRegistryTest, AnEmptyFileBecomesAStore) {
    fs::create_directories(file_.parent_path());
    writeFile("");
    EXPECT_EQ(open("K"), nullptr);
    create("K");
    EXPECT_NE(open("K"), nullptr);
}

TEST_F(SqliteRegistryTest, AFileThatIsNoStoreIsRefusedAndLeftAsItIs) {
    {
        SqliteRegistry real(file_, codePage_);
        real.create(kRoot, "K")->write("v", registry_type::kString, std::string(20000, 'x'));
    }
    const std::string store = contentsOf(file_);
    ASSERT_GT(store.size(), 20000u);
    std::string noTables = store;
    noTables.replace(100, 4096 - 100, 4096 - 100, '\xEE');
    const struct {
        const char* what;
        std::string contents; // "sql:" and statements for another program's database
        const char* expected;
    } cases[] = {
        {"a text", "These are my notes. Keep them.\n", "is damaged, or is no settings store"},
        {"a long text", std::string(10000, 'n'), "is damaged, or is no settings store"},
        {"zeros", std::string(8192, '\0'), "is damaged, or is no settings store"},
        {"the first bytes only", store.substr(0, 20), "is damaged, or is no settings store"},
        {"the first page only", store.substr(0, 4096), "is damaged, or is no settings store"},
        {"half", store.substr(0, store.size() / 2), "is damaged, or is no settings store"},
        {"a broken first page", noTables, "is damaged, or is no settings store"},
        {"a foreign database", "sql:CREATE TABLE notes(text); INSERT INTO notes VALUES('keep')",
         "is a database of another program"},
        {"a foreign database that says so", "sql:PRAGMA application_id = 17; CREATE TABLE keys(id)",
         "is a database of another program"},
        {"a foreign database with a log", "sql:PRAGMA journal_mode = WAL; CREATE TABLE keys(id)",
         "is a database of another program"},
        {"a store of a later version", "sql:PRAGMA application_id = 0x5461726E; PRAGMA user_version = 2",
         "was written by a newer version"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        fs::remove(file_);
        if (c.contents.starts_with("sql:"))
            runSql(file_, c.contents.c_str() + 4);
        else
            writeFile(c.contents);
        const std::string before = contentsOf(file_);
        SqliteRegistry refused(file_, codePage_);
        const std::function<void()> calls[] = {
            [&] { refused.open(kRoot, "K", RegistryAccess::Read); },
            [&] { refused.open(kRoot, "K", RegistryAccess::Full); },
            [&] { refused.create(kRoot, "New"); },
        };
        for (const auto& call : calls) {
            const auto [number, text] = errorOf(call);
            EXPECT_EQ(number, errors::PathFileAccess);
            EXPECT_THAT(text, HasSubstr(c.expected));
            EXPECT_THAT(text, HasSubstr(file_.string()));
        }
        EXPECT_TRUE(contentsOf(file_) == before) << "the file was changed";
    }
}

// Damage behind the first pages is noticed when a read meets it; what it hides must not look absent.
TEST_F(SqliteRegistryTest, ADamagedPageRaisesAndDoesNotEndTheList) {
    constexpr int kValues = 200;
    {
        SqliteRegistry real(file_, codePage_);
        const auto key = real.create(kRoot, "K");
        for (int i = 0; i < kValues; ++i)
            key->write("value " + std::to_string(i), registry_type::kString, std::string(500, 'x'));
    }
    std::string damaged = contentsOf(file_);
    ASSERT_GT(damaged.size(), std::size_t{20} * 4096);
    int walksThatRaised = 0;
    for (std::size_t page = 2; page < damaged.size() / 4096; ++page) {
        writeFile(std::string(damaged).replace(page * 4096, 4096, 4096, '\xEE'));
        SqliteRegistry registry(file_, codePage_);
        std::size_t seen = 0;
        const std::int32_t error = errorOf([&] {
                                       const auto key = registry.open(kRoot, "K", RegistryAccess::Read);
                                       ASSERT_NE(key, nullptr) << "page " << page;
                                       seen = namesIn(*key).size();
                                   }).first;
        if (error != 0) ++walksThatRaised;
        EXPECT_TRUE(error == errors::PathFileAccess || seen == kValues) << "page " << page << ": " << seen;
    }
    EXPECT_GT(walksThatRaised, 10);
}

TEST_F(SqliteRegistryTest, SaysWhyAPlaceCannotBeUsed) {
    fs::create_directories(file_.parent_path());
    writeFile("");
    SqliteRegistry belowAFile(file_ / "registry.sqlite", codePage_);
    EXPECT_EQ(errorOf([&] { belowAFile.create(kRoot, "K"); }).first, errors::PathFileAccess);
    SqliteRegistry folder(folder_.path(), codePage_);
    EXPECT_EQ(errorOf([&] { folder.open(kRoot, "K", RegistryAccess::Full); }).first, errors::PathFileAccess);
    SqliteRegistry nowhere({}, codePage_);
    const auto [number, text] = errorOf([&] { nowhere.open(kRoot, "K", RegistryAccess::Read); });
    EXPECT_EQ(number, errors::PathFileAccess);
    EXPECT_THAT(text, HasSubstr("TARNCOM32_REGISTRY"));
}

/// Acts as a user without special rights while it lives.
class OrdinaryUser {
public:
    OrdinaryUser() { applied_ = geteuid() != 0 || seteuid(65534) == 0; }
    ~OrdinaryUser() {
        if (getuid() == 0) {
            EXPECT_EQ(seteuid(0), 0);
        }
    }
    bool applied() const { return applied_; }

private:
    bool applied_;
};

TEST_F(SqliteRegistryTest, AReadOnlyFileCanBeReadButNotOpenedForFullAccess) {
    {
        SqliteRegistry writer(file_, codePage_);
        writer.create(kRoot, "K")->write("v", registry_type::kString, "x");
    }
    fs::permissions(file_, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
    fs::permissions(folder_.path(), fs::perms::all);
    fs::permissions(file_.parent_path(), fs::perms::all);
    const OrdinaryUser user;
    ASSERT_TRUE(user.applied());
    EXPECT_EQ(open("K", RegistryAccess::Full), nullptr);
    const auto key = open("K", RegistryAccess::Read);
    ASSERT_NE(key, nullptr);
    EXPECT_EQ(bytesOf(*key, "v"), "x");
    EXPECT_EQ(errorOf([&] { create("New"); }).first, errors::PathFileAccess);
    EXPECT_EQ(errorOf([&] { key->write("v", registry_type::kString, "y"); }).first, errors::PathFileAccess);
}

TEST(SqliteRegistryFile, IsTheNamedOneOrLiesInTheUsersDataFolder) {
    using Environment = std::map<std::string, std::string>;
    const struct {
        Environment environment;
        const char* expected;
    } cases[] = {
        {{}, ""},
        {{{"HOME", "/home/u"}}, "/home/u/.local/share/tarncom32/registry.sqlite"},
        {{{"HOME", "/home/u"}, {"XDG_DATA_HOME", "/data"}}, "/data/tarncom32/registry.sqlite"},
        {{{"HOME", "/home/u"}, {"XDG_DATA_HOME", "relative"}}, "/home/u/.local/share/tarncom32/registry.sqlite"},
        {{{"HOME", ""}, {"XDG_DATA_HOME", ""}}, ""},
        {{{"HOME", "/home/u"}, {"XDG_DATA_HOME", "/data"}, {"TARNCOM32_REGISTRY", "mine.sqlite"}}, "mine.sqlite"},
    };
    const std::string names[] = {"HOME", "XDG_DATA_HOME", "TARNCOM32_REGISTRY"};
    std::map<std::string, std::optional<std::string>> saved;
    for (const std::string& name : names)
        saved[name] = std::getenv(name.c_str()) ? std::optional<std::string>(std::getenv(name.c_str())) : std::nullopt;
    for (const auto& c : cases) {
        for (const std::string& name : names) {
            unsetenv(name.c_str());
            if (c.environment.contains(name)) setenv(name.c_str(), c.environment.at(name).c_str(), 1);
        }
        EXPECT_EQ(SqliteRegistry::defaultFile(), fs::path(c.expected));
    }
    for (const auto& [name, value] : saved) {
        unsetenv(name.c_str());
        if (value) setenv(name.c_str(), value->c_str(), 1);
    }
}

} // namespace
} // namespace tarncom32::platform::portable
