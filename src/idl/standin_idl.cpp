// Writes TarnVisioStandIn.idl to the file that is named.

#include "idl/idl_program.h"
#include "standin/type_library.h"

using namespace tarncom32;

namespace {

idl::PublishedLibrary publishedLibrary() {
    idl::PublishedLibrary published{
        standin::kTypeLibraryName, standin::kTypeLibraryHelp, standin::kTypeLibraryId, {}, {}, {}};
    for (const automation::ClassInfo* info : standin::publishedClasses())
        published.classes.push_back({info, !info->clsid.isNull()});
    return published;
}

} // namespace

int main(int count, char** arguments) {
    return idl::runProgram(count, arguments, publishedLibrary);
}
