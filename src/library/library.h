#pragma once

#include "frame/catalogue.h"
#include "platform/platform.h"

#include <map>

namespace tarncom32::library {

/// A class that is built: its description, and how an instance is made.
struct BuiltClass {
    const automation::ClassInfo& (*describe)();
    /// Null for a class that is obtained only from another object.
    automation::ObjectRef (*create)(platform::Platform& platform);
};

/// Every class that is built, in the catalogue's order.
std::span<const BuiltClass> builtClasses();

/// The built class of that name, without regard to case; null when there is none.
const BuiltClass* findBuiltClass(automation::StringView className);

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
