#include "com/com_fixture.h"

#include <ocidl.h>

#include <functional>

namespace tarncom32::com::testing {

namespace {

/// A listener that does something.
class Listening final : public Unknown<IDispatch> {
public:
    explicit Listening(std::function<void(DISPID)> action) : action_(std::move(action)) {}
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        action_(id);
        return S_OK;
    }

private:
    std::function<void(DISPID)> action_;
};

class Hostile : public ComTest {
protected:
    void listen(std::function<void(DISPID)> action) {
        const auto container = query<IConnectionPointContainer>(wrapper.get(), IID_IConnectionPointContainer);
        ComPtr<IConnectionPoint> point;
        ASSERT_EQ(container->FindConnectionPoint(toGuid(Probe::describe().sourceIid), point.put()), S_OK);
        ComPtr<IDispatch> listener;
        *listener.put() = new Listening(std::move(action));
        DWORD cookie = 0;
        ASSERT_EQ(point->Advise(listener.get(), &cookie), S_OK);
    }
    /// A variable as scripts pass theirs.
    static VARIANT referTo(VARIANT& variable) {
        VARIANT reference{};
        reference.vt = VT_BYREF | VT_VARIANT;
        reference.pvarVal = &variable;
        return reference;
    }
};

TEST_F(Hostile, AnObjectThatEndsMayBeCalledAndHeldByItsListeners) {
    int calls = 0;
    ComPtr<IDispatch> kept;
    IDispatch* const bare = wrapper.get();
    listen([&](DISPID id) {
        if (id != Probe::kEnded.dispid) return;
        ++calls;
        bare->AddRef();
        bare->Release(); // goes down to the last reference once more
        EXPECT_EQ(call(bare, L"EchoText", {u"whole"}).value, Variant(u"whole"));
        kept = ComPtr<IDispatch>(bare);
    });
    probe = {};
    wrapper = {};
    EXPECT_EQ(calls, 1);
    ASSERT_TRUE(kept);
    EXPECT_EQ(call(kept.get(), L"Name").value, Variant(u"probe")) << "who kept it has it whole";
    kept = {};
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(outsideCount, 0u);
}

TEST_F(Hostile, ReferencesAndArraysThatLeadBackToThemselvesAreRefused) {
    const auto refusal = [&](VARIANT& argument) {
        const Outcome outcome = invoke(wrapper.get(), idOf(wrapper.get(), L"EchoVariant"), DISPATCH_METHOD,
                                       std::span<VARIANT>(&argument, 1));
        return outcome.result == DISP_E_EXCEPTION ? toUtf8(outcome.error.description())
                                                  : std::to_string(outcome.result);
    };
    VARIANT itself{};
    itself.vt = VT_BYREF | VT_VARIANT;
    itself.pvarVal = &itself;
    EXPECT_EQ(refusal(itself), "A reference to a reference is not supported");

    const char* const kNested = "Arrays that are nested in themselves, or more than 64 deep, are not supported";
    SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 0, 2);
    auto* elements = static_cast<VARIANT*>(array->pvData);
    VARIANT holder{};
    holder.vt = VT_ARRAY | VT_VARIANT;
    holder.parray = array;
    for (VARIANT* element = elements; element != elements + 2; ++element) {
        element->vt = VT_BYREF | VT_VARIANT;
        element->pvarVal = &holder;
    }
    EXPECT_EQ(refusal(holder), kNested);
    elements[0] = elements[1] = VARIANT{};
    elements[0].vt = VT_BYREF | VT_ARRAY | VT_VARIANT;
    elements[0].pparray = &array;
    EXPECT_EQ(refusal(holder), kNested);
    elements[0] = VARIANT{};
    // An element that refers to a variable is what a host's list of any number of arguments has.
    VARIANT number{};
    number.vt = VT_I4;
    number.lVal = 7;
    elements[0] = referTo(number);
    EXPECT_EQ(refusal(holder), std::to_string(S_OK));
    SafeArrayDestroy(array);

