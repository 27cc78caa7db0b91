#pragma once

#include "automation/string.h"

#include <vector>

/// The filters of a file dialog.
namespace tarncom32::platform::portable {

struct FileFilter {
    automation::String description;
    automation::String patterns; ///< separated by semicolons: "*.vsd;*.vss"
};

/// The filters in a request's text: descriptions and patterns in turn, each with a NUL behind. An empty description,
/// or one without patterns, ends them.
std::vector<FileFilter> filtersIn(automation::StringView text);

/// Whether one of the patterns fits the name, without regard to case; "*" stands for any characters, "?" for one, and
/// "*.*" for every name. No patterns fit every name.
bool fits(automation::StringView patterns, automation::StringView name);

/// The extension, with its dot, that a dialog's default extension names ("vsd", ".vsd" and "*.vsd;*.vss" all name
/// ".vsd"); empty when it is a wildcard.
automation::String extensionNamed(automation::StringView defaultExtension);

} // namespace tarncom32::platform::portable
