// Writes TarnCom32.idl to the file that is named.

#include "frame/report.h"
#include "idl/idl_program.h"
#include "library/library.h"
#include "library/type_library.h"

using namespace tarncom32;

namespace {

idl::PublishedLibrary publishedLibrary() {
    idl::PublishedLibrary published{frame::kLibraryName,   library::kTypeLibraryHelp, library::kTypeLibraryId,
                                    frame::enumerations(), frame::records(),          {}};
    for (const library::BuiltClass& built : library::builtClasses()) {
        const automation::ClassInfo& info = built.describe();
        const frame::CatalogueEntry& entry = *frame::findClass(info.name);
        published.classes.push_back({&info, entry.isCreatable(), entry.instancing == frame::Instancing::Global});
    }
    return published;
}

} // namespace

int main(int count, char** arguments) {
    return idl::runProgram(count, arguments, publishedLibrary);
}
