#include "automation/object.h"

namespace tarncom32::automation {

std::atomic<std::size_t> Object::liveCount_{0};

std::unique_ptr<Enumerator> Object::enumerate() {
    throw Error(errors::NotACollection);
}

} // namespace tarncom32::automation
