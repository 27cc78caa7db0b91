#include "frame/enumerations.h"

namespace tarncom32::frame {

std::span<const EnumerationInfo> enumerations() {
    static const std::vector<EnumerationInfo> all{
#define TARNCOM32_ENUMERATION(name, help, values) {u"" #name, u"" help, {values}},
#define TARNCOM32_VALUE(name, value, help) {u"" #name, value, u"" help},
#include "frame/enumerations.inc"
#undef TARNCOM32_ENUMERATION
#undef TARNCOM32_VALUE
    };
    return all;
}

const EnumerationInfo* findEnumeration(automation::StringView name) {
    for (const EnumerationInfo& enumeration : enumerations())
        if (automation::equalsIgnoreCase(enumeration.name, name)) return &enumeration;
    return nullptr;
}

} // namespace tarncom32::frame
