#include "com/bridge/foreign_object.h"
#include "com/com_fixture.h"
#include "support/error_of.h"

#include <dispex.h>
#include <ocidl.h>
#include <olectl.h>

#include <thread>

namespace tarncom32::com::testing {

namespace {

/// An object from outside. It counts how often it was asked for a name, and can stand in for an event sink.
class Foreign final : public Unknown<IDispatch> {
public:
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        ++lookups;
        const StringView name = viewOf(names[0]);
        ids[0] = equalsIgnoreCase(name, u"Value") ? 1 : equalsIgnoreCase(name, u"Fail") ? 2 : DISPID_UNKNOWN;
        bool known = ids[0] != DISPID_UNKNOWN;
        if (count > 1) {
            ids[1] = equalsIgnoreCase(viewOf(names[1]), u"Last") ? 7 : DISPID_UNKNOWN;
            known = known && ids[1] != DISPID_UNKNOWN;
        }
        return known ? S_OK : DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                                     EXCEPINFO* exception, UINT*) override {
        lastFlags = flags;
        lastNamed = parameters->cNamedArgs == 1 ? parameters->rgdispidNamedArgs[0] : DISPID_UNKNOWN;
        lastArguments.clear();
        for (UINT i = parameters->cArgs; i-- > 0;)
            lastArguments.push_back(fromVariant(parameters->rgvarg[i]));
        if (id == 2) {
            exception->scode = failure;
            exception->bstrDescription = SysAllocString(L"of its own");
            return DISP_E_EXCEPTION;
        }
        for (UINT i = 0; i < parameters->cArgs; ++i)
            if (parameters->rgvarg[i].vt & VT_BYREF) assign(parameters->rgvarg[i], answer);
        if (result) toVariant(*result, Variant(std::int32_t{42}));
        return failAsSink ? E_FAIL : S_OK;
    }

    int lookups = 0;
    WORD lastFlags = 0;
    DISPID lastNamed = DISPID_UNKNOWN;
    std::vector<Variant> lastArguments;
    Variant answer = Boolean(true);
    SCODE failure = static_cast<SCODE>(0x86DB0001);
    bool failAsSink = false;
};

/// An object without late binding that stands at the same address each time, one at a time. Of an interface that it
/// does not have it leaves a pointer that is none.
struct Bare final : Unknown<IServiceProvider> {
    static void* operator new(std::size_t) {
        alignas(std::max_align_t) static std::byte place[64];
        return place;
    }
    static void operator delete(void*) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override {
        const HRESULT found = Unknown::QueryInterface(iid, result);
        if (FAILED(found)) *result = this;
        return found;
    }
    HRESULT STDMETHODCALLTYPE QueryService(REFGUID, REFIID, void**) override { return E_NOTIMPL; }
};
static_assert(sizeof(Bare) <= 64);

class Objects : public ComTest {
protected:
    void SetUp() override {
        ComTest::SetUp();
        *holder.put() = foreign = new Foreign;
    }
    void TearDown() override {
        holder = {};
        ComTest::TearDown();
    }
    Foreign* foreign = nullptr;
    ComPtr<IDispatch> holder;
};

TEST_F(Objects, KeepTheirIdentityOnTheWayThereAndBack) {
    const ObjectRef first = importObject(holder.get());
    EXPECT_EQ(importObject(holder.get()), first);
    ComPtr<IDispatch> back;
    *back.put() = exportObject(first);
    EXPECT_EQ(back.get(), holder.get());

    EXPECT_EQ(importObject(wrapper.get()), ObjectRef(probe)) << "our own come back as themselves";
    *back.put() = exportObject(probe);
    EXPECT_EQ(back.get(), wrapper.get());
    const Outcome outcome = call(wrapper.get(), L"EchoObject", {first});
    EXPECT_EQ(outcome.value, Variant(first));
}

TEST_F(Objects, KeepTheInterfaceByWhichTheyAreHeld) {
    ComPtr<IUnknown> bare;
    *bare.put() = new Bare;
    EXPECT_FALSE(query<IDispatch>(bare.get(), IID_IDispatch));
    OwnedVariant value;
    toVariant(value, Variant(importObject(bare.get())));
    EXPECT_EQ(value.vt, VT_UNKNOWN);
    EXPECT_EQ(value.punkVal, bare.get());
    VARIANT reference{};
    IDispatch* lateBound = nullptr;
    reference.vt = VT_BYREF | VT_DISPATCH;
    reference.ppdispVal = &lateBound;
    EXPECT_EQ(assign(reference, fromVariant(value)), errors::TypeMismatch);
    EXPECT_EQ(lateBound, nullptr);

    ComPtr<IUnknown> held;
    reference.vt = VT_BYREF | VT_UNKNOWN;
    reference.ppunkVal = held.put();
    wrapper->QueryInterface(IID_IProvideClassInfo2, reinterpret_cast<void**>(reference.ppunkVal));
    const IUnknown* before = held.get();
    EXPECT_EQ(assign(reference, Variant(probe)), 0);
    EXPECT_EQ(held.get(), before) << "the variable still holds the same object";
    EXPECT_EQ(assign(reference, Variant(probe->items_)), 0);
    EXPECT_NE(held.get(), before);
}

TEST_F(Objects, AreForgottenOnWhateverThreadTheyEnd) {
    const std::size_t before = Object::liveCount();
    for (int i = 0; i < 2; ++i) {
        ComPtr<IUnknown> bare;
        *bare.put() = new Bare;
        ObjectRef object = importObject(bare.get());
        EXPECT_EQ(Object::liveCount(), before + 1) << "the one before stood at the same address, and is no more";
        std::thread([&] { object = {}; }).join();
        EXPECT_EQ(Object::liveCount(), before);
    }
}

TEST_F(Objects, LookUpEachNameOnce) {
    const ObjectRef object = importObject(holder.get());
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(object->get(u"Value"), Variant(std::int32_t{42}));
        EXPECT_EQ(object->call(u"VALUE", 1, u"two"), Variant(std::int32_t{42}));
    }
    EXPECT_EQ(foreign->lookups, 1);
    EXPECT_EQ(foreign->lastArguments, (std::vector<Variant>{1, u"two"}));
    object->put(u"Value", 5);
    EXPECT_EQ(foreign->lastFlags, DISPATCH_PROPERTYPUT);
    object->putReference(u"Value", probe);
    EXPECT_EQ(foreign->lastFlags, DISPATCH_PROPERTYPUTREF);
    EXPECT_EQ(foreign->lastArguments, std::vector<Variant>{probe});
    EXPECT_TRUE(object->hasMember(u"Value"));
    EXPECT_FALSE(object->hasMember(u"Other"));
}

