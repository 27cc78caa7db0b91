#include "frame/records.h"

namespace tarncom32::frame {

using automation::operator""_guid;

namespace {

constexpr RecordField kThunkBytes[] = {{u"Thunk", u"", 6}};
constexpr RecordField kPushParamThunk[] = {{u"pfn", u"", 1}, {u"Code", u"ThunkBytes", 1}};

constexpr RecordInfo kRecords[] = {
    {u"ThunkBytes", u"The words of a window's entry stub.", "4914e2a9-78d1-4285-9ed9-08df5d7ac545"_guid, kThunkBytes},
    {u"PushParamThunk", u"The entry stub of a subclassed window; it must stay where it is until the subclassing ends.",
     "2baf7844-3b28-4112-9e28-e2375046aec3"_guid, kPushParamThunk},
};

} // namespace

std::span<const RecordInfo> records() {
    return kRecords;
}

} // namespace tarncom32::frame
