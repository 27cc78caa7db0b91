#include "sqlite_fixture.h"

namespace tarncom32::platform::portable {
namespace {

using std::string_literals::operator""s;
using testing::ElementsAre;

TEST_F(SqliteRegistryTest, KeysCompareWithoutCaseAndKeepTheirFirstSpelling) {
    create("Software\\Vendor\\\xC4" // A and a with two dots
           "pfel");
    EXPECT_NE(open("SOFTWARE\\vendor\\\xE4PFEL"), nullptr);
    create("software\\VENDOR\\other");
    std::string name;
    ASSERT_TRUE(open("")->subkeyAt(0, name));
    EXPECT_EQ(name, "Software");
    ASSERT_TRUE(open("software\\vendor")->subkeyAt(0, name));
    EXPECT_EQ(name, "other"); // by name, whatever came first
    ASSERT_TRUE(open("software\\vendor")->subkeyAt(1, name));
    EXPECT_EQ(name, "\xC4pfel");
    EXPECT_FALSE(open("software\\vendor")->subkeyAt(2, name));
}

TEST_F(SqliteRegistryTest, ValuesCompareWithoutCaseAndKeepTheirFirstSpellingAndPlace) {
    const auto key = create("K");
    key->write("Zeta", registry_type::kString, "1");
    key->write("Alpha", registry_type::kString, "2");
    key->write("ZETA", registry_type::kDword, "3333");
    EXPECT_THAT(namesIn(*key), ElementsAre("Zeta", "Alpha"));
    RegistryValue value;
    EXPECT_EQ(key->read("zeta", kNoLimit, value), RegistryRead::Done);
    EXPECT_EQ(value.name, "Zeta");
    EXPECT_EQ(value.type, registry_type::kDword);
    EXPECT_EQ(value.bytes, "3333");
}

TEST_F(SqliteRegistryTest, KeepsEveryTypeAndEveryByte) {
    std::string allBytes;
    for (int i = 0; i < 256; ++i)
        allBytes.push_back(static_cast<char>(i));
    const struct {
        std::uint32_t type;
        std::string bytes;
    } cases[] = {
        {registry_type::kString, ""},
        {registry_type::kString, "x\0y\0"s},
        {registry_type::kNone, allBytes},
        {registry_type::kQword, "12345678"},
        {0xFFFFFFFF, "\0"s},
        {registry_type::kBinary, std::string(1 << 20, '\xFF')},
    };
    const auto key = create("K");
    for (int i = 0; const auto& c : cases) {
        const std::string name = std::to_string(++i);
        key->write(name, c.type, c.bytes);
        RegistryValue value;
        ASSERT_EQ(key->read(name, kNoLimit, value), RegistryRead::Done);
        EXPECT_EQ(value.type, c.type);
        EXPECT_EQ(value.bytes, c.bytes);
    }
}

TEST_F(SqliteRegistryTest, ReadsWithinTheCallersBounds) {
    const auto key = create("K");
    key->write("Name", registry_type::kString, "12345");
    const struct {
        std::size_t nameLimit;
        std::size_t dataLimit;
        RegistryRead expected;
    } cases[] = {
        {5, 5, RegistryRead::Done},
        {4, 5, RegistryRead::TooBig},
        {5, 4, RegistryRead::TooBig},
    };
    RegistryValue value;
    for (const auto& c : cases)
        EXPECT_EQ(key->valueAt(0, c.nameLimit, c.dataLimit, value), c.expected);
    EXPECT_EQ(key->read("Name", 5, value), RegistryRead::Done);
    EXPECT_EQ(key->read("Name", 4, value), RegistryRead::TooBig);
    EXPECT_EQ(key->read("Other", 4, value), RegistryRead::Absent);
    EXPECT_EQ(key->valueAt(1, 5, 5, value), RegistryRead::Absent);
}

TEST_F(SqliteRegistryTest, WalksInAnyOrderAndSeesWhatWasWrittenMeanwhile) {
    const auto key = create("K");
    for (const char* name : {"a", "b", "c"})
        key->write(name, registry_type::kString, "");
    const auto at = [&](std::uint32_t index) {
        RegistryValue value;
        return key->valueAt(index, kNoLimit, kNoLimit, value) == RegistryRead::Done ? value.name : "(end)";
    };
    EXPECT_EQ(at(2), "c");
    EXPECT_EQ(at(0), "a");
    EXPECT_EQ(at(1), "b");
    key->write("d", registry_type::kString, "");
    EXPECT_EQ(at(2), "c");
    EXPECT_EQ(at(3), "d");
    EXPECT_EQ(at(9), "(end)");
    EXPECT_EQ(at(0), "a");
    const auto other = create("L");
    other->write("x", registry_type::kString, "");
    EXPECT_THAT(namesIn(*other), ElementsAre("x"));
    EXPECT_EQ(at(1), "b");
    EXPECT_TRUE(key->deleteValue("B"));
    EXPECT_FALSE(key->deleteValue("B"));
    EXPECT_EQ(at(1), "c");
}

TEST_F(SqliteRegistryTest, PathsAreReadAsTheRegistryReadsThem) {
    create("A\\B");
    const struct {
        const char* what;
        std::string path;
        bool found;
        std::int32_t createError; // for those that are not found
    } cases[] = {
        {"root", "", true, 0},
        {"trailing separator", "A\\B\\", true, 0},
        {"repeated separators", "A\\\\\\B", true, 0},
        {"leading separator", "\\A", false, automation::errors::PathNotFound},
        {"only a separator", "\\", false, automation::errors::PathNotFound},
        {"other separator", "A/B", false, 0},
        {"level of 255 characters", "A\\" + std::string(255, 'x'), false, 0},
        {"level of 256 characters", "A\\" + std::string(256, 'x'), false, automation::errors::PathNotFound},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(open(c.path) != nullptr, c.found) << c.what;
        EXPECT_EQ(errorOf([&] { create(c.path); }).first, c.createError) << c.what;
    }
}

TEST_F(SqliteRegistryTest, RootsAreApartAndThereAreSix) {
    const std::int32_t roots[] = {registry_root::kClassesRoot,   registry_root::kCurrentUser,
                                  registry_root::kLocalMachine,  registry_root::kUsers,
                                  registry_root::kCurrentConfig, registry_root::kDynamicData};
    for (const std::int32_t root : roots) {
        EXPECT_EQ(registry_.open(root, "K", RegistryAccess::Full), nullptr);
        registry_.create(root, "K")->write("root", registry_type::kString, std::to_string(root));
        registry_.open(root, "", RegistryAccess::Full)->write("in the root", registry_type::kString, "x");
    }
    for (const std::int32_t root : roots)
        EXPECT_EQ(bytesOf(*registry_.open(root, "K", RegistryAccess::Full), "root"), std::to_string(root));
    for (const std::int32_t root : {0, 1, registry_root::kUsers + 1, registry_root::kDynamicData + 1}) {
        EXPECT_EQ(registry_.open(root, "K", RegistryAccess::Full), nullptr) << root;
        EXPECT_NE(errorOf([&] { registry_.create(root, "K"); }).first, 0) << root;
    }
}

TEST_F(SqliteRegistryTest, DeletesKeysWithoutSubkeysAndKeepsTheirHandlesFromWriting) {
    const auto parent = create("A");
    const auto child = create("A\\B");
    create("A\\B\\C");
    child->write("v", registry_type::kString, "x");
    EXPECT_FALSE(parent->deleteSubkey("b"));
    EXPECT_FALSE(parent->deleteSubkey(""));
    EXPECT_FALSE(parent->deleteSubkey("missing"));
    EXPECT_TRUE(parent->deleteSubkey("b\\c"));
    EXPECT_TRUE(parent->deleteSubkey("b"));
    EXPECT_EQ(open("A\\B"), nullptr);
    // The next key that is made must not become the one that the old handle means.
    const auto next = create("A\\Next");
    EXPECT_NE(errorOf([&] { child->write("v", registry_type::kString, "x"); }).first, 0);
    EXPECT_EQ(bytesOf(*child, "v"), "(none)");
    EXPECT_THAT(namesIn(*next), ElementsAre());
}

TEST_F(SqliteRegistryTest, AnotherUserOfTheFileSeesAWriteAtOnce) {
    SqliteRegistry other(file_, codePage_);
    const auto mine = create("K");
    const auto theirs = other.open(kRoot, "K", RegistryAccess::Full);
    ASSERT_NE(theirs, nullptr);
    for (const char* text : {"1", "2", "3"}) {
        mine->write("v", registry_type::kString, text);
        EXPECT_EQ(bytesOf(*theirs, "v"), text);
        theirs->write("w", registry_type::kString, text);
        EXPECT_EQ(bytesOf(*mine, "w"), text);
    }
    // A walk that was given up half-way holds nobody up.
    RegistryValue value;
    EXPECT_EQ(mine->valueAt(0, kNoLimit, kNoLimit, value), RegistryRead::Done);
    theirs->write("w", registry_type::kString, "4");
    mine->write("v", registry_type::kString, "4");
    EXPECT_EQ(bytesOf(*mine, "w"), "4");
}

} // namespace
} // namespace tarncom32::platform::portable
