#include "automation/object.h"

#include "automation/class_info.h"
#include "automation/handle_table.h"

namespace tarncom32::automation {

std::atomic<std::size_t> Object::liveCount_{0};

bool Object::tryAddRef() const noexcept {
    std::uint32_t count = references_.load(std::memory_order_relaxed);
    while (count != 0)
        if (references_.compare_exchange_weak(count, count + 1, std::memory_order_acquire)) return true;
    return false;
}

void Object::callFinalRelease() noexcept {
    try {
        finalRelease();
    } catch (...) {
        // See the header: nobody is left to be told.
    }
}

void Object::prepareRelease() noexcept {
    if (references_.load(std::memory_order_acquire) == 1 && !finalReleaseCalled_.exchange(true)) callFinalRelease();
}

void Object::end() noexcept {
    // A reference of its own keeps the count away from zero while the object acts for the last time, ...
    const bool isFirstEnd = !finalReleaseCalled_.exchange(true);
    addRef();
    if (isFirstEnd) callFinalRelease();
    if (references_.fetch_sub(1, std::memory_order_acq_rel) != 1) return;
    if (const std::int32_t handle = handle_.load()) handleTable().remove(handle);
    // ... and another while its destructors run: references that they take and drop do not end it twice.
    addRef();
    delete this;
}

std::int32_t Object::handle() {
    if (handle_ == 0) {
        const std::int32_t fresh = handleTable().add(*this);
        std::int32_t none = 0;
        if (!handle_.compare_exchange_strong(none, fresh)) handleTable().remove(fresh); // another thread was first
    }
    return handle_;
}

ObjectRef Object::ofHandle(std::int32_t handle) noexcept {
    return handleTable().find(handle);
}

bool Object::settlesFailure(const MemberInfo& member, const Error& error) {
    switch (member.failureStyle) {
    case FailureStyle::Raise:
        return false;
    case FailureStyle::Report:
        return reportFailure(member, error);
    case FailureStyle::Silent:
        break;
    }
    return true;
}

Variant Object::invokeNamed(const MemberName& name, const MemberName&, std::span<Variant> arguments) {
    return invoke(name, Access::MethodOrGet, arguments);
}

std::unique_ptr<Enumerator> Object::enumerate() {
    throw Error(errors::NotACollection);
}

} // namespace tarncom32::automation
