#pragma once

#include "frame/published_library.h"

#include <iosfwd>

/// Writes the description of a type library, as the IDL compiler reads it, out of the member tables.
namespace tarncom32::idl {

/// Writes the whole library, version 1.0. Interfaces are `_Class`, source interfaces `__Class`; objects of classes
/// that the library does not publish are plain IDispatch. Throws `std::logic_error` for a record that the
/// library does not publish, and for a default that the IDL compiler cannot write: it knows none for numbers with a
/// fraction, currencies and dates.
void write(std::ostream& out, const frame::PublishedLibrary& library);

} // namespace tarncom32::idl
