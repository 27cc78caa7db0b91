#pragma once

#include "automation/class_info.h"
#include "frame/enumerations.h"
#include "frame/records.h"

#include <iosfwd>

/// Writes the description of a type library, as the IDL compiler reads it, out of the member tables.
namespace tarncom32::idl {

/// A class to publish. Of one that has no CLSID, and so cannot be created, only the interface is.
struct PublishedClass {
    const automation::ClassInfo* info;
    bool creatable = false;
    bool applicationObject = false; ///< its members can be called without an instance
};

struct PublishedLibrary {
    automation::StringView name;
    automation::StringView help;
    automation::Guid guid;
    std::span<const frame::EnumerationInfo> enumerations;
    std::span<const frame::RecordInfo> records;
    std::vector<PublishedClass> classes;
};

/// Writes the whole library, version 1.0. Interfaces are `_Class`, source interfaces `__Class`; objects of classes
/// that the library does not publish are plain IDispatch. Throws `std::logic_error` for a default that the IDL has no
/// way to write.
void write(std::ostream& out, const PublishedLibrary& library);

} // namespace tarncom32::idl
