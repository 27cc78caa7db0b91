#include "standin/model/random_guid.h"

#include <random>

namespace tarncom32::standin {

automation::Guid randomGuid() {
    std::random_device random;
    automation::Guid guid;
    guid.data1 = random();
    guid.data2 = static_cast<std::uint16_t>(random());
    guid.data3 = static_cast<std::uint16_t>((random() & 0x0FFF) | 0x4000);
    for (std::uint8_t& byte : guid.data4)
        byte = static_cast<std::uint8_t>(random());
    guid.data4[0] = static_cast<std::uint8_t>((guid.data4[0] & 0x3F) | 0x80);
    return guid;
}

} // namespace tarncom32::standin
