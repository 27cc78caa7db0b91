#pragma once

#include "cli/terminal.h"

#include <iosfwd>
#include <string>
#include <vector>

/// The commands, each in a file of its own. Every one writes to `out`, returns the exit status (exit_status.h), and
/// raises a UsageError where what it is asked for does not exist.
namespace tarncom32::cli {

/// Where a command's output goes and how it is dressed.
struct Output {
    std::ostream& out; ///< results, in UTF-8
    std::ostream& err; ///< errors, one line each
    Terminal terminal;
};

/// "tarn classes": every class of the catalogue, with its kind, its ProgID, and whether it is built.
int runClasses(const Output& output, bool json);

/// "tarn describe": what a class, one of its members, or an enumeration is. `path` is CLASS, CLASS.MEMBER or
/// ENUMERATION.
int runDescribe(const Output& output, const std::string& path, bool json);

struct CallOptions {
    std::string path{};                   ///< CLASS.MEMBER
    std::vector<std::string> arguments{}; ///< see value_argument.h
    bool json = false;
};

/// "tarn call": calls a member, late bound, on a new instance of its class. By-reference parameters that the command
/// line leaves out get an empty variable, so that what the member writes is seen.
int runCall(const Output& output, const CallOptions& options);

struct SessionOptions {
    std::string drawing{};                    ///< the file
    std::string addonArgs = "/doc=1 /page=1"; ///< what Visio would hand to the add-on
    std::string wantedVersion{};              ///< "": the document's version is not checked
    std::string application{};                ///< "": every shape is kept
    bool subShapes = false;                   ///< go into groups
    bool json = false;
};

/// "tarn session": what an add-in does when a user calls it, on a drawing that the Visio stand-in opens.
int runSession(const Output& output, const SessionOptions& options);

} // namespace tarncom32::cli
