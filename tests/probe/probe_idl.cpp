// Writes TarnProbe.idl to the file that is named.

#include "idl/idl_program.h"
#include "probe/probe_library.h"

int main(int count, char** arguments) {
    return tarncom32::idl::runProgram(count, arguments, tarncom32::com::testing::probeLibrary);
}
