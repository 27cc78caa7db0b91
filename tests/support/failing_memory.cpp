#include "support/failing_memory.h"

#include <cstdlib>
#include <new>

namespace tarncom32::tests {

namespace {

thread_local std::size_t requestsLeft = 0; // 0: none is to fail
thread_local bool failed = false;

} // namespace

FailingMemory::FailingMemory(std::size_t nth) {
    requestsLeft = nth;
    failed = false;
}

FailingMemory::~FailingMemory() {
    requestsLeft = 0;
}

bool FailingMemory::hasFailed() {
    return failed;
}

bool FailingMemory::failsNow() {
    if (requestsLeft == 0 || --requestsLeft > 0) return false;
    failed = true;
    return true;
}

} // namespace tarncom32::tests

void* operator new(std::size_t size) {
    void* memory = tarncom32::tests::FailingMemory::failsNow() ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (!memory) throw std::bad_alloc();
    return memory;
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
