#include "frame/records.h"

namespace tarncom32::frame {

std::span<const RecordInfo> records() {
    static_assert(sizeof(ThunkBytes) == ThunkBytes::kRecord.size);
    static_assert(sizeof(PushParamThunk) == PushParamThunk::kRecord.size);
    static constexpr RecordInfo kRecords[] = {ThunkBytes::kRecord, PushParamThunk::kRecord};
    return kRecords;
}

} // namespace tarncom32::frame
