#include "cli/command_line.h"

#include <cstdlib>
#include <iostream>

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    using namespace tarncom32::cli;
    const int status = runCommandLine({std::cout, std::cerr, Terminal::ofStandardOutput()}, {argv + 1, argv + argc});
    std::cout.flush();
    if (!std::cout) {
        std::cerr << "tarn: the output could not be written; is the disk full?\n";
        return EXIT_FAILURE;
    }
    return status;
}
