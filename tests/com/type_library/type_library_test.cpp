#include "com/type_library/description.h"
#include "library/catalogue.h"
#include "standin/published_library.h"

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

void expectPublished(const frame::PublishedLibrary& library) {
    PublishedTables tables{library.name, library.help, library.guid, library.enumerations, library.records, {}};
    for (const frame::PublishedClass& published : library.classes) {
        unsigned flags = isCreatable(published.instancing) ? unsigned{TYPEFLAG_FCANCREATE} : 0;
        if (published.instancing == frame::Instancing::Global) flags |= TYPEFLAG_FAPPOBJECT | TYPEFLAG_FPREDECLID;
        tables.classes.push_back({published.info, flags});
    }
    expectPublished(tables);
}

TEST(TypeLibrary, PublishesWhatTheTablesOfTheLibraryDescribeAndNothingElse) {
    expectPublished(library::publishedLibrary());
}

TEST(TypeLibrary, PublishesTheStandInsObjectModel) {
    expectPublished(standin::publishedLibrary());
}

} // namespace

} // namespace tarncom32::com::testing