TEST_F(Objects, TakeTheLastArgumentByItsNameWhereTheyKnowIt) {
    const ObjectRef object = importObject(holder.get());
    for (const auto& [parameter, id] : {std::pair{MemberName(u"last"), DISPID{7}},
                                        {MemberName(u"Unknown"), DISPID_UNKNOWN},
                                        {MemberName(u"Last"), DISPID{7}},
                                        {MemberName(u"Unknown"), DISPID_UNKNOWN}}) {
        Variant arguments[] = {1, u"two"};
        EXPECT_EQ(object->invokeNamed(u"Value", parameter, arguments), Variant(std::int32_t{42}));
        EXPECT_EQ(foreign->lastNamed, id);
        EXPECT_EQ(foreign->lastArguments, (std::vector<Variant>{1, u"two"}));
    }
    EXPECT_EQ(foreign->lookups, 3) << "the member and either parameter once";
}

TEST_F(Objects, GiveBackWhatTheyWriteAndRaiseWhatTheyRaise) {
    const ObjectRef object = importObject(holder.get());
    Variant arguments[] = {Boolean(false), Boolean(false)};
    object->invoke(MemberName(u"Value"), Access::Method, arguments, 0b10);
    EXPECT_EQ(arguments[0], Variant(Boolean(false)));
    EXPECT_EQ(arguments[1], Variant(Boolean(true)));
    EXPECT_EQ(tests::failureOf([&] { object->call(u"Fail"); }), "-2032467967 of its own"); // 86DB0001
    foreign->failure = E_ACCESSDENIED;
    try {
        object->call(u"Fail");
        ADD_FAILURE();
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), errors::PermissionDenied);
        EXPECT_EQ(error.hresult(), E_ACCESSDENIED) << "it goes on as it came";
    }
    EXPECT_EQ(tests::errorOf([&] { object->call(u"Other"); }), errors::NoSuchMember);
    EXPECT_THROW(object->enumerate(), Error);
}

