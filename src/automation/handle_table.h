#pragma once

#include "automation/object.h"
#include "automation/spin_lock.h"

#include <vector>

namespace tarncom32::automation {

/// Objects by 32-bit numbers, without holding them. A number has the object's place in its lower half, counted from 1,
/// and above it how often the place was given away before, so that a number that is out of date finds nothing, and none
/// comes twice. Any thread may use it.
class HandleTable {
public:
    /// A number above 0 for the object, which must be removed before the object is deleted. Raises 7 when 65,535
    /// objects have one.
    std::int32_t add(Object& object);
    /// Does nothing for a number that is out of date.
    void remove(std::int32_t handle) noexcept;
    /// The object; Nothing for a number that is out of date, and for an object whose last reference has gone.
    ObjectRef find(std::int32_t handle) noexcept;

private:
    struct Place {
        Object* object = nullptr;
        std::uint16_t uses = 0;     ///< of which the lower 15 bits count
        std::uint16_t nextFree = 0; ///< counted from 1; 0 for none
    };
    Place* placeOf(std::int32_t handle) noexcept;

    SpinLock lock_;
    std::vector<Place> places_;
    std::uint16_t firstFree_ = 0;
};

/// The table of this module.
HandleTable& handleTable() noexcept;

} // namespace tarncom32::automation
