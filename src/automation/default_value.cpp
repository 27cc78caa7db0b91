#include "automation/default_value.h"

#include "automation/error.h"

namespace tarncom32::automation {

Variant defaultValue(const ObjectRef& object) {
    // Hosts follow a chain of objects; one that leads back to itself must not be followed for ever.
    constexpr int kLongestChain = 32;
    Variant value = object;
    for (int step = 0; step < kLongestChain; ++step) {
        // The empty name stands for the default member.
        value = deref(*value.as<ObjectRef>()).invoke(u"", Access::Get, {});
        if (!value.isObject()) return value;
    }
    throw Error(errors::TypeMismatch);
}

} // namespace tarncom32::automation
