#include "text/string_functions.h"

#include "automation/convert.h"
#include "support/error_of.h"
#include "support/table.h"
#include "support/test_platform.h"

#include <gmock/gmock.h>

#include <limits>

namespace tarncom32::text {
namespace {

using namespace automation;
using tests::errorOf;

class StringFunctionsTest : public testing::Test {
protected:
    tests::TestPlatform platform_;
    Ref<StringFunctions> reference_ = make<StringFunctions>(platform_.platform);
    StringFunctions& functions_ = *reference_;

    bool blank(const Variant& value) { return functions_.isBlank(value).isTrue(); }
};

String text(const Variant& value) {
    const String* held = value.as<String>();
    return held ? *held : u"(no text)";
}

TEST_F(StringFunctionsTest, RemovesFromCommaListsByPieceOfText) {
    const std::tuple<const char*, StringView, StringView, StringView> cases[] = {
        {"inside, both commas stay", u"b", u"a,b,c", u"a,,c"},
        {"at the end", u"b", u"a,b", u"a,"},
        {"at the start, with its comma", u"a", u"a,b,c", u"b,c"},
        {"the whole list", u"a", u"a", u""},
        {"absent", u"x", u"a,b", u"a,b"},
        {"only inside a longer field", u"b", u"ab,c", u"b,c"},
        {"inside a field first, behind a comma later", u"b", u"ab,b,c", u"ab,,c"},
        {"the start of a longer field goes with one character", u"a", u"ab,c", u",c"},
        {"an empty item is at the start", u"", u"ab", u"b"},
    };
    for (const auto& [what, item, list, result] : cases)
        EXPECT_EQ(text(functions_.removeStringFromCommaDelimitedList(item, list)), result) << what;
}

TEST_F(StringFunctionsTest, CutsIntoFieldsAsAHostDoes) {
    const std::tuple<StringView, StringView, std::int16_t, std::vector<Variant>> cases[] = {
        {u"a,,b", u",", -1, {u"a", u"", u"b"}},
        {u",a,", u",", -1, {u"", u"a", u""}},
        {u"", u",", -1, {}},
        {u"", u"", -1, {}},
        {u"a,b", u"", -1, {u"a,b"}},
        {u"aXbxc", u"x", -1, {u"aXb", u"c"}},
        {u"a:::b", u"::", -1, {u"a", u":b"}}, // occurrences do not overlap
        {u"a,b,c,d", u",", 2, {u"a", u"b,c,d"}},
        {u"a,b", u",", 1, {u"a,b"}},
        {u"a,b", u",", 9, {u"a", u"b"}},
        {u"a,b", u",", 0, {}},
    };
    Array array(VariantType::String, 5, {Variant(u"old")});
    for (const auto& [source, delimiter, limit, fields] : cases) {
        functions_.splitStringAtDelimiters(source, delimiter, array, limit);
        EXPECT_EQ(array, Array(VariantType::String, 0, fields)) << toUtf8(source) << limit;
        if (limit != -1) continue;
        EXPECT_EQ(functions_.numberOfElementsInDelimitedString(source, delimiter), std::ssize(fields));
        EXPECT_EQ(functions_.numberOfSubStringsInSourceString(source, delimiter), std::ssize(fields) - 1);
    }
    functions_.splitStringAtDelimiters(u"x", u",", array, -2);
    EXPECT_EQ(array.size(), 0u) << "a limit that does not exist must leave the array alone";
}

TEST_F(StringFunctionsTest, TakesTextBeforeAndAfterTheFirstAndTheLastDelimiter) {
    const std::tuple<StringView, StringView, StringView, StringView, StringView, StringView> cases[] = {
        {u"a,b,c", u",", u"a", u"b,c", u"a,b", u"c"},
        {u"abc", u",", u"abc", u"", u"cba", u"cba"}, // absent: the last one is none, and the text comes reversed
        {u",ab", u",", u"", u"ab", u"", u"ab"},
        {u"ab,", u",", u"ab", u"", u"ab", u""},
        {u"a->b", u"->", u"a", u">b", u"b>-a", u"b>-a"}, // the last one is looked for in the reversed text
        {u"a>-b", u"->", u"a>-b", u"", u"a>", u"b"},
        {u"abc", u"", u"", u"bc", u"ab", u""},
        {u"", u",", u"", u"", u"", u""},
    };
    for (const auto& [source, delimiter, before, after, beforeLast, afterLast] : cases) {
        EXPECT_EQ(functions_.returnStringBeforeDelimiter(source, delimiter), before);
        EXPECT_EQ(functions_.returnStringAfterDelimiter(source, delimiter), after);
        EXPECT_EQ(functions_.returnStringBeforeLastDelimiter(source, delimiter), beforeLast);
        EXPECT_EQ(functions_.returnStringAfterLastDelimiter(source, delimiter), afterLast);
    }
    EXPECT_TRUE(platform_.messageBox.shown.empty());
}

// A text that no memory can hold reversed is the one way in which these members fail.
TEST_F(StringFunctionsTest, ReportsUnderTheProcedureThatFailed) {
    const StringView endless(u"", String().max_size() + 1);
    EXPECT_EQ(functions_.reverseString(endless), u"");
    EXPECT_EQ(functions_.returnStringAfterLastDelimiter(endless, u"ab"), u"");
    EXPECT_EQ(functions_.returnStringBeforeLastDelimiter(endless, u"ab"), u"");
    EXPECT_THAT(platform_.messageBox.headings(),
                testing::ElementsAre("Problem in StringFunctions.ReverseString",
                                     "Problem in StringFunctions.ReturnStringAfterLastDelimiter",
                                     "Problem in StringFunctions.ReturnStringBeforeLastDelimiter"));
}

TEST_F(StringFunctionsTest, RemovesIdentifiers) {
    const std::tuple<StringView, std::int16_t, StringView, StringView> cases[] = {
        {u"1;2;3;2", 2, u";", u"1;3;"},   {u";;1;;02", 2, u";", u"1;"}, {u"7", 7, u";", u""}, {u"", 7, u";", u""},
        {u"-1--3", 4, u"--", u"-1--3--"}, {u"2.5;3", 2, u";", u"3;"}}; // a half rounds to even
    for (const auto& [list, id, delimiter, left] : cases)
        EXPECT_EQ(functions_.removeIDFromListWithDelimiter(list, id, delimiter), left) << toUtf8(list);
    EXPECT_EQ(errorOf([&] { functions_.removeIDFromListWithDelimiter(u"1;x", 1, u";"); }), errors::TypeMismatch);
    EXPECT_EQ(errorOf([&] { functions_.removeIDFromListWithDelimiter(u"40000", 1, u";"); }), errors::Overflow);
}

TEST_F(StringFunctionsTest, CleansDates) {
    EXPECT_EQ(functions_.cleanDate(u" _12\\31_ /99\\ "), u"1231 /99");
    EXPECT_EQ(functions_.cleanDate(u"_ _"), u"");
    EXPECT_EQ(functions_.cleanDate(u"\t1"), u"\t1");
}

TEST_F(StringFunctionsTest, FindsTextBetweenMarkers) {
    const std::tuple<const char*, StringView, StringView, StringView, StringView> cases[] = {
        {"no end marker", u"[abc", u"[", u"]", u"[abc"},
        {"no start marker, one character", u"abc]", u"[", u"]", u"abc"},
        {"no start marker, two characters hide one", u"abc]", u"[[", u"]", u"bc"},
        {"no start marker, longer than the source", u"a]", u"[[[[", u"]", u"a]"},
        {"a whole start marker is skipped", u"<<a>>", u"<<", u">>", u"a"},
        {"an empty start marker", u"abc]", u"", u"]", u"abc"},
        {"an empty end marker", u"[abc", u"[", u"", u""},
    };
    for (const auto& [what, source, start, end, result] : cases)
        EXPECT_EQ(functions_.stringReturnBetween(source, start, end), result) << what;

    String far(32766, u'x');
    EXPECT_EQ(functions_.stringReturnBetween(far.substr(1) + u"[a]", u"[", u"]"), u"a");
    EXPECT_EQ(errorOf([&] { functions_.stringReturnBetween(far + u"[a]", u"[", u"]"); }), errors::Overflow);
}

TEST_F(StringFunctionsTest, TellsMatchesByTheLengthTheyTakeAway) {
    const std::tuple<const char*, StringView, StringView, std::int16_t, StringView> cases[] = {
        {"counted, and the source stays", u"abab", u"ab", 2, u"abab"},
        {"outer spaces count", u"a b", u"b", 2, u"a b"},
        {"a half is no match", u"ab ", u"b ", -1, u"a"},
        {"one and a half are two", u"a b ", u"b ", 1, u"a b "},
        {"outer spaces are not missed", u" a ", u" ", -1, u"a"},
        {"exactly only", u"AbAb", u"ab", -1, u"AbAb"},
        {"found from the left", u"aaa", u"aa", 1, u"aaa"},
    };
    for (const auto& [what, source, match, result, left] : cases) {
        String changed(source);
        EXPECT_EQ(functions_.numberOfExactMatchesRemovedFromString(changed, match), result) << what;
        EXPECT_EQ(changed, left) << what;
    }

    for (const auto& [source, match] : {std::pair(String(u"abc"), u""), {String(32768, u'x'), u"x"}}) {
        String unchanged = source;
        EXPECT_EQ(errorOf([&, match = match] { functions_.numberOfExactMatchesRemovedFromString(unchanged, match); }),
                  errors::Overflow);
        EXPECT_EQ(unchanged, source);
    }
    String most(32767, u'x');
    EXPECT_EQ(functions_.numberOfExactMatchesRemovedFromString(most, u"x"), 32767);
}

TEST_F(StringFunctionsTest, GoesToTheNthDelimiterAndRoundAgain) {
    const std::tuple<std::int32_t, StringView, StringView, StringView> cases[] = {
        {0, u"a,", u",b,c", u"a,X,b,c"}, {1, u"a,", u",b,c", u"a,X,c"},
        {2, u"a,b,", u",c", u"5"},       {3, u"", u"5", u"X,b,c"},
        {4, u"a,", u",b,c", u"a,X,c"},   {std::numeric_limits<std::int32_t>::max(), u"a,", u",b,c", u"6"}};
    const auto orError = [](auto&& member) {
        String result;
        const std::int32_t error = errorOf([&] { result = member(); });
        return error ? decimalText(error) : result; // "5" for the error
    };
    for (const auto& [n, before, after, replaced] : cases) {
        EXPECT_EQ(functions_.returnStringBeforeNthDelimiter(u"a,b,c", u",", n), before) << n;
        EXPECT_EQ(orError([&, n = n] { return functions_.returnStringAfterNthDelimiter(u"a,b,c", u",", n); }), after)
            << n;
        EXPECT_EQ(orError([&, n = n] { return functions_.replaceValueInStream(u"a,b,c", u",", u"X", n); }), replaced)
            << n;
    }
    EXPECT_EQ(functions_.returnStringBeforeNthDelimiter(u"a::b", u"::", 1), u"a:") << "one character of the delimiter";
}

TEST_F(StringFunctionsTest, MakesCollections) {
    const auto size = functions_.createCollectionFromString(u"w!10;Alone;path!a!b");
    ASSERT_EQ(size->size(), 3u);
    EXPECT_EQ(text(size->item(u"W")) + text(size->item(u"Alone")) + text(size->item(u"path")), u"10a!b");
    EXPECT_EQ(functions_.createCollectionFromString(u"")->size(), 0u);
    EXPECT_EQ(errorOf([&] { functions_.createCollectionFromString(u"a!1;A!2"); }), errors::DuplicateKey);
    EXPECT_EQ(errorOf([&] { functions_.createCollectionFromString(u"a!1;"); }), errors::InvalidProcedureCall);
}

TEST_F(StringFunctionsTest, FindsKeysOfCollections) {
    const auto collection = make<Collection>();
    const auto exists = [&](const String& key) {
        return functions_.stringExistsInCollection(key, collection).isTrue();
    };
    EXPECT_FALSE(exists(u"a"));
    collection->add(u"value", u"a");
    collection->add(Array(), u"array");
    collection->add(Null{}, u"null");
    EXPECT_TRUE(exists(u"a") && exists(u"A"));
    for (const char16_t* key : {u"value", u"array", u"null"}) // no key, and two that are not convertible to text
        EXPECT_FALSE(exists(key));
    for (const ObjectRef& none : {ObjectRef(), ObjectRef(reference_)})
        EXPECT_FALSE(functions_.stringExistsInCollection(u"a", none).isTrue());
    EXPECT_TRUE(platform_.messageBox.shown.empty());
}

TEST_F(StringFunctionsTest, ChecksNamesInLists) {
    Array names(VariantType::String, -2, {Variant(u"abc"), Variant(u"Größe"), Variant(u"")});
    const auto holds = [&](StringView name, std::int16_t flag) {
        return functions_.checkForNameInList(name, names, Boolean::fromBits(flag)).isTrue();
    };
    // Any flag but -1 is exact.
    const std::tuple<StringView, std::int16_t, bool> cases[] = {
        {u"ABC", -1, true}, {u"ABC", 0, false},   {u"ABC", 1, false}, {u"ABC", -2, false},
        {u"abc", 1, true},  {u"gRÖßE", -1, true}, {u"ab", -1, false}, {u"", 0, true}};
    for (const auto& [name, flag, held] : cases)
        EXPECT_EQ(holds(name, flag), held) << toUtf8(name) << flag;
    Array noBounds(VariantType::String);
    EXPECT_FALSE(functions_.checkForNameInList(u"abc", noBounds, true).isTrue());
}

TEST_F(StringFunctionsTest, IsBlankJudgesSingleValuesByTheirType) {
    using V = Variant;
    for (const Variant& value :
         tests::table(V(), V(Null{}), V(ErrorValue{5}), V(Record{std::make_shared<int>(1)}), V(ObjectRef{}), V(true),
                      V(u""), V(u"   "), V(std::uint8_t{0}), V(std::int16_t{0}), V(0.0f), V(-0.0), V(Currency{0}),
                      V(Date{0}), V(Decimal{0, 0, 2, true}),
                      V(OtherInteger{VariantType::LongLong, 7}))) // the last is no type that hosts have
        EXPECT_TRUE(blank(value)) << static_cast<int>(value.type());
    for (const Variant& value :
         tests::table(V(false), V(u" \t "), V(u"0"), V(make<Collection>()), V(std::uint8_t{1}), V(std::int16_t{-1}),
                      V(std::int32_t{65536}), V(1e-300), V(Currency{1}), V(Date{0.5}), V(Decimal{1, 0, 0, false})))
        EXPECT_FALSE(blank(value)) << static_cast<int>(value.type());
}

TEST_F(StringFunctionsTest, IsBlankJudgesArraysByTheirElements) {
    const auto variants = [](std::vector<Variant> items) { return Array(VariantType::Variant, 3, std::move(items)); };
    for (const Array& array :
         {variants({u"", Variant(), 0.0}), variants({}), variants({variants({u" "}), variants({})}), variants({true}),
          Array(VariantType::Long, 0, std::size_t{2})})
        EXPECT_TRUE(blank(array));
    for (const Array& array : {variants({u"", u"x"}), variants({u"x", Variant()}), variants({variants({u"x"})}),
                               variants({true, false})}) // False is not blank
        EXPECT_FALSE(blank(array));
}

TEST_F(StringFunctionsTest, IsBlankTakesMissingBoundsForBlankOnlyForTypesWithBitsFourOrEight) {
    for (const auto type : {VariantType::Single, VariantType::Double, VariantType::Currency, VariantType::Date,
                            VariantType::String, VariantType::Object, VariantType::Error, VariantType::Boolean,
                            VariantType::Variant, VariantType::Unknown, VariantType::Decimal, VariantType::Record})
        EXPECT_TRUE(blank(Array(type))) << static_cast<int>(type);
    for (const auto type : {VariantType::Integer, VariantType::Long, VariantType::Byte})
        EXPECT_EQ(errorOf([&] { blank(Array(type)); }), errors::SubscriptOutOfRange) << static_cast<int>(type);
}

} // namespace
} // namespace tarncom32::text
