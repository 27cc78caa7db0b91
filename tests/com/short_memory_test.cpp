#include "com/com_fixture.h"
#include "support/failing_memory.h"

#include <ocidl.h>

#include <cstring>

// The system's own requests for memory, which the library makes through the import table, count like those of `new`.

namespace tarncom32::com::testing {

namespace {

template <class Function>
Function systemFunction(const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"oleaut32.dll"), name)));
}

BSTR WINAPI countedText(const OLECHAR* text, UINT length) {
    static const auto real = systemFunction<BSTR(WINAPI*)(const OLECHAR*, UINT)>("SysAllocStringLen");
    return tests::FailingMemory::failsNow() ? nullptr : real(text, length);
}

SAFEARRAY* WINAPI countedArray(VARTYPE type, UINT dimensions, SAFEARRAYBOUND* bounds) {
    static const auto real = systemFunction<SAFEARRAY*(WINAPI*)(VARTYPE, UINT, SAFEARRAYBOUND*)>("SafeArrayCreate");
    return tests::FailingMemory::failsNow() ? nullptr : real(type, dimensions, bounds);
}

} // namespace

#ifdef _WIN64
#define IMPORTED(name, decorated) "__imp_" name
#else
#define IMPORTED(name, decorated) "__imp__" name decorated
#endif
extern "C" {
extern const decltype(&countedText) importedSysAllocStringLen asm(IMPORTED("SysAllocStringLen", "@8"));
const decltype(&countedText) importedSysAllocStringLen = &countedText;
extern const decltype(&countedArray) importedSafeArrayCreate asm(IMPORTED("SafeArrayCreate", "@12"));
const decltype(&countedArray) importedSafeArrayCreate = &countedArray;
}
#undef IMPORTED

namespace {

constexpr StringView kLong = u"a text that is too long for the room inside of a string";

/// Answers a question with True, as a listener from outside.
class Answering final : public Unknown<IDispatch> {
public:
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*, EXCEPINFO*,
                                     UINT*) override {
        for (UINT i = 0; i < parameters->cArgs; ++i)
            if (parameters->rgvarg[i].vt == (VT_BYREF | VT_BOOL)) *parameters->rgvarg[i].pboolVal = VARIANT_TRUE;
        return S_OK;
    }
};

class ShortMemory : public ComTest {};

