#include "com/bridge/enumerator.h"
#include "com/com_fixture.h"

namespace tarncom32::com::testing {

namespace {

/// A class whose member calls another object in a way that this refuses.
class Caller final : public Described<Caller> {
public:
    static constexpr StringView kClassName = u"Caller";
    static const ClassInfo& describe() {
        static const ClassInfo info(kClassName, u"Calls.", {}, "11df5a7c-390b-46e1-a2e3-3d16903059b6"_guid,
                                    {member::method<&Caller::call>(1, u"Call", {in(u"oList")}, u"Calls.")});
        return info;
    }
    Variant call(const ObjectRef& list) { return list->call(u"Item"); }
};

class Dispatcher : public ComTest {
protected:
    static constexpr WORD kPutEither = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;
    static VARIANT wholeNumber(LONG number) {
        VARIANT value{};
        value.vt = VT_I4;
        value.lVal = number;
        return value;
    }
};

TEST_F(Dispatcher, FindsNamesWithoutRegardToCaseAndParametersByPlace) {
    LPOLESTR names[] = {const_cast<LPOLESTR>(L"jOIN"), const_cast<LPOLESTR>(L"BTHIRD"), const_cast<LPOLESTR>(L"sFirst"),
                        const_cast<LPOLESTR>(L"nowhere")};
    DISPID ids[4]{};
    EXPECT_EQ(wrapper->GetIDsOfNames(IID_NULL, names, 3, 0, ids), S_OK);
    EXPECT_EQ((std::vector<DISPID>{ids, ids + 3}), (std::vector<DISPID>{14, 2, 0}));
    EXPECT_EQ(wrapper->GetIDsOfNames(IID_NULL, names, 4, 0, ids), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(ids[3], DISPID_UNKNOWN);
    EXPECT_EQ(ids[1], 2) << "the names that are known keep their numbers";
    EXPECT_EQ(wrapper->GetIDsOfNames(IID_NULL, names + 3, 1, 0, ids), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(wrapper->GetIDsOfNames(IID_IUnknown, names, 1, 0, ids), DISP_E_UNKNOWNINTERFACE);
}

TEST_F(Dispatcher, CarriesEveryType) {
    const struct {
        const wchar_t* name;
        Variant in;
        Variant out;
    } cases[] = {
        {L"EchoText", u"a\u00e4\u4e2d", u"a\u00e4\u4e2d"},
        {L"EchoText", std::int32_t{7}, u"7"},
        {L"EchoFlag", Boolean::fromBits(1), Boolean::fromBits(1)},
        {L"EchoFlag", std::int16_t{7}, Boolean::fromBits(7)},
        {L"EchoInteger", u"12", std::int16_t{12}},
        {L"EchoColor", std::int32_t{24}, std::int32_t{24}},
        {L"EchoDouble", 1.5, 1.5},
        {L"EchoDate", Date{2.25}, Date{2.25}},
        {L"EchoCurrency", Currency{12345}, Currency{12345}},
        {L"EchoVariant", Null{}, Null{}},
        {L"EchoVariant", Decimal{1, 2, 3, true}, Decimal{1, 2, 3, true}},
        {L"EchoVariant", ErrorValue{5}, ErrorValue{5}},
        {L"EchoVariant", OtherInteger{VariantType::LongLong, 1ull << 40},
         OtherInteger{VariantType::LongLong, 1ull << 40}},
        {L"EchoVariant", 2.5f, 2.5f},
        {L"EchoVariant", std::uint8_t{200}, std::uint8_t{200}},
        {L"EchoVariant", Array(VariantType::Long, -3, 2), Array(VariantType::Long, -3, 2)},
        {L"EchoVariant", Array(VariantType::Long), Array(VariantType::Long)},
        {L"EchoObject", probe, probe},
        {L"EchoObject", ObjectRef(), ObjectRef()},
        {L"EchoProbe", probe, probe},
    };
    for (const auto& c : cases) {
        const Outcome outcome = call(wrapper.get(), c.name, {c.in});
        EXPECT_EQ(outcome.result, S_OK) << toUtf8(viewOf(c.name));
        EXPECT_EQ(outcome.value, c.out) << toUtf8(viewOf(c.name));
    }
}

TEST_F(Dispatcher, AnswersWrongCallsAsDocumented) {
    struct Case {
        const wchar_t* name;
        std::vector<Variant> values;
        WORD flags;
        HRESULT result;
        UINT badArgument;
    };
    const Case cases[] = {
        {L"EchoInteger", {}, DISPATCH_METHOD, DISP_E_PARAMNOTOPTIONAL, 99},
        {L"EchoInteger", {kMissing}, DISPATCH_METHOD, DISP_E_PARAMNOTOPTIONAL, 0},
        {L"EchoInteger", {1, 2}, DISPATCH_METHOD, DISP_E_BADPARAMCOUNT, 99},
        {L"EchoInteger", {u"x"}, DISPATCH_METHOD, DISP_E_TYPEMISMATCH, 0},
        {L"EchoInteger", {70000}, DISPATCH_METHOD, DISP_E_OVERFLOW, 0},
        {L"DoubleAll", {u"a", u"x", true, u"", ObjectRef()}, DISPATCH_METHOD, DISP_E_TYPEMISMATCH, 3},
        {L"EchoProbe", {Variant(make<Collection>())}, DISPATCH_METHOD, DISP_E_TYPEMISMATCH, 0},
        {L"EchoInteger", {1}, DISPATCH_PROPERTYGET, DISP_E_MEMBERNOTFOUND, 99},
        {L"Name", {}, DISPATCH_METHOD, DISP_E_MEMBERNOTFOUND, 99},
        {L"Items", {ObjectRef()}, DISPATCH_PROPERTYPUT, DISP_E_MEMBERNOTFOUND, 99},
        {L"Name", {u"a", u"b"}, DISPATCH_PROPERTYPUT, DISP_E_BADPARAMCOUNT, 99},
    };
    for (const Case& c : cases) {
        Outcome outcome = call(wrapper.get(), c.name, c.values, c.flags);
        EXPECT_EQ(outcome.result, c.result) << toUtf8(viewOf(c.name));
        EXPECT_EQ(outcome.badArgument, c.badArgument) << toUtf8(viewOf(c.name));
    }
    for (const int type : {77, VT_VECTOR | VT_I4}) {
        VARIANT strange{};
        strange.vt = static_cast<VARTYPE>(type);
        EXPECT_EQ(invoke(wrapper.get(), 8, DISPATCH_METHOD, {&strange, 1}).result, DISP_E_BADVARTYPE) << type;
    }
    VARIANT nowhere{};
    nowhere.vt = VT_BYREF | VT_VARIANT;
    EXPECT_EQ(invoke(wrapper.get(), 17, kPutEither, {&nowhere, 1}, {DISPID_PROPERTYPUT}).result, DISP_E_TYPEMISMATCH);
    SAFEARRAYBOUND bounds[2] = {{2, 0}, {2, 0}};
    OwnedVariant grid;
    grid.vt = VT_ARRAY | VT_VARIANT;
    grid.parray = SafeArrayCreate(VT_VARIANT, 2, bounds);
    EXPECT_EQ(invoke(wrapper.get(), 13, DISPATCH_METHOD, std::span<VARIANT>(static_cast<VARIANT*>(&grid), 1)).result,
              DISP_E_TYPEMISMATCH);
    EXPECT_EQ(invoke(wrapper.get(), 12345, DISPATCH_METHOD, {}).result, DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(invoke(wrapper.get(), 1, 0, {}).result, E_INVALIDARG);
    EXPECT_EQ(wrapper->Invoke(1, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr), E_POINTER);
}

TEST_F(Dispatcher, TakesNamedAndOmittedArguments) {
    OwnedVariant text;
    toVariant(text, u"one");
    VARIANT values[] = {{}, text};
    values[0].vt = VT_BOOL; // bThird := False
    EXPECT_EQ(invoke(wrapper.get(), 14, DISPATCH_METHOD, values, {2}).value, Variant(u"one?"));
    EXPECT_EQ(invoke(wrapper.get(), 14, DISPATCH_METHOD, values, {2, 0}).value, Variant(u"one?"));
    EXPECT_EQ(invoke(wrapper.get(), 14, DISPATCH_METHOD, values, {0}).result, DISP_E_BADPARAMCOUNT) << "given twice";
    const Outcome unknown = invoke(wrapper.get(), 14, DISPATCH_METHOD, values, {9});
    EXPECT_EQ(unknown.result, DISP_E_PARAMNOTFOUND);
    EXPECT_EQ(unknown.badArgument, 0u);
    EXPECT_EQ(call(wrapper.get(), L"Join", {u"one"}).value, Variant(u"one!"));
    EXPECT_EQ(call(wrapper.get(), L"Join", {u"one", kMissing, kMissing}).value, Variant(u"one!"));
    EXPECT_EQ(call(wrapper.get(), L"Join", {u"one", u"two"}).value, Variant(u"one,two!"));
}

TEST_F(Dispatcher, ReachesDefaultMembersAndProperties) {
    probe->items_->add(u"x", u"key");
    probe->items_->add(u"y");
    EXPECT_EQ(call(wrapper.get(), L"Item", {1}).value, Variant(u"x"));
    VARIANT index = wholeNumber(2);
    EXPECT_EQ(invoke(wrapper.get(), DISPID_VALUE, DISPATCH_PROPERTYGET, {&index, 1}).value, Variant(u"y"));
    EXPECT_EQ(call(wrapper.get(), L"Items", {u"KEY"}).value, Variant(u"x")) << "the default member of what it gives";

    EXPECT_EQ(call(wrapper.get(), L"Name", {u"new"}, DISPATCH_PROPERTYPUT).result, S_OK);
    EXPECT_EQ(call(wrapper.get(), L"Name").value, Variant(u"new"));
    for (const WORD flags : {WORD{DISPATCH_PROPERTYPUTREF}, WORD{DISPATCH_PROPERTYPUT}, kPutEither}) {
        probe->setOwner({});
        EXPECT_EQ(call(wrapper.get(), L"Owner", {probe->items_}, flags).result, S_OK);
        EXPECT_EQ(probe->owner(), ObjectRef(probe->items_));
    }
}

TEST_F(Dispatcher, TellsFailuresWithNumberDescriptionAndSource) {
    const Outcome outcome = call(wrapper.get(), L"Fail", {457});
    EXPECT_EQ(outcome.result, DISP_E_EXCEPTION);
    EXPECT_EQ(outcome.error.number(), 457);
    EXPECT_EQ(outcome.error.description(), descriptionOf(457));
    EXPECT_EQ(outcome.source, u"TarnCom32");
    const Outcome foreign = call(wrapper.get(), L"Fail", {static_cast<std::int32_t>(0x86DB0ABC)});
    EXPECT_EQ(foreign.error.number(), static_cast<std::int32_t>(0x86DB0ABC)) << "an HRESULT passes unchanged";
    ComPtr<IDispatch> caller;
    *caller.put() = exportObject(make<Caller>());
    EXPECT_EQ(com::testing::call(caller.get(), L"Call", {probe->items_}).error.number(), errors::ArgumentNotOptional)
        << "it is the member's own call that lacks an argument";
    VARIANT number = wholeNumber(5);
    DISPPARAMS parameters{&number, nullptr, 1, 0};
    EXPECT_EQ(wrapper->Invoke(18, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr),
              static_cast<HRESULT>(0x800A0005));
}

TEST_F(Dispatcher, WalksTheItems) {
    probe->items_->add(u"x");
    probe->items_->add(u"y");
    OwnedVariant value;
    DISPPARAMS none{};
    for (const int flags : {DISPATCH_METHOD, DISPATCH_PROPERTYGET}) {
        VariantClear(&value);
        ASSERT_EQ(
            wrapper->Invoke(DISPID_NEWENUM, IID_NULL, 0, static_cast<WORD>(flags), &none, &value, nullptr, nullptr),
            S_OK);
    }
    const auto walk = query<IEnumVARIANT>(value.punkVal, IID_IEnumVARIANT);
    ASSERT_TRUE(walk);
    OwnedVariant items[3];
    ULONG fetched = 77;
    EXPECT_EQ(walk->Next(3, items, &fetched), S_FALSE);
    EXPECT_EQ(fetched, 2u);
    EXPECT_EQ(fromVariant(items[1]), Variant(u"y"));
    EXPECT_EQ(walk->Next(1, items, nullptr), S_FALSE);
    EXPECT_EQ(walk->Reset(), S_OK);
    EXPECT_EQ(walk->Skip(1), S_OK);
    ComPtr<IEnumVARIANT> copy;
    EXPECT_EQ(walk->Clone(copy.put()), S_OK);
    OwnedVariant item;
    EXPECT_EQ(copy->Next(1, &item, nullptr), S_OK);
    EXPECT_EQ(fromVariant(item), Variant(u"y"));
    EXPECT_EQ(walk->Skip(2), S_FALSE);
}

TEST_F(Dispatcher, GivesNoItemsOfAWalkThatFails) {
    struct Failing final : Enumerator {
        explicit Failing(ObjectRef item) : first(std::move(item)) {}
        bool next(Variant& item) override {
            if (!first) throw Error(errors::SubscriptOutOfRange);
            item = std::exchange(first, {});
            return true;
        }
        std::unique_ptr<Enumerator> clone() const override { return std::make_unique<Failing>(first); }
        ObjectRef first;
    };
    ComPtr<IEnumVARIANT> walk;
    *walk.put() = exportEnumerator(std::make_unique<Failing>(make<Collection>()));
    VARIANT items[2]{};
    ULONG fetched = 77;
    EXPECT_EQ(walk->Next(2, items, &fetched), static_cast<HRESULT>(0x800A0009));
    EXPECT_EQ(fetched, 0u);
    EXPECT_EQ(items[0].vt, VT_EMPTY) << "nobody would free it";
}

} // namespace

} // namespace tarncom32::com::testing
