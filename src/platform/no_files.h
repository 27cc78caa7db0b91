#pragma once

#include "platform/file_dialog.h"
#include "platform/file_status.h"
#include "platform/file_system_objects.h"
#include "platform/folders.h"
#include "platform/path_calls.h"

namespace tarncom32::platform {

struct FilePorts;

/// Where there are no files: nothing exists, no file-system object can be made (429), dialogs are cancelled.
class NoFiles : public FileSystemObjects, public FileStatus, public Folders, public PathCalls, public FileDialog {
public:
    /// All ports of files; platform/file_ports.h has the type.
    FilePorts ports();

    automation::ObjectRef create() override;
    std::uint32_t attributes(automation::StringView) override { return file_attribute::kNone; }
    void openExclusively(automation::StringView) override;
    automation::String special(std::int32_t) override { return {}; }
    automation::String ownFolder() override { return {}; }
    SystemVersion version() const override { return {10, 0}; }
    std::size_t shortPath(const std::string&, std::span<char>) override { return 0; }
    std::size_t shortPath(const automation::String&, std::span<char16_t>) override { return 0; }
    std::size_t longPath(const std::string&, std::span<char>) override { return 0; }
    std::size_t longPath(const automation::String&, std::span<char16_t>) override { return 0; }
    std::optional<std::string> findFirst(const std::string&) override { return {}; }
    FileDialogAnswer showOpen(const FileDialogRequest&) override { return {}; }
    FileDialogAnswer showSave(const FileDialogRequest&) override { return {}; }
};

/// One for all that have no files.
NoFiles& noFiles();

} // namespace tarncom32::platform
