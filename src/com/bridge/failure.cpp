#include "com/bridge/failure.h"

#include <new>

namespace tarncom32::com {

using automation::Error;

Error errorInFlight() noexcept {
    try {
        throw;
    } catch (const Error& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return Error(automation::errors::OutOfMemory);
    } catch (const std::exception& error) {
        return Error(automation::errors::InternalError, automation::fromUtf8(error.what()));
    } catch (...) {
        return Error(automation::errors::InternalError);
    }
}

HRESULT setErrorInfo(const Error& error, const automation::Guid& iid) noexcept {
    ComPtr<ICreateErrorInfo> create;
    if (SUCCEEDED(CreateErrorInfo(create.put()))) {
        const automation::String source(errorSource);
        create->SetGUID(toGuid(iid));
        create->SetSource(const_cast<LPOLESTR>(wide(source)));
        create->SetDescription(const_cast<LPOLESTR>(wide(error.description())));
        if (const auto info = query<IErrorInfo>(create.get(), IID_IErrorInfo)) SetErrorInfo(0, info.get());
    }
    return error.hresult();
}

void fillException(EXCEPINFO& exception, const Error& error) noexcept {
    exception = {};
    exception.scode = error.hresult();
    exception.bstrSource = newBstr(errorSource);
    exception.bstrDescription = newBstr(error.description());
}

} // namespace tarncom32::com
