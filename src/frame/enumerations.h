#pragma once

#include "automation/type.h"

#include <span>

/// The public enumerations: `enum class eMenuSet : std::int32_t` and so on, with their published names and values,
/// which enumerations.inc lists. Macros, because a name has to be an identifier and a text.
namespace tarncom32::frame {

#define TARNCOM32_ENUMERATION(name, help, values)                                                                      \
    enum class name : std::int32_t { values };                                                                         \
    constexpr automation::StringView publishedName(name) {                                                             \
        return u"" #name;                                                                                              \
    }
#define TARNCOM32_VALUE(name, value, help) name = value,
#include "frame/enumerations.inc"
#undef TARNCOM32_ENUMERATION
#undef TARNCOM32_VALUE

/// A value of an enumeration, as published.
struct EnumerationMember {
    automation::StringView name;
    std::int32_t value;
    automation::StringView help;
};

/// An enumeration, as published.
struct EnumerationInfo {
    automation::StringView name;
    automation::StringView help;
    std::vector<EnumerationMember> members;
};

/// All public enumerations, in the order of the type library.
std::span<const EnumerationInfo> enumerations();

/// The enumeration of that name, without regard to case; null when there is none.
const EnumerationInfo* findEnumeration(automation::StringView name);

} // namespace tarncom32::frame