TEST_F(Objects, HaveTheInterfacesTheyShouldAndNoOthers) {
    EXPECT_TRUE(query<IUnknown>(wrapper.get(), toGuid(Probe::describe().iid)));
    EXPECT_TRUE(query<IProvideClassInfo2>(wrapper.get(), IID_IProvideClassInfo2));
    const auto support = query<ISupportErrorInfo>(wrapper.get(), IID_ISupportErrorInfo);
    ASSERT_TRUE(support);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(toGuid(Probe::describe().iid)), S_OK);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IConnectionPoint), S_FALSE);
    for (const GUID& iid :
         {__uuidof(IDispatchEx), toGuid("cb5bdc81-93c1-11cf-8f20-00805f2cd064"_guid /* IObjectSafety */),
          IID_IObjectWithSite, IID_IPersist, IID_IMarshal})
        EXPECT_FALSE(query<IUnknown>(wrapper.get(), iid));
    // Every interface belongs to one object.
    const auto identity = query<IUnknown>(wrapper.get(), IID_IUnknown);
    EXPECT_EQ(query<IUnknown>(support.get(), IID_IUnknown).get(), identity.get());
    EXPECT_EQ(query<IDispatch>(support.get(), IID_IDispatch).get(), wrapper.get());
    ComPtr<IDispatch> collection;
    *collection.put() = exportObject(make<Collection>());
    EXPECT_FALSE(query<IUnknown>(collection.get(), IID_IConnectionPointContainer)) << "it raises no events";
}

TEST_F(Objects, RaiseEventsThroughTheirConnectionPoint) {
    const auto container = query<IConnectionPointContainer>(wrapper.get(), IID_IConnectionPointContainer);
    ASSERT_TRUE(container);
    ComPtr<IConnectionPoint> point;
    EXPECT_EQ(container->FindConnectionPoint(IID_IDispatch, point.put()), CONNECT_E_NOCONNECTION);
    ASSERT_EQ(container->FindConnectionPoint(toGuid(Probe::describe().sourceIid), point.put()), S_OK);
    IID iid{};
    EXPECT_EQ(point->GetConnectionInterface(&iid), S_OK);
    EXPECT_TRUE(equals(iid, Probe::describe().sourceIid));

    auto* deaf = new Foreign;
    ComPtr<IDispatch> second;
    *second.put() = deaf;
    deaf->failAsSink = true;
    DWORD cookies[2] = {0, 0};
    EXPECT_EQ(point->Advise(second.get(), &cookies[0]), S_OK);
    EXPECT_EQ(point->Advise(holder.get(), &cookies[1]), S_OK);
    EXPECT_EQ(point->Advise(nullptr, &cookies[1]), E_POINTER);
    deaf->answer = Boolean(false);
    EXPECT_EQ(call(wrapper.get(), L"Ask", {u"really"}).value, Variant(Boolean(true)));
    EXPECT_EQ(deaf->lastArguments.size(), 2u) << "a sink that fails does not keep the event from the next";
    EXPECT_EQ(foreign->lastArguments, (std::vector<Variant>{u"really", Boolean(false)}));

    ComPtr<IEnumConnections> connections;
    ASSERT_EQ(point->EnumConnections(connections.put()), S_OK);
    CONNECTDATA found[3]{};
    ULONG fetched = 0;
    EXPECT_EQ(connections->Next(3, found, &fetched), S_FALSE);
    ASSERT_EQ(fetched, 2u);
    EXPECT_EQ(found[1].pUnk, holder.get());
    EXPECT_EQ(found[1].dwCookie, cookies[1]);
    found[0].pUnk->Release();
    found[1].pUnk->Release();
    ComPtr<IEnumConnectionPoints> points;
    ASSERT_EQ(container->EnumConnectionPoints(points.put()), S_OK);
    ComPtr<IConnectionPoint> same;
    EXPECT_EQ(points->Next(1, same.put(), nullptr), S_OK);
    EXPECT_EQ(same.get(), point.get());
    EXPECT_EQ(container->FindConnectionPoint(iid, same.put()), S_OK);
    EXPECT_EQ(same.get(), point.get());
    EXPECT_EQ(points->Skip(1), S_FALSE);

    for (const DWORD cookie : cookies)
        EXPECT_EQ(point->Unadvise(cookie), S_OK);
    EXPECT_EQ(point->Unadvise(cookies[0]), CONNECT_E_NOCONNECTION);
    EXPECT_EQ(call(wrapper.get(), L"Ask", {u"really"}).value, Variant(Boolean(false))) << "nobody listens any more";
}

} // namespace

} // namespace tarncom32::com::testing
