#include "standin/drawing/arena.h"

namespace tarncom32::standin::drawing {

void* Arena::allocate(std::size_t bytes, std::size_t alignment) {
    constexpr std::size_t blockBytes = std::size_t{64} << 10;
    if (bytes > available()) throw ArenaFull{};

    void* place = next_;
    if (place == nullptr || std::align(alignment, bytes, place, left_) == nullptr) {
        if (bytes > blockBytes / 4) { // a block of its own, so that little of the current one is lost
            blocks_.emplace_back(new std::byte[bytes]);
            used_ += bytes;
            return blocks_.back().get();
        }
        blocks_.emplace_back(new std::byte[blockBytes]);
        place = blocks_.back().get();
        left_ = blockBytes;
    }
    next_ = static_cast<std::byte*>(place) + bytes;
    left_ -= bytes;
    used_ += bytes;
    return place;
}

} // namespace tarncom32::standin::drawing
