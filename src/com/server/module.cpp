#include "com/server/module.h"

#include "automation/error.h"
#include "com/bridge/class_table.h"
#include "com/bridge/failure.h"
#include "com/bridge/unknown.h"
#include "com/server/class_factory.h"
#include "com/server/registration.h"
#include "com/server/server.h"

#include <olectl.h>

#include <atomic>
#include <memory>

namespace tarncom32::com {

namespace {

HMODULE theModule = nullptr;

/// The type library, loaded when it is first asked for and kept until the module goes.
class KeptTypeLibrary {
public:
    KeptTypeLibrary() noexcept = default;
    KeptTypeLibrary(const KeptTypeLibrary&) = delete;
    ~KeptTypeLibrary() {
        if (ITypeLib* library = library_.load(); library && !processEnds) library->Release();
    }
    /// Lock-free: of two threads that load it at once, one lets its own go.
    ITypeLib& get() {
        ITypeLib* library = library_.load(std::memory_order_acquire);
        if (!library) {
            ComPtr<ITypeLib> fresh = loadTypeLibrary();
            if (library_.compare_exchange_strong(library, fresh.get(), std::memory_order_acq_rel))
                library = fresh.detach();
        }
        return *library;
    }

private:
    std::atomic<ITypeLib*> library_{nullptr};
} keptTypeLibrary;

/// What the objects' type information is found in.
ComPtr<ITypeInfo> typeInThisLibrary(REFGUID guid) {
    ComPtr<ITypeInfo> type;
    try {
        keptTypeLibrary.get().GetTypeInfoOfGuid(guid, type.put());
    } catch (const automation::Error&) {
        return {}; // The caller says that there is none.
    }
    return type;
}

Registration registration() {
    return Registration(thisServer(), modulePath(), loadTypeLibrary());
}

} // namespace

HMODULE moduleHandle() noexcept {
    return theModule;
}

automation::String modulePath() {
    automation::String path(MAX_PATH, u'\0');
    for (;;) {
        const DWORD length =
            GetModuleFileNameW(theModule, reinterpret_cast<wchar_t*>(path.data()), static_cast<DWORD>(path.size()));
        if (length == 0)
            throw automation::Error::fromHresult(static_cast<std::int32_t>(HRESULT_FROM_WIN32(GetLastError())));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

namespace {

struct RemoveFile {
    void operator()(automation::String* path) const {
        // Where the system still reads it, the file stays in the folder for such.
        DeleteFileW(wide(*path));
        delete path;
    }
};

/// Loads the type library from a copy of the DLL's resource.
HRESULT loadCopy(ITypeLib** library) {
    const HRSRC found = FindResourceW(theModule, MAKEINTRESOURCEW(1), L"TYPELIB");
    const HGLOBAL loaded = found ? LoadResource(theModule, found) : nullptr;
    const void* bytes = loaded ? LockResource(loaded) : nullptr;
    wchar_t folder[MAX_PATH] = L"";
    wchar_t name[MAX_PATH] = L"";
    if (!bytes || !GetTempPathW(MAX_PATH, folder) || !GetTempFileNameW(folder, L"tlb", 0, name))
        return HRESULT_FROM_WIN32(GetLastError());
    const std::unique_ptr<automation::String, RemoveFile> path(new automation::String(viewOf(name)));
    const HANDLE file = CreateFileW(name, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_TEMPORARY, nullptr);
    if (file == INVALID_HANDLE_VALUE) return HRESULT_FROM_WIN32(GetLastError());
    const DWORD size = SizeofResource(theModule, found);
    DWORD written = 0;
    const bool complete = WriteFile(file, bytes, size, &written, nullptr) && written == size;
    CloseHandle(file);
    return complete ? LoadTypeLibEx(name, REGKIND_NONE, library) : STG_E_MEDIUMFULL;
}

} // namespace

ComPtr<ITypeLib> loadTypeLibrary() {
    ComPtr<ITypeLib> library;
    const automation::String path = modulePath();
    HRESULT result = LoadTypeLibEx(wide(path), REGKIND_NONE, library.put());
    // The system's loader of type libraries knows no longer paths.
    if (FAILED(result) && path.size() >= MAX_PATH) result = loadCopy(library.put());
    check(result);
    return library;
}

} // namespace tarncom32::com

using namespace tarncom32;

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, void* reserved) {
    if (reason == DLL_PROCESS_ATTACH) com::theModule = module;
    // Without a reserved word the DLL alone is unloaded.
    if (reason == DLL_PROCESS_DETACH) com::processEnds = reserved != nullptr;
    return TRUE;
}

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** result) {
    if (!result) return E_POINTER;
    *result = nullptr;
    return com::fenced([&] {
        com::findType = &com::typeInThisLibrary;
        com::errorSource = com::thisServer().name;
        return com::classObject(com::thisServer(), clsid, iid, result);
    });
}

STDAPI DllCanUnloadNow() {
    return com::outsideCount == 0 && com::lockCount == 0 && automation::Object::liveCount() == 0 ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() {
    return com::fenced([] {
        com::registration().add();
        return S_OK;
    });
}

STDAPI DllUnregisterServer() {
    return com::fenced([] {
        com::registration().remove();
        return S_OK;
    });
}
