#include "com/com_fixture.h"

#include <cstring>

namespace tarncom32::com::testing {

namespace {

/// Calls through the vtable of the dual interface as a compiled client does: by place and by its own declaration.
class Vtable : public ComTest {
protected:
    template <class... A>
    HRESULT callSlot(const wchar_t* name, MemberKind kind, A... arguments) {
        const auto& members = Probe::describe().members;
        for (std::size_t i = 0; i < members.size(); ++i) {
            if (members[i].name != viewOf(name) || members[i].kind != kind) continue;
            using Entry = HRESULT(STDMETHODCALLTYPE*)(IDispatch*, A...);
            Entry entry = nullptr;
            void** vtable = *reinterpret_cast<void***>(face.get());
            std::memcpy(&entry, &vtable[7 + i], sizeof entry);
            return entry(face.get(), arguments...);
        }
        ADD_FAILURE() << "no such member";
        return E_FAIL;
    }
    template <class... A>
    HRESULT callMethod(const wchar_t* name, A... arguments) {
        return callSlot(name, MemberKind::Method, arguments...);
    }

    /// The thread's error information, taken.
    static String lastError() {
        ComPtr<IErrorInfo> info;
        OwnedText text;
        if (GetErrorInfo(0, info.put()) != S_OK) return u"none";
        info->GetDescription(text.put());
        return String(viewOfBstr(text.get()));
    }
};

TEST_F(Vtable, CarriesEveryTypeByValueAndAsResult) {
    const OwnedText text(SysAllocStringLen(L"a\0b", 3));
    OwnedText result(SysAllocString(L"poison"));
    BSTR poisoned = result.detach();
    SysFreeString(poisoned);
    EXPECT_EQ(callMethod(L"EchoText", text.get(), result.put()), S_OK);
    EXPECT_EQ(viewOfBstr(result.get()), StringView(u"a\0b", 3));
    EXPECT_EQ(callMethod(L"EchoText", BSTR(nullptr), result.put()), S_OK);
    EXPECT_EQ(viewOfBstr(result.get()), u"");

    VARIANT_BOOL flag = 77;
    EXPECT_EQ(callMethod(L"EchoFlag", VARIANT_BOOL(1), &flag), S_OK);
    EXPECT_EQ(flag, 1) << "all bits of a flag are kept";
    short integer = 0;
    EXPECT_EQ(callMethod(L"EchoInteger", short(-5), &integer), S_OK);
    EXPECT_EQ(integer, -5);
    long color = 0;
    EXPECT_EQ(callMethod(L"EchoColor", 24L, &color), S_OK);
    EXPECT_EQ(color, 24);
    double number = 0;
    EXPECT_EQ(callMethod(L"EchoDouble", 1.25, &number), S_OK);
    EXPECT_EQ(number, 1.25);
    EXPECT_EQ(callMethod(L"EchoDate", DATE(2.5), &number), S_OK);
    EXPECT_EQ(number, 2.5);
    CY amount{};
    amount.int64 = 12345678901;
    CY amountBack{};
    EXPECT_EQ(callMethod(L"EchoCurrency", amount, &amountBack), S_OK);
    EXPECT_EQ(amountBack.int64, amount.int64);
    VARIANT value{};
    value.vt = VT_R8;
    value.dblVal = 2.5;
    OwnedVariant back;
    EXPECT_EQ(callMethod(L"EchoVariant", value, static_cast<VARIANT*>(&back)), S_OK);
    EXPECT_EQ(fromVariant(back), Variant(2.5));
    ComPtr<IDispatch> object;
    EXPECT_EQ(callMethod(L"EchoProbe", face.get(), object.put()), S_OK);
    EXPECT_EQ(object.get(), face.get());
    EXPECT_EQ(callMethod(L"EchoObject", static_cast<IDispatch*>(nullptr), object.put()), S_OK);
    EXPECT_EQ(object.get(), nullptr);
}

TEST_F(Vtable, FreesAndReplacesWhatIsPassedByReference) {
    for (const long start : {4L, -4L}) {
        BSTR text = SysAllocString(L"ab");
        long number = start;
        VARIANT_BOOL flag = 1;
        OwnedVariant value;
        IDispatch* object = exportObject(make<Collection>());
        const HRESULT result = callMethod(L"DoubleAll", &text, &number, &flag, static_cast<VARIANT*>(&value), &object);
        EXPECT_EQ(result, start < 0 ? static_cast<HRESULT>(0x800A0006) : S_OK);
        EXPECT_EQ(viewOfBstr(text), u"abab");
        EXPECT_EQ(number, start * 2);
        EXPECT_EQ(flag, 2);
        EXPECT_EQ(fromVariant(value), Variant(u"was empty"));
        EXPECT_EQ(object, face.get()) << "the collection was released with this";
        EXPECT_EQ(lastError(), start < 0 ? u"Overflow" : u"none");
        SysFreeString(text);
        object->Release();
    }
}

TEST_F(Vtable, ReversesArraysInPlace) {
    SAFEARRAYBOUND bound{2, -1};
    SAFEARRAY* array = SafeArrayCreate(VT_BSTR, 1, &bound);
    LONG last = 0;
    const OwnedText text(SysAllocString(L"z"));
    SafeArrayPutElement(array, &last, text.get());
    SAFEARRAY* before = array;
    EXPECT_EQ(callMethod(L"Reverse", &array), S_OK);
    EXPECT_EQ(array, before);
    EXPECT_EQ(fromSafeArray(array, VariantType::String), Array(VariantType::String, -1, {u"z", u""}));
    SafeArrayDestroy(std::exchange(array, nullptr));

    EXPECT_EQ(callMethod(L"Reverse", &array), S_OK);
    EXPECT_EQ(fromSafeArray(array, VariantType::String).lowerBound(), 1);
    long size = 0;
    EXPECT_EQ(callMethod(L"SizeOf", &array, &size), S_OK) << "any array is one of variants to a member that reads it";
    EXPECT_EQ(size, 1);
    SafeArrayDestroy(array);

    SAFEARRAY* wrong = SafeArrayCreate(VT_I4, 1, &bound);
    EXPECT_EQ(callMethod(L"Reverse", &wrong), static_cast<HRESULT>(0x800A000D));
    EXPECT_EQ(lastError(), descriptionOf(errors::TypeMismatch));
    SafeArrayDestroy(wrong);
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
    EXPECT_EQ(callSlot(L"Owner", MemberKind::Set, static_cast<IDispatch*>(face.get())), S_OK);
    EXPECT_EQ(probe->owner(), ObjectRef(probe));
    probe->setOwner({});
    ComPtr<IUnknown> walk;
    EXPECT_EQ(callSlot(L"_NewEnum", MemberKind::Get, walk.put()), S_OK);
    EXPECT_TRUE(query<IEnumVARIANT>(walk.get(), IID_IEnumVARIANT));
}

TEST_F(Vtable, RefusesNullPointersAndTellsWhy) {
    EXPECT_EQ(callMethod(L"EchoFlag", VARIANT_BOOL(1), static_cast<VARIANT_BOOL*>(nullptr)), E_POINTER);
    EXPECT_NE(lastError(), u"none");
    long number = 0;
    VARIANT_BOOL flag = 0;
    OwnedVariant value;
    IDispatch* object = nullptr;
    EXPECT_EQ(
        callMethod(L"DoubleAll", static_cast<BSTR*>(nullptr), &number, &flag, static_cast<VARIANT*>(&value), &object),
        E_POINTER);
    EXPECT_EQ(callMethod(L"Reverse", static_cast<SAFEARRAY**>(nullptr)), E_POINTER);
    ComPtr<IDispatch> probeBack;
    const ComPtr<IDispatch> collection = [] {
        ComPtr<IDispatch> pointer;
        *pointer.put() = exportObject(make<Collection>());
        return pointer;
    }();
    EXPECT_EQ(callMethod(L"EchoProbe", collection.get(), probeBack.put()), static_cast<HRESULT>(0x800A000D))
        << "an object of another class";
    EXPECT_EQ(callMethod(L"Fail", 457L), static_cast<HRESULT>(0x800A01C9));
    EXPECT_EQ(lastError(), descriptionOf(457));
}

} // namespace

} // namespace tarncom32::com::testing
