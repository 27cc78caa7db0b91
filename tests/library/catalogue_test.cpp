#include "library/catalogue.h"

#include "support/table.h"

#include <gtest/gtest.h>
#include <map>
#include <set>

namespace tarncom32::library {

using namespace frame;

namespace {

TEST(Catalogue, OnlyCreatableClassesAreFoundByProgId) {
    const std::pair<automation::StringView, automation::StringView> cases[] = {
        {u"TarnCom32.StringFunctions", u"StringFunctions"},
        {u"tarncom32.STRINGFUNCTIONS", u"StringFunctions"},
        {u"TarnCom32.UserProfile.1", u"UserProfile"},
        {u"TarnCom32.UserProfile.2", u""},
        {u"TarnCom32.UserProfileEntry", u""},
        {u"TarnCom32.Enums", u""},
        {u"TarnCom32.C_MRUItem", u""},
        {u"StringFunctions", u""},
        {u"", u""},
    };
    for (const auto& [progId, className] : cases) {
        const CatalogueEntry* entry = findProgId(progId);
        EXPECT_EQ(entry ? entry->name : u"", className) << automation::toUtf8(progId);
    }
}

TEST(Catalogue, CountsOfEachKind) {
    std::map<Instancing, int> counts;
    for (const CatalogueEntry& entry : catalogue())
        ++counts[entry.instancing];
    using enum Instancing;
    EXPECT_EQ(counts, (std::map<Instancing, int>{{Global, 7}, {Creatable, 6}, {NotCreatable, 3}, {Internal, 3}}));
}

TEST(Enumerations, HaveThePublishedSizesAndValues) {
    using Case = std::tuple<automation::StringView, std::size_t, std::int64_t>;
    const auto cases = tests::table(
        Case(u"ePROGRESS_BAR_POSITION", 9, 45), Case(u"eTEST_DOCUMENT_COMPATIBILITY", 3, 3),
        Case(u"eDisplayModes", 1, -1), Case(u"eCOLORS", 6, 84), Case(u"VIS_CMD_INFO", 6, 9),
        Case(u"eCreationPosition", 5, 10), Case(u"SystemFolder", 18, 301), Case(u"PROFILE_STORAGE_METHOD", 3, 3),
        Case(u"REGISTRY_HIVE", 6, -12884901871), Case(u"eDualCaptions", 2, 3), Case(u"eMenuSet", 2, 3),
        Case(u"PrinterOrientationConstants", 2, 3), Case(u"ColorConstants", 4, 15),
        Case(u"FileOpenConstants", 17, 3997471), Case(u"FontsConstants", 18, 4194058),
        Case(u"PrinterConstants", 16, 1839103), Case(u"HelpConstants", 12, 816), Case(u"ErrorConstants", 33, 792167));
    ASSERT_EQ(enumerations().size(), std::size(cases));
    for (const auto& [name, members, total] : cases) {
        SCOPED_TRACE(automation::toUtf8(name));
        const EnumerationInfo* info = findEnumeration(name);
        ASSERT_NE(info, nullptr);
        std::int64_t sum = 0;
        std::set<automation::StringView> names;
        for (const EnumerationMember& member : info->members) {
            sum += member.value;
            names.insert(member.name);
        }
        EXPECT_EQ(names.size(), members);
        EXPECT_EQ(sum, total);
    }
}

} // namespace
} // namespace tarncom32::library
