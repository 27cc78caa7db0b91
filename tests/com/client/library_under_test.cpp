#include "com/client/library_under_test.h"

#include "com/registry_root.h"

#include <memory>
#include <stdexcept>

namespace client {

namespace {

std::wstring nameOf(ITypeInfo& type, MEMBERID member = MEMBERID_NIL) {
    tarncom32::com::OwnedText name;
    type.GetDocumentation(member, name.put(), nullptr, nullptr, nullptr);
    return name.get() ? name.get() : L"";
}

} // namespace

CLSID idOfClass(const std::wstring& progId) {
    CLSID clsid{};
    CLSIDFromProgID(progId.c_str(), &clsid);
    return clsid;
}

std::wstring serverKey(REFCLSID clsid) {
    wchar_t text[40] = L"";
    StringFromGUID2(clsid, text, 40);
    return L"CLSID\\" + std::wstring(text) + L"\\InprocServer32";
}

std::wstring registeredPath() {
    return tarncom32::com::testing::valueAt(HKEY_CLASSES_ROOT, serverKey(idOfClass(L"TarnCom32.StringFunctions")));
}

HRESULT callEntry(HMODULE module, const char* name) {
    using Entry = HRESULT(STDAPICALLTYPE*)();
    const auto entry = reinterpret_cast<Entry>(reinterpret_cast<void*>(GetProcAddress(module, name)));
    return entry ? entry() : E_NOTIMPL;
}

ComPtr<IClassFactory> factoryOf(HMODULE module, REFCLSID clsid) {
    using Entry = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
    const auto entry = reinterpret_cast<Entry>(reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
    ComPtr<IClassFactory> factory;
    if (entry) entry(clsid, IID_IClassFactory, factory.putVoid());
    return factory;
}

ComPtr<IDispatch> create(const std::wstring& progId) {
    ComPtr<IDispatch> object;
    CoCreateInstance(idOfClass(progId), nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.putVoid());
    return object;
}

void setText(VARIANT& target, const wchar_t* text) {
    target.vt = VT_BSTR;
    target.bstrVal = SysAllocString(text);
}

DISPID idOf(IDispatch& object, const wchar_t* name) {
    auto* wanted = const_cast<LPOLESTR>(name);
    DISPID id = DISPID_UNKNOWN;
    object.GetIDsOfNames(IID_NULL, &wanted, 1, 0, &id);
    return id;
}

HRESULT invoke(IDispatch& object, DISPID id, INVOKEKIND kind, std::vector<Value>& arguments, VARIANT* result,
               ITypeInfo* type) {
    DISPID assigned = DISPID_PROPERTYPUT;
    const bool put = !arguments.empty() && (kind & (INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF));
    DISPPARAMS parameters{arguments.data(), put ? &assigned : nullptr, static_cast<UINT>(arguments.size()), put};
    EXCEPINFO exception{};
    const auto flags = static_cast<WORD>(kind);
    const HRESULT code = type ? type->Invoke(&object, id, flags, &parameters, result, &exception, nullptr)
                              : object.Invoke(id, IID_NULL, 0, flags, &parameters, result, &exception, nullptr);
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrDescription);
    return code == DISP_E_EXCEPTION ? exception.scode : code;
}

std::vector<Class> creatableClasses() {
    std::vector<Class> classes;
    ComPtr<ITypeLib> library;
    if (FAILED(LoadTypeLibEx(registeredPath().c_str(), REGKIND_NONE, library.put()))) return classes;
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        ComPtr<ITypeInfo> type;
        TYPEATTR* attributes = nullptr;
        if (FAILED(library->GetTypeInfo(i, type.put())) || FAILED(type->GetTypeAttr(&attributes))) continue;
        const bool creatable = attributes->typekind == TKIND_COCLASS && attributes->wTypeFlags & TYPEFLAG_FCANCREATE;
        type->ReleaseTypeAttr(attributes);
        HREFTYPE reference = 0;
        ComPtr<ITypeInfo> interfaceType;
        if (creatable && SUCCEEDED(type->GetRefTypeOfImplType(0, &reference)) &&
            SUCCEEDED(type->GetRefTypeInfo(reference, interfaceType.put())))
            classes.push_back({L"TarnCom32." + nameOf(*type.get()), interfaceType});
    }
    return classes;
}

void forEachMember(ITypeInfo& type, const std::function<void(const FUNCDESC&, const std::wstring& name)>& visit) {
    TYPEATTR* attributes = nullptr;
    if (FAILED(type.GetTypeAttr(&attributes))) return;
    const UINT count = attributes->cFuncs;
    type.ReleaseTypeAttr(attributes);
    for (UINT i = 0; i < count; ++i) {
        FUNCDESC* member = nullptr;
        if (FAILED(type.GetFuncDesc(i, &member)))
            throw std::runtime_error("the type library's description of a member cannot be read");
        const auto free = [&](FUNCDESC* it) { type.ReleaseFuncDesc(it); };
        const std::unique_ptr<FUNCDESC, decltype(free)> lent(member, free);
        // A dispatch view of a dual interface begins with the seven entries of IDispatch.
        if (member->oVft >= static_cast<SHORT>(7 * sizeof(void*)) && !(member->wFuncFlags & FUNCFLAG_FRESTRICTED))
            visit(*member, nameOf(type, member->memid));
    }
}

ComPtr<IDispatch> createQuiet(const Class& described) {
    ComPtr<IDispatch> object = create(described.progId);
    if (object && described.progId == L"TarnCom32.CommonDlg") {
        std::vector<Value> one(1);
        one[0].vt = VT_I2;
        one[0].iVal = 1;
        invoke(*object.get(), idOf(*object.get(), L"MaxFileSize"), INVOKE_PROPERTYPUT, one, nullptr);
    }
    return object;
}

} // namespace client
