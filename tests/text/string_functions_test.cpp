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
        {"behind a leading comma", u"b", u",b,c", u",,c"},
        {"an empty item is at the start", u"", u"ab", u"b"},
        {"an empty list", u"a", u"", u""},
    };
    for (const auto& [what, item, list, result] : cases)
        EXPECT_EQ(text(functions_.removeStringFromCommaDelimitedList(item, list)), result) << what;
}

TEST_F(StringFunctionsTest, CountsDelimitersAndFields) {
    const std::tuple<StringView, StringView, std::int32_t, std::int32_t> cases[] = {
        {u"", u",", -1, 0},  {u"", u"", -1, 0},  {u"a,b,c", u",", 2, 3}, {u"a,,b", u",", 2, 3},  {u"a", u",", 0, 1},
        {u"a,b", u"", 0, 1}, {u",", u",", 1, 2}, {u"aXbxc", u"x", 1, 2}, {u"aaaa", u"aa", 2, 3},
    };
    for (const auto& [source, delimiter, delimiters, fields] : cases) {
        EXPECT_EQ(functions_.numberOfSubStringsInSourceString(source, delimiter), delimiters);
        EXPECT_EQ(functions_.numberOfElementsInDelimitedString(source, delimiter), fields);
    }
}

TEST_F(StringFunctionsTest, SplitsIntoTheCallersArray) {
    Array fields(VariantType::String, 5, {Variant(u"old")});
    functions_.splitStringAtDelimiters(u"a,b,c", u",", fields, -1);
    EXPECT_EQ(fields, Array(VariantType::String, 0, {Variant(u"a"), Variant(u"b"), Variant(u"c")}));
    functions_.splitStringAtDelimiters(u"a,b,c", u",", fields, 2);
    EXPECT_EQ(fields, Array(VariantType::String, 0, {Variant(u"a"), Variant(u"b,c")}));
    functions_.splitStringAtDelimiters(u"x", u",", fields, -2);
    EXPECT_EQ(fields.size(), 2u) << "a limit that does not exist must leave the array alone";
    functions_.splitStringAtDelimiters(u"", u",", fields, -1);
    EXPECT_EQ(fields.upperBound(), -1);
}

TEST_F(StringFunctionsTest, TakesTextBeforeAndAfterADelimiter) {
    const std::tuple<StringView, StringView, StringView, StringView> cases[] = {
        {u"a,b,c", u",", u"a", u"b,c"}, {u"abc", u",", u"abc", u""}, {u"a::b", u"::", u"a", u":b"},
        {u",a", u",", u"", u"a"},       {u"a,", u",", u"a", u""},    {u"abc", u"", u"", u"bc"},
        {u"", u"", u"", u""},
    };
    for (const auto& [source, delimiter, before, after] : cases) {
        EXPECT_EQ(functions_.returnStringBeforeDelimiter(source, delimiter), before);
        EXPECT_EQ(functions_.returnStringAfterDelimiter(source, delimiter), after);
    }
}

