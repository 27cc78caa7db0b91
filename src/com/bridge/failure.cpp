#include "com/bridge/failure.h"

namespace tarncom32::com {

using automation::Error;

namespace {

/// What callers are told: an error that another object raised without a description gets that of its number.
automation::StringView outsideDescription(const Error& error) noexcept {
    return error.description().empty() ? automation::descriptionOf(error.number()) : error.description();
}

/// For a text with a NUL behind.
const wchar_t* wide(automation::StringView text) noexcept {
    return reinterpret_cast<const wchar_t*>(text.data());
}

} // namespace

HRESULT setErrorInfo(const Error& error, const automation::Guid& iid) noexcept {
    // Without memory the HRESULT says all that there is to say.
    ComPtr<ICreateErrorInfo> create;
    if (SUCCEEDED(CreateErrorInfo(create.put()))) {
        create->SetGUID(toGuid(iid));
        if (error.namesSource()) create->SetSource(const_cast<LPOLESTR>(wide(errorSource)));
        create->SetDescription(const_cast<LPOLESTR>(wide(outsideDescription(error))));
        if (const auto info = query<IErrorInfo>(create.get(), IID_IErrorInfo)) SetErrorInfo(0, info.get());
    }
    return error.hresult();
}

void fillException(EXCEPINFO& exception, const Error& error) noexcept {
    exception = {};
    exception.scode = error.hresult();
    if (error.namesSource()) exception.bstrSource = newBstr(errorSource);
    exception.bstrDescription = newBstr(outsideDescription(error));
}

} // namespace tarncom32::com