    for (const int depth : {64, 65, 20'000}) {
        VARIANT nested{};
        for (int i = 0; i < depth; ++i) {
            SAFEARRAY* outer = SafeArrayCreateVector(VT_VARIANT, 0, 1);
            *static_cast<VARIANT*>(outer->pvData) = nested;
            nested.vt = VT_ARRAY | VT_VARIANT;
            nested.parray = outer;
        }
        EXPECT_EQ(refusal(nested), depth > 64 ? kNested : std::to_string(S_OK)) << depth;
        while (nested.vt != VT_EMPTY) { // one level after the other: the system's own way has the same problem
            const VARIANT inner = std::exchange(*static_cast<VARIANT*>(nested.parray->pvData), VARIANT{});
            SafeArrayDestroy(nested.parray);
            nested = inner;
        }
    }
}

TEST_F(Hostile, WhatAVariableRefusesIsSettledInTheMembersStyle) {
    // An array of a size that cannot change, and a variable whose type cannot take the result.
    struct Row {
        const wchar_t* member;
        HRESULT result;
        int reports;
    };
    for (const Row& row : {Row{L"Refill", static_cast<HRESULT>(0x800A000A), 0}, Row{L"RefillSilently", S_OK, 0},
                           Row{L"RefillReporting", S_OK, 1}}) {
        SCOPED_TRACE(toUtf8(viewOf(row.member)));
        probe->reports = 0;
        SAFEARRAY* array = SafeArrayCreateVector(VT_BSTR, 0, 5);
        array->fFeatures |= FADF_FIXEDSIZE;
        VARIANT reference{};
        reference.vt = VT_BYREF | VT_ARRAY | VT_BSTR;
        reference.pparray = &array;
        long count = -1;
        VARIANT counted{};
        counted.vt = VT_BYREF | VT_I4;
        counted.plVal = &count;
        VARIANT arguments[] = {counted, reference};
        const Outcome late = invoke(wrapper.get(), idOf(wrapper.get(), row.member), DISPATCH_METHOD, arguments);
        EXPECT_EQ(late.result == DISP_E_EXCEPTION ? late.error.hresult() : late.result, row.result);
        EXPECT_EQ(late.value, row.result == S_OK ? Variant(3) : Variant());
        EXPECT_EQ(count, 3) << "the others are written";
        count = -1;
        long result = -1;
        EXPECT_EQ(callMethod(row.member, &array, &count, &result), row.result);
        EXPECT_EQ(result, row.result == S_OK ? 3 : 0);
        EXPECT_EQ(count, 3);
        EXPECT_EQ(probe->reports, 2 * row.reports);
        EXPECT_EQ(array->rgsabound[0].cElements, 5u);
        array->fFeatures &= static_cast<USHORT>(~FADF_FIXEDSIZE);
        SafeArrayDestroy(array);
    }
}

TEST_F(Hostile, VariablesThatAMemberDoesNotWriteStayAsTheyAre) {
    OwnedVariant text, number, flag, value, object;
    toVariant(text, std::int16_t{0});
    toVariant(number, u"0");
    toVariant(flag, 0.0);
    toVariant(value, std::int16_t{1});
    VARIANT arguments[] = {referTo(object), referTo(value), referTo(flag), referTo(number), referTo(text)};
    const DISPID id = idOf(wrapper.get(), L"KeepAll");
    EXPECT_EQ(invoke(wrapper.get(), id, DISPATCH_METHOD, arguments).result, S_OK);
    EXPECT_EQ(fromVariant(text), Variant(std::int16_t{0}));
    EXPECT_EQ(fromVariant(number), Variant(u"0"));
    EXPECT_EQ(fromVariant(flag), Variant(0.0));
    EXPECT_EQ(fromVariant(value), Variant(std::int16_t{1}));
    EXPECT_EQ(fromVariant(object), Variant());
}

} // namespace

} // namespace tarncom32::com::testing
