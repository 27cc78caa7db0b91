#include "platform/portable/sqlite_database.h"
#include "platform/portable/sqlite_registry.h"
#include "platform/portable/windows_1252.h"
#include "support/environment_variable.h"
#include "support/error_of.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <fstream>
#include <functional>

namespace tarncom32::platform::portable {
namespace {

namespace fs = std::filesystem;
namespace errors = automation::errors;
using namespace testing;
using namespace tests;

constexpr std::int32_t kRoot = registry_root::kCurrentUser;
constexpr std::size_t kNoLimit = std::size_t{1} << 30;

class SqliteRegistryTest : public testing::Test {
protected:
    std::unique_ptr<RegistryKey> create(std::string_view path) { return registry_.create(kRoot, path); }
    std::unique_ptr<RegistryKey> open(std::string_view path, RegistryAccess access = RegistryAccess::Full) {
        return registry_.open(kRoot, path, access);
    }
    /// Writes `count` values, whose names end in 0, 1 and so on, to the key "K" of the file, which is closed then.
    void writeAway(const std::string& name, int count, const std::string& bytes) {
        SqliteRegistry registry(file_, codePage_);
        const auto key = registry.create(kRoot, "K");
        for (int i = 0; i < count; ++i)
            key->write(name + std::to_string(i), registry_type::kString, bytes);
    }
    /// The bytes of a value; "(none)" when it is missing.
    static std::string bytesOf(RegistryKey& key, std::string_view name) {
        RegistryValue value;
        return key.read(name, kNoLimit, value) == RegistryRead::Done ? value.bytes : "(none)";
    }
    /// The names of a key's values, in order.
    static std::vector<std::string> namesIn(RegistryKey& key) {
        std::vector<std::string> names;
        RegistryValue value;
        for (std::uint32_t i = 0; key.valueAt(i, kNoLimit, kNoLimit, value) == RegistryRead::Done; ++i)
            names.push_back(value.name);
        return names;
    }

