#include "com/type_library/type_library_text.h"
#include "library/catalogue.h"
#include "library/contract_text.h"
#include "standin/published_library.h"

#include <gtest/gtest.h>

namespace tarncom32::com::testing {

namespace {

using namespace tests::contract;

TEST(TypeLibrary, IsTheContractToItsCallers) {
    for (const auto& published : {&library::publishedLibrary, &standin::publishedLibrary}) {
        const frame::PublishedLibrary& library = published();
        EXPECT_EQ(difference(sortedBlocks(checkedIn(automation::toUtf8(library.name))),
                             sortedBlocks(typeLibraryText(library.guid))),
                  "");
    }
}

} // namespace

} // namespace tarncom32::com::testing
