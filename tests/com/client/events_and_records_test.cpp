#include "com/client/library_under_test.h"

#include <gtest/gtest.h>
#include <ocidl.h>

#include <array>
#include <cstdint>
#include <cstring>

namespace client {

namespace {

/// The record PushParamThunk as a client declares it.
struct Thunk {
    std::uint32_t pfn;
    std::uint32_t code[6];
};

/// What the type library says of a class with events.
struct Described {
    ComPtr<ITypeLib> library;
    ComPtr<ITypeInfo> interfaceType; ///< as callers through IDispatch see it
    ComPtr<ITypeInfo> events;

    explicit Described(IDispatch& object) {
        UINT index = 0;
        object.GetTypeInfo(0, LOCALE_NEUTRAL, interfaceType.put());
        interfaceType->GetContainingTypeLib(library.put(), &index);
        events = named(L"__Probe");
    }
    ComPtr<ITypeInfo> named(const wchar_t* name) const {
        ComPtr<ITypeInfo> type;
        MEMBERID member = 0;
        USHORT count = 1;
        std::wstring wanted(name);
        library->FindName(wanted.data(), 0, type.put(), &member, &count);
        return type;
    }
    static GUID guidOf(ITypeInfo& type) {
        TYPEATTR* attributes = nullptr;
        if (FAILED(type.GetTypeAttr(&attributes))) return GUID_NULL;
        const GUID guid = attributes->guid;
        type.ReleaseTypeAttr(attributes);
        return guid;
    }
};

/// Hears the events of an object as it finds them in the type library: "Name" or "Name text".
class Sink final : public IDispatch {
public:
    explicit Sink(ComPtr<ITypeInfo> events) : events_(std::move(events)), iid_(Described::guidOf(*events_.get())) {}

    std::vector<std::wstring> heard;

