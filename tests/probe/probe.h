#pragma once

#include "automation/collection.h"
#include "automation/events.h"
#include "frame/enumerations.h"
#include "frame/records.h"

namespace tarncom32::com::testing {

using namespace tarncom32::automation;

/// A class with a member for every way in which a value can cross, and with events.
class Probe final : public Described<Probe> {
public:
    static constexpr StringView kClassName = u"Probe";
    static const ClassInfo& describe();

    String echoText(StringView text) { return String(text); }
    template <class T>
    T echo(T value) {
        return value;
    }
    Variant echoVariant(const Variant& value) { return value; }
    ObjectRef echoObject(const ObjectRef& object) { return object; }
    Ref<Probe> echoProbe(const Ref<Probe>& probe) { return probe; }

    /// Doubles each argument, then fails if the number was negative.
    void doubleAll(String& text, std::int32_t& number, Boolean& flag, Variant& value, ObjectRef& object);
    /// Turns the order of the elements round and appends the text "end" when the array has no bounds.
    void reverse(StringArray texts);
    std::int32_t sizeOf(VariantArray values) { return static_cast<std::int32_t>(values->size()); }

    /// "first,second", whatever is left out being the default.
    String join(StringView first, const Variant& second, Boolean third);

    Variant item(const Variant& index) { return items_->item(index); }
    std::unique_ptr<Enumerator> newEnum() { return items_->newEnum(); }
    ObjectRef items() { return items_; }
    String name() { return name_; }
    void setName(StringView name) {
        name_ = name;
        events_.raise(kNamed, name_);
    }
    ObjectRef owner() { return owner_; }
    void setOwner(const ObjectRef& owner) { owner_ = owner; }
    void fail(std::int32_t number) { throw Error(number); }
    /// Makes three texts of any array and says so twice, in each of the styles.
    std::int32_t refill(StringArray texts, std::int32_t& count);
    std::int32_t refillSilently(StringArray texts, std::int32_t& count) { return refill(texts, count); }
    std::int32_t refillReporting(StringArray texts, std::int32_t& count) { return refill(texts, count); }
    /// Writes nothing.
    void keepAll(String&, std::int32_t&, Boolean&, Variant&, ObjectRef&) {}
    /// Raises `Asked`; what the listeners made of the flag.
    Boolean ask(StringView text);
    /// Adds to each word of the record, to the first `first`, to the next one more, and so on.
    void fillThunk(std::int32_t first, frame::PushParamThunk& thunk);

    EventSource* events() override { return &events_; }

    static constexpr Event<StringView, Boolean&> kAsked{1};
    static constexpr Event<StringView> kNamed{2};
    static constexpr Event<> kEnded{3};

    int reports = 0; ///< failures of members that report theirs
    Ref<Collection> items_ = make<Collection>();

protected:
    void finalRelease() override { events_.raise(kEnded); }
    bool reportFailure(const MemberInfo&, const Error&) override {
        ++reports;
        return true;
    }

private:
    EventSource events_{*this};
    String name_ = u"probe";
    ObjectRef owner_;
};

} // namespace tarncom32::com::testing
