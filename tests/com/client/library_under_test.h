#pragma once

#include <windows.h>

#include <oaidl.h>
#include <oleauto.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

/// A client that knows the library by its ProgIDs and its type library only.
namespace client {

struct Release {
    template <class T>
    void operator()(T* pointer) const {
        pointer->Release();
    }
};
template <class T>
using Pointer = std::unique_ptr<T, Release>;

/// A VARIANT that clears itself.
struct Value : VARIANT {
    Value() { VariantInit(this); }
    Value(const Value&) = delete;
    ~Value() { VariantClear(this); }
    static void setText(VARIANT& target, const wchar_t* text) {
        target.vt = VT_BSTR;
        target.bstrVal = SysAllocString(text);
    }
};

/// COM on this thread, as an apartment of its own.
struct Apartment {
    Apartment() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
    Apartment(const Apartment&) = delete;
    ~Apartment() { CoUninitialize(); }
};

/// The path under which StringFunctions is registered.
std::wstring registeredPath();

/// A new object by its ProgID; null when it cannot be created.
Pointer<IDispatch> create(const wchar_t* progId);

/// A class that clients can create, as the type library has it.
struct Class {
    std::wstring progId;
    Pointer<ITypeInfo> interfaceType;
};
std::vector<Class> creatableClasses();

/// Calls `visit` for each accessor of an interface that stands behind those of IDispatch.
void forEachMember(ITypeInfo& type, const std::function<void(const FUNCDESC&, const std::wstring& name)>& visit);

/// An object on which no member waits for a user: a file dialog has no room for any name, and fails before it appears.
Pointer<IDispatch> createQuiet(const Class& described);

} // namespace client
