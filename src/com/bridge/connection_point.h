#pragma once

#include "automation/object.h"
#include "com/bridge/com_ptr.h"

#include <ocidl.h>

/// The outgoing side of our objects: one connection point each, for the class's source interface.
namespace tarncom32::com {

/// The connection point of an object with events. It is a part of the object's wrapper, whose references it counts, and
/// has an identity of its own.
class ConnectionPoint final : public IConnectionPoint {
public:
    ConnectionPoint(IConnectionPointContainer& container, automation::Object& object) noexcept
        : container_(container), object_(object) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return container_.AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return container_.Release(); }

    HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* iid) override;
    HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** container) override;
    HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override;
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
    HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** connections) override;

private:
    IConnectionPointContainer& container_;
    automation::Object& object_;
};

/// The enumerator of the only connection point that an object has.
HRESULT enumerateConnectionPoints(IConnectionPoint* point, IEnumConnectionPoints** points) noexcept;

} // namespace tarncom32::com
