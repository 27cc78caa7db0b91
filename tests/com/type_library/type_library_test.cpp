#include "com/type_library/description.h"
#include "frame/report.h"
#include "library/library.h"
#include "library/type_library.h"
#include "standin/type_library.h"

#include <gtest/gtest.h>

#include <oaidl.h>

namespace tarncom32::com::testing {

namespace {

std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += line + "\n";
    return text;
}

void expectPublished(const PublishedTables& tables) {
    const Description expected = describe(tables);
    Description published = describeTypeLibrary(tables.guid);
    for (const auto& [name, lines] : expected)
        EXPECT_EQ(joined(published[name]), joined(lines)) << name;
    for (const auto& [name, lines] : published)
        EXPECT_TRUE(expected.contains(name)) << name << " is in no table";
}

TEST(TypeLibrary, PublishesWhatTheTablesOfTheLibraryDescribeAndNothingElse) {
    PublishedTables tables{frame::kLibraryName,   library::kTypeLibraryHelp, library::kTypeLibraryId,
                           frame::enumerations(), frame::records(),          {}};
    for (const library::BuiltClass& built : library::builtClasses()) {
        const automation::ClassInfo& info = built.describe();
        const frame::CatalogueEntry* entry = frame::findClass(info.name);
        ASSERT_TRUE(entry) << "built, but not in the catalogue";
        unsigned flags = 0;
        if (entry->isCreatable()) flags |= TYPEFLAG_FCANCREATE;
        if (entry->instancing == frame::Instancing::Global) flags |= TYPEFLAG_FAPPOBJECT | TYPEFLAG_FPREDECLID;
        tables.classes.push_back({&info, flags});
    }
    expectPublished(tables);
}

TEST(TypeLibrary, PublishesTheStandInsObjectModel) {
    PublishedTables tables{standin::kTypeLibraryName, standin::kTypeLibraryHelp, standin::kTypeLibraryId, {}, {}, {}};
    for (const automation::ClassInfo* info : standin::publishedClasses())
        tables.classes.push_back({info, TYPEFLAG_FCANCREATE});
    expectPublished(tables);
}

} // namespace

} // namespace tarncom32::com::testing
