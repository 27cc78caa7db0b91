#include "automation/string.h"

#include <gtest/gtest.h>

namespace tarncom32::automation {
namespace {

TEST(String, Utf8IsReadAndWritten) {
    const struct {
        StringView utf16;
        std::string_view utf8;
    } cases[] = {
        {u"", ""},
        {u"A\u007F", "A\x7F"},
        {u"\u0080\u07FF", "\xC2\x80\xDF\xBF"},
        {u"\u0800\uFFFD", "\xE0\xA0\x80\xEF\xBF\xBD"},
        {u"\U00010000\U0010FFFF", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"},
        {StringView(u"a\0b", 3), std::string_view("a\0b", 3)},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(toUtf8(c.utf16), c.utf8);
        EXPECT_EQ(fromUtf8(c.utf8), c.utf16);
    }
}

TEST(String, MalformedTextBecomesReplacementCharacters) {
    const char16_t high[] = {u'a', 0xD800, u'b'};
    const char16_t low[] = {0xDC00};
    EXPECT_EQ(toUtf8({high, 3}), "a\xEF\xBF\xBD"
                                 "b");
    EXPECT_EQ(toUtf8({low, 1}), "\xEF\xBF\xBD");
    EXPECT_EQ(toUtf8({high, 2}), "a\xEF\xBF\xBD") << "a high surrogate at the very end";
    const struct {
        std::string_view utf8;
        StringView utf16;
    } cases[] = {
        {"a\x80z", u"a\uFFFDz"},
        {"\xC0\x80", u"\uFFFD\uFFFD"},                     // overlong
        {"\xE2\x82", u"\uFFFD\uFFFD"},                     // cut off
        {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},           // a surrogate
        {"\xF5\x80\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"}, // beyond the last character
    };
    for (const auto& c : cases)
        EXPECT_EQ(fromUtf8(c.utf8), c.utf16);
}

TEST(String, CaseIsIgnoredForLatinLettersOnly) {
    EXPECT_TRUE(equalsIgnoreCase(u"GetFieldCount", u"gETfIELDcOUNT"));
    EXPECT_FALSE(equalsIgnoreCase(u"a", u"ab"));
    EXPECT_FALSE(equalsIgnoreCase(u"@[", u"`{")) << "the neighbours of the letters are no letters";
    EXPECT_FALSE(equalsIgnoreCase(u"\u00C4", u"\u00E4"));
}

TEST(String, UpperCaseReachesBeyondLatinLetters) {
    EXPECT_EQ(toUpper(u"az09\u00E4\u00F7\u00FF\u0131\u0142\u017E"), u"AZ09\u00C4\u00F7\u0178I\u0141\u017D");
    EXPECT_EQ(toUpper(u"\u03AC\u03C2\u03C9\u03CC\u03CD\u03CE\u0436\u0451"),
              u"\u0386\u03A3\u03A9\u038C\u038E\u038F\u0416\u0401");
    EXPECT_EQ(toUpper(u"\u00DF"), u"\u00DF") << "a letter without a single capital stays";
}

TEST(String, TrimTakesBlanksOnly) {
    EXPECT_EQ(trim(u"  a b "), u"a b");
    EXPECT_EQ(trim(u"   "), u"");
    EXPECT_EQ(trim(u"\ta\u00A0"), u"\ta\u00A0");
}

} // namespace
} // namespace tarncom32::automation
