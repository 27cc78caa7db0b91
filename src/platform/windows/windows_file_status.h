#pragma once

#include "platform/code_page.h"
#include "platform/file_status.h"

namespace tarncom32::platform::windows {

/// Files by the system's 8-bit calls: a name outside the code page is that of no file.
class WindowsFileStatus final : public FileStatus {
public:
    explicit WindowsFileStatus(const CodePage& codePage) : codePage_(codePage) {}

    std::uint32_t attributes(automation::StringView path) override;
    void openExclusively(automation::StringView path) override;

private:
    const CodePage& codePage_;
};

} // namespace tarncom32::platform::windows
