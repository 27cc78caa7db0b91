#include "automation/object.h"

namespace tarncom32::automation {

std::atomic<std::size_t> Object::liveCount_{0};

Variant Object::invokeNamed(const MemberName& name, const MemberName&, std::span<Variant> arguments) {
    return invoke(name, Access::MethodOrGet, arguments);
}

std::unique_ptr<Enumerator> Object::enumerate() {
    throw Error(errors::NotACollection);
}

} // namespace tarncom32::automation
