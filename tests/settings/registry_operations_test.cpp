#include "settings_fixture.h"

#include <gmock/gmock.h>

namespace tarncom32::settings {
namespace {

using namespace automation;
using std::string_literals::operator""s;
namespace type = platform::registry_type;

class RegistryOperationsTest : public SettingsTest {
protected:
    std::vector<String> values() {
        std::vector<String> texts;
        const auto found = operations_.getRegistryValues(kRoot, key_, false);
        for (std::size_t i = 0; i < found->size(); ++i)
            texts.push_back(*(*found)[i].as<String>());
        return texts;
    }
    String get(StringView name) { return operations_.getRegistryValue(kRoot, key_, name); }
};

TEST_F(RegistryOperationsTest, ReadsTheTextBeforeTheFirstNulOfAtMost1024BytesOfAnyType) {
    const std::tuple<const char*, std::uint32_t, std::string, String> cases[] = {
        {"NUL in between", type::kString, "fast\0slow\0"s, u"fast"},
        {"outside of Latin letters", type::kString, "\xC4\xD6\x80\0"s, u"ÄÖ€"},
        {"1024 bytes", type::kString, std::string(1023, 'x') + '\0', String(1023, u'x')},
        {"1025 bytes", type::kString, std::string(1024, 'x') + '\0', u"1001"},
        {"1024 bytes without a NUL", type::kBinary, std::string(1024, 'x'), String(1024, u'x')},
    };
    for (const auto& [what, kind, bytes, expected] : cases) {
        store("Speed", bytes, kind);
        String actual;
        const std::int32_t error = errorOf([&] { actual = get(u"Speed"); });
        EXPECT_EQ(error ? decimalText(error) : actual, expected) << what; // "1001" for the error
    }
}

TEST_F(RegistryOperationsTest, WritesAsManyBytesAsCharactersAndOneMoreUnderNamesThatEndAtTheirFirstNul) {
    const std::pair<StringView, std::string> cases[] = {
        {u"", "\0"s},
        {u"Ä€", "\xC4\x80\0"s},
        {u"日本", "??\0"s},
        // The pair is one character of the code page and two of the text.
        {u"a\U0001F600b", "a?b\0\0"s},
        {StringView(u"a\0b", 3), "a\0b\0"s},
    };
    operations_.createRegistryKey(kRoot, key_ + String(u"\0more", 5));
    for (const auto& [text, bytes] : cases) {
        operations_.setRegistryValue(kRoot, key_, StringView(u"Speed\0more", 10), text);
        EXPECT_EQ(stored("Speed"), bytes) << toUtf8(text);
    }
}

TEST_F(RegistryOperationsTest, TheListEndsInFrontOfTheFirstValueThatDoesNotFit) {
    const std::tuple<const char*, std::string, std::string, std::size_t> cases[] = {
        {"255 bytes without a NUL", "M", std::string(255, 'x'), 3},
        {"256 bytes", "M", std::string(255, 'x') + '\0', 1},
        {"254 characters of name", "M" + std::string(253, 'n'), "x\0"s, 3},
        {"255 characters of name", "M" + std::string(254, 'n'), "x\0"s, 1},
    };
    for (int i = 0; const auto& [what, name, bytes, listed] : cases) {
        key_ = tests::testKey() + u"\\" + decimalText(++i);
        store("A", "1\0"s);
        store(name, bytes, type::kBinary);
        store("Z", "1\0"s);
        EXPECT_EQ(values().size(), listed) << what;
    }
}

TEST_F(RegistryOperationsTest, AValueIsPresentWhenItsNameOccursInAnyNameOrData) {
    const std::tuple<const char*, const char*, std::string, StringView, std::vector<String>> cases[] = {
        {"a longer name", "MaxWidth", "3\0"s, u"Width", {u"MaxWidth\\\\3"}},
        {"the data", "Note", "see Width\0"s, u"Width", {u"Note\\\\see Width"}},
        {"across the separator", "Max", "3\0"s, u"x\\\\3", {u"Max\\\\3"}},
        {"no name in a key with values", "Note", "3\0"s, u"", {u"Note\\\\3"}},
        {"other case: the same value is emptied", "width", "3\0"s, u"Width", {u"width\\\\"}},
        {"behind the data's NUL", "Note", "a\0Width\0"s, u"Width", {u"Note\\\\a", u"Width\\\\"}},
    };
    for (int i = 0; const auto& [what, storedName, storedData, asked, left] : cases) {
        key_ = tests::testKey() + u"\\" + decimalText(++i);
        store(storedName, storedData);
        operations_.ensureRegistryValue(kRoot, key_, asked);
        EXPECT_EQ(values(), left) << what;
    }
    // Retrieving makes a value that is missing, unless another one passes for it; saving writes it all the same.
    key_ = tests::testKey() + u"\\New";
    EXPECT_EQ(operations_.retrieveProfileValue(key_, u"MaxWidth", kRoot), u"");
    EXPECT_EQ(errorOf([&] { operations_.retrieveProfileValue(key_, u"Width", kRoot); }), registry_errors::ItemMissing);
    operations_.saveProfileValue(key_, u"Width", u"5", kRoot);
    EXPECT_EQ(operations_.retrieveProfileValue(key_, u"Width", kRoot), u"5");
}

TEST_F(RegistryOperationsTest, RaisesItsOwnNumbersAndTexts) {
    const String missing = key_ + u"\\Missing";
    const String invalid = u"\\" + key_;
    const std::string noKey = "1000 Registry Key does not exist";
    store("Speed", "fast\0"s);
    const std::tuple<const char*, std::function<void()>, std::string> cases[] = {
        {"open a missing key", [&] { operations_.openRegistryKey(kRoot, missing, true); }, noKey},
        {"set in a missing key", [&] { operations_.setRegistryValue(kRoot, missing, u"a", u"b"); }, noKey},
        {"list a missing key", [&] { operations_.getRegistryValues(kRoot, missing, true); }, noKey},
        {"delete in a missing key", [&] { operations_.deleteRegistryKey(kRoot, missing, u"a", true); }, noKey},
        {"get a missing value", [&] { get(u"Other"); }, "1001 Item does not exist for this registry key"},
        {"create at an invalid path", [&] { operations_.createRegistryKey(kRoot, invalid); }, "1002 Cannot create key"},
        {"delete a missing subkey", [&] { operations_.deleteRegistryKey(kRoot, key_, u"Speed", true); },
         "1003 Cannot delete key"},
    };
    for (const auto& [what, call, failure] : cases) {
        EXPECT_EQ(failureOf(call), failure) << what;
        EXPECT_EQ(registry_.openKeys, 0) << what;
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
        [&] { operations_.setRegistryValue(kRoot, key_, u"Speed", u"fast"); },
        [&] { operations_.createRegistryKey(kRoot, key_ + u"\\New"); },
        [&] { operations_.deleteRegistryKey(kRoot, key_, u"New", false); },
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
        EXPECT_GT(failing, 1);
    }
}

} // namespace
} // namespace tarncom32::settings
