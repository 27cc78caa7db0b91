#include "automation/collection.h"
#include "automation/events.h"
#include "support/failing_memory.h"

#include <gtest/gtest.h>

namespace tarncom32::automation {
namespace {

constexpr StringView kLong = u"a text that is too long for the room inside of a string";

/// A class with a member of every kind that takes memory.
class Hungry final : public Described<Hungry> {
public:
    static constexpr StringView kClassName = u"Hungry";
    static constexpr Event<StringView, Boolean&> kAsked{1};
    static const ClassInfo& describe();

    String twice(StringView sText) { return String(sText) + String(sText); }
    void extend(String& sText, Variant& vValue, ObjectRef& oObject) {
        sText += kLong;
        vValue = Variant(kLong);
        oObject = make<Collection>();
    }
    void fill(StringArray asTexts) { *asTexts = Array(VariantType::String, 1, 3); }
    ObjectRef create() { return make<Collection>(); }
    Boolean ask() {
        Boolean answer = false;
        events_.raise(kAsked, kLong, answer);
        return answer;
    }
    void fail() { throw Error(1000, kLong); }
    EventSource* events() override { return &events_; }

private:
    EventSource events_{*this};
};

const ClassInfo& Hungry::describe() {
    using H = Hungry;
    static const ClassInfo info(
        kClassName, u"", {}, {},
        {
            member::method<&H::twice>(1, u"Twice", {in(u"sText")}, u""),
            member::method<&H::extend>(2, u"Extend", {inOut(u"sText"), inOut(u"vValue"), inOut(u"oObject")}, u""),
            member::method<&H::fill>(3, u"Fill", {out(u"asTexts")}, u""),
            member::method<&H::create>(4, u"Create", {}, u""),
            member::method<&H::ask>(5, u"Ask", {}, u""),
            member::method<&H::fail>(6, u"Fail", {}, u""),
        },
        "11df5a7c-390b-46e1-a2e3-3d16903059b8"_guid,
        {event::line<H::kAsked>(u"Asked", {in(u"sText"), inOut(u"bAnswer")}, u"")});
    return info;
}

TEST(ShortMemory, ACallFailsAsAWholeOrGivesAllThatItShould) {
    const auto hungry = make<Hungry>();
    hungry->events()->advise([](const EventInfo&, std::span<Variant> arguments) { arguments[1] = true; });
    const auto list = make<Collection>();
    list->add(u"first", u"key");
    const std::size_t before = Object::liveCount();
    struct Row {
        MemberName name;
        std::vector<Variant> arguments;
        Variant result;
    };
    const Row rows[] = {
        {u"Twice", {u"a number of characters"}, u"a number of charactersa number of characters"},
        {u"Twice", {1234567.25}, u"1234567.251234567.25"},
        {u"Extend", {u"", Variant(), ObjectRef()}, Variant()},
        {u"Fill", {Variant()}, Variant()},
        {u"Ask", {}, Boolean(true)},
        {u"Fail", {}, Variant()},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(toUtf8(row.name.text()));
        const std::size_t requests = tests::failEachRequest([&](std::size_t nth) {
            std::vector<Variant> arguments = row.arguments;
            std::int32_t failure = 0;
            Variant result;
            try {
                const tests::FailingMemory memory(nth);
                result = hungry->invoke(row.name, Access::Method, arguments);
            } catch (...) {
                failure = errorInFlight().number();
            }
            if (failure == 0) {
                EXPECT_EQ(result, row.result) << nth;
                if (arguments.size() == 3) {
                    EXPECT_EQ(arguments[1], Variant(kLong)) << nth;
                }
            } else {
                EXPECT_TRUE(failure == errors::OutOfMemory || failure == 1000) << failure << " at " << nth;
            }
        });
        EXPECT_GT(requests, 1u);
        EXPECT_EQ(Object::liveCount(), before);
    }
    // A list stays whole, its keys too.
    tests::failEachRequest([&](std::size_t nth) {
        const std::int32_t count = list->count();
        try {
            const tests::FailingMemory memory(nth);
            list->add(Variant(kLong), Variant(decimalText(count) + String(kLong)), 1);
        } catch (const std::bad_alloc&) {
            EXPECT_EQ(list->count(), count);
        }
    });
    EXPECT_EQ(list->item(list->count()), Variant(u"first"));
    EXPECT_EQ(list->item(u"key"), Variant(u"first"));
}

TEST(ShortMemory, ErrorsNeedNone) {
    const tests::FailingMemory none(1);
    const Error error(errors::TypeMismatch);
    const Error copy = error;
    EXPECT_EQ(copy.description(), u"Type mismatch");
    EXPECT_STREQ(copy.what(), "Type mismatch");
    try {
        throw std::bad_alloc();
    } catch (...) {
        EXPECT_EQ(static_cast<std::uint32_t>(errorInFlight().hresult()), 0x8007000Eu);
    }
    EXPECT_FALSE(tests::FailingMemory::hasFailed());
}

} // namespace
} // namespace tarncom32::automation
