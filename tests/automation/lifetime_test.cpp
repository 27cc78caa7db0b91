#include "automation/collection.h"
#include "automation/events.h"
#include "support/error_of.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

namespace tarncom32::automation {
namespace {

/// An object that acts while it ends, and raises events.
class Actor final : public Described<Actor> {
public:
    static constexpr StringView kClassName = u"Actor";
    static constexpr Event<StringView, Boolean&> kAsked{1};
    static constexpr Event<> kEnded{2};
    static const ClassInfo& describe() {
        static const ClassInfo info(kClassName, u"Acts.", {}, {}, {}, "11df5a7c-390b-46e1-a2e3-3d16903059b7"_guid,
                                    {event::line<kAsked>(u"Asked", {in(u"sText"), inOut(u"bAnswer")}, u"Asked."),
                                     event::line<kEnded>(u"Ended", {}, u"Ended.")});
        return info;
    }

    ~Actor() override {
        const Ref<Actor> again(this); // must not end it twice
        ++ended;
    }
    void finalRelease() override {
        events_.raise(kEnded);
        if (atEnd) atEnd(*this);
    }
    EventSource* events() override { return &events_; }
    Boolean ask(Boolean answer) {
        events_.raise(kAsked, u"really?", answer);
        return answer;
    }

    std::function<void(Actor&)> atEnd;
    static inline int ended = 0;

private:
    EventSource events_{*this};
};

/// Something whose end does something.
class Ending final : public Described<Ending> {
public:
    static constexpr StringView kClassName = u"Ending";
    static const ClassInfo& describe() {
        static const ClassInfo info(kClassName, u"Ends.", {}, {}, {});
        return info;
    }
    explicit Ending(std::function<void()> action) : action_(std::move(action)) {}
    ~Ending() override { action_(); }

private:
    std::function<void()> action_;
};

TEST(Lifetime, AnObjectActsWhileItEndsAndEndsOnce) {
    const std::size_t before = Object::liveCount();
    Actor::ended = 0;
    int told = 0;
    {
        const auto actor = make<Actor>();
        actor->events()->advise([&](const EventInfo& event, std::span<Variant>) { told += event.dispid; });
        actor->atEnd = [&](Actor& self) {
            const Ref<Actor> taken(&self);
            EXPECT_EQ(taken->ask(true), Boolean(true)) << "it is whole";
        };
    }
    EXPECT_EQ(told, 2 + 1);
    EXPECT_EQ(Actor::ended, 1);
    EXPECT_EQ(Object::liveCount(), before);
}

TEST(Lifetime, AReferenceThatIsKeptAtTheEndKeepsTheObject) {
    Actor::ended = 0;
    int calls = 0;
    Ref<Actor> kept;
    {
        const auto actor = make<Actor>();
        actor->atEnd = [&](Actor& self) {
            ++calls;
            kept = Ref<Actor>(&self);
            throw std::runtime_error("nobody hears of this");
        };
    }
    EXPECT_EQ(Actor::ended, 0);
    kept = {};
    EXPECT_EQ(Actor::ended, 1);
    EXPECT_EQ(calls, 1);
}

TEST(Lifetime, HandlesFindObjectsAsLongAsTheyLive) {
    std::int32_t old = 0;
    {
        const auto actor = make<Actor>();
        old = actor->handle();
        EXPECT_GT(old, 0);
        EXPECT_EQ(actor->handle(), old);
        EXPECT_EQ(Object::ofHandle(old), ObjectRef(actor));
        // Found while it acts for the last time, and not by what follows.
        actor->atEnd = [&](Actor& self) { EXPECT_EQ(Object::ofHandle(old), ObjectRef(&self)); };
    }
    const auto next = make<Actor>();
    for (const std::int32_t handle : {old, 0, -1, old + 1, 0x7FFFFFFF})
        EXPECT_FALSE(Object::ofHandle(handle)) << handle;
    EXPECT_NE(next->handle(), old) << "the place is given away again, under another number";
    EXPECT_EQ(Object::ofHandle(next->handle()), ObjectRef(next));
}

TEST(Lifetime, TheEndOfAnItemMayComeToItsCollection) {
    const auto list = make<Collection>();
    const auto touch = [list = list.get()] {
        list->add(u"late", Variant(u"key" + decimalText(list->count())));
        for (int i = 0; i < 100; ++i)
            list->add(i);
    };
    list->add(Variant(make<Ending>(touch)), u"first");
    list->add(u"second");
    list->remove(u"first");
    EXPECT_EQ(list->count(), 102);
    EXPECT_EQ(list->item(1), Variant(u"second"));
    EXPECT_EQ(list->item(u"key1"), Variant(u"late"));

    // The same for a variant that is replaced, and for the end of the list itself.
    Variant slot;
    slot = Variant(make<Ending>([&] { slot = Variant(Null{}); }));
    slot = Variant(1.5);
    auto last = make<Collection>();
    last->add(Variant(make<Ending>([list = last.get()] { list->add(u"late"); })));
    last = {};
}

TEST(Events, AFailingListenerKeepsTheEventFromNobody) {
    const auto actor = make<Actor>();
    EventSource& source = *actor->events();
    int heard = 0;
    std::uint32_t third = 0;
    const std::uint32_t first = source.advise([](const EventInfo&, std::span<Variant>) { throw Error(5); });
    source.advise([](const EventInfo&, std::span<Variant>) { throw 42; });
    source.advise([&](const EventInfo& event, std::span<Variant> arguments) {
        if (event.dispid != Actor::kAsked.dispid) return;
        ++heard;
        arguments[1] = Variant(std::int32_t{7}); // another type than the declared one
        source.unadvise(third);                  // goes while the event is under way
        source.advise([&](const EventInfo& late, std::span<Variant>) { heard += late.dispid == 1 ? 10 : 0; });
    });
    third = source.advise([&](const EventInfo&, std::span<Variant>) { heard += 100; });
    source.advise([&](const EventInfo& event, std::span<Variant> arguments) {
        if (event.dispid != Actor::kAsked.dispid) return;
        EXPECT_EQ(arguments[1], Variant(Boolean::fromBits(7)));
        arguments[1] = Variant(u"no flag");
    });
    EXPECT_EQ(actor->ask(true), Boolean::fromBits(7));
    EXPECT_EQ(heard, 1);
    EXPECT_TRUE(source.unadvise(first));
    EXPECT_FALSE(source.unadvise(first));
}

TEST(Events, ListenersMayEndAnything) {
    auto actor = make<Actor>();
    EventSource& source = *actor->events();
    std::uint32_t second = 0;
    const auto ending = [&](auto action) {
        return source.advise([held = make<Ending>(action)](const EventInfo&, std::span<Variant>) {});
    };
    // The end of a listener that goes comes to the list of listeners.
    const std::uint32_t first = ending([&] { EXPECT_TRUE(source.unadvise(second)); });
    second = ending([] {});
    EXPECT_TRUE(source.unadvise(first));
    EXPECT_TRUE(source.listeners().empty());
    // The last reference to the object goes while its event is under way, and the list with it.
    source.advise([&, dropped = false](const EventInfo&, std::span<Variant>) mutable {
        if (!std::exchange(dropped, true)) actor = {};
    });
    ending([&] { EXPECT_FALSE(source.unadvise(first)); });
    Actor& called = *actor;
    EXPECT_EQ(called.ask(false), Boolean(false));
    EXPECT_FALSE(actor);
}

TEST(Events, TheTableMustAgreeWithTheConstant) {
    static constexpr Event<StringView, Boolean&> kEvent{1};
    EXPECT_THROW(event::line<kEvent>(u"Asked", {in(u"sText")}, u""), std::logic_error);
    EXPECT_THROW(event::line<kEvent>(u"Asked", {in(u"sText"), in(u"bAnswer")}, u""), std::logic_error);
    const EventInfo line = event::line<kEvent>(u"Asked", {in(u"sText"), inOut(u"bAnswer")}, u"");
    EXPECT_EQ(typeText(line.parameters[0].type), u"String");
    EXPECT_EQ(typeText(line.parameters[1].type), u"Boolean");
}

} // namespace
} // namespace tarncom32::automation
