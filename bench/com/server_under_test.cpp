#include "server_under_test.h"

#include <stdexcept>

namespace tarncom32::bench {

void require(HRESULT result, const char* what) {
    if (FAILED(result)) throw std::runtime_error(std::string(what) + " failed with " + std::to_string(result));
}

ServerUnderTest::ServerUnderTest(const std::wstring& path) : module_(LoadLibraryW(path.c_str())) {
    if (!module_) throw std::runtime_error("the DLL cannot be loaded: give the path of TarnCom32.dll");
    ITypeLib* library = nullptr;
    require(LoadTypeLibEx(path.c_str(), REGKIND_NONE, &library), "loading the type library");
    library_.reset(library);
}

Pointer<IDispatch> ServerUnderTest::create(const wchar_t* className) const {
    ITypeInfo* found = nullptr;
    MEMBERID member = 0;
    USHORT count = 1;
    std::wstring name(className);
    require(library_->FindName(name.data(), 0, &found, &member, &count), "looking for the class");
    if (!found) throw std::runtime_error("the class is not there");
    const Pointer<ITypeInfo> type(found);
    TYPEATTR* attributes = nullptr;
    require(type->GetTypeAttr(&attributes), "GetTypeAttr");
    const CLSID clsid = attributes->guid;
    type->ReleaseTypeAttr(attributes);

    using Entry = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
    const auto entry = reinterpret_cast<Entry>(reinterpret_cast<void*>(GetProcAddress(module_, "DllGetClassObject")));
    if (!entry) throw std::runtime_error("the DLL has no DllGetClassObject");
    IClassFactory* made = nullptr;
    require(entry(clsid, IID_IClassFactory, reinterpret_cast<void**>(&made)), "DllGetClassObject");
    const Pointer<IClassFactory> factory(made);
    IDispatch* object = nullptr;
    require(factory->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(&object)), "CreateInstance");
    return Pointer<IDispatch>(object);
}

Pointer<IDispatch> createSystemObject(const wchar_t* progId) {
    CLSID clsid{};
    IDispatch* object = nullptr;
    require(CLSIDFromProgID(progId, &clsid), "CLSIDFromProgID");
    require(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, reinterpret_cast<void**>(&object)),
            "CoCreateInstance");
    return Pointer<IDispatch>(object);
}

std::size_t vtableSlot(ITypeInfo& type, DISPID dispid) {
    for (UINT i = 0;; ++i) {
        FUNCDESC* function = nullptr;
        require(type.GetFuncDesc(i, &function), "looking for the member");
        const bool found = function->memid == dispid;
        const auto slot = static_cast<std::size_t>(function->oVft) / sizeof(void*);
        type.ReleaseFuncDesc(function);
        if (found) return slot;
    }
}

} // namespace tarncom32::bench