    TemporaryFolder folder_;
    fs::path name_ = "data/registry.sqlite";
    fs::path file_ = folder_.path() / name_;
    Windows1252 codePage_;
    SqliteRegistry registry_{file_, codePage_};
};

TEST_F(SqliteRegistryTest, ValuesKeepEveryByteAndTheirFirstSpellingAndPlace) {
    std::string allBytes;
    for (int i = 0; i < 1 << 20; ++i)
        allBytes.push_back(static_cast<char>(i));
    const auto key = create("K");
    key->write("Zeta", registry_type::kString, "1");
    key->write("Alpha", registry_type::kString, "2");
    key->write("ZETA", 0xFFFFFFFF, allBytes);
    EXPECT_THAT(namesIn(*key), ElementsAre("Zeta", "Alpha"));
    RegistryValue value;
    EXPECT_EQ(key->read("zeta", allBytes.size(), value), RegistryRead::Done);
    EXPECT_EQ(value.name, "Zeta");
    EXPECT_EQ(value.type, 0xFFFFFFFF);
    EXPECT_TRUE(value.bytes == allBytes);
    EXPECT_EQ(key->read("zeta", allBytes.size() - 1, value), RegistryRead::TooBig);
}

TEST_F(SqliteRegistryTest, WalksInAnyOrderAndSeesWhatWasWrittenMeanwhile) {
    const auto key = create("K");
    for (const char* name : {"a", "b", "c"})
        key->write(name, registry_type::kString, "");
    const auto at = [&](std::uint32_t index) {
        RegistryValue value;
        return key->valueAt(index, kNoLimit, kNoLimit, value) == RegistryRead::Done ? value.name : "(end)";
    };
    EXPECT_EQ(at(2) + at(0) + at(1), "cab");
    key->write("d", registry_type::kString, "");
    EXPECT_EQ(at(2) + at(3) + at(9) + at(0), "cd(end)a");
    EXPECT_THAT(namesIn(*create("L")), ElementsAre());
    EXPECT_EQ(at(1), "b");
    EXPECT_TRUE(key->deleteValue("B"));
    EXPECT_FALSE(key->deleteValue("B"));
    EXPECT_EQ(at(1), "c");
}

TEST_F(SqliteRegistryTest, PathsAreReadAsTheRegistryReadsThem) {
    create("A\\B");
    const std::tuple<std::string, bool, std::int32_t> cases[] = {
        {"", true, 0},
        {"A\\B\\", true, 0},
        {"A\\\\\\B", true, 0},
        {"\\A", false, errors::PathNotFound},
        {"\\", false, errors::PathNotFound},
        {"A/B", false, 0},
        {"A\\" + std::string(255, 'x'), false, 0},
        {"A\\" + std::string(256, 'x'), false, errors::PathNotFound},
    };
    for (const auto& [path, found, createError] : cases) {
        EXPECT_EQ(open(path) != nullptr, found) << path;
        EXPECT_EQ(errorOf([&, path = path] { create(path); }), createError) << path;
    }
}

TEST_F(SqliteRegistryTest, RootsAreApartAndThereAreSix) {
    using namespace registry_root;
    for (const std::int32_t root : {kClassesRoot, kCurrentUser, kLocalMachine, kUsers, kCurrentConfig, kDynamicData}) {
        EXPECT_EQ(registry_.open(root, "K", RegistryAccess::Full), nullptr) << root;
        EXPECT_NE(registry_.create(root, "K"), nullptr) << root;
    }
    for (const std::int32_t root : {0, 1, kUsers + 1, kDynamicData + 1}) {
        EXPECT_EQ(registry_.open(root, "K", RegistryAccess::Full), nullptr) << root;
        EXPECT_EQ(errorOf([&] { registry_.create(root, "K"); }), errors::PathNotFound) << root;
    }
}

TEST_F(SqliteRegistryTest, HandlesOfDeletedKeysDoNotWrite) {
    const auto parent = create("A");
    const auto child = create("A\\B");
    child->write("v", registry_type::kString, "x");
    EXPECT_TRUE(parent->deleteSubkey("b"));
    // The next key that is made must not become the one that the old handle means.
    const auto next = create("A\\Next");
    EXPECT_NE(errorOf([&] { child->write("v", registry_type::kString, "x"); }), 0);
    EXPECT_EQ(bytesOf(*child, "v"), "(none)");
    EXPECT_THAT(namesIn(*next), ElementsAre());
}

TEST_F(SqliteRegistryTest, AnotherUserOfTheFileSeesAWriteAtOnce) {
    SqliteRegistry other(file_, codePage_);
    const auto mine = create("K");
    const auto theirs = other.open(kRoot, "K", RegistryAccess::Full);
    ASSERT_NE(theirs, nullptr);
    for (const char* text : {"1", "2"}) {
        mine->write("v", registry_type::kString, text);
        EXPECT_EQ(bytesOf(*theirs, "v"), text);
        // A walk that was given up half-way holds nobody up.
        RegistryValue value;
        EXPECT_EQ(mine->valueAt(0, kNoLimit, kNoLimit, value), RegistryRead::Done);
        theirs->write("w", registry_type::kString, text);
        EXPECT_EQ(bytesOf(*mine, "w"), text);
    }
}

void runSql(const fs::path& file, const char* sql) {
    SqliteDatabase(file, [](int, std::string_view message) {
        throw std::runtime_error(std::string(message));
    }).execute(sql);
}

TEST_F(SqliteRegistryTest, ReadingCreatesNothingAndAnEmptyFileBecomesAStore) {
    EXPECT_EQ(open("Software\\Vendor"), nullptr);
    EXPECT_EQ(open("", RegistryAccess::Read), nullptr);
    EXPECT_FALSE(fs::exists(file_.parent_path()));
    folder_.write(name_, ""); // as an interrupted start leaves it
    EXPECT_EQ(open("K"), nullptr);
    create("K");
    EXPECT_NE(open("K"), nullptr);
}

TEST_F(SqliteRegistryTest, NamesOfAStoreOfVersion1AreFoundWithoutRegardToCase) {
    create("K\\\xB5")->write("\x83", registry_type::kString, "1");
    runSql(file_, "UPDATE keys SET folded = name; UPDATE entries SET folded = name; PRAGMA user_version = 1");
    SqliteRegistry later(file_, codePage_);
    const auto key = later.open(kRoot, "k\\\xB5", RegistryAccess::Full);
    ASSERT_NE(key, nullptr);
    EXPECT_EQ(bytesOf(*key, "\x83"), "1");
}

TEST_F(SqliteRegistryTest, AFileThatIsNoStoreIsRefusedAndLeftAsItIs) {
    writeAway("v", 40, std::string(500, 'x'));
    const std::string store = folder_.read(name_);
    ASSERT_GT(store.size(), 20000u);
    std::string noTables = store;
    noTables.replace(100, 4096 - 100, 4096 - 100, '\xEE');
    constexpr const char* kDamaged = "is damaged, or is no settings store";
    constexpr const char* kForeign = "is a database of another program";
    // "sql:" stands before the statements that make another program's database.
    const std::tuple<const char*, std::string, const char*> cases[] = {
        {"a long text", std::string(10000, 'n'), kDamaged},
        {"zeros", std::string(8192, '\0'), kDamaged},
        {"half", store.substr(0, store.size() / 2), kDamaged},
        {"a broken first page", noTables, kDamaged},
        {"a foreign database", "sql:CREATE TABLE notes(text)", kForeign},
        {"a foreign database that says so", "sql:PRAGMA application_id = 17; CREATE TABLE keys(id)", kForeign},
        {"a foreign database with a log", "sql:PRAGMA journal_mode = WAL; CREATE TABLE keys(id)", kForeign},
        {"a store of a later version", "sql:PRAGMA application_id = 0x5461726E; PRAGMA user_version = 3",
         "was written by a newer version"},
    };
    for (const auto& [what, contents, expected] : cases) {
        SCOPED_TRACE(what);
        fs::remove(file_);
        if (contents.starts_with("sql:"))
            runSql(file_, contents.c_str() + 4);
        else
            folder_.write(name_, contents);
        const std::string before = folder_.read(name_);
        SqliteRegistry refused(file_, codePage_);
        const std::function<void()> calls[] = {[&] { refused.open(kRoot, "K", RegistryAccess::Read); },
                                               [&] { refused.open(kRoot, "K", RegistryAccess::Full); },
                                               [&] { refused.create(kRoot, "New"); }};
        for (const auto& call : calls)
            EXPECT_THAT(failureOf(call), AllOf(StartsWith("75 "), HasSubstr(expected), HasSubstr(file_.string())));
        EXPECT_TRUE(folder_.read(name_) == before) << "the file was changed";
    }
}

// Damage behind the first pages is noticed when a read meets it; what it hides must not look absent.
TEST_F(SqliteRegistryTest, ADamagedPageRaisesAndDoesNotEndTheList) {
    constexpr int kValues = 200;
    writeAway("value ", kValues, std::string(500, 'x'));
    std::string damaged = folder_.read(name_);
    ASSERT_GT(damaged.size(), std::size_t{20} * 4096);
    int walksThatRaised = 0;
    for (std::size_t page = 2; page < damaged.size() / 4096; ++page) {
        folder_.write(name_, std::string(damaged).replace(page * 4096, 4096, 4096, '\xEE'));
        SqliteRegistry registry(file_, codePage_);
        std::unique_ptr<RegistryKey> key;
        std::uint32_t seen = 0;
        const auto walk = [&] {
            if (!key) key = registry.open(kRoot, "K", RegistryAccess::Read);
            ASSERT_NE(key, nullptr) << "page " << page;
            for (RegistryValue value; key->valueAt(seen, kNoLimit, kNoLimit, value) == RegistryRead::Done; ++seen)
                EXPECT_EQ(value.name, "value " + std::to_string(seen)) << "page " << page;
        };
        const std::int32_t error = errorOf(walk);
        if (error != 0) ++walksThatRaised;
        EXPECT_TRUE(error == errors::PathFileAccess || seen == kValues) << "page " << page << ": " << seen;
        EXPECT_EQ(errorOf(walk), error) << "going on after the failure, page " << page;
    }
    EXPECT_GT(walksThatRaised, 10);
}

TEST_F(SqliteRegistryTest, SaysWhyAPlaceCannotBeUsed) {
    folder_.write(name_, "");
    SqliteRegistry belowAFile(file_ / "registry.sqlite", codePage_);
    EXPECT_EQ(errorOf([&] { belowAFile.create(kRoot, "K"); }), errors::PathFileAccess);
    SqliteRegistry folder(folder_.path(), codePage_);
    EXPECT_EQ(errorOf([&] { folder.open(kRoot, "K", RegistryAccess::Full); }), errors::PathFileAccess);
    SqliteRegistry nowhere({}, codePage_);
    EXPECT_THAT(failureOf([&] { nowhere.open(kRoot, "K", RegistryAccess::Read); }),
                AllOf(StartsWith("75 "), HasSubstr("TARNCOM32_REGISTRY")));
}

/// Acts as a user without special rights while it lives.
struct OrdinaryUser {
    OrdinaryUser() : applied(geteuid() != 0 || seteuid(65534) == 0) {}
    ~OrdinaryUser() { EXPECT_TRUE(getuid() != 0 || seteuid(0) == 0); }
    const bool applied;
};

TEST_F(SqliteRegistryTest, AReadOnlyFileCanBeReadButNotOpenedForFullAccess) {
    writeAway("v", 1, "x");
    fs::permissions(file_, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
    fs::permissions(folder_.path(), fs::perms::all);
    fs::permissions(file_.parent_path(), fs::perms::all);
    const OrdinaryUser user;
    ASSERT_TRUE(user.applied);
    EXPECT_EQ(open("K", RegistryAccess::Full), nullptr);
    const auto key = open("K", RegistryAccess::Read);
    ASSERT_NE(key, nullptr);
    EXPECT_EQ(bytesOf(*key, "v0"), "x");
    EXPECT_EQ(errorOf([&] { create("New"); }), errors::PathFileAccess);
    EXPECT_EQ(errorOf([&] { key->write("v", registry_type::kString, "y"); }), errors::PathFileAccess);
}

TEST(SqliteRegistryFile, IsTheNamedOneOrLiesInTheUsersDataFolder) {
    const std::tuple<std::optional<std::string>, std::optional<std::string>, std::optional<std::string>, const char*>
        cases[] = {
            {{}, {}, {}, ""},
            {"/home/u", {}, {}, "/home/u/.local/share/tarncom32/registry.sqlite"},
            {"/home/u", "/data", {}, "/data/tarncom32/registry.sqlite"},
            {"/home/u", "relative", {}, "/home/u/.local/share/tarncom32/registry.sqlite"},
            {"", "", {}, ""},
            {"/home/u", "/data", "mine.sqlite", "mine.sqlite"},
        };
    for (const auto& [homeValue, dataValue, namedValue, expected] : cases) {
        const EnvironmentVariable home("HOME", homeValue), data("XDG_DATA_HOME", dataValue);
        const EnvironmentVariable named("TARNCOM32_REGISTRY", namedValue);
        EXPECT_EQ(SqliteRegistry::defaultFile(), fs::path(expected));
    }
}

} // namespace
} // namespace tarncom32::platform::portable
