#include "automation/events.h"

#include "automation/error.h"
#include "automation/take_out.h"

#include <algorithm>
#include <new>

namespace tarncom32::automation {

namespace {

/// `value` as the type of a parameter. Raises as the conversions do.
Variant converted(const Variant& value, const Type& type) {
    return type.type == VariantType::Boolean && !type.isArray ? Variant(detail::toFlag(value))
                                                              : changeType(value, type.type);
}

/// Calls the listener with arguments of its own and takes over what it left in those by reference.
void notify(EventListener& listener, const EventInfo& event, std::span<Variant> arguments) {
    if (std::ranges::none_of(event.parameters, &ParameterInfo::isByReference)) {
        listener.notify(event, arguments);
        return;
    }
    std::vector<Variant> own(arguments.begin(), arguments.end());
    listener.notify(event, own);
    for (std::size_t i = 0; i < own.size(); ++i)
        if (event.parameters[i].isByReference()) arguments[i] = converted(own[i], event.parameters[i].type);
}

} // namespace

EventSource::~EventSource() {
    // The end of a listener may still come to this object.
    const std::vector<Entry> gone = std::exchange(listeners_, {});
}

std::uint32_t EventSource::advise(std::shared_ptr<EventListener> listener) {
    listeners_.push_back({lastCookie_ + 1, std::move(listener)});
    return ++lastCookie_;
}

bool EventSource::unadvise(std::uint32_t cookie) {
    const auto found = std::ranges::find(listeners_, cookie, &Entry::cookie);
    if (found == listeners_.end()) return false;
    const Entry gone = takeOut(listeners_, found);
    return true;
}

void EventSource::raise(std::int32_t dispid, std::span<Variant> arguments) {
    const ObjectRef alive(&owner_);
    const EventInfo& event = *std::ranges::find(owner_.classInfo()->events, dispid, &EventInfo::dispid);
    bool memoryWasShort = false;
    // Cookies ascend, so the next one is found whatever has come and gone meanwhile.
    const std::uint32_t newest = lastCookie_;
    for (std::uint32_t last = 0;;) {
        const auto next = std::ranges::upper_bound(listeners_, last, {}, &Entry::cookie);
        if (next == listeners_.end() || next->cookie > newest) break;
        last = next->cookie;
        const std::shared_ptr<EventListener> listener = next->listener;
        try {
            notify(*listener, event, arguments);
        } catch (const std::bad_alloc&) {
            memoryWasShort = true;
        } catch (...) {
            // See the header: told to nobody.
        }
    }
    if (memoryWasShort) throw std::bad_alloc();
}

} // namespace tarncom32::automation
