#pragma once

#include "com/bridge/com_ptr.h"
#include "com/server/server.h"

namespace tarncom32::com {

/// The class factory for `clsid`: it answers to IUnknown and IClassFactory only. CLASS_E_CLASSNOTAVAILABLE for a
/// class that cannot be created.
HRESULT classObject(const Server& server, REFCLSID clsid, REFIID iid, void** result);

} // namespace tarncom32::com
