#pragma once

#include "server_under_test.h"

namespace tarncom32::bench {

/// What somebody would write who needs this one method only: no tables, no values between the caller's text and the
/// result.
struct IHandWritten : IUnknown {
    /// The source behind the first character of the first delimiter; empty when there is none.
    virtual HRESULT STDMETHODCALLTYPE ReturnStringAfterDelimiter(BSTR* source, BSTR* delimiter, BSTR* result) = 0;
};

Pointer<IHandWritten> newHandWritten();

} // namespace tarncom32::bench
