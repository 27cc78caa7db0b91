#include "com/bridge/applications.h"

#include "com/bridge/failure.h"
#include "com/bridge/foreign_object.h"

namespace tarncom32::com {

using automation::ObjectRef;
using automation::String;
using automation::StringView;

namespace {

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
