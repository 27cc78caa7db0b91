// Writes TarnCom32.idl to the file that is named.

#include "idl/idl_program.h"
#include "library/catalogue.h"

int main(int count, char** arguments) {
    return tarncom32::idl::runProgram(count, arguments, tarncom32::library::publishedLibrary);
}
