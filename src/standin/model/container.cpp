#include "standin/model/container.h"

#include "standin/visio_error.h"

namespace tarncom32::standin {

namespace {
constexpr std::uint32_t kHighestId = 0x7FFFFFFE; // ids are signed numbers to callers
}

std::uint32_t Container::takeId() {
    if (!freed_.empty()) return freed_.extract(freed_.begin()).value();
    if (next_ <= kHighestId) return next_++;
    // A file may use the highest id; there are fewer shapes than ids, so a gap is found soon.
    for (std::uint32_t candidate = 1; candidate <= kHighestId; ++candidate)
        if (!byId.contains(candidate)) return candidate;
    throw visio_error::invalidSheetIdentifier();
}

void Container::noteId(std::uint32_t used) {
    if (used >= next_) next_ = used + 1;
}

} // namespace tarncom32::standin
