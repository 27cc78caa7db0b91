#pragma once

#include "automation/arguments.h"
#include "automation/class_info.h"
#include "automation/member_traits.h"

#include <vector>

// A class with events has a constant for each, an `EventSource`, and a table of the events beside that of its members:
//
//     static constexpr Event<StringView, Boolean&> kAsked{1};
//     EventSource* events() override { return &events_; }
//     EventSource events_{*this};
//
//     event::line<Greeter::kAsked>(u"Asked", {in(u"sQuestion"), inOut(u"bAnswer")}, u"A question was asked.")
//
// and raises one with `events_.raise(kAsked, question, answer)`.

namespace tarncom32::automation {

/// An event by its DISPID, with the C++ types of its arguments: `StringView`, `Boolean&` and the like, as members take
/// them.
template <class... P>
struct Event {
    std::int32_t dispid = 0;
};

namespace detail {

template <class E>
struct EventTraits;
template <class... P>
struct EventTraits<Event<P...>> {
    static constexpr std::array<Type, sizeof...(P)> kTypes{kTypeOf<P>...};
    static constexpr std::array<bool, sizeof...(P)> kWritable{
        (std::is_lvalue_reference_v<P> && !std::is_const_v<std::remove_reference_t<P>>)...};
};

void completeParameters(StringView name, std::vector<ParameterInfo>& parameters, std::span<const Type> types,
                        std::span<const bool> writable, std::uint32_t readByReference);

} // namespace detail

namespace event {

/// The line of an event in its class's table. Throws `std::logic_error` where names and directions do not agree with
/// the constant's types.
template <auto E>
EventInfo line(StringView name, std::vector<ParameterInfo> parameters, StringView help) {
    using Traits = detail::EventTraits<std::remove_cv_t<decltype(E)>>;
    detail::completeParameters(name, parameters, Traits::kTypes, Traits::kWritable, 0);
    return {name, E.dispid, help, std::move(parameters)};
}

} // namespace event

/// Somebody who listens to the events of an object.
class EventListener {
public:
    virtual ~EventListener() = default;
    /// Receives an event; a change that it makes to a by-reference argument is seen by the next listener and, after
    /// the last, by the object.
    virtual void notify(const EventInfo& event, std::span<Variant> arguments) = 0;
};

/// The outgoing side of an object: who listens, and how an event reaches them.
class EventSource {
public:
    /// `owner` is the object whose part the source is.
    explicit EventSource(Object& owner) noexcept : owner_(owner) {}
    EventSource(const EventSource&) = delete;
    ~EventSource();

    /// Adds a listener, whose share is given up outside of this object's own work when it goes; the number by which
    /// `unadvise` knows it, never 0.
    std::uint32_t advise(std::shared_ptr<EventListener> listener);
    /// Adds a function that is called as `EventListener::notify` is.
    template <class Notify>
    requires std::is_invocable_v<Notify&, const EventInfo&, std::span<Variant>> std::uint32_t advise(Notify notify) {
        struct Calls final : EventListener {
            explicit Calls(Notify&& function) : notifies(std::move(function)) {}
            void notify(const EventInfo& event, std::span<Variant> arguments) override { notifies(event, arguments); }
            Notify notifies;
        };
        return advise(std::shared_ptr<EventListener>(std::make_shared<Calls>(std::move(notify))));
    }
    /// Removes a listener; false when there is none of that number.
    bool unadvise(std::uint32_t cookie);

    /// Tells each listener, in the order in which they came, and keeps the object alive meanwhile. A by-reference
    /// argument has the declared type for every listener, and afterwards the value that the last left; one that left
    /// something else is not heeded. A listener that fails, whatever it throws, does not keep the event from the
    /// others, nor from the object: an event has nobody to whom a failure could be told. Listeners that come meanwhile
    /// are heard from the next event on, those that went are not called any more. May be raised at any time, while the
    /// object ends too. Throws `std::bad_alloc` when there is no memory for the
    /// arguments, or, once all have been called, when memory was short for one of them.
    template <class... P>
    void raise(Event<P...> event, std::type_identity_t<P>... arguments) {
        if (listeners_.empty()) return;
        std::array<Variant, sizeof...(P)> values{Variant(arguments)...};
        raise(event.dispid, values);
        [[maybe_unused]] std::size_t i = 0;
        (giveBack<P>(values[i++], arguments), ...);
    }

    struct Entry {
        std::uint32_t cookie;
        std::shared_ptr<EventListener> listener;
    };
    /// By cookie, which is the order in which they came.
    const std::vector<Entry>& listeners() const { return listeners_; }

private:
    void raise(std::int32_t dispid, std::span<Variant> arguments);

    template <class P>
    static void giveBack([[maybe_unused]] Variant& value, [[maybe_unused]] std::type_identity_t<P>& argument) {
        using Declared = std::remove_reference_t<P>;
        if constexpr (std::is_lvalue_reference_v<P> && !std::is_const_v<Declared>)
            argument = detail::fromVariant<Declared>(value);
    }

    Object& owner_;
    std::vector<Entry> listeners_;
    std::uint32_t lastCookie_ = 0;
};

} // namespace tarncom32::automation
