#include "automation/events.h"

#include "automation/error.h"

#include <algorithm>

namespace tarncom32::automation {

std::uint32_t EventSource::advise(Sink sink) {
    listeners_.push_back({++lastCookie_, std::move(sink)});
    return lastCookie_;
}

bool EventSource::unadvise(std::uint32_t cookie) {
    return std::erase_if(listeners_, [cookie](const Listener& listener) { return listener.cookie == cookie; }) > 0;
}

void EventSource::raise(const EventInfo& event, std::span<Variant> arguments) const {
    const std::vector<Listener> present = listeners_;
    for (const Listener& listener : present) {
        const bool stillThere =
            std::ranges::any_of(listeners_, [&](const Listener& current) { return current.cookie == listener.cookie; });
        if (!stillThere) continue;
        try {
            listener.sink(event, arguments);
        } catch (const Error&) {
            // See the header: told to nobody.
        }
    }
}

} // namespace tarncom32::automation
