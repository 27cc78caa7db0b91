#include "automation/spin_lock.h"

#include <thread>

namespace tarncom32::automation {

void SpinLock::lock() noexcept {
    while (held_.test_and_set(std::memory_order_acquire))
        std::this_thread::yield();
}

} // namespace tarncom32::automation
