#pragma once

#include "automation/string.h"
#include "platform/registry.h"

namespace tarncom32::tests {

/// The registry that the library has on this system: natively a store of its own in a temporary folder, on Windows the
/// system's, where `testKey()` and all below it go at the end.
std::shared_ptr<platform::Registry> testRegistry();

/// A key of the current user that belongs to this process, and that no test has to create first.
automation::String testKey();

} // namespace tarncom32::tests
