#include "com/bridge/connection_point.h"

#include "automation/events.h"
#include "com/bridge/failure.h"
#include "com/bridge/outbound_call.h"
#include "com/bridge/unknown.h"

#include <olectl.h>

#include <vector>

namespace tarncom32::com {

using automation::EventInfo;
using automation::Object;
using automation::Variant;

namespace {

/// What COM's enumerators have in common: items that are copied out with a reference.
template <class Interface, class Item, class Copy>
class ListEnumerator final : public Unknown<Interface> {
public:
    ListEnumerator(std::vector<Item> items, std::size_t position) : items_(std::move(items)), position_(position) {}

    HRESULT STDMETHODCALLTYPE Next(ULONG count, Copy* copies, ULONG* fetched) override {
        if (fetched) *fetched = 0;
        if (!copies || (!fetched && count != 1)) return E_POINTER;
        ULONG done = 0;
        for (; done < count && position_ < items_.size(); ++done)
            copies[done] = items_[position_++].copy();
        if (fetched) *fetched = done;
        return done == count ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
        const bool enough = count <= items_.size() - position_;
        position_ = enough ? position_ + count : items_.size();
        return enough ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Reset() override {
        position_ = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(Interface** copy) override {
        if (!copy) return E_POINTER;
        *copy = nullptr;
        return fenced([&] {
            *copy = new ListEnumerator(items_, position_);
            return S_OK;
        });
    }

private:
    std::vector<Item> items_;
    std::size_t position_;
};

struct PointItem {
    ComPtr<IConnectionPoint> point;
    IConnectionPoint* copy() const {
        point->AddRef();
        return point.get();
    }
};

struct ConnectionItem {
    ComPtr<IUnknown> sink;
    DWORD cookie;
    CONNECTDATA copy() const {
        sink->AddRef();
        return {sink.get(), cookie};
    }
};

/// A listener from outside: its IDispatch, called with the event's DISPID.
class ForeignListener final : public automation::EventListener {
public:
    explicit ForeignListener(ComPtr<IDispatch> sink) : sink_(std::move(sink)) {}
    IDispatch* sink() const { return sink_.get(); }

    void notify(const EventInfo& event, std::span<Variant> arguments) override {
        std::uint32_t byReference = 0;
        for (std::size_t i = 0; i < event.parameters.size(); ++i)
            byReference |= (event.parameters[i].isByReference() ? 1u : 0u) << i;
        OutboundCall call(arguments, byReference);
        OwnedVariant ignored;
        // The listener's own failure is nobody's concern; what it wrote before counts.
        sink_->Invoke(event.dispid, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &call.parameters(), &ignored,
                      nullptr, nullptr);
        call.takeBack();
    }

private:
    ComPtr<IDispatch> sink_;
};

GUID sourceIidOf(const Object& object) {
    return toGuid(object.classInfo()->sourceIid);
}

} // namespace

HRESULT ConnectionPoint::QueryInterface(REFIID iid, void** result) {
    if (!result) return E_POINTER;
    *result = nullptr;
    if (!IsEqualIID(iid, IID_IUnknown) && !IsEqualIID(iid, IID_IConnectionPoint)) return E_NOINTERFACE;
    *result = static_cast<IConnectionPoint*>(this);
    AddRef();
    return S_OK;
}

HRESULT ConnectionPoint::GetConnectionInterface(IID* iid) {
    if (!iid) return E_POINTER;
    *iid = sourceIidOf(object_);
    return S_OK;
}

HRESULT ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
    if (!container) return E_POINTER;
    container_.AddRef();
    *container = &container_;
    return S_OK;
}

HRESULT ConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) {
    if (!sink || !cookie) return E_POINTER;
    *cookie = 0;
    // A sink answers to the source interface itself, or is a plain IDispatch.
    ComPtr<IDispatch> listener = query<IDispatch>(sink, sourceIidOf(object_));
    if (!listener) listener = query<IDispatch>(sink, IID_IDispatch);
    if (!listener) return CONNECT_E_CANNOTCONNECT;
    return fenced([&] {
        *cookie = object_.events()->advise(std::make_shared<ForeignListener>(std::move(listener)));
        return S_OK;
    });
}

HRESULT ConnectionPoint::Unadvise(DWORD cookie) {
    // The listener may hold the last reference to this.
    const ComPtr<IConnectionPoint> alive(this);
    return object_.events()->unadvise(cookie) ? S_OK : CONNECT_E_NOCONNECTION;
}

HRESULT ConnectionPoint::EnumConnections(IEnumConnections** connections) {
    if (!connections) return E_POINTER;
    *connections = nullptr;
    return fenced([&] {
        std::vector<ConnectionItem> items;
        // A copy: taking references may bring sinks to come or go.
        const auto present = object_.events()->listeners();
        for (const auto& [cookie, listener] : present)
            if (const auto* foreign = dynamic_cast<const ForeignListener*>(listener.get()))
                items.push_back({ComPtr<IUnknown>(foreign->sink()), cookie});
        *connections = new ListEnumerator<IEnumConnections, ConnectionItem, CONNECTDATA>(std::move(items), 0);
        return S_OK;
    });
}

HRESULT enumerateConnectionPoints(IConnectionPoint* point, IEnumConnectionPoints** points) noexcept {
    if (!points) return E_POINTER;
    *points = nullptr;
    return fenced([&] {
        *points = new ListEnumerator<IEnumConnectionPoints, PointItem, IConnectionPoint*>(
            {{ComPtr<IConnectionPoint>(point)}}, 0);
        return S_OK;
    });
}

} // namespace tarncom32::com
