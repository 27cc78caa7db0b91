/// Parts of the C++ runtime that this module brings itself. Those of the compiler's own library take memory, slots and
/// locks of the thread library under them, none of which it gives back when the module is unloaded, and they end the
/// process when there is no memory. What stands here takes nothing that the system does not free by itself.

#include <cxxabi.h>
#include <pthread.h>
#include <windows.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <cstring>

namespace __gnu_cxx {
void __freeres(); // of the C++ runtime, declared in no header
}

namespace {

/// Gives back, when the module goes, the 70 KB that the runtime reserves for exceptions without memory: otherwise every
/// loading would take them anew.
struct RuntimeReserve {
    ~RuntimeReserve() { __gnu_cxx::__freeres(); }
} const runtimeReserve;

/// A variable of each thread, as the compiler describes it.
struct ThreadVariable {
    std::size_t size;
    std::size_t alignment;
    void* place;         ///< for the compiler's own library
    const void* initial; ///< null for one that begins with zeros
};

/// A thread's own copy of a variable.
struct ThreadSlot {
    bool isInitialised;
    alignas(void*) std::byte value[2 * sizeof(void*)];
};

/// There are three: the exceptions in flight, the current error and the locale.
constexpr std::size_t kMostThreadVariables = 8;
using ThreadSlots = std::array<ThreadSlot, kMostThreadVariables>;

/// What each thread gets a copy of, zeros at first: the system makes it with the thread or when it loads the module.
[[gnu::section(".tls$M"), gnu::used]] ThreadSlots threadTemplate{};

/// Which variable has which slot.
constinit std::array<std::atomic<const ThreadVariable*>, kMostThreadVariables> owners{};

} // namespace

extern "C" {
extern const char _tls_start; // where the template of the whole module begins
extern const ULONG _tls_index;
}

namespace {

ThreadSlots& threadSlots() {
    // The layout is part of the executable format: the twelfth pointer of a thread's block is the table of all modules'
    // copies.
    char** copies = nullptr;
#ifdef _WIN64
    asm("movq %%gs:0x58, %0" : "=r"(copies));
#else
    asm("movl %%fs:0x2c, %0" : "=r"(copies));
#endif
    const auto offset = reinterpret_cast<const char*>(&threadTemplate) - &_tls_start;
    return *reinterpret_cast<ThreadSlots*>(copies[_tls_index] + offset);
}

} // namespace

/// The calling thread's copy of the variable.
extern "C" void* __emutls_get_address(void* described) {
    const auto& variable = *static_cast<const ThreadVariable*>(described);
    for (std::size_t i = 0; i < owners.size(); ++i) {
        const ThreadVariable* owner = owners[i].load(std::memory_order_acquire);
        if (!owner && owners[i].compare_exchange_strong(owner, &variable)) owner = &variable;
        if (owner != &variable) continue;
        ThreadSlot& slot = threadSlots()[i];
        if (variable.size > sizeof slot.value) break;
        if (!slot.isInitialised && variable.initial) std::memcpy(slot.value, variable.initial, variable.size);
        slot.isInitialised = true;
        return slot.value;
    }
    std::abort(); // Whoever adds a variable, or a larger one, makes room for it above.
}

// What is done once: the first use of a static variable in a function, and what the runtime does through the thread
// library. Of a guard the compiler reads the first byte by itself, and asks only as long as that is 0.

namespace {

constexpr std::uint32_t kDone = 1;
constexpr std::uint32_t kBeingDone = 0x100;

template <class Once>
std::atomic_ref<std::uint32_t> stateOf(Once* once) {
    return std::atomic_ref(*reinterpret_cast<std::uint32_t*>(once));
}

/// Whether the caller is to do it; waits for another that is at it.
bool begin(std::atomic_ref<std::uint32_t> state) {
    for (;;) {
        std::uint32_t found = 0;
        if (state.compare_exchange_strong(found, kBeingDone)) return true;
        if (found == kDone) return false;
        Sleep(1); // to wait for a thread of lower priority as well
    }
}

} // namespace

int __cxxabiv1::__cxa_guard_acquire(__guard* guard) {
    return begin(stateOf(guard)) ? 1 : 0;
}

void __cxxabiv1::__cxa_guard_release(__guard* guard) noexcept {
    stateOf(guard).store(kDone);
}

/// The initialisation has thrown: whoever comes next tries again.
void __cxxabiv1::__cxa_guard_abort(__guard* guard) noexcept {
    stateOf(guard).store(0);
}

int pthread_once(pthread_once_t* once, void (*action)()) {
    if (begin(stateOf(once))) {
        action();
        stateOf(once).store(kDone);
    }
    return 0;
}

// Locks that are not taken twice by one thread: those of the system, which are one word.

int pthread_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t*) {
    *mutex = 0;
    return 0;
}

int pthread_mutex_lock(pthread_mutex_t* mutex) {
    // One that is initialised where it is defined holds a mark of the thread library's.
    std::atomic_ref word(*mutex);
    pthread_mutex_t mark = PTHREAD_MUTEX_INITIALIZER;
    word.compare_exchange_strong(mark, 0);
    if (mark == PTHREAD_RECURSIVE_MUTEX_INITIALIZER) std::abort(); // It needs a lock of another kind.
    AcquireSRWLockExclusive(reinterpret_cast<SRWLOCK*>(mutex));
    return 0;
}

int pthread_mutex_unlock(pthread_mutex_t* mutex) {
    ReleaseSRWLockExclusive(reinterpret_cast<SRWLOCK*>(mutex));
    return 0;
}

int pthread_mutex_destroy(pthread_mutex_t*) {
    return 0;
}

int sched_yield() {
    SwitchToThread();
    return 0;
}

int nanosleep(const timespec* wanted, timespec*) {
    Sleep(static_cast<DWORD>(wanted->tv_sec * 1000 + (wanted->tv_nsec + 999'999) / 1'000'000));
    return 0;
}
