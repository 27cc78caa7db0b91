#pragma once

#include <cstddef>

namespace tarncom32::tests {

/// Lets one request for memory fail, that of this thread with the number `nth` (from 1) while this lives. A program
/// that links failing_memory.cpp counts `new`; others may count with it.
class FailingMemory {
public:
    explicit FailingMemory(std::size_t nth);
    ~FailingMemory();
    FailingMemory(const FailingMemory&) = delete;

    /// Whether the last one has failed: fewer requests than `nth` were made else.
    static bool hasFailed();
    /// For an allocator: counts a request; true when it is the one that fails.
    static bool failsNow();
};

/// Calls `attempt(nth)` with 1, 2, 3 ..., which makes a `FailingMemory` of that number for the time of what it tries,
/// until no request fails any more. How many there were.
template <class Attempt>
std::size_t failEachRequest(Attempt&& attempt) {
    for (std::size_t nth = 1;; ++nth) {
        attempt(nth);
        if (!FailingMemory::hasFailed()) return nth - 1;
    }
}

} // namespace tarncom32::tests
