#include "settings_fixture.h"

#include <gmock/gmock.h>

namespace tarncom32::settings {
namespace {

using automation::String;
using automation::StringView;
using std::string_literals::operator""s;
using Operations = RegistryOperations;

namespace errors = automation::errors;
namespace type = platform::registry_type;

class RegistryOperationsTest : public SettingsTest {
protected:
    std::vector<String> values(bool raiseIfMissing = false) {
        std::vector<String> texts;
        const auto found = operations_.getRegistryValues(kRoot, key_, raiseIfMissing);
        for (std::size_t i = 0; i < found->size(); ++i)
            texts.push_back(*(*found)[i].as<String>());
        return texts;
    }
    String get(StringView name) { return operations_.getRegistryValue(kRoot, key_, name); }
};

TEST_F(RegistryOperationsTest, ReadsTheTextBeforeTheFirstNulOfAtMost1024BytesOfAnyType) {
    const struct {
        const char* what;
        std::uint32_t type;
        std::string bytes;
        String expected; // "1001" for the error
    } cases[] = {
        {"text", type::kString, "fast\0"s, u"fast"},
        {"no bytes", type::kString, "", u""},
        {"no NUL", type::kString, "fast", u"fast"},
        {"NUL in between", type::kString, "fast\0slow\0"s, u"fast"},
        {"number below 256", type::kDword, "A\0\0\0"s, u"A"},
        {"outside of Latin letters", type::kString, "\xC4\xD6\x80\0"s, u"ÄÖ€"},
        {"1024 bytes", type::kString, std::string(1023, 'x') + '\0', String(1023, u'x')},
        {"1025 bytes", type::kString, std::string(1024, 'x') + '\0', u"1001"},
        {"1024 bytes without a NUL", type::kBinary, std::string(1024, 'x'), String(1024, u'x')},
    };
    for (const auto& c : cases) {
        store("Speed", c.bytes, c.type);
        String actual;
        const std::int32_t error = errorOf([&] { actual = get(u"Speed"); });
        EXPECT_EQ(error ? automation::decimalText(error) : actual, c.expected) << c.what;
    }
}

TEST_F(RegistryOperationsTest, WritesAsManyBytesAsCharactersAndOneMore) {
    const struct {
        StringView text;
        std::string bytes;
    } cases[] = {
        {u"fast", "fast\0"s},
        {u"", "\0"s},
        {u"Ä€", "\xC4\x80\0"s},
        {u"日本", "??\0"s},
        // The pair is one character of the code page and two of the text.
        {u"a\U0001F600b", "a?b\0\0"s},
        {StringView(u"a\0b", 3), "a\0b\0"s},
    };
    store("Speed", "");
    for (const auto& c : cases) {
        operations_.setRegistryValue(kRoot, key_, u"Speed", c.text);
        EXPECT_EQ(stored("Speed"), c.bytes) << automation::toUtf8(c.text);
    }
}

TEST_F(RegistryOperationsTest, NamesEndAtTheirFirstNul) {
    operations_.createRegistryKey(kRoot, key_ + String(u"\0more", 5));
    operations_.setRegistryValue(kRoot, key_, StringView(u"Speed\0more", 10), u"fast");
    EXPECT_EQ(stored("Speed"), "fast\0"s);
    EXPECT_EQ(get(StringView(u"Speed\0other", 11)), u"fast");
}

TEST_F(RegistryOperationsTest, ListsNameTwoBackslashesData) {
    EXPECT_THAT(values(), testing::IsEmpty());
    store("A", "1\0"s);
    store("B", "x\\\\y\0"s);
    store("C", "");
    EXPECT_THAT(values(), testing::ElementsAre(u"A\\\\1", u"B\\\\x\\\\y", u"C\\\\"));
}

TEST_F(RegistryOperationsTest, TheListEndsInFrontOfTheFirstValueThatDoesNotFit) {
    const struct {
        const char* what;
        std::string name;
        std::string bytes;
        std::size_t listed;
        std::uint32_t type = type::kString;
    } cases[] = {
        {"255 bytes without a NUL", "M", std::string(255, 'x'), 3, type::kBinary},
        {"256 bytes", "M", std::string(255, 'x') + '\0', 1},
        {"254 characters of name", "M" + std::string(253, 'n'), "x\0"s, 3},
        {"255 characters of name", "M" + std::string(254, 'n'), "x\0"s, 1},
    };
    for (int i = 0; const auto& c : cases) {
        key_ = tests::testKey() + u"\\" + automation::decimalText(++i);
        store("A", "1\0"s);
        store(c.name, c.bytes, c.type);
        store("Z", "1\0"s);
        EXPECT_EQ(values().size(), c.listed) << c.what;
    }
}

TEST_F(RegistryOperationsTest, AValueIsPresentWhenItsNameOccursInAnyNameOrData) {
    const struct {
        const char* what;
        const char* storedName;
        std::string storedData;
        StringView asked;
        std::vector<String> left;
    } cases[] = {
        {"its own name", "Width", "3\0"s, u"Width", {u"Width\\\\3"}},
        {"a longer name", "MaxWidth", "3\0"s, u"Width", {u"MaxWidth\\\\3"}},
        {"the data", "Note", "see Width\0"s, u"Width", {u"Note\\\\see Width"}},
        {"across the separator", "Max", "3\0"s, u"x\\\\3", {u"Max\\\\3"}},
        {"no name in a key with values", "Note", "3\0"s, u"", {u"Note\\\\3"}},
        {"other case: the same value is emptied", "width", "3\0"s, u"Width", {u"width\\\\"}},
        {"behind the data's NUL", "Note", "a\0Width\0"s, u"Width", {u"Note\\\\a", u"Width\\\\"}},
    };
    for (int i = 0; const auto& c : cases) {
        key_ = tests::testKey() + u"\\" + automation::decimalText(++i);
        store(c.storedName, c.storedData);
        operations_.ensureRegistryValue(kRoot, key_, c.asked);
        EXPECT_EQ(values(), c.left) << c.what;
    }
}

TEST_F(RegistryOperationsTest, RetrievingCreatesWhatIsMissingUnlessAnotherValuePassesForIt) {
    EXPECT_EQ(operations_.retrieveProfileValue(key_, u"Depth", kRoot), u"");
    EXPECT_EQ(stored("Depth"), "\0"s);
    store("MaxWidth", "3\0"s);
    EXPECT_EQ(errorOf([&] { operations_.retrieveProfileValue(key_, u"Width", kRoot); }), registry_errors::ItemMissing);
    // Saving writes it all the same.
    operations_.saveProfileValue(key_, u"Width", u"5", kRoot);
    EXPECT_EQ(operations_.retrieveProfileValue(key_, u"Width", kRoot), u"5");
}

TEST_F(RegistryOperationsTest, RaisesItsOwnNumbersAndTexts) {
    const String missing = key_ + u"\\Missing";
    const String invalid = u"\\" + key_;
    const StringView noKey = u"Registry Key does not exist";
    store("Speed", "fast\0"s);
    const struct {
        const char* what;
        std::function<void()> call;
        std::int32_t number;
        StringView text;
    } cases[] = {
        {"open a missing key", [&] { operations_.openRegistryKey(kRoot, missing, true); }, 1000, noKey},
        {"open below no root", [&] { operations_.openRegistryKey(5, key_, true); }, 1000, noKey},
        {"set in a missing key", [&] { operations_.setRegistryValue(kRoot, missing, u"a", u"b"); }, 1000, noKey},
        {"list a missing key", [&] { operations_.getRegistryValues(kRoot, missing, true); }, 1000, noKey},
        {"delete in a missing key", [&] { operations_.deleteRegistryKey(kRoot, missing, u"a", true); }, 1000, noKey},
        {"get a missing value", [&] { get(u"Other"); }, 1001, u"Item does not exist for this registry key"},
        {"create at an invalid path", [&] { operations_.createRegistryKey(kRoot, invalid); }, 1002,
         u"Cannot create key"},
        {"delete a missing subkey", [&] { operations_.deleteRegistryKey(kRoot, key_, u"Speed", true); }, 1003,
         u"Cannot delete key"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(errorOf(c.call), c.number) << c.what;
        EXPECT_EQ(errorTextOf(c.call), c.text) << c.what;
        EXPECT_EQ(registry_.openKeys, 0) << c.what;
    }
    EXPECT_EQ(operations_.openRegistryKey(kRoot, missing, false), nullptr);
    EXPECT_FALSE(operations_.deleteRegistryKey(kRoot, missing, u"a", false));
    EXPECT_EQ(operations_.getRegistryValues(kRoot, missing, false)->count(), 0);
}

TEST_F(RegistryOperationsTest, DeletesOneSubkeyWithItsValuesButNoTreeAndNoValue) {
    operations_.createRegistryKey(kRoot, key_ + u"\\Outer\\Inner");
    operations_.setRegistryValue(kRoot, key_ + u"\\Outer\\Inner", u"a", u"b");
    store("Outer", "value\0"s);
    EXPECT_FALSE(operations_.deleteRegistryKey(kRoot, key_, u"Outer", false)); // it has a subkey
    EXPECT_FALSE(operations_.deleteRegistryKey(kRoot, key_, u"", false));      // no subkey at all
    EXPECT_TRUE(operations_.deleteRegistryKey(kRoot, key_, u"Outer\\inner", true));
    EXPECT_TRUE(operations_.deleteRegistryKey(kRoot, key_, u"OUTER", true));
    EXPECT_EQ(operations_.openRegistryKey(kRoot, key_ + u"\\Outer", false), nullptr);
    EXPECT_EQ(get(u"Outer"), u"value");
}

TEST_F(RegistryOperationsTest, RefusedAccessHasTheNumberOfWhatIsMissing) {
    store("Speed", "fast\0"s);
    registry_.readOnly = true; // such a key counts as missing
    EXPECT_EQ(errorOf([&] { get(u"Speed"); }), registry_errors::KeyMissing);
    EXPECT_THAT(values(), testing::IsEmpty());
    registry_.readOnly = false;
    registry_.refusesWrites = true;
    EXPECT_EQ(errorOf([&] { operations_.setRegistryValue(kRoot, key_, u"Speed", u"slow"); }),
              registry_errors::ItemMissing);
    EXPECT_EQ(errorOf([&] { operations_.saveProfileValue(key_, u"Speed", u"slow", kRoot); }),
              registry_errors::ItemMissing);
    // The failure of the empty value is handled by creating the key, which fails too and then is the error.
    EXPECT_EQ(errorOf([&] { operations_.retrieveProfileValue(key_, u"New", kRoot); }), registry_errors::CannotCreate);
    EXPECT_FALSE(operations_.deleteRegistryKey(kRoot, tests::testKey() + u"\\Product", u"Default", false));
    EXPECT_EQ(registry_.openKeys, 0);
    EXPECT_EQ(stored("Speed"), "fast\0"s);
}

// An unreadable store is never taken for one without the value: an empty value would be written over it.
TEST_F(RegistryOperationsTest, WhateverReadFailsNothingIsLostAndNoKeyStaysOpen) {
    store("Speed", "fast\0"s);
    const std::function<void()> calls[] = {
        [&] { operations_.retrieveProfileValue(key_, u"Speed", kRoot); },
        [&] { operations_.ensureRegistryValue(kRoot, key_, u"Speed"); },
        [&] { operations_.getRegistryValues(kRoot, key_, false); },
        [&] { operations_.getRegistryValue(kRoot, key_, u"Speed"); },
    };
    for (const auto& call : calls) {
        int failing = 0;
        for (std::int32_t error = -1; error != 0; ++failing) {
            ASSERT_LT(failing, 100);
            registry_.callsBeforeFailure = failing;
            error = errorOf(call);
            registry_.callsBeforeFailure = -1;
            EXPECT_TRUE(error == 0 || error == errors::PathFileAccess) << error << " at call " << failing;
            EXPECT_EQ(registry_.openKeys, 0);
            EXPECT_EQ(stored("Speed"), "fast\0"s) << "at call " << failing;
        }
        EXPECT_GT(failing, 2);
    }
}

} // namespace
} // namespace tarncom32::settings