TEST_F(StringFunctionsTest, TakesTextBeforeAndAfterTheLastDelimiter) {
    const std::tuple<const char*, StringView, StringView, StringView, StringView> cases[] = {
        {"the last of several", u"a,b,c", u",", u"a,b", u"c"},
        {"absent: reversed", u"abc", u",", u"cba", u"cba"},
        {"at the end", u"ab,", u",", u"ab", u""},
        {"at the start", u",ab", u",", u"", u"ab"},
        {"two characters that stand backwards", u"a>-b", u"->", u"a>", u"b"},
        {"two characters that stand forwards", u"a->b", u"->", u"b>-a", u"b>-a"},
        {"no delimiter", u"abc", u"", u"ab", u""},
        {"no text", u"", u",", u"", u""},
    };
    for (const auto& [what, source, delimiter, before, after] : cases) {
        EXPECT_EQ(functions_.returnStringBeforeLastDelimiter(source, delimiter), before) << what;
        EXPECT_EQ(functions_.returnStringAfterLastDelimiter(source, delimiter), after) << what;
    }
    EXPECT_EQ(functions_.reverseString(u"abc"), u"cba");
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
        {"both", u"[abc]", u"[", u"]", u"abc"},
        {"no end marker", u"[abc", u"[", u"]", u"[abc"},
        {"the end marker only before the start", u"]a[b", u"[", u"]", u"]a[b"},
        {"no start marker, one character", u"abc]", u"[", u"]", u"abc"},
        {"no start marker, two characters hide one", u"abc]", u"[[", u"]", u"bc"},
        {"no start marker, longer than the source", u"a]", u"[[[[", u"]", u"a]"},
        {"a whole start marker is skipped", u"<<a>>", u"<<", u">>", u"a"},
        {"an empty start marker", u"abc]", u"", u"]", u"abc"},
        {"an empty end marker", u"[abc", u"[", u"", u""},
        {"no text", u"", u"", u"]", u""},
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
        {"absent", u"abab", u"x", -1, u"abab"},
        {"a half is no match", u"ab ", u"b ", -1, u"a"},
        {"one and a half are two", u"a b ", u"b ", 1, u"a b "},
        {"outer spaces are not missed", u" a ", u" ", -1, u"a"},
        {"exactly only", u"AbAb", u"ab", -1, u"AbAb"},
        {"found from the left", u"aaa", u"aa", 1, u"aaa"},
        {"no text", u"", u"a", -1, u""},
    };
    for (const auto& [what, source, match, result, left] : cases) {
        String changed(source);
        EXPECT_EQ(functions_.numberOfExactMatchesRemovedFromString(changed, match), result) << what;
        EXPECT_EQ(changed, left) << what;
    }

    String unchanged = u"abc";
    EXPECT_EQ(errorOf([&] { functions_.numberOfExactMatchesRemovedFromString(unchanged, u""); }), errors::Overflow);
    EXPECT_EQ(unchanged, u"abc");
    String tooMany(32768, u'x');
    EXPECT_EQ(errorOf([&] { functions_.numberOfExactMatchesRemovedFromString(tooMany, u"x"); }), errors::Overflow);
    EXPECT_EQ(tooMany.size(), 32768u);
    String most(32767, u'x');
    EXPECT_EQ(functions_.numberOfExactMatchesRemovedFromString(most, u"x"), 32767);
}

TEST_F(StringFunctionsTest, GoesToTheNthDelimiter) {
    const std::tuple<std::int32_t, StringView, StringView> cases[] = {
        {1, u"a,", u",b,c"},  {2, u"a,b,", u",c"}, {0, u"a,", u",b,c"},
        {-4, u"a,", u",b,c"}, {4, u"a,", u",b,c"}, {5, u"a,b,", u",c"},
    };
    for (const auto& [n, before, after] : cases) {
        EXPECT_EQ(functions_.returnStringBeforeNthDelimiter(u"a,b,c", u",", n), before) << n;
        EXPECT_EQ(functions_.returnStringAfterNthDelimiter(u"a,b,c", u",", n), after) << n;
    }
    EXPECT_EQ(functions_.returnStringBeforeNthDelimiter(u"a,b,c", u",", 3), u"");
    EXPECT_EQ(errorOf([&] { functions_.returnStringAfterNthDelimiter(u"a,b,c", u",", 3); }),
              errors::InvalidProcedureCall);
    EXPECT_EQ(functions_.returnStringBeforeNthDelimiter(u"a::b", u"::", 1), u"a:") << "one character of the delimiter";
}

TEST_F(StringFunctionsTest, ReplacesValuesInStreams) {
    EXPECT_EQ(functions_.replaceValueInStream(u"a,b,c", u",", u"X", 1), u"a,X,c");
    EXPECT_EQ(functions_.replaceValueInStream(u"a,b,c", u",", u"X", 0), u"a,X,b,c");
    EXPECT_EQ(functions_.replaceValueInStream(u"a,b,c", u",", u"X", 3), u"X,b,c") << "round again";
    for (const StringView delimiter : {u"a", u"aa", u"ab", u""}) {
        for (std::int32_t n = -2; n < 20; ++n) {
            const StringView stream = u"baaabaabab";
            const auto after = [&] { return functions_.returnStringAfterNthDelimiter(stream, delimiter, n + 1); };
            const auto replaced = [&] { return functions_.replaceValueInStream(stream, delimiter, u"-", n); };
            const std::int32_t error = errorOf(after);
            ASSERT_EQ(errorOf(replaced), error) << n;
            if (error != 0) continue;
            ASSERT_EQ(replaced(), functions_.returnStringBeforeNthDelimiter(stream, delimiter, n) + u"-" + after());
        }
    }
    EXPECT_EQ(errorOf([&] { functions_.replaceValueInStream(u"a,b,c", u",", u"X", 2); }), errors::InvalidProcedureCall);
    EXPECT_EQ(
        errorOf([&] { functions_.replaceValueInStream(u"a,b", u",", u"X", std::numeric_limits<std::int32_t>::max()); }),
        errors::Overflow);
}

