#include "com/type_library/description.h"

#include <gtest/gtest.h>

namespace tarncom32::com::testing {

namespace {

std::vector<std::string> namesOf(const LibraryDescription& description) {
    std::vector<std::string> names;
    for (const auto& [name, lines] : description)
        names.push_back(name);
    return names;
}

std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += line + "\n";
    return text;
}

TEST(TypeLibrary, PublishesWhatTheTablesDescribeAndNothingElse) {
    const LibraryDescription expected = describeTables();
    const LibraryDescription published = describeTypeLibrary();
    EXPECT_EQ(namesOf(published), namesOf(expected));
    for (const auto& [name, lines] : expected) {
        const auto found = published.find(name);
        if (found == published.end()) continue; // The names say so.
        EXPECT_EQ(joined(found->second), joined(lines)) << name;
    }
}

} // namespace

} // namespace tarncom32::com::testing