    REFIID iid() const { return iid_; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override {
        *result = nullptr;
        if (iid != IID_IUnknown && iid != iid_) return E_NOINTERFACE;
        *result = this;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
    ULONG STDMETHODCALLTYPE Release() override { return --references; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT*, EXCEPINFO*,
                                     UINT*) override {
        tarncom32::com::OwnedText name;
        if (FAILED(events_->GetDocumentation(id, name.put(), nullptr, nullptr, nullptr))) return DISP_E_MEMBERNOTFOUND;
        std::wstring text = name.get();
        for (UINT i = given->cArgs; i-- > 0;) {
            VARIANT& argument = given->rgvarg[i];
            if (argument.vt == VT_BSTR) text += L" " + std::wstring(argument.bstrVal);
            if (argument.vt == (VT_BOOL | VT_BYREF)) {
                text += *argument.pboolVal ? L" True" : L" False";
                *argument.pboolVal = VARIANT_TRUE;
            }
        }
        heard.push_back(text);
        return S_OK;
    }

    ULONG references = 0; ///< those of others: it stands on the stack

private:
    ComPtr<ITypeInfo> events_;
    IID iid_;
};

HRESULT call(IDispatch& object, const wchar_t* member, INVOKEKIND kind, const wchar_t* text, VARIANT* result) {
    std::vector<Value> argument(1);
    setText(argument[0], text);
    return invoke(object, idOf(object, member), kind, argument, result);
}

TEST(ProbeClient, HearsEventsUntilTheObjectEnds) {
    const Apartment apartment;
    ComPtr<IDispatch> object = create(L"TarnProbe.Probe");
    ASSERT_TRUE(object);
    Sink sink(Described(*object.get()).events);
    DWORD cookie = 0;
    {
        ComPtr<IConnectionPointContainer> container;
        ComPtr<IConnectionPoint> point;
        object->QueryInterface(IID_IConnectionPointContainer, container.putVoid());
        ASSERT_TRUE(container);
        ASSERT_EQ(container->FindConnectionPoint(sink.iid(), point.put()), S_OK);
        ASSERT_EQ(point->Advise(&sink, &cookie), S_OK);
    }
    Value answer;
    EXPECT_EQ(call(*object.get(), L"Ask", INVOKE_FUNC, L"really?", &answer), S_OK);
    EXPECT_EQ(answer.vt, VT_BOOL);
    EXPECT_EQ(answer.boolVal, VARIANT_TRUE) << "as the sink answered";
    EXPECT_EQ(call(*object.get(), L"Name", INVOKE_PROPERTYPUT, L"new", nullptr), S_OK);
    object = {};
    EXPECT_EQ(sink.heard, (std::vector<std::wstring>{L"Asked really? False", L"Named new", L"Ended"}));
    EXPECT_EQ(sink.references, 0u) << "the object has gone and holds it no more";
}

/// What FillThunk makes of words that are all 1.
constexpr std::array<std::uint32_t, 7> kFilled{101, 102, 103, 104, 105, 106, 107};

struct OnTheStack {
    Thunk before{7, {7, 7, 7, 7, 7, 7}};
    Thunk own{1, {1, 1, 1, 1, 1, 1}};
    Thunk after{7, {7, 7, 7, 7, 7, 7}};
    std::array<std::uint32_t, 7> words() const {
        std::array<std::uint32_t, 7> words{};
        std::memcpy(words.data(), &own, sizeof own);
        return words;
    }
    bool neighboursAreWhole() const {
        const OnTheStack fresh;
        return !std::memcmp(&before, &fresh.before, sizeof before) && !std::memcmp(&after, &fresh.after, sizeof after);
    }
};

TEST(ProbeClient, HasItsRecordFilledThroughTheVtable) {
    const Apartment apartment;
    const ComPtr<IDispatch> object = create(L"TarnProbe.Probe");
    ASSERT_TRUE(object);
    const Described described(*object.get());
    const DISPID id = idOf(*object.get(), L"FillThunk");
    std::size_t slot = 0;
    forEachMember(*described.interfaceType.get(), [&](const FUNCDESC& member, const std::wstring&) {
        if (member.memid == id) slot = static_cast<std::size_t>(member.oVft) / sizeof(void*);
    });
    ASSERT_GT(slot, 6u);
    ComPtr<IUnknown> dual;
    ASSERT_EQ(object->QueryInterface(Described::guidOf(*described.interfaceType.get()), dual.putVoid()), S_OK);

    using FillThunk = HRESULT(STDMETHODCALLTYPE*)(void*, LONG, Thunk*);
    FillThunk fillThunk = nullptr;
    std::memcpy(&fillThunk, *reinterpret_cast<char**>(dual.get()) + slot * sizeof(void*), sizeof fillThunk);
    OnTheStack records;
    EXPECT_EQ(fillThunk(dual.get(), 100, &records.own), S_OK);
    EXPECT_EQ(records.words(), kFilled);
    EXPECT_TRUE(records.neighboursAreWhole());
    EXPECT_EQ(fillThunk(dual.get(), 100, nullptr), E_POINTER);
}

TEST(ProbeClient, HasItsRecordFilledThroughIDispatch) {
    const Apartment apartment;
    const ComPtr<IDispatch> object = create(L"TarnProbe.Probe");
    ASSERT_TRUE(object);
    const Described described(*object.get());
    const DISPID id = idOf(*object.get(), L"FillThunk");
    ComPtr<IRecordInfo> ofType;
    const ComPtr<ITypeInfo> type = described.named(L"PushParamThunk");
    ASSERT_TRUE(type);
    ASSERT_EQ(GetRecordInfoFromTypeInfo(type.get(), ofType.put()), S_OK);
    ComPtr<IRecordInfo> ofGuids;
    TLIBATTR* library = nullptr;
    ASSERT_EQ(described.library->GetLibAttr(&library), S_OK);
    EXPECT_EQ(GetRecordInfoFromGuids(library->guid, library->wMajorVerNum, library->wMinorVerNum, LOCALE_NEUTRAL,
                                     Described::guidOf(*type.get()), ofGuids.put()),
              S_OK);
    described.library->ReleaseTLibAttr(library);
    ASSERT_TRUE(ofGuids);
    for (IRecordInfo* info : {ofType.get(), ofGuids.get()}) {
        ULONG size = 0;
        EXPECT_EQ(info->GetSize(&size), S_OK);
        ASSERT_EQ(size, sizeof(Thunk));
        for (const VARTYPE kind : {VARTYPE{VT_RECORD}, VARTYPE{VT_RECORD | VT_BYREF}}) {
            OnTheStack records;
            VARIANT arguments[2]{};
            arguments[0].vt = kind;
            arguments[0].pvRecord = &records.own;
            arguments[0].pRecInfo = info;
            arguments[1].vt = VT_I4;
            arguments[1].lVal = 100;
            DISPPARAMS parameters{arguments, nullptr, 2, 0};
            EXPECT_EQ(object->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr), S_OK);
            EXPECT_EQ(records.words(), kFilled);
            EXPECT_TRUE(records.neighboursAreWhole());
        }
    }
}

} // namespace

} // namespace client
