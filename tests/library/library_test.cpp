#include "library/library.h"

#include "automation/convert.h"
#include "support/error_of.h"
#include "support/test_platform.h"

#include <algorithm>
#include <functional>
#include <gmock/gmock.h>
#include <set>

namespace tarncom32::library {
namespace {

using automation::StringView;

TEST(Library, CreatesIndependentInstancesAndOneGlobal) {
    tests::TestPlatform fakes;
    Library library(fakes.platform);
    const auto first = library.create(u"TarnCom32.StringFunctions");
    const auto second = library.create(u"tarncom32.stringfunctions.1");
    EXPECT_NE(first, second);
    EXPECT_EQ(library.global(u"StringFunctions"), library.global(u"stringfunctions"));
    EXPECT_EQ(automation::toText(first->call(u"reversestring", u"abc")), u"cba");
}

TEST(Library, RefusesWithAReason) {
    tests::TestPlatform fakes;
    Library library(fakes.platform);
    const std::pair<const char16_t*, const char*> cases[] = {
        {u"TarnCom32.RecycleBin", "RecycleBin is not built yet"},
        {u"TarnCom32.UserProfileEntry", "TarnCom32.UserProfileEntry is not the ProgID"},
        {u"StringFunctions", "StringFunctions is not the ProgID"},
        {u"Other.StringFunctions", "Other.StringFunctions is not the ProgID"},
        {u"TarnCom32.UserProfile.2", "TarnCom32.UserProfile.2 is not the ProgID"},
        {u"TarnCom32.C_MRUItem", "TarnCom32.C_MRUItem is not the ProgID"},
        {u"", " is not the ProgID"},
    };
    for (const auto& [progId, reason] : cases)
        EXPECT_THAT(tests::failureOf([&, name = progId] { library.create(name); }),
                    testing::AllOf(testing::StartsWith("429 "), testing::HasSubstr(reason)));
    EXPECT_THROW(library.global(u"UserProfile"), automation::Error);
}

TEST(Library, WorksOnAPlatformWithoutAnyPort) {
    platform::Platform nothing;
    Library library(nothing);
    EXPECT_EQ(automation::toText(library.global(u"StringFunctions")->call(u"ReverseString", u"abc")), u"cba");
    EXPECT_EQ(automation::toText(library.global(u"FileOperations")->call(u"GetTempDirectory")), u"");
    EXPECT_EQ(nothing.registry.open(platform::registry_root::kUsers, "", platform::RegistryAccess::Read), nullptr);
    EXPECT_EQ(tests::errorOf([&] { nothing.registry.create(platform::registry_root::kUsers, "A"); }), 75);
    EXPECT_EQ(tests::errorOf([&] { nothing.applications.start(u"Visio.Application"); }), 429);
    EXPECT_EQ(nothing.messageBox.show(u"", platform::message_style::kQuestionYesNo, u""), platform::MessageAnswer::No);
}

TEST(Library, EveryTableIsSoundAndItsIdentifiersAreUnique) {
    std::set<automation::String> guids;
    for (const frame::PublishedClass& published : publishedLibrary().classes) {
        const automation::ClassInfo& info = *published.info;
        for (const automation::Guid& guid : {info.iid, info.clsid})
            EXPECT_TRUE(!guid.isNull() && guids.insert(automation::guidText(guid)).second)
                << automation::toUtf8(info.name);
        std::set<std::pair<std::int32_t, automation::MemberKind>> accessors;
        for (const automation::MemberInfo& member : info.members) {
            SCOPED_TRACE(automation::toUtf8(info.name) + "." + automation::toUtf8(member.name));
            EXPECT_TRUE(accessors.insert({member.dispid, member.kind}).second);
            EXPECT_EQ(info.findAny(automation::MemberName(member.name))->dispid, member.dispid);
            std::set<StringView> names;
            for (const automation::ParameterInfo& parameter : member.parameters)
                EXPECT_TRUE(names.insert(parameter.name).second);
            EXPECT_TRUE(std::ranges::is_partitioned(member.parameters, std::logical_not(),
                                                    &automation::ParameterInfo::optional))
                << "a required parameter behind an optional one";
        }
    }
}

} // namespace
} // namespace tarncom32::library
