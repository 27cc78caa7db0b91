#include "library/catalogue.h"

#include <gtest/gtest.h>
#include <map>

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

} // namespace
} // namespace tarncom32::library
