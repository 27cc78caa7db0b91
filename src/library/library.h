#pragma once

#include "library/catalogue.h"

#include <map>

namespace tarncom32::library {

/// The library as a native program sees it: creates objects by ProgID and keeps the shared instance of each global
/// class.
class Library {
public:
    /// `platform` must outlive the library and every object it made.
    explicit Library(platform::Platform& platform) : platform_(platform) {}

    /// A new instance of the class with that ProgID ("TarnCom32.StringFunctions", without regard to case). Raises 429
    /// for a name that is none, with a description that says why.
    automation::ObjectRef create(automation::StringView progId);

    /// The shared instance of a global class, made when it is first asked for; `className` has no prefix. Raises 429
    /// for any other class.
    automation::ObjectRef global(automation::StringView className);

private:
    platform::Platform& platform_;
    std::map<automation::String, automation::ObjectRef> globals_;
};

} // namespace tarncom32::library
