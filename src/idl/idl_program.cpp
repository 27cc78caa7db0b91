#include "idl/idl_program.h"

#include <fstream>
#include <iostream>
#include <stdexcept>

namespace tarncom32::idl {

int runProgram(int count, char** arguments, const frame::PublishedLibrary& (*publishedLibrary)()) {
    try {
        if (count != 2) throw std::runtime_error(std::string("usage: ") + arguments[0] + " FILE.idl");
        std::ofstream file(arguments[1]);
        write(file, publishedLibrary());
        if (!file.flush()) throw std::runtime_error(std::string("cannot write ") + arguments[1]);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}

} // namespace tarncom32::idl
