#pragma once

#include "cli/commands.h"
#include "cli/registry_command.h"

#include <optional>

namespace tarncom32::cli {

/// What a command line asks for: the options of its command, and the other commands' as they are without one.
struct Request {
    std::string command{}; ///< "classes", "describe", "call", "session" or "registry"
    bool json = false;     ///< of "classes" and "describe"
    std::string path{};    ///< of "describe"
    CallOptions call{};
    RegistryOptions registry{};
    SessionOptions session{};
};

/// Reads the words behind the program's name. Gives nothing where they ask for help or the version, which has been
/// printed then. Raises UsageError when they make no sense.
std::optional<Request> readRequest(const Output& output, const std::vector<std::string>& words);

} // namespace tarncom32::cli
