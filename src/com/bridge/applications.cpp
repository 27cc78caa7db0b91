#include "com/bridge/applications.h"

#include "automation/error.h"
#include "com/bridge/foreign_object.h"

namespace tarncom32::com {

using automation::ObjectRef;
using automation::String;
using automation::StringView;

namespace {

void check(HRESULT result) {
    if (FAILED(result)) throw automation::Error::fromHresult(static_cast<std::int32_t>(result));
}

CLSID clsidOf(StringView progId) {
    CLSID clsid{};
    check(CLSIDFromProgID(wide(String(progId)), &clsid));
    return clsid;
}

} // namespace

ObjectRef ComApplications::attach(StringView progId) {
    ComPtr<IUnknown> running;
    check(GetActiveObject(clsidOf(progId), nullptr, running.put()));
    return importObject(running.get());
}

ObjectRef ComApplications::start(StringView progId) {
    ComPtr<IDispatch> started;
    check(CoCreateInstance(clsidOf(progId), nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_IDispatch,
                           started.putVoid()));
    return importObject(started.get());
}

} // namespace tarncom32::com
