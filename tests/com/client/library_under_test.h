#pragma once

#include "com/bridge/com_ptr.h"

#include <functional>
#include <string>
#include <vector>

/// A client that knows the library by its ProgIDs and its type library only.
namespace client {

using tarncom32::com::ComPtr;
using Value = tarncom32::com::OwnedVariant;

/// COM on this thread, as an apartment of its own.
struct Apartment {
    Apartment() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
    Apartment(const Apartment&) = delete;
    ~Apartment() { CoUninitialize(); }
};

/// The id of a class; all zeros when it is not registered.
CLSID idOfClass(const std::wstring& progId);
/// Below HKEY_CLASSES_ROOT, the key whose default value is the path of a class's DLL.
std::wstring serverKey(REFCLSID clsid);
/// The path under which StringFunctions is registered.
std::wstring registeredPath();

/// Calls DllCanUnloadNow, DllRegisterServer or DllUnregisterServer.
HRESULT callEntry(HMODULE module, const char* name);
/// What DllGetClassObject gives; null when it refuses.
ComPtr<IClassFactory> factoryOf(HMODULE module, REFCLSID clsid);

/// A new object by its ProgID; null when it cannot be created.
ComPtr<IDispatch> create(const std::wstring& progId);

void setText(VARIANT& target, const wchar_t* text);
/// The number of a member; DISPID_UNKNOWN when there is none of the name.
DISPID idOf(IDispatch& object, const wchar_t* name);
/// Calls a member, by the type library's own dispatcher where `type` is given. The arguments stand in the order of the
/// wire, last one first. Gives the number of the error that the member raised in place of DISP_E_EXCEPTION.
HRESULT invoke(IDispatch& object, DISPID id, INVOKEKIND kind, std::vector<Value>& arguments, VARIANT* result,
               ITypeInfo* type = nullptr);

/// A class that clients can create, as the type library has it.
struct Class {
    std::wstring progId;
    ComPtr<ITypeInfo> interfaceType;
};
std::vector<Class> creatableClasses();

/// Calls `visit` for each accessor of an interface that stands behind those of IDispatch.
void forEachMember(ITypeInfo& type, const std::function<void(const FUNCDESC&, const std::wstring& name)>& visit);

/// An object on which no member waits for a user: a file dialog has no room for any name, and fails before it appears.
ComPtr<IDispatch> createQuiet(const Class& described);

} // namespace client
