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
    for (std::uint32_t id = 1; id <= kHighestId; ++id)
        if (!byId.contains(id)) return id;
    throw visio_error::invalidSheetIdentifier();
}

void Container::noteId(std::uint32_t id) {
    if (id >= next_) next_ = id + 1;
}

} // namespace tarncom32::standin