TEST_F(ShortMemory, ALateBoundCallFailsAsAWholeOrGivesAllThatItShould) {
    const auto container = query<IConnectionPointContainer>(wrapper.get(), IID_IConnectionPointContainer);
    ComPtr<IConnectionPoint> point;
    container->FindConnectionPoint(toGuid(Probe::describe().sourceIid), point.put());
    ComPtr<IDispatch> listener;
    *listener.put() = new Answering;
    DWORD cookie = 0;
    point->Advise(listener.get(), &cookie);

    const Array texts(VariantType::String, 1, {Variant(kLong), u"b"});
    struct Row {
        const wchar_t* name;
        std::vector<Variant> arguments;
        std::vector<Variant> expected; ///< the arguments afterwards
        Variant result;
    };
    const Row rows[] = {
        {L"EchoText", {kLong}, {kLong}, kLong},
        {L"EchoText", {1234567.25}, {1234567.25}, u"1234567.25"},
        {L"EchoVariant", {texts}, {texts}, texts},
        {L"Items", {}, {}, probe->items_},
        {L"DoubleAll",
         {kLong, 4, Boolean(true), kLong, ObjectRef()},
         {String(kLong) + String(kLong), 8, Boolean::fromBits(-2), u"was " + String(kLong), probe},
         {}},
        {L"Reverse", {texts}, {Array(VariantType::String, 1, {Variant(u"b"), kLong})}, {}},
        {L"Ask", {kLong}, {kLong}, Boolean(true)},
    };
    for (const Row& row : rows) {
        const DISPID id = idOf(wrapper.get(), row.name);
        const std::size_t requests = tests::failEachRequest([&](std::size_t nth) {
            SCOPED_TRACE(toUtf8(viewOf(row.name)) + " " + std::to_string(nth));
            const std::size_t count = row.arguments.size();
            std::vector<OwnedVariant> variables(count);
            std::vector<VARIANT> passed(count);
            for (std::size_t i = 0; i < count; ++i) {
                toVariant(variables[i], Variant(row.arguments[i]));
                passed[count - 1 - i].vt = VT_BYREF | VT_VARIANT;
                passed[count - 1 - i].pvarVal = &variables[i];
            }
            DISPPARAMS parameters{passed.data(), nullptr, static_cast<UINT>(count), 0};
            OwnedVariant value;
            EXCEPINFO exception{};
            HRESULT result = S_OK;
            {
                const tests::FailingMemory memory(nth);
                result = wrapper->Invoke(id, IID_NULL, 0, DISPATCH_METHOD | DISPATCH_PROPERTYGET, &parameters, &value,
                                         &exception, nullptr);
            }
            if (result == DISP_E_EXCEPTION) result = exception.scode;
            SysFreeString(exception.bstrSource);
            SysFreeString(exception.bstrDescription);
            if (result != S_OK) {
                EXPECT_EQ(result, E_OUTOFMEMORY);
                EXPECT_EQ(value.vt, VT_EMPTY);
                return;
            }
            EXPECT_EQ(fromVariant(value), row.result);
            for (std::size_t i = 0; i < count; ++i) {
                const Variant after = fromVariant(variables[i]);
                if (const auto* array = after.as<Array>()) // a script's variable gets an array of variants
                    EXPECT_EQ(array->items(), row.expected[i].as<Array>()->items());
                else
                    EXPECT_EQ(after, row.expected[i]);
            }
        });
        EXPECT_GT(requests, 0u) << toUtf8(viewOf(row.name));
    }
    // The error of a member is told as far as there is memory.
    const DISPID id = idOf(wrapper.get(), L"Fail");
    tests::failEachRequest([&](std::size_t nth) {
        VARIANT number{};
        number.vt = VT_I4;
        number.lVal = 457;
        DISPPARAMS parameters{&number, nullptr, 1, 0};
        EXCEPINFO exception{};
        const tests::FailingMemory memory(nth);
        EXPECT_EQ(wrapper->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, &exception, nullptr),
                  DISP_E_EXCEPTION);
        EXPECT_EQ(exception.scode, static_cast<SCODE>(0x800A01C9));
        SysFreeString(exception.bstrSource);
        SysFreeString(exception.bstrDescription);
    });
    point->Unadvise(cookie);
}

TEST_F(ShortMemory, ACompiledCallDoesToo) {
    const OwnedText text(newBstr(kLong));
    const std::size_t requests = tests::failEachRequest([&](std::size_t nth) {
        SCOPED_TRACE(nth);
        OwnedText given;
        BSTR source = newBstr(u"ab");
        long number = 4;
        VARIANT_BOOL flag = VARIANT_TRUE;
        OwnedVariant value;
        IDispatch* object = nullptr;
        SAFEARRAY* array = nullptr;
        HRESULT results[3]{};
        {
            const tests::FailingMemory memory(nth);
            results[0] = callMethod(L"EchoText", text.get(), given.put());
            results[1] = callMethod(L"DoubleAll", &source, &number, &flag, static_cast<VARIANT*>(&value), &object);
            results[2] = callMethod(L"Reverse", &array);
        }
        for (const HRESULT result : results)
            EXPECT_TRUE(result == S_OK || result == E_OUTOFMEMORY) << result;
        EXPECT_EQ(viewOfBstr(given.get()), results[0] == S_OK ? kLong : StringView());
        if (results[1] == S_OK) {
            EXPECT_EQ(viewOfBstr(source), u"abab");
            EXPECT_EQ(number, 8);
            EXPECT_EQ(fromVariant(value), Variant(u"was empty"));
            EXPECT_EQ(object, wrapper.get());
        }
        EXPECT_EQ(array != nullptr, results[2] == S_OK);
        SysFreeString(source);
        if (object) object->Release();
        SafeArrayDestroy(array);
    });
    EXPECT_GT(requests, 3u);
    SetErrorInfo(0, nullptr);
}

} // namespace

} // namespace tarncom32::com::testing
