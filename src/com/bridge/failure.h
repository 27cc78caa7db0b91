#pragma once

#include "automation/class_info.h"
#include "automation/error.h"
#include "com/bridge/com_ptr.h"

#include <algorithm>

/// Failures on their way to COM callers.
namespace tarncom32::com {

/// The name under which errors of this module appear: that of its type library. A NUL stands behind it.
inline automation::StringView errorSource = u"TarnCom32";

/// Raises what a failing HRESULT stands for.
inline void check(HRESULT result) {
    if (FAILED(result)) throw automation::Error::fromHresult(static_cast<std::int32_t>(result));
}

/// Makes the error the calling thread's error information (`iid`: of which interface); its HRESULT.
HRESULT setErrorInfo(const automation::Error& error, const automation::Guid& iid) noexcept;

/// Runs the body of a call from outside; its failure becomes error information and an HRESULT.
template <class Body>
HRESULT fenced(Body&& body) noexcept {
    try {
        return body();
    } catch (...) {
        return setErrorInfo(automation::errorInFlight(), {});
    }
}

/// Fills what `IDispatch::Invoke` tells of an error.
void fillException(EXCEPINFO& exception, const automation::Error& error) noexcept;

inline GUID toGuid(const automation::Guid& guid) noexcept {
    GUID result{guid.data1, guid.data2, guid.data3, {}};
    for (std::size_t i = 0; i < guid.data4.size(); ++i)
        result.Data4[i] = guid.data4[i];
    return result;
}
inline automation::Guid fromGuid(REFGUID guid) noexcept {
    automation::Guid result{guid.Data1, guid.Data2, guid.Data3, {}};
    std::copy(std::begin(guid.Data4), std::end(guid.Data4), result.data4.begin());
    return result;
}
inline bool equals(REFGUID left, const automation::Guid& right) noexcept {
    return IsEqualGUID(left, toGuid(right));
}

} // namespace tarncom32::com
