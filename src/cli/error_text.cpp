#include "cli/error_text.h"

#include "cli/terminal.h"

#include <cstdio>

namespace tarncom32::cli {

std::string errorText(const automation::Error& error) {
    char number[16];
    if (error.number() < 0)
        std::snprintf(number, sizeof number, "0x%08X", static_cast<unsigned>(error.number()));
    else
        std::snprintf(number, sizeof number, "%d", static_cast<int>(error.number()));
    return "error " + std::string(number) + ": " + oneLine(error.what());
}

} // namespace tarncom32::cli
