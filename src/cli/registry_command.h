#pragma once

#include "cli/commands.h"

namespace tarncom32::cli {

/// What "tarn registry" is asked for.
struct RegistryOptions {
    std::string verb{};          ///< "list", "get", "set", "delete" or "export"
    std::string file{};          ///< empty: the user's own store
    std::string key{};           ///< HKCU\Software\...
    std::string name{};          ///< of a value; empty: the key's default value
    std::string text{};          ///< what to set
    std::string type = "REG_SZ"; ///< of the value to set
    std::string target{};        ///< file to export to; empty: standard output
    bool deletesValue = false;   ///< a value was named
    bool recursive = false;
    bool json = false;
};

/// "tarn registry": looks at what add-ins keep in the portable registry, and changes it.
int runRegistry(const Output& output, const RegistryOptions& options);

} // namespace tarncom32::cli
