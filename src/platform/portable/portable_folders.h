#pragma once

#include "platform/folders.h"
#include "platform/portable/drive_map.h"

namespace tarncom32::platform::portable {

/// The user's folders by XDG's rules. Folders that only Windows has (the links of Recent and SendTo, the network
/// neighbourhood, the desktop of all users) are empty.
class PortableFolders final : public Folders {
public:
    explicit PortableFolders(const DriveMap& drives) : drives_(drives) {}

    automation::String special(std::int32_t number) override;
    /// The folder of the program or shared library that holds this code.
    automation::String ownFolder() override;

private:
    const DriveMap& drives_;
};

} // namespace tarncom32::platform::portable
