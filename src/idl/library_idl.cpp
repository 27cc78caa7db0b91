// Writes TarnCom32.idl to the file that is named.

#include "frame/report.h"
#include "idl/idl_writer.h"
#include "library/library.h"
#include "library/type_library.h"

#include <fstream>
#include <iostream>

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
    try {
        if (count != 2) throw std::runtime_error("usage: tarncom32_library_idl FILE.idl");
        std::ofstream file(arguments[1]);
        idl::write(file, publishedLibrary());
        if (!file.flush()) throw std::runtime_error(std::string("cannot write ") + arguments[1]);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