TEST_F(StringFunctionsTest, MakesCollections) {
    const auto size = functions_.createCollectionFromString(u"w!10;h!20;Alone;path!a!b");
    ASSERT_EQ(size->size(), 4u);
    EXPECT_EQ(text(size->item(u"w")), u"10");
    EXPECT_EQ(text(size->item(u"H")), u"20");
    EXPECT_EQ(text(size->item(u"Alone")), u"");
    EXPECT_EQ(text(size->item(u"path")), u"a!b");
    EXPECT_EQ(functions_.createCollectionFromString(u"")->size(), 0u);
    EXPECT_EQ(errorOf([&] { functions_.createCollectionFromString(u"a!1;A!2"); }), errors::DuplicateKey);
    EXPECT_EQ(errorOf([&] { functions_.createCollectionFromString(u"a!1;"); }), errors::InvalidProcedureCall);
}

TEST_F(StringFunctionsTest, FindsKeysOfCollections) {
    const auto collection = make<Collection>();
    const auto exists = [&](StringView key) { return functions_.stringExistsInCollection(key, collection).isTrue(); };
    EXPECT_FALSE(exists(u"a"));
    collection->add(u"value", u"a");
    collection->add(Array(), u"array");
    collection->add(Null{}, u"null");
    EXPECT_TRUE(exists(u"a") && exists(u"A"));
    EXPECT_FALSE(exists(u"value")) << "the value is no key";
    EXPECT_FALSE(exists(u"array") || exists(u"null")) << "not convertible to text";
    EXPECT_FALSE(functions_.stringExistsInCollection(u"a", nullptr).isTrue());
    EXPECT_FALSE(functions_.stringExistsInCollection(u"a", reference_).isTrue()) << "no collection at all";
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
    EXPECT_TRUE(blank(variants({u"", Variant(), 0.0})));
    EXPECT_FALSE(blank(variants({u"", Variant(), u"x"})));
    EXPECT_FALSE(blank(variants({u"x", Variant()})));
    EXPECT_TRUE(blank(variants({})));
    EXPECT_TRUE(blank(variants({variants({u" "}), variants({})}))) << "nested arrays";
    EXPECT_FALSE(blank(variants({variants({u"x"})})));
    EXPECT_TRUE(blank(variants({true})));
    EXPECT_FALSE(blank(variants({true, false}))) << "False is not blank";
    EXPECT_TRUE(blank(Array(VariantType::Long, 0, std::size_t{2})));
}

TEST_F(StringFunctionsTest, IsBlankTakesMissingBoundsForBlankOnlyForTypesWithBitsFourOrEight) {
    for (const auto type : {VariantType::Single, VariantType::Double, VariantType::Currency, VariantType::Date,
                            VariantType::String, VariantType::Object, VariantType::Error, VariantType::Boolean,
                            VariantType::Variant, VariantType::Unknown, VariantType::Decimal, VariantType::Record})
        EXPECT_TRUE(blank(Array(type))) << static_cast<int>(type);
    for (const auto type : {VariantType::Integer, VariantType::Long, VariantType::Byte})
        EXPECT_EQ(errorOf([&] { blank(Array(type)); }), errors::SubscriptOutOfRange) << static_cast<int>(type);
}

// Clients bind to these numbers: one that changes breaks them.
TEST_F(StringFunctionsTest, PublishesItsMembersInTheirOrder) {
    constexpr const char* kPublished =
        "1 RemoveStringFromCommaDelimitedList 2 NumberOfSubStringsInSourceString 3 SplitStringAtDelimiters "
        "4 NumberOfElementsInDelimitedString 5 StringExistsInCollection 6 IsBlank 7 ReturnStringBeforeDelimiter "
        "8 RemoveIDFromListWithDelimiter 9 ReturnStringAfterDelimiter 10 CleanDate 11 StringReturnBetween "
        "12 NumberOfExactMatchesRemovedFromString 13 CheckForNameInList 14 ReturnStringAfterLastDelimiter "
        "15 ReturnStringBeforeLastDelimiter 16 ReverseString 17 CreateCollectionFromString "
        "18 ReturnStringBeforeNthDelimiter 19 ReturnStringAfterNthDelimiter 20 ReplaceValueInStream ";
    std::string members;
    for (const MemberInfo& member : StringFunctions::describe().members)
        members += std::to_string(member.dispid) + " " + toUtf8(member.name) + " ";
    EXPECT_TRUE(members.starts_with(kPublished)) << members;
}

} // namespace
} // namespace tarncom32::text
