#include "automation/handle_table.h"

#include "automation/error.h"

#include <mutex>

namespace tarncom32::automation {

namespace {

constexpr std::size_t kMostPlaces = 0xFFFF;
constexpr unsigned kUseBits = 0x7FFF; // the number's highest bit stays clear

constinit HandleTable theTable;

} // namespace

std::int32_t HandleTable::add(Object& object) {
    const std::lock_guard guard(lock_);
    std::uint16_t number = firstFree_;
    if (number == 0) {
        if (places_.size() == kMostPlaces) throw Error(errors::OutOfMemory);
        places_.emplace_back();
        number = static_cast<std::uint16_t>(places_.size());
    }
    Place& place = places_[number - 1u];
    firstFree_ = place.nextFree;
    place.nextFree = 0;
    place.object = &object;
    return static_cast<std::int32_t>((place.uses & kUseBits) << 16 | number);
}

void HandleTable::remove(std::int32_t handle) noexcept {
    const std::lock_guard guard(lock_);
    Place* place = placeOf(handle);
    if (!place) return;
    place->object = nullptr;
    // A place that has been given away as often as can be told is given away no more: no number comes twice.
    if ((++place->uses & kUseBits) != 0)
        place->nextFree = std::exchange(firstFree_, static_cast<std::uint16_t>(handle & 0xFFFF));
}

ObjectRef HandleTable::find(std::int32_t handle) noexcept {
    const std::lock_guard guard(lock_);
    const Place* place = placeOf(handle);
    if (!place || !place->object->tryAddRef()) return {};
    const ObjectRef found(place->object);
    place->object->release(); // the one that was tried: `found` has its own
    return found;
}

HandleTable::Place* HandleTable::placeOf(std::int32_t handle) noexcept {
    const auto number = static_cast<std::size_t>(handle & 0xFFFF);
    if (handle <= 0 || number == 0 || number > places_.size()) return nullptr;
    Place& place = places_[number - 1];
    return place.object && (place.uses & kUseBits) == static_cast<unsigned>(handle >> 16) ? &place : nullptr;
}

HandleTable& handleTable() noexcept {
    return theTable;
}

} // namespace tarncom32::automation
