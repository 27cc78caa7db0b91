#include "library/catalogue.h"
#include "library/contract_text.h"
#include "library/table_text.h"
#include "standin/published_library.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace tarncom32::tests::contract {
namespace {

void expectUnchanged(const frame::PublishedLibrary& library) {
    const std::string name = automation::toUtf8(library.name);
    const std::string found = tableText(library);
    const std::string differing = difference(checkedIn(name), found);
    if (differing.empty()) return;
    const auto fresh = std::filesystem::temp_directory_path() / (name + ".txt");
    std::ofstream(fresh, std::ios::binary) << found;
    ADD_FAILURE()
        << "What " << name << " publishes is not what docs/contract/" << name << ".txt says:\n"
        << differing
        << "Programs are compiled against it. Lines may come, where they break none: a whole class, enumeration "
           "or record,\na member at the end of its interface, a value at the end of its enumeration. The "
           "sentences in quotes may be reworded.\nNothing else that stands there may change or go. If the "
           "difference is of these kinds, keep it:\n    cp "
        << fresh.string() << " docs/contract/" << name << ".txt\n";
}

TEST(Contract, OfTheLibraryAndOfTheStandInIsKept) {
    expectUnchanged(library::publishedLibrary());
    expectUnchanged(standin::publishedLibrary());
}

} // namespace
} // namespace tarncom32::tests::contract
