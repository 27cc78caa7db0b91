#pragma once

#include "platform/file_dialog.h"
#include "platform/portable/drive_map.h"

#include <filesystem>
#include <iosfwd>
#include <vector>

namespace tarncom32::platform::portable {

/// A file dialog on a terminal. It lists the filters and asks for a file name until it has one:
///
///     == Open a drawing ==
///        1  All files (*.*)
///      * 2  Drawings (*.vsd)
///     Folder: Z:\home\me\Drawings
///     File name (Tab lists and completes, :1 takes a filter, end of input cancels) [Plan.vsd]:
///
/// The name is sought in the folder unless it is a path; an empty line takes the proposed name. A name that ends in a
/// Tab is completed among the folder's files, those of the filter; where several fit they are listed. So is, where the
/// file must exist, a name that does not. What the request's flags ask for is heeded: an existing file, an existing
/// folder, a question before a file is overwritten. The end of the input cancels. A name without an extension gets the
/// default one unless that is a wildcard.
class TerminalFileDialog final : public FileDialog {
public:
    /// All three must outlive the dialog.
    TerminalFileDialog(const DriveMap& drives, std::istream& input, std::ostream& output)
        : drives_(drives), input_(input), output_(output) {}

    FileDialogAnswer showOpen(const FileDialogRequest& request) override;
    FileDialogAnswer showSave(const FileDialogRequest& request) override;

private:
    struct Session;
    const DriveMap& drives_;
    std::istream& input_;
    std::ostream& output_;
};

} // namespace tarncom32::platform::portable
