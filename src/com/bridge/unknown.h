#pragma once

#include "automation/class_info.h"

#include <windows.h>

#include <atomic>

namespace tarncom32::com {

/// How many COM objects of this module are held from outside.
inline std::atomic<std::size_t> outsideCount{0};
/// How often its factories are locked.
inline std::atomic<std::size_t> lockCount{0};

/// IUnknown of a small COM object with one interface besides it.
template <class Interface>
class Unknown : public Interface {
public:
    Unknown() { ++outsideCount; }
    Unknown(const Unknown&) = delete;
    Unknown& operator=(const Unknown&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override {
        if (!result) return E_POINTER;
        *result = nullptr;
        if (!IsEqualIID(iid, IID_IUnknown) && !IsEqualIID(iid, __uuidof(Interface))) return E_NOINTERFACE;
        *result = static_cast<Interface*>(this);
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0) {
            references_ = 1; // what ends with this object may still refer to it, and must not end it again
            delete this;
        }
        return left;
    }

protected:
    virtual ~Unknown() { --outsideCount; }

private:
    std::atomic<ULONG> references_{1};
};

} // namespace tarncom32::com
