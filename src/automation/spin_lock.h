#pragma once

#include <atomic>

namespace tarncom32::automation {

/// A lock for a few instructions, under which nothing is called that could wait. Unlike the system's locks, of the C++
/// runtime for Windows, it takes no memory that would be left behind when a module is unloaded. For std::lock_guard.
class SpinLock {
public:
    void lock() noexcept;
    void unlock() noexcept { held_.clear(std::memory_order_release); }

private:
    std::atomic_flag held_;
};

} // namespace tarncom32::automation
