#pragma once

#include "platform/code_page.h"
#include "platform/file_dialog.h"

namespace tarncom32::platform::windows {

/// The system's dialogs, by its 8-bit calls: characters outside the code page come back as "?".
class SystemFileDialog final : public FileDialog {
public:
    explicit SystemFileDialog(const CodePage& codePage) : codePage_(codePage) {}

    FileDialogAnswer showOpen(const FileDialogRequest& request) override;
    FileDialogAnswer showSave(const FileDialogRequest& request) override;

private:
    const CodePage& codePage_;
};

} // namespace tarncom32::platform::windows
