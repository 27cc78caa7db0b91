#pragma once

#include "automation/string.h"

#include <windows.h>

#include <oaidl.h>
#include <oleauto.h>

#include <utility>

namespace tarncom32::com {

/// A counted interface pointer.
template <class T>
class ComPtr {
public:
    ComPtr() noexcept = default;
    explicit ComPtr(T* pointer) noexcept : pointer_(pointer) {
        if (pointer_) pointer_->AddRef();
    }
    ComPtr(const ComPtr& other) noexcept : ComPtr(other.pointer_) {}
    ComPtr(ComPtr&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(pointer_, other.pointer_);
        return *this;
    }
    ~ComPtr() {
        if (pointer_) pointer_->Release();
    }

    T* get() const noexcept { return pointer_; }
    T* operator->() const noexcept { return pointer_; }
    explicit operator bool() const noexcept { return pointer_ != nullptr; }
    /// Where a call puts a new pointer; whatever was held is released first.
    T** put() noexcept {
        *this = {};
        return &pointer_;
    }
    void** putVoid() noexcept { return reinterpret_cast<void**>(put()); }
    /// The pointer, now the caller's to release.
    T* detach() noexcept { return std::exchange(pointer_, nullptr); }

private:
    T* pointer_ = nullptr;
};

/// The `Interface` of `object`, null when it has none (or is null itself).
template <class Interface>
ComPtr<Interface> query(IUnknown* object, REFIID iid) noexcept {
    void* found = nullptr;
    // One that fails may still leave a pointer, which is nobody's.
    if (!object || FAILED(object->QueryInterface(iid, &found))) return {};
    ComPtr<Interface> held;
    *held.put() = static_cast<Interface*>(found);
    return held;
}

/// A BSTR that frees itself.
class OwnedText {
public:
    OwnedText() noexcept = default;
    explicit OwnedText(BSTR text) noexcept : text_(text) {}
    OwnedText(const OwnedText&) = delete;
    OwnedText& operator=(const OwnedText&) = delete;
    ~OwnedText() { SysFreeString(text_); }
    BSTR get() const noexcept { return text_; }
    BSTR* put() noexcept {
        SysFreeString(std::exchange(text_, nullptr));
        return &text_;
    }
    BSTR detach() noexcept { return std::exchange(text_, nullptr); }

private:
    BSTR text_ = nullptr;
};

/// A VARIANT that clears itself.
class OwnedVariant : public VARIANT {
public:
    OwnedVariant() noexcept { VariantInit(this); }
    OwnedVariant(const OwnedVariant&) = delete;
    OwnedVariant& operator=(const OwnedVariant&) = delete;
    ~OwnedVariant() { VariantClear(this); }
};

inline automation::StringView viewOf(const wchar_t* text) noexcept {
    return text ? automation::StringView(reinterpret_cast<const char16_t*>(text)) : automation::StringView();
}
inline automation::StringView viewOfBstr(BSTR text) noexcept {
    return {reinterpret_cast<const char16_t*>(text), SysStringLen(text)};
}
inline const wchar_t* wide(const automation::String& text) noexcept {
    return reinterpret_cast<const wchar_t*>(text.c_str());
}
/// A new BSTR; null when memory runs out.
inline BSTR newBstr(automation::StringView text) noexcept {
    return SysAllocStringLen(reinterpret_cast<const wchar_t*>(text.data()), static_cast<UINT>(text.size()));
}

} // namespace tarncom32::com
