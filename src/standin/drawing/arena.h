#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <span>
#include <type_traits>
#include <vector>

namespace tarncom32::standin::drawing {

/// Thrown by an Arena whose limit is reached; the reader turns it into a DrawingError that names the part.
struct ArenaFull {};

/// Memory of one drawing: given out in order, never moved, freed all at once. Drawings hold millions of small lists,
/// which cost no header and no gap here, and however deep they nest, freeing them takes no recursion.
class Arena {
public:
    /// Gives out at most `limit` bytes.
    explicit Arena(std::size_t limit) : limit_(limit) {}

    /// Uninitialised memory that lives as long as the arena. `alignment` is at most that of `std::max_align_t`. Raises
    /// ArenaFull past the limit.
    [[nodiscard]] void* allocate(std::size_t bytes, std::size_t alignment);

    /// The items once more, side by side, exactly as many bytes as they take.
    template <typename T>
    [[nodiscard]] std::span<const T> copy(const std::vector<T>& items) {
        static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>);
        if (items.empty()) return {};
        auto* memory = static_cast<T*>(allocate(items.size() * sizeof(T), alignof(T)));
        std::uninitialized_copy(items.begin(), items.end(), memory);
        return {memory, items.size()};
    }

    /// Bytes that have been given out.
    [[nodiscard]] std::size_t used() const noexcept { return used_; }

    /// Bytes that may still be given out; what is being collected for a later `copy` is measured against it.
    [[nodiscard]] std::size_t available() const noexcept { return limit_ - used_; }

private:
    std::size_t limit_;
    std::size_t used_ = 0;
    std::vector<std::unique_ptr<std::byte[]>> blocks_;
    std::byte* next_ = nullptr;
    std::size_t left_ = 0;
};

} // namespace tarncom32::standin::drawing
