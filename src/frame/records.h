#pragma once

#include "automation/record.h"

/// The public record types.
namespace tarncom32::frame {

namespace detail {
inline constexpr automation::RecordField kThunkBytesFields[] = {{u"Thunk", u"", 6}};
inline constexpr automation::RecordField kPushParamThunkFields[] = {{u"pfn", u"", 1}, {u"Code", u"ThunkBytes", 1}};
} // namespace detail

/// The words of a window's entry stub.
struct ThunkBytes {
    std::uint32_t thunk[6];

    static constexpr automation::RecordInfo kRecord{
        u"ThunkBytes", u"The words of a window's entry stub.",
        automation::operator""_guid("4914e2a9-78d1-4285-9ed9-08df5d7ac545", 36), 24, detail::kThunkBytesFields};
};

/// The entry stub of a subclassed window.
struct PushParamThunk {
    std::uint32_t pfn; ///< the address of the stub
    ThunkBytes code;

    static constexpr automation::RecordInfo kRecord{
        u"PushParamThunk",
        u"The entry stub of a subclassed window; it must stay where it is until the subclassing ends.",
        automation::operator""_guid("2baf7844-3b28-4112-9e28-e2375046aec3", 36), 28, detail::kPushParamThunkFields};
};

using automation::RecordField;
using automation::RecordInfo;

/// All public records; each stands behind those that it contains.
std::span<const RecordInfo> records();

} // namespace tarncom32::frame
