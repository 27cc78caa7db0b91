#include "com/type_library/type_library_text.h"
#include "library/catalogue.h"
#include "library/contract_text.h"
#include "library/table_text.h"
#include "probe/probe_library.h"
#include "standin/published_library.h"

#include <gtest/gtest.h>

namespace tarncom32::com::testing {

namespace {

using namespace tests::contract;

void expectRegistered(const frame::PublishedLibrary& library, const std::string& contract) {
    EXPECT_EQ(difference(sortedBlocks(contract), sortedBlocks(typeLibraryText(library.guid))), "");
}

TEST(TypeLibrary, IsTheContractToItsCallers) {
    for (const auto& published : {&library::publishedLibrary, &standin::publishedLibrary})
        expectRegistered(published(), checkedIn(automation::toUtf8(published().name)));
    // The tests' own library promises nobody anything: its tables alone count.
    expectRegistered(probeLibrary(), tableText(probeLibrary()));
}

} // namespace

} // namespace tarncom32::com::testing
