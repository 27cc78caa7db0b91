#pragma once

#include "cli/commands.h"

namespace tarncom32::cli {

/// Reads the words behind the program's name and runs the command that they ask for. Returns the exit status
/// (exit_status.h); what goes wrong is one line on `output.err`.
int runCommandLine(const Output& output, const std::vector<std::string>& words);

} // namespace tarncom32::cli
