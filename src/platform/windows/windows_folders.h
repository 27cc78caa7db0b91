#pragma once

#include "platform/folders.h"

namespace tarncom32::platform::windows {

/// The folder of a module, by the module's full path.
automation::String folderOf(automation::StringView modulePath);

/// The shell's special folders, and the folder of the DLL (or program) that holds this code.
class WindowsFolders final : public Folders {
public:
    automation::String special(std::int32_t number) override;
    automation::String ownFolder() override;
};

} // namespace tarncom32::platform::windows
