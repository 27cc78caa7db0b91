#include "support/test_platform.h"
#include "text/string_functions.h"

#include <gtest/gtest.h>

namespace tarncom32::text {
namespace {

using automation::Access;
using automation::MemberName;
using automation::VariantType;

class StringFunctionsLateBound : public testing::Test {
protected:
    tests::TestPlatform platform_;
    ObjectRef functions_ = automation::make<StringFunctions>(platform_.platform);
};

TEST_F(StringFunctionsLateBound, FindsMembersWithoutRegardToCaseAndConvertsArguments) {
    EXPECT_EQ(functions_->call(u"returnstringafterlastdelimiter", u"abc", u","), Variant(u"cba"));
    EXPECT_EQ(functions_->call(u"RemoveIDFromListWithDelimiter", u"1;2", u" 2 ", u";"), Variant(u"1;"));
    EXPECT_EQ(functions_->call(u"ReverseString", std::int32_t{120}), Variant(u"021"));
    EXPECT_EQ(functions_->call(u"IsBlank", Variant()), Variant(true));
}

TEST_F(StringFunctionsLateBound, KeepsAFlagOfOne) {
    const Variant list = Array(VariantType::String, 0, {Variant(u"abc")});
    for (const Variant& one : {Variant(std::int16_t{1}), Variant(std::int32_t{1}), Variant(Boolean::fromBits(1))})
        EXPECT_EQ(functions_->call(u"CheckForNameInList", u"ABC", list, one), Variant(false));
    EXPECT_EQ(functions_->call(u"CheckForNameInList", u"ABC", list, std::int16_t{-1}), Variant(true));
    EXPECT_EQ(functions_->call(u"CheckForNameInList", u"ABC", list, u"True"), Variant(true));
}

TEST_F(StringFunctionsLateBound, WritesBackToTheCallersVariables) {
    Variant arguments[] = {u"a  ", u" "};
    EXPECT_EQ(functions_->invoke(MemberName(u"NumberOfExactMatchesRemovedFromString"), Access::Method, arguments),
              Variant(std::int16_t{-1}));
    EXPECT_EQ(arguments[0], Variant(u"a"));

    Variant split[] = {u"a,b", u",", Variant(), std::int32_t{-1}};
    functions_->invoke(MemberName(u"SplitStringAtDelimiters"), Access::Method, split);
    EXPECT_EQ(split[2], Variant(Array(VariantType::String, 0, {Variant(u"a"), Variant(u"b")})));
}

TEST_F(StringFunctionsLateBound, AsksCollectionsByName) {
    const Variant made = functions_->call(u"CreateCollectionFromString", u"w!10");
    EXPECT_EQ(functions_->call(u"StringExistsInCollection", u"w", made), Variant(true));
    EXPECT_EQ(functions_->call(u"StringExistsInCollection", u"10", made), Variant(false));
    EXPECT_EQ(functions_->call(u"StringExistsInCollection", u"w", functions_), Variant(false));
}

// Clients bind to these numbers: one that changes breaks them.
TEST_F(StringFunctionsLateBound, PublishesItsMembersInTheirOrder) {
    const StringView published[] = {u"RemoveStringFromCommaDelimitedList",
                                    u"NumberOfSubStringsInSourceString",
                                    u"SplitStringAtDelimiters",
                                    u"NumberOfElementsInDelimitedString",
                                    u"StringExistsInCollection",
                                    u"IsBlank",
                                    u"ReturnStringBeforeDelimiter",
                                    u"RemoveIDFromListWithDelimiter",
                                    u"ReturnStringAfterDelimiter",
                                    u"CleanDate",
                                    u"StringReturnBetween",
                                    u"NumberOfExactMatchesRemovedFromString",
                                    u"CheckForNameInList",
                                    u"ReturnStringAfterLastDelimiter",
                                    u"ReturnStringBeforeLastDelimiter",
                                    u"ReverseString",
                                    u"CreateCollectionFromString",
                                    u"ReturnStringBeforeNthDelimiter",
                                    u"ReturnStringAfterNthDelimiter",
                                    u"ReplaceValueInStream"};
    const auto& members = functions_->classInfo()->members;
    ASSERT_GE(members.size(), std::size(published));
    for (std::size_t i = 0; i < std::size(published); ++i) {
        EXPECT_EQ(members[i].name, published[i]);
        EXPECT_EQ(members[i].dispid, static_cast<std::int32_t>(i + 1));
    }
}

} // namespace
} // namespace tarncom32::text
