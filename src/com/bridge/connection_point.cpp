#include "com/bridge/connection_point.h"

#include "com/bridge/failure.h"
#include "com/bridge/unknown.h"
#include "com/bridge/variants.h"

#include <olectl.h>

#include <new>
#include <vector>

namespace tarncom32::com {

using automation::EventInfo;
using automation::Object;
using automation::ObjectRef;
using automation::Variant;

namespace {

/// What COM's enumerators have in common: items that are copied out with a reference.
template <class Interface, class Item, class Copy>
class ListWalk final : public Unknown<Interface> {
public:
    ListWalk(std::vector<Item> items, std::size_t position) : items_(std::move(items)), position_(position) {}

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
            *copy = new ListWalk(items_, position_);
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
struct ForeignSink {
    ComPtr<IDispatch> sink;

    void operator()(const EventInfo& event, std::span<Variant> arguments) const {
        std::vector<OwnedVariant> held(arguments.size());
        std::vector<VARIANT> passed(arguments.size());
        for (std::size_t i = 0; i < arguments.size(); ++i) {
            initVariant(held[i], Variant(arguments[i]));
            VARIANT& wire = passed[arguments.size() - 1 - i];
            wire = held[i];
            if (!event.parameters[i].isByReference()) continue;
            wire.vt = static_cast<VARTYPE>(held[i].vt | VT_BYREF);
            wire.byref = &held[i].llVal;
        }
        DISPPARAMS parameters{passed.data(), nullptr, static_cast<UINT>(passed.size()), 0};
        OwnedVariant ignored;
        // The listener may go away while it is called. Its failure is nobody's concern.
        const ComPtr<IDispatch> alive(sink);
        alive->Invoke(event.dispid, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, &ignored, nullptr,
                      nullptr);
        for (std::size_t i = 0; i < arguments.size(); ++i)
            if (event.parameters[i].isByReference()) arguments[i] = fromVariant(held[i]);
    }
};

class ConnectionPoint final : public Unknown<IConnectionPoint> {
public:
    ConnectionPoint(IConnectionPointContainer* container, Object& object) : container_(container), object_(&object) {}

    HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* iid) override {
        if (!iid) return E_POINTER;
        *iid = sourceIid();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** container) override {
        if (!container) return E_POINTER;
        container_->AddRef();
        *container = container_.get();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override {
        if (!sink || !cookie) return E_POINTER;
        *cookie = 0;
        // A sink answers to the source interface itself, or is a plain IDispatch.
        ComPtr<IDispatch> listener = query<IDispatch>(sink, sourceIid());
        if (!listener) listener = query<IDispatch>(sink, IID_IDispatch);
        if (!listener) return CONNECT_E_CANNOTCONNECT;
        return fenced([&] {
            *cookie = object_->events()->advise(ForeignSink{std::move(listener)});
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override {
        return object_->events()->unadvise(cookie) ? S_OK : CONNECT_E_NOCONNECTION;
    }
    HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** connections) override {
        if (!connections) return E_POINTER;
        *connections = nullptr;
        return fenced([&] {
            std::vector<ConnectionItem> items;
            for (const auto& listener : object_->events()->listeners())
                if (const auto* foreign = listener.sink.target<ForeignSink>())
                    items.push_back({ComPtr<IUnknown>(foreign->sink.get()), listener.cookie});
            *connections =
                new ListWalk<IEnumConnections, ConnectionItem, CONNECTDATA>(std::move(items), std::size_t{0});
            return S_OK;
        });
    }

private:
    GUID sourceIid() const { return toGuid(object_->classInfo()->sourceIid); }

    ComPtr<IConnectionPointContainer> container_;
    ObjectRef object_;
};

} // namespace

IConnectionPoint* newConnectionPoint(IConnectionPointContainer* container, Object& object) noexcept {
    return new (std::nothrow) ConnectionPoint(container, object);
}

HRESULT enumerateConnectionPoints(IConnectionPointContainer* container, Object& object,
                                  IEnumConnectionPoints** points) noexcept {
    if (!points) return E_POINTER;
    *points = nullptr;
    return fenced([&] {
        ComPtr<IConnectionPoint> point;
        *point.put() = newConnectionPoint(container, object);
        if (!point) throw std::bad_alloc();
        *points = new ListWalk<IEnumConnectionPoints, PointItem, IConnectionPoint*>({{point}}, 0);
        return S_OK;
    });
}

} // namespace tarncom32::com
