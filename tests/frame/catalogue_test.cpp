#include "frame/catalogue.h"
#include "frame/enumerations.h"

#include <gtest/gtest.h>
#include <set>

namespace tarncom32::frame {
namespace {

TEST(Catalogue, OnlyCreatableClassesAreFoundByProgId) {
    struct Case {
        automation::StringView progId;
        automation::StringView className; ///< empty: not found
    };
    const Case cases[] = {
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
    for (const Case& c : cases) {
        const CatalogueEntry* entry = findProgId(c.progId);
        EXPECT_EQ(entry ? entry->name : u"", c.className) << automation::toUtf8(c.progId);
    }
}

TEST(Catalogue, CountsOfEachKind) {
    int counts[4]{};
    for (const CatalogueEntry& entry : catalogue())
        ++counts[static_cast<int>(entry.instancing)];
    EXPECT_EQ(counts[static_cast<int>(Instancing::Global)], 7);
    EXPECT_EQ(counts[static_cast<int>(Instancing::Creatable)], 6);
    EXPECT_EQ(counts[static_cast<int>(Instancing::NotCreatable)], 3);
    EXPECT_EQ(counts[static_cast<int>(Instancing::Internal)], 3);
}

TEST(Enumerations, HaveThePublishedSizesAndValues) {
    struct Case {
        automation::StringView name;
        std::size_t members;
        std::int64_t sum; ///< of the values: finds a single mistyped digit
    };
    const Case cases[] = {
        {u"ePROGRESS_BAR_POSITION", 9, 45},
        {u"eTEST_DOCUMENT_COMPATIBILITY", 3, 3},
        {u"eDisplayModes", 1, -1},
        {u"eCOLORS", 6, 84},
        {u"VIS_CMD_INFO", 6, 9},
        {u"eCreationPosition", 5, 10},
        {u"SystemFolder", 18, 301},
        {u"PROFILE_STORAGE_METHOD", 3, 3},
        {u"REGISTRY_HIVE", 6, -12884901871},
        {u"eDualCaptions", 2, 3},
        {u"eMenuSet", 2, 3},
        {u"PrinterOrientationConstants", 2, 3},
        {u"ColorConstants", 4, 15},
        {u"FileOpenConstants", 17, 3997471},
        {u"FontsConstants", 18, 4194058},
        {u"PrinterConstants", 16, 1839103},
        {u"HelpConstants", 12, 816},
        {u"ErrorConstants", 33, 792167},
    };
    ASSERT_EQ(enumerations().size(), std::size(cases));
    for (const Case& c : cases) {
        SCOPED_TRACE(automation::toUtf8(c.name));
        const EnumerationInfo* info = findEnumeration(c.name);
        ASSERT_NE(info, nullptr);
        std::int64_t sum = 0;
        std::set<automation::StringView> names;
        for (const EnumerationMember& member : info->members) {
            sum += member.value;
            names.insert(member.name);
        }
        EXPECT_EQ(names.size(), c.members);
        EXPECT_EQ(sum, c.sum);
    }
}

} // namespace
} // namespace tarncom32::frame
