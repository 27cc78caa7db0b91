#include "frame/native_helper.h"

#include "platform/portable/windows_1252.h"
#include "support/table.h"

#include <gtest/gtest.h>

namespace tarncom32::frame {
namespace {

using automation::StringView;

const platform::portable::Windows1252 kCodePage;

TEST(NativeHelper, ReplacesEveryPlaceHolderFromLeftToRight) {
    const std::tuple<StringView, StringView, StringView, StringView> cases[] = {
        {u"LastUsedFile%s", u"12", u"%s", u"LastUsedFile12"},
        {u"%s%s", u"%s", u"%s", u"%s%s"}, // what was put in is not replaced again
        {u"aaa", u"b", u"aa", u"ba"},
        {u"text", u"b", u"", u"text"},
        {u"", u"b", u"%s", u""},
        {u"%s", u"\u0416", u"%s", u"?"}, // no such letter in the code page
        {u"\u20AC%s", u"\u00FC", u"%s", u"\u20AC\u00FC"},
    };
    for (const auto& [source, replacement, placeHolder, expected] : cases)
        EXPECT_EQ(replaceResourcePlaceHolder(kCodePage, source, replacement, placeHolder), expected)
            << automation::toUtf8(source);
}

TEST(NativeHelper, ReadsOnlyWholeStringLiterals) {
    using Case = std::pair<StringView, StringView>;
    const auto cases = tests::table(
        Case(u"\"2.5\"", u"2.5"), Case(u"\"\"", u""), Case(u"\"say \"\"hi\"\"\"", u"say \"hi\""), Case(u"2.5", u"2.5"),
        Case(u"\"a\"&\"b\"", u"\"a\"&\"b\""), Case(u"\"", u"\""), Case(u"\"\"\"", u"\"\"\""), Case(u"", u""));
    for (const auto& [formula, expected] : cases)
        EXPECT_EQ(stringFromVisio(kCodePage, formula), expected) << automation::toUtf8(formula);
}

} // namespace
} // namespace tarncom32::frame
