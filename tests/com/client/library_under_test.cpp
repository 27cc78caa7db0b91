#include "com/client/library_under_test.h"

#include <stdexcept>

namespace client {

namespace {

/// Frees what a type description lent.
template <class Description, class Free>
auto lend(Description* description, Free free) {
    return std::unique_ptr<Description, Free>(description, free);
}

std::wstring nameOf(ITypeInfo& type, MEMBERID member = MEMBERID_NIL) {
    BSTR name = nullptr;
    type.GetDocumentation(member, &name, nullptr, nullptr, nullptr);
    std::wstring text = name ? name : L"";
    SysFreeString(name);
    return text;
}

void putNumber(IDispatch& object, const wchar_t* name, short number) {
    auto* wanted = const_cast<LPOLESTR>(name);
    DISPID id = 0;
    if (FAILED(object.GetIDsOfNames(IID_NULL, &wanted, 1, 0, &id))) return;
    VARIANT value{};
    value.vt = VT_I2;
    value.iVal = number;
    DISPID assigned = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{&value, &assigned, 1, 1};
    object.Invoke(id, IID_NULL, 0, DISPATCH_PROPERTYPUT, &parameters, nullptr, nullptr, nullptr);
}

} // namespace

std::wstring registeredPath() {
    CLSID clsid{};
    if (FAILED(CLSIDFromProgID(L"TarnCom32.StringFunctions", &clsid))) return L"";
    wchar_t text[40] = L"";
    StringFromGUID2(clsid, text, 40);
    wchar_t path[2048] = L"";
    DWORD size = sizeof path;
    RegGetValueW(HKEY_CLASSES_ROOT, (L"CLSID\\" + std::wstring(text) + L"\\InprocServer32").c_str(), nullptr,
                 RRF_RT_REG_SZ, nullptr, path, &size);
    return path;
}

Pointer<IDispatch> create(const wchar_t* progId) {
    CLSID clsid{};
    IDispatch* object = nullptr;
    if (SUCCEEDED(CLSIDFromProgID(progId, &clsid)))
        CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, reinterpret_cast<void**>(&object));
    return Pointer<IDispatch>(object);
}

std::vector<Class> creatableClasses() {
    std::vector<Class> classes;
    ITypeLib* loaded = nullptr;
    if (FAILED(LoadTypeLibEx(registeredPath().c_str(), REGKIND_NONE, &loaded))) return classes;
    const Pointer<ITypeLib> library(loaded);
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        ITypeInfo* found = nullptr;
        if (FAILED(library->GetTypeInfo(i, &found))) continue;
        const Pointer<ITypeInfo> type(found);
        TYPEATTR* attributes = nullptr;
        if (FAILED(type->GetTypeAttr(&attributes))) continue;
        const auto lent = lend(attributes, [&](TYPEATTR* it) { type->ReleaseTypeAttr(it); });
        if (attributes->typekind != TKIND_COCLASS || !(attributes->wTypeFlags & TYPEFLAG_FCANCREATE)) continue;
        HREFTYPE reference = 0;
        ITypeInfo* interfaceType = nullptr;
        if (FAILED(type->GetRefTypeOfImplType(0, &reference)) ||
            FAILED(type->GetRefTypeInfo(reference, &interfaceType)))
            continue;
        classes.push_back({L"TarnCom32." + nameOf(*type), Pointer<ITypeInfo>(interfaceType)});
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
        const auto lent = lend(member, [&](FUNCDESC* it) { type.ReleaseFuncDesc(it); });
        // A dispatch view of a dual interface begins with the seven entries of IDispatch.
        if (member->oVft < static_cast<SHORT>(7 * sizeof(void*)) || (member->wFuncFlags & FUNCFLAG_FRESTRICTED))
            continue;
        visit(*member, nameOf(type, member->memid));
    }
}

Pointer<IDispatch> createQuiet(const Class& described) {
    Pointer<IDispatch> object = create(described.progId.c_str());
    if (object && described.progId == L"TarnCom32.CommonDlg") putNumber(*object, L"MaxFileSize", 1);
    return object;
}

} // namespace client
