#pragma once

#include "automation/string.h"

#include <cstdint>

namespace tarncom32::platform {

/// Flags of a file dialog that platforms without the system's own dialogs heed, numbered as the system numbers them.
namespace dialog_flag {
inline constexpr std::int32_t kOverwritePrompt = 2;  ///< Save asks before an existing file is chosen
inline constexpr std::int32_t kPathMustExist = 2048; ///< the folder of the chosen file exists
inline constexpr std::int32_t kFileMustExist = 4096; ///< the chosen file exists
} // namespace dialog_flag

/// Failure codes of a file dialog, numbered as the system numbers them.
namespace dialog_failure {
inline constexpr std::int32_t kNone = 0;               ///< the user cancelled
inline constexpr std::int32_t kBufferTooSmall = 12291; ///< the path has more than `fileSize` - 1 characters
} // namespace dialog_failure

/// What a file dialog is given: the fields of the system's own request, by the same meaning.
struct FileDialogRequest {
    std::int32_t owner = 0;           ///< window handle; 0 for none
    std::int32_t instance = 0;        ///< module handle, passed on
    automation::String filter;        ///< descriptions and patterns in turn, a NUL behind each and one more at the end
    std::int32_t filterIndex = 0;     ///< the filter chosen first, from 1; 0 for none
    automation::String file;          ///< the proposed name, a NUL, and spaces up to `fileSize` - 1 characters
    std::int32_t fileSize = 0;        ///< characters that the chosen path may have, its NUL included
    automation::String fileTitle;     ///< what the buffer for the name without folders holds at first
    automation::String initialFolder; ///< empty: the dialog's own choice
    automation::String title;         ///< empty: the dialog's own
    std::int32_t flags = 0;           ///< passed on unchanged
    automation::String defaultExtension; ///< passed on unchanged
};

/// What became of the dialog.
struct FileDialogAnswer {
    bool chosen = false;
    std::int32_t failure = 0;     ///< why nothing was chosen, of `dialog_failure`; 0: the user cancelled
    automation::String file{};    ///< the buffer of the chosen path; it ends before the first NUL
    std::int32_t filterIndex = 0; ///< the filter that was chosen, from 1
};

/// Asks the user for a file name, and waits for it.
class FileDialog {
public:
    virtual ~FileDialog() = default;
    /// Asks for a file to open; where it has to exist, the flags say so.
    virtual FileDialogAnswer showOpen(const FileDialogRequest& request) = 0;
    /// Asks for a file to write to.
    virtual FileDialogAnswer showSave(const FileDialogRequest& request) = 0;
};

} // namespace tarncom32::platform
