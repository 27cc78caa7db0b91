#pragma once

#include <map>
#include <string>
#include <vector>

/// The type library twice over: as the member tables want it, and as COM clients read it out of the DLL. Both are
/// written in the same words, worked out independently of each other, so that they can be compared line by line.
namespace tarncom32::com::testing {

/// For each thing in the library ("class StringFunctions", "interface _StringFunctions", "enumeration eCOLORS",
/// "record ThunkBytes", "events __ProgressBar", and "library") its lines: first what it is, then its members in order.
using LibraryDescription = std::map<std::string, std::vector<std::string>>;

/// What the catalogue, the tables of the built classes, the enumerations and the records say.
LibraryDescription describeTables();

/// What the registered type library says. Raises `std::runtime_error` when it cannot be loaded or read.
LibraryDescription describeTypeLibrary();

/// A help text as a part of a line.
inline std::string helpText(const std::string& help) {
    return " \"" + help + "\"";
}

} // namespace tarncom32::com::testing
