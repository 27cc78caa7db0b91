#pragma once

#include "automation/class_info.h"

#include <functional>

namespace tarncom32::automation {

/// The outgoing side of an object: who listens, and how an event reaches them.
class EventSource {
public:
    /// Receives an event; a change that it makes to a by-reference argument is seen by the next listener and, after
    /// the last, by the object.
    using Sink = std::function<void(const EventInfo& event, std::span<Variant> arguments)>;

    /// Adds a listener and returns the number by which `unadvise` knows it; never 0.
    std::uint32_t advise(Sink sink);
    /// Removes a listener; false when there is none of that number.
    bool unadvise(std::uint32_t cookie);

    /// Calls each listener in the order in which they came. A listener that fails does not keep the event from the
    /// others, nor from the object: an event has nobody to whom a failure could be told. Listeners that come or go
    /// meanwhile are heard from the next event on, those that went are not called any more.
    void raise(const EventInfo& event, std::span<Variant> arguments) const;

    struct Listener {
        std::uint32_t cookie;
        Sink sink;
    };
    const std::vector<Listener>& listeners() const { return listeners_; }

private:
    std::vector<Listener> listeners_;
    std::uint32_t lastCookie_ = 0;
};

} // namespace tarncom32::automation
