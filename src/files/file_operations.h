#pragma once

#include "frame/enumerations.h"
#include "frame/reporting.h"

namespace tarncom32::files {

using automation::Boolean;
using automation::ObjectRef;
using automation::String;
using automation::StringView;
using automation::Variant;

/// Paths and file names, temporary files, long and short forms of paths.
///
/// Several members take a scripting file-system object by reference: when the caller's variable is Nothing, the member
/// makes an object and leaves it there for the next call; an object that the caller brings is called by name, whatever
/// it is. The path separator is "\" and the extension's separator ".". What a member does on failure stands at its
/// sentence; the members that work on text alone have none.
class FileOperations final : public frame::Reporting<FileOperations> {
public:
    static constexpr StringView kClassName = u"FileOperations";
    static const automation::ClassInfo& describe();

    explicit FileOperations(platform::Platform& platform) : Reporting(platform) {}

    /// Whether the file has the read-only attribute. A file that does not exist has every attribute, hence true, which
    /// is meant.
    Boolean isFileReadOnly(StringView sFileName);

    /// The path without its extension and the dot, by the file-system object's view of what the extension is. Raises
    /// what the object raises, and 429 when none can be made.
    String trimFileExtension(StringView sPathFileName, ObjectRef& oFSO);

    /// The last component of the path, as the file-system object has it. Raises likewise.
    String trimFilePath(StringView sPathFileName, ObjectRef& oFSO);

    /// A path of more than 20 characters becomes its first folder and "...\".
    String shortenPath(StringView sPath);

    /// A name of more than 20 characters becomes its first 29 characters and "...". That the numbers differ is meant.
    String shortenFileName(StringView sFileName);

    /// Whether the name's last 4 characters are the extension (with its dot), without regard to case.
    Boolean isValidExtension(StringView sFileName, StringView sExtension);

    /// Whether the name's last 4 characters stand anywhere in the list; case counts.
    Boolean isFileExtensionInValidList(StringView sFileName, StringView sExtensionList);

    /// The path of a special folder; empty when the shell has none of that number. Every number is passed on.
    String findSystemFolder(frame::SystemFolder lngNum);

    /// Whether the file cannot be opened for reading with nobody else having it open; false for one that does not
    /// exist. The failure is not reported.
    Boolean isFileAlreadyOpened(StringView strFile);

    /// Replaces each of \ / : ? < > | by an underscore in the caller's variable and returns its text. Reports failures:
    /// the result is then empty.
    String cleanFileName(Variant& sFileName);

    /// The folder, without its last separator, and the file name. The outputs may be the very variable of the input.
    void parseFileAndPathName(StringView sFullTitle, String& sPath, String& sFileName);

    /// What stands before the last dot and what stands from it on, be it in a folder's name.
    void parseFileNameAndExtension(StringView sFileNameWithExtension, String& sFileName, String& sExtension);

    /// A path longer than `iMaxLen` loses its last folders for "\...\". It gets no shorter than that and the file name.
    String limitFileNameLength(StringView sCompleteFileName, std::int16_t iMaxLen);

    /// The folder of temporary files, with a separator at its end. Reports failures.
    String getTempDirectory(ObjectRef& oFSO);

    /// A name for a temporary file, without a folder; no file is made. Reports failures.
    String getTempFileName(ObjectRef& oFSO);

    /// Folder and name for a temporary file. `sExtension`, unless empty, takes the place of the name's own extension
    /// as it is: the caller passes the dot. Reports failures.
    String getTempPathFileName(ObjectRef& oFSO, StringView sExtension);

    /// Writes the text to a file in the 8-bit code page, with nothing behind it. Reports failures, that of an existing
    /// file which is not to be overwritten among them; what is written by then stays.
    void saveStreamToFile(StringView sStreamToSave, StringView sFullFileName, Boolean bOverwrite, ObjectRef& oFSO);

    /// The short (8.3) form of a path; empty for one that does not exist. Reports failures.
    String getShortPath(StringView sLongPath);

    /// The long form of a path; empty for one that does not exist, except on systems without a call for it, where the
    /// pieces that are not found stay. Reports failures.
    String getLongPath(StringView sShortPath);

    /// Lets the user choose a file to open, and returns its path. Without a folder in `sPathFileName` the dialog starts
    /// in the library's own. A dialog that the caller brings is used, and else made and left in the caller's variable.
    /// Cancelled: `bCancel` becomes true and the result is empty. Silent: on any other failure the result is empty too,
    /// and `bCancel` stays.
    String getSelectedFilename(StringView sDialogTitle, Boolean& bCancel, StringView sPathFileName,
                               StringView sFilterString, Boolean bOpenExistingFile, std::int16_t iFilterIndex,
                               ObjectRef& oCommonDialog, std::int32_t& hWndParent);

private:
    /// The caller's file-system object, or a new one that becomes the caller's.
    automation::Object& fileSystemObject(ObjectRef& oFSO);
    /// Reports its failures under its own name.
    String getLongPathUsingFindMethod(StringView path);
};

} // namespace tarncom32::files
