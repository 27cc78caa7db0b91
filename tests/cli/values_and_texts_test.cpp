#include "cli/value_json.h"

#include "automation/collection.h"
#include "cli/near_names.h"
#include "cli/run_tarn.h"
#include "cli/terminal.h"
#include "cli/value_text.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace tarncom32::cli {
namespace {

using automation::Array;
using automation::Boolean;
using automation::Currency;
using automation::Date;
using automation::String;
using automation::StringView;
using automation::Variant;
using automation::VariantType;

TEST(ValueJson, WritesEveryType) {
    const std::pair<Variant, std::string> cases[] = {
        {Variant(), "null"},
        {automation::Null{}, "null"},
        {automation::ObjectRef(), "null"},
        {Boolean::fromBits(1), "true"},
        {std::int16_t{-3}, "-3"},
        {0.1f, "0.1"},
        {std::numeric_limits<double>::infinity(), "null"},
        {Currency{12345}, "1.2345"},
        {automation::OtherInteger{VariantType::LongLong, ~0ull}, "-1"},
        {automation::OtherInteger{VariantType::UnsignedLongLong, ~0ull}, "18446744073709551615"},
        {automation::String{0xD800, u'a'}, "\"\uFFFDa\""},
        {Date{45413.5208333333}, "\"2024-05-01T12:30:00\""},
        {Date{-1.25}, "\"1899-12-29T06:00:00\""},
        {Date{1.0 - 1e-12}, "\"1899-12-31T00:00:00\""}, // not 24:00
        {Date{0.5 + 1.5 / 86400}, "\"1899-12-30T12:00:01.500\""},
        {Array(VariantType::Variant, 1, {Variant(Array(VariantType::Long, 0, 2)), Variant(Array())}), "[[0,0],[]]"},
    };
    for (const auto& [value, text] : cases)
        EXPECT_EQ(compactText(jsonOf(value)), text);
}

TEST(ValueJson, EndsInACollectionThatHoldsItself) {
    const auto collection = automation::make<automation::Collection>();
    const auto inner = automation::make<automation::Collection>();
    // Twice: lists that double at every level would be as endless as one that does not stop.
    inner->add(collection);
    inner->add(collection);
    collection->add(inner);
    collection->add(inner);
    EXPECT_EQ(readableText(collection), R"([["Collection","Collection"],["Collection","Collection"]])");
    collection->remove(std::int32_t{1});
    collection->remove(std::int32_t{1});
}

TEST(ValueJson, ReadsNumbersAsTheSmallestFittingType) {
    const Variant list = valueOfJson("[2147483647, -2147483648, 2147483648, 18446744073709551615, 1.0]");
    const std::vector<Variant> expected = {2147483647, -2147483647 - 1, 2147483648.0, 18446744073709551616.0, 1.0};
    EXPECT_EQ(list.as<Array>()->items(), expected);
}

TEST(NearNames, FindWhatWasMeant) {
    const std::vector<StringView> names = {u"Item", u"Items", u"ItemU", u"ItemFromID", u"Name", u"Count"};
    const std::pair<StringView, std::string> cases[] = {{u"Conut", "; did you mean Count?"},
                                                        {u"ITEMX", "; did you mean Item, Items or ItemU?"},
                                                        {u"FromId", "; did you mean ItemFromID?"},
                                                        {u"Quantity", ""},
                                                        {u"", ""}};
    for (const auto& [wanted, hint] : cases)
        EXPECT_EQ(didYouMean(wanted, names), hint) << automation::toUtf8(wanted);
    EXPECT_EQ(didYouMean(String(1'000'000, u'x'), names), "");
}

TEST(Terminal, HasColoursUnlessTheyAreUnwanted) {
    const std::pair<std::vector<std::string>, bool> cases[] = {{{"TERM=xterm"}, true},
                                                               {{"TERM=xterm", "NO_COLOR="}, true},
                                                               {{"TERM=xterm", "NO_COLOR=1"}, false},
                                                               {{"TERM=dumb"}, false},
                                                               {{}, false}};
    for (const auto& [environment, colours] : cases) {
        const tests::Outcome run = tests::runTarnOnTerminal({"classes"}, environment);
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.out.find('\x1b') != std::string::npos, colours) << testing::PrintToString(environment);
    }
    EXPECT_EQ(tests::runTarn({"classes"}, {"TERM=xterm"}).out.find('\x1b'), std::string::npos);
}

TEST(Terminal, BreaksParagraphsAtItsWidth) {
    const std::string words = "aaa bbb ccc dddddddddddd e";
    EXPECT_EQ(Terminal(false, 9).paragraph(words, 2), "  aaa bbb\n  ccc\n  dddddddddddd\n  e\n");
    EXPECT_EQ(Terminal(false, 0).paragraph(words, 2), "  " + words + '\n');
}

TEST(Terminal, AlignsByColumns) {
    EXPECT_EQ(padded("\u00E9\u0301", 3), "\u00E9\u0301  "); // a combining mark takes no column
    EXPECT_EQ(padded("\u6771\u4EAC", 5), "\u6771\u4EAC ");
    EXPECT_EQ(padded("\U0001F5A5", 3), "\U0001F5A5 ");
    EXPECT_EQ(padded("long", 2), "long");
}

TEST(Terminal, IsNotCommandedByTheNamesInADrawing) {
    EXPECT_EQ(oneLine("a\r\nb\x1b[2J\u009B2J\x7F\u00A0"), "a b [2J 2J \u00A0");
    EXPECT_EQ(oneLine("\xC2"), "\xC2");
}

} // namespace
} // namespace tarncom32::cli
