#include "com/com_fixture.h"

namespace tarncom32::com::testing {

namespace {

class Vtable : public ComTest {
protected:
    /// What a method of one argument makes of it; the result's variable holds what must not be read.
    template <class T>
    T echo(const wchar_t* name, T value) {
        T result;
        std::memset(&result, 0x5A, sizeof result);
        EXPECT_EQ(callMethod(name, value, &result), S_OK) << toUtf8(viewOf(name));
        return result;
    }
};

TEST_F(Vtable, CarriesEveryTypeByValueAndAsResult) {
    const OwnedText text(SysAllocStringLen(L"a\0b", 3));
    EXPECT_EQ(viewOfBstr(OwnedText(echo(L"EchoText", text.get())).get()), StringView(u"a\0b", 3));
    EXPECT_EQ(viewOfBstr(OwnedText(echo(L"EchoText", BSTR(nullptr))).get()), u"");
    EXPECT_EQ(echo(L"EchoFlag", VARIANT_BOOL(1)), 1) << "all bits of a flag are kept";
    EXPECT_EQ(echo(L"EchoInteger", short(-5)), -5);
    EXPECT_EQ(echo(L"EchoColor", 24L), 24);
    EXPECT_EQ(echo(L"EchoDouble", 1.25), 1.25);
    EXPECT_EQ(echo(L"EchoDate", DATE(2.5)), 2.5);
    EXPECT_EQ(echo(L"EchoCurrency", CY{.int64 = 12345678901}).int64, 12345678901);
    VARIANT value{};
    value.vt = VT_R8;
    value.dblVal = 2.5;
    EXPECT_EQ(fromVariant(echo(L"EchoVariant", value)), Variant(2.5));
    EXPECT_EQ(echo(L"EchoProbe", wrapper.get()), wrapper.get());
    wrapper->Release();
    EXPECT_EQ(echo(L"EchoObject", static_cast<IDispatch*>(nullptr)), nullptr);
}

TEST_F(Vtable, AndLateBindingWriteEveryKindOfReferenceBack) {
    // Late-bound as typed variables and as the variants in which scripts pass theirs; also when the member fails in the
    // end.
    enum Way { Late, InVariants, Early };
    for (const Way way : {Late, InVariants, Early}) {
        for (const long start : {4L, -4L}) {
            BSTR text = SysAllocString(L"ab");
            long number = start;
            VARIANT_BOOL flag = 1;
            IDispatch* object = exportObject(make<Collection>());
            OwnedVariant inner[5];
            VARIANT values[5]{};
            const auto refer = [&](int place, VARTYPE type, void* variable, std::size_t size) {
                if (way == InVariants && type != VT_VARIANT) {
                    inner[place].vt = type;
                    memcpy(&inner[place].llVal, variable, size);
                    type = VT_VARIANT;
                    variable = &inner[place];
                }
                values[place].vt = static_cast<VARTYPE>(VT_BYREF | type);
                values[place].byref = variable;
            };
            refer(4, VT_BSTR, &text, sizeof text);
            refer(3, VT_I4, &number, sizeof number);
            refer(2, VT_BOOL, &flag, sizeof flag);
            refer(1, VT_VARIANT, &inner[1], 0);
            refer(0, VT_DISPATCH, &object, sizeof object);
            if (way == Early) {
                auto* variant = static_cast<VARIANT*>(&inner[1]);
                EXPECT_EQ(callMethod(L"DoubleAll", &text, &number, &flag, variant, &object),
                          start < 0 ? static_cast<HRESULT>(0x800A0006) : S_OK);
                EXPECT_EQ(lastError(), start < 0 ? u"Overflow" : u"none");
            } else {
                EXPECT_EQ(invoke(wrapper.get(), 11, DISPATCH_METHOD, values).result,
                          start < 0 ? DISP_E_EXCEPTION : S_OK);
            }
            EXPECT_EQ(fromVariant(values[4]), Variant(u"abab"));
            EXPECT_EQ(fromVariant(values[3]), Variant(static_cast<std::int32_t>(start * 2)));
            EXPECT_EQ(fromVariant(values[2]), Variant(Boolean::fromBits(2)));
            EXPECT_EQ(fromVariant(values[1]), Variant(u"was empty"));
            EXPECT_EQ(fromVariant(values[0]), Variant(probe)) << "the collection was released with this";
            if (way != InVariants) {
                SysFreeString(text);
                object->Release();
            }
        }
    }
}

TEST_F(Vtable, AndLateBindingFillArraysWhereTheyStand) {
    SAFEARRAY* array = nullptr;
    VARIANT value{};
    value.vt = VT_BYREF | VT_ARRAY | VT_BSTR;
    value.pparray = &array;
    const auto reverse = [&](bool early) {
        return early ? callMethod(L"Reverse", &array) : invoke(wrapper.get(), 12, DISPATCH_METHOD, {&value, 1}).result;
    };
    for (const bool early : {false, true}) {
        OwnedVariant texts;
        toVariant(texts, Array(VariantType::String, 5, {u"a", u"b", u"c"}));
        array = texts.parray;
        EXPECT_EQ(reverse(early), S_OK);
        EXPECT_EQ(array, texts.parray);
        EXPECT_EQ(fromSafeArray(array, VariantType::String), Array(VariantType::String, 5, {u"c", u"b", u"a"}));

        array = nullptr;
        EXPECT_EQ(reverse(early), S_OK);
        EXPECT_EQ(fromSafeArray(array, VariantType::String), Array(VariantType::String, 1, {u"end"}))
            << "had no bounds";
        long size = 0;
        EXPECT_EQ(callMethod(L"SizeOf", &array, &size), S_OK) << "any array is one of variants to a member that reads";
        EXPECT_EQ(size, 1);
        SafeArrayDestroy(array);
    }
    // A script's variable gets what scripts can index.
    OwnedVariant variable;
    value.vt = VT_BYREF | VT_VARIANT;
    value.pvarVal = &variable;
    EXPECT_EQ(reverse(false), S_OK);
    EXPECT_EQ(variable.vt, VT_ARRAY | VT_VARIANT);

    OwnedVariant numbers;
    toVariant(numbers, Array(VariantType::Long, -1, 2));
    EXPECT_EQ(callMethod(L"Reverse", &numbers.parray), static_cast<HRESULT>(0x800A000D));
    EXPECT_EQ(lastError(), descriptionOf(errors::TypeMismatch));
}

TEST(Arrays, OfAVariableKeepTheirTypeAndFixedSize) {
    SAFEARRAY* array = SafeArrayCreateVector(VT_I4, 3, 2);
    VARIANT reference{};
    reference.vt = VT_BYREF | VT_ARRAY | VT_I4;
    reference.pparray = &array;
    EXPECT_EQ(assign(reference, Array(VariantType::String, 5, std::vector<Variant>{u"7"})), 0);
    EXPECT_EQ(fromVariant(reference), Variant(Array(VariantType::Long, 5, std::vector<Variant>{7})));
    EXPECT_EQ(assign(reference, Array(VariantType::String, 5, std::vector<Variant>{u"x"})), errors::TypeMismatch);
    array->fFeatures |= FADF_FIXEDSIZE;
    const SAFEARRAY* before = array;
    EXPECT_EQ(assign(reference, Array(VariantType::Long, 5, 2)), errors::ArrayFixedOrLocked);
    EXPECT_EQ(array, before);
    SafeArrayDestroy(array);
}

TEST_F(Vtable, AppliesDefaultsAndServesProperties) {
    VARIANT missing{};
    missing.vt = VT_ERROR;
    missing.scode = DISP_E_PARAMNOTFOUND;
    const OwnedText first(SysAllocString(L"one"));
    OwnedText result;
    EXPECT_EQ(callMethod(L"Join", first.get(), missing, VARIANT_TRUE, result.put()), S_OK);
    EXPECT_EQ(viewOfBstr(result.get()), u"one!");
    EXPECT_EQ(callSlot(L"Name", MemberKind::Let, first.get()), S_OK);
    EXPECT_EQ(callSlot(L"Name", MemberKind::Get, result.put()), S_OK);
    EXPECT_EQ(viewOfBstr(result.get()), u"one");
    EXPECT_EQ(callSlot(L"Owner", MemberKind::Set, wrapper.get()), S_OK);
    EXPECT_EQ(probe->owner(), ObjectRef(probe));
    probe->setOwner({});
    ComPtr<IUnknown> items;
    EXPECT_EQ(callSlot(L"_NewEnum", MemberKind::Get, items.put()), S_OK);
    EXPECT_TRUE(query<IEnumVARIANT>(items.get(), IID_IEnumVARIANT));
}

TEST_F(Vtable, AndLateBindingKeepAnObjectThatItsCallerDropsDuringTheCall) {
    const std::size_t before = Object::liveCount();
    const OwnedText text(SysAllocString(L"really"));
    for (const bool early : {true, false}) {
        IDispatch* called = wrapper.get();
        probe->events()->advise([&](const EventInfo& event, std::span<Variant> arguments) {
            if (event.dispid != Probe::kAsked.dispid) return;
            wrapper = {};
            probe = {};
            EXPECT_EQ(Object::liveCount(), before);
            arguments[1] = Boolean(true);
        });
        VARIANT_BOOL answer = VARIANT_FALSE;
        EXPECT_EQ(early ? callMethod(L"Ask", text.get(), &answer) : call(called, L"Ask", {u"really"}).result, S_OK);
        EXPECT_EQ(Object::liveCount(), before - 2) << "it and its collection went with the call";
        probe = make<Probe>();
        *wrapper.put() = exportObject(probe);
    }
}

TEST_F(Vtable, RefusesNullPointersAndTellsWhy) {
    EXPECT_EQ(callMethod(L"EchoFlag", VARIANT_BOOL(1), static_cast<VARIANT_BOOL*>(nullptr)), E_POINTER);
    EXPECT_NE(lastError(), u"none");
    long number = 0;
    VARIANT_BOOL flag = 0;
    VARIANT value{};
    IDispatch* object = nullptr;
    EXPECT_EQ(callMethod(L"DoubleAll", static_cast<BSTR*>(nullptr), &number, &flag, &value, &object), E_POINTER);
    EXPECT_EQ(callMethod(L"Reverse", static_cast<SAFEARRAY**>(nullptr)), E_POINTER);
    ComPtr<IDispatch> collection;
    *collection.put() = exportObject(make<Collection>());
    EXPECT_EQ(callMethod(L"EchoProbe", collection.get(), &object), static_cast<HRESULT>(0x800A000D))
        << "an object of another class";
    EXPECT_EQ(callMethod(L"Fail", 457L), static_cast<HRESULT>(0x800A01C9));
    EXPECT_EQ(lastError(), descriptionOf(457));
}

} // namespace

} // namespace tarncom32::com::testing
