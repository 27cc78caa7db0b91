#include "probe/probe.h"

#include <algorithm>

namespace tarncom32::com::testing {

namespace member = automation::member;

const ClassInfo& Probe::describe() {
    using P = Probe;
    static const ClassInfo info(
        kClassName, u"Takes and gives values.", "f1c27983-ed9d-40ee-80a4-b662d4a706b9"_guid,
        "11df5a7c-390b-46e1-a2e3-3d16903059b5"_guid,
        {
            member::get<&P::item>(kDispidValue, u"Item", {in(u"vIndex")}, u"An item."),
            member::newEnum<&P::newEnum>(),
            member::method<&P::echoText>(1, u"EchoText", {in(u"sText")}, u"Text."),
            member::method<&P::echo<Boolean>>(2, u"EchoFlag", {in(u"bFlag")}, u"Flag."),
            member::method<&P::echo<std::int16_t>>(3, u"EchoInteger", {in(u"iNumber")}, u"Number."),
            member::method<&P::echo<frame::eCOLORS>>(4, u"EchoColor", {in(u"eColor")}, u"Colour."),
            member::method<&P::echo<double>>(5, u"EchoDouble", {in(u"dNumber")}, u"Number."),
            member::method<&P::echo<Date>>(6, u"EchoDate", {in(u"dtDate")}, u"Date."),
            member::method<&P::echo<Currency>>(7, u"EchoCurrency", {in(u"cAmount")}, u"Amount."),
            member::method<&P::echoVariant>(8, u"EchoVariant", {in(u"vValue")}, u"Value."),
            member::method<&P::echoObject>(9, u"EchoObject", {in(u"oObject")}, u"Object."),
            member::method<&P::echoProbe>(10, u"EchoProbe", {in(u"oProbe")}, u"Probe."),
            member::method<&P::doubleAll>(
                11, u"DoubleAll",
                {inOut(u"sText"), inOut(u"lNumber"), inOut(u"bFlag"), inOut(u"vValue"), inOut(u"oObject")}, u"Twice."),
            member::method<&P::reverse>(12, u"Reverse", {inOut(u"asTexts")}, u"Turned round."),
            member::method<&P::sizeOf>(13, u"SizeOf", {in(u"avValues")}, u"Size."),
            member::method<&P::join>(14, u"Join",
                                     {in(u"sFirst"), optional(in(u"vSecond")), optional(in(u"bThird"), Boolean(true))},
                                     u"Joined."),
            member::get<&P::items>(15, u"Items", {}, u"The items."),
            member::get<&P::name>(16, u"Name", {}, u"The name."),
            member::let<&P::setName>(16, u"Name", {in(u"sName")}, u"The name."),
            member::get<&P::owner>(17, u"Owner", {}, u"The owner."),
            member::set<&P::setOwner>(17, u"Owner", {in(u"oOwner")}, u"The owner."),
            member::method<&P::fail>(18, u"Fail", {in(u"lNumber")}, u"Raises."),
            member::method<&P::ask>(19, u"Ask", {in(u"sText")}, u"Asks the listeners."),
            member::method<&P::refill>(20, u"Refill", {out(u"asTexts"), inOut(u"lCount")}, u"Three texts."),
            member::silent(member::method<&P::refillSilently>(21, u"RefillSilently",
                                                              {out(u"asTexts"), inOut(u"lCount")}, u"Three texts.")),
            member::reporting(member::method<&P::refillReporting>(
                22, u"RefillReporting", {out(u"asTexts"), inOut(u"lCount")}, u"Three texts.")),
            member::method<&P::keepAll>(
                23, u"KeepAll",
                {inOut(u"sText"), inOut(u"lNumber"), inOut(u"bFlag"), inOut(u"vValue"), inOut(u"oObject")},
                u"Nothing."),
            member::method<&P::fillThunk>(24, u"FillThunk", {in(u"lFirst"), inOut(u"tThunk")}, u"Fills a record."),
        },
        "f1c27983-ed9d-40ee-80a4-b662d4a706ba"_guid,
        {event::line<P::kAsked>(u"Asked", {in(u"sText"), inOut(u"bAnswer")}, u"Asked."),
         event::line<P::kNamed>(u"Named", {in(u"sName")}, u"It has a name."),
         event::line<P::kEnded>(u"Ended", {}, u"It ends.")});
    return info;
}

void Probe::doubleAll(String& text, std::int32_t& number, Boolean& flag, Variant& value, ObjectRef& object) {
    text += text;
    flag = Boolean::fromBits(static_cast<std::int16_t>(flag.value * 2));
    value = Variant(String(u"was ") + (value.isEmpty() ? String(u"empty") : *value.as<String>()));
    object = ObjectRef(this);
    number *= 2;
    if (number < 0) throw Error(errors::Overflow);
}

void Probe::reverse(StringArray texts) {
    if (!texts->hasBounds()) *texts = Array(VariantType::String, 1, std::vector<Variant>{Variant(u"end")});
    std::ranges::reverse(texts->items());
}

std::int32_t Probe::refill(StringArray texts, std::int32_t& count) {
    *texts = Array(VariantType::String, 0, 3);
    count = 3;
    return count;
}

String Probe::join(StringView first, const Variant& second, Boolean third) {
    String text(first);
    if (const auto* more = second.as<String>()) text += u"," + *more;
    return text + (third.isTrue() ? u"!" : u"?");
}

Boolean Probe::ask(StringView text) {
    Boolean answer = false;
    events_.raise(kAsked, text, answer);
    return answer;
}

void Probe::fillThunk(std::int32_t first, frame::PushParamThunk& thunk) {
    auto number = static_cast<std::uint32_t>(first);
    thunk.pfn += number;
    for (std::uint32_t& word : thunk.code.thunk)
        word += ++number;
}

} // namespace tarncom32::com::testing
