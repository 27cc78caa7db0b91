#pragma once

#include <cstdint>

namespace tarncom32::automation {

/// Automation's Boolean: 16 bits, all set for true. Every bit is kept, because several members treat exactly -1 as
/// true and any other number as false; a flag that arrives as 1 must still be 1 when such a member looks at it.
struct Boolean {
    std::int16_t value = 0;

    constexpr Boolean() = default;
    constexpr Boolean(bool truth) : value(truth ? -1 : 0) {}
    /// A flag with all its bits, as a caller passed it.
    static constexpr Boolean fromBits(std::int16_t bits) {
        Boolean flag;
        flag.value = bits;
        return flag;
    }

    /// True for exactly -1.
    constexpr bool isTrue() const { return value == -1; }
    /// True for anything but 0, as automation itself reads a number.
    constexpr bool isNonZero() const { return value != 0; }

    friend constexpr bool operator==(Boolean, Boolean) = default;
};

} // namespace tarncom32::automation
