#pragma once

#include "idl/idl_writer.h"

namespace tarncom32::idl {

/// What a program does that writes a type library's description to the file that its only argument names: the exit
/// status. Failures are told on the standard error.
int runProgram(int count, char** arguments, const frame::PublishedLibrary& (*publishedLibrary)());

} // namespace tarncom32::idl
