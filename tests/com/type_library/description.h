#pragma once

#include "automation/class_info.h"
#include "frame/enumerations.h"
#include "frame/records.h"

#include <map>
#include <string>
#include <vector>

/// A type library twice over: as the member tables want it, and as COM clients read it out of the DLL. Each is worked
/// out on its own; both are written in the same words, so that they can be compared line by line.
namespace tarncom32::com::testing {

/// What a library publishes, by the tables.
struct PublishedTables {
    automation::StringView name;
    automation::StringView help;
    automation::Guid guid;
    std::span<const frame::EnumerationInfo> enumerations;
    std::span<const frame::RecordInfo> records;
    struct Class {
        const automation::ClassInfo* info;
        unsigned flags = 0; ///< TYPEFLAG_ words of the coclass; a class without CLSID has none
    };
    std::vector<Class> classes;
};

/// For each thing in a library ("class StringFunctions", "interface _StringFunctions", "enumeration eCOLORS",
/// "record ThunkBytes", "events __ProgressBar", and "library") its lines: first what it is, then its members in order.
using Description = std::map<std::string, std::vector<std::string>>;

Description describe(const PublishedTables& tables);

/// The registered type library of that identifier, version 1.0. Raises `std::runtime_error` when it cannot be read.
Description describeTypeLibrary(const automation::Guid& guid);

// ---- The words ----

struct Parameter {
    unsigned flags = 0; ///< PARAMFLAG_
    std::string type;
    std::string name;         ///< none for the value that a property is given
    std::string defaultValue; ///< with its type in front
};

struct Member {
    int slot = 0; ///< in the vtable; 0 for an event
    long id = 0;
    unsigned kind = 0;  ///< INVOKEKIND
    unsigned flags = 0; ///< FUNCFLAG_
    std::string name;
    std::vector<Parameter> parameters;
    std::string result; ///< for callers through IDispatch
    std::string help;
};

std::string line(const Member& member);
/// " appobject" and so on for TYPEFLAG_ bits.
std::string typeFlagWords(unsigned flags);
/// "default " and so on for IMPLTYPEFLAG_ bits.
std::string implementationWords(unsigned flags);
/// The word for a VARTYPE that stands alone.
std::string typeWord(unsigned type);
/// A help text as a part of a line.
std::string helpText(const std::string& help);

} // namespace tarncom32::com::testing
