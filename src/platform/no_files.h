#pragma once

#include "platform/file_ports.h"

namespace tarncom32::platform {

/// A surrounding without files: nothing exists, no file-system object can be made (429), dialogs are cancelled.
class NoFiles : public FileSystemObjects, public FileStatus, public Folders, public PathCalls, public FileDialog {
public:
    FilePorts ports() { return {*this, *this, *this, *this, *this}; }

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

} // namespace tarncom32::platform
