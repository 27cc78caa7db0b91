#include "hand_written.h"

#include <string_view>

namespace tarncom32::bench {

namespace {

class HandWritten final : public IHandWritten {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override {
        if (!result) return E_POINTER;
        *result = nullptr;
        if (!IsEqualIID(iid, IID_IUnknown)) return E_NOINTERFACE;
        *result = this;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }

    HRESULT STDMETHODCALLTYPE ReturnStringAfterDelimiter(BSTR* source, BSTR* delimiter, BSTR* result) override {
        if (!source || !delimiter || !result) return E_POINTER;
        const std::wstring_view text(*source ? *source : L"", SysStringLen(*source));
        const std::wstring_view sought(*delimiter ? *delimiter : L"", SysStringLen(*delimiter));
        const std::size_t position = sought.empty() ? text.npos : text.find(sought);
        const std::wstring_view rest = position == text.npos ? std::wstring_view() : text.substr(position + 1);
        *result = SysAllocStringLen(rest.data(), static_cast<UINT>(rest.size()));
        return *result ? S_OK : E_OUTOFMEMORY;
    }

private:
    virtual ~HandWritten() = default;
    ULONG references_ = 1;
};

} // namespace

Pointer<IHandWritten> newHandWritten() {
    return Pointer<IHandWritten>(new HandWritten);
}

} // namespace tarncom32::bench
