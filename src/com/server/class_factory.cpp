#include "com/server/class_factory.h"

#include "com/bridge/exported_object.h"
#include "com/bridge/failure.h"
#include "com/bridge/unknown.h"

namespace tarncom32::com {

namespace {

class ClassFactory final : public Unknown<IClassFactory> {
public:
    explicit ClassFactory(const ServerClass& described) : class_(described) {}

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** result) override {
        if (!result) return E_POINTER;
        *result = nullptr;
        if (outer) return CLASS_E_NOAGGREGATION;
        try {
            ComPtr<IDispatch> object;
            *object.put() = exportObject(class_.create());
            return object ? object->QueryInterface(iid, result) : E_OUTOFMEMORY;
        } catch (...) {
            return setErrorInfo(automation::errorInFlight(), class_.info->iid);
        }
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
        if (lock) {
            ++lockCount;
            return S_OK;
        }
        // One unlock too many unlocks nothing that another has locked.
        for (std::size_t locks = lockCount; locks > 0;)
            if (lockCount.compare_exchange_weak(locks, locks - 1)) break;
        return S_OK;
    }

private:
    const ServerClass& class_;
};

} // namespace

HRESULT classObject(const Server& server, REFCLSID clsid, REFIID iid, void** result) {
    for (const ServerClass& described : server.classes) {
        if (!described.create || !equals(clsid, described.info->clsid)) continue;
        ComPtr<IClassFactory> factory;
        *factory.put() = new ClassFactory(described);
        return factory->QueryInterface(iid, result);
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}

} // namespace tarncom32::com
