#pragma once

#include <windows.h>

#include <oaidl.h>
#include <oleauto.h>

#include <memory>
#include <string>

namespace tarncom32::bench {

struct ReleasePointer {
    template <class T>
    void operator()(T* pointer) const {
        pointer->Release();
    }
};
template <class T>
using Pointer = std::unique_ptr<T, ReleasePointer>;

struct FreeText {
    void operator()(wchar_t* text) const { SysFreeString(text); }
};
/// A BSTR.
using Text = std::unique_ptr<wchar_t, FreeText>;

/// Raises `std::runtime_error` for a call that failed.
void require(HRESULT result, const char* what);

/// The DLL, loaded from its file without any registration.
class ServerUnderTest {
public:
    explicit ServerUnderTest(const std::wstring& path);

    /// A new object of the class.
    Pointer<IDispatch> create(const wchar_t* className) const;

private:
    HMODULE module_;
    Pointer<ITypeLib> library_;
};

/// An object of one of the system's classes.
Pointer<IDispatch> createSystemObject(const wchar_t* progId);

/// The member's place in the vtable of the object's dual interface.
std::size_t vtableSlot(ITypeInfo& type, DISPID dispid);

} // namespace tarncom32::bench
