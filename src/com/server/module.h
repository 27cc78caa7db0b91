#pragma once

#include "com/bridge/com_ptr.h"

namespace tarncom32::com {

/// This DLL's own handle.
HMODULE moduleHandle() noexcept;

/// The DLL's own path, however long.
automation::String modulePath();

/// The type library inside the DLL; the failing HRESULT of its loading as an `Error`.
ComPtr<ITypeLib> loadTypeLibrary();

} // namespace tarncom32::com
