#include "files/file_operations.h"

namespace tarncom32::files {

using automation::ClassInfo;
using automation::in;
using automation::inOut;
using automation::optional;
using automation::out;
using automation::operator""_guid;
using F = FileOperations;

namespace member = automation::member;

namespace {

// A file-system object that is made when the caller has none.
automation::ParameterInfo optionalFso() {
    return optional(inOut(u"oFSO"), ObjectRef());
}

} // namespace

const ClassInfo& FileOperations::describe() {
    static const ClassInfo info(
        kClassName, u"Paths, file names, temporary files, long and short path forms.",
        "ab991001-fbea-440b-99c6-a49431331550"_guid, "6289e3f4-f6d9-434d-a3d3-54564cea4ee0"_guid,
        {
            member::method<&F::isFileReadOnly>(
                1, u"IsFileReadOnly", {in(u"sFileName")},
                u"Whether the file has the read-only attribute; true for a file that does not exist."),
            member::method<&F::trimFileExtension>(2, u"TrimFileExtension", {in(u"sPathFileName"), optionalFso()},
                                                  u"The path and name without the extension and its dot."),
            member::method<&F::trimFilePath>(3, u"TrimFilePath", {in(u"sPathFileName"), optionalFso()},
                                             u"The last component of the path."),
            member::method<&F::shortenPath>(4, u"ShortenPath", {in(u"sPath")},
                                            u"A path of more than 20 characters as its first folder and \"...\\\"."),
            member::method<&F::shortenFileName>(
                5, u"ShortenFileName", {in(u"sFileName")},
                u"A name of more than 20 characters as its first 29 characters and \"...\"."),
            member::method<&F::isValidExtension>(
                6, u"IsValidExtension", {in(u"sFileName"), in(u"sExtension")},
                u"Whether the name's last four characters are the extension, without regard to case."),
            member::method<&F::isFileExtensionInValidList>(
                7, u"IsFileExtensionInValidList", {in(u"sFileName"), in(u"sExtensionList")},
                u"Whether the name's last four characters stand in the list; case counts."),
            member::method<&F::findSystemFolder>(8, u"FindSystemFolder", {in(u"lngNum")},
                                                 u"The path of a special folder; empty when there is none."),
            member::method<&F::isFileAlreadyOpened>(9, u"IsFileAlreadyOpened", {in(u"strFile")},
                                                    u"Whether somebody else holds the file open."),
            member::reporting(member::method<&F::cleanFileName>(
                10, u"CleanFileName", {inOut(u"sFileName")},
                u"Replaces \\ / : ? < > and | by underscores in the variable, and returns its text.")),
            member::method<&F::parseFileAndPathName>(11, u"ParseFileAndPathName",
                                                     {in(u"sFullTitle"), out(u"sPath"), out(u"sFileName")},
                                                     u"Splits a path at its last separator into folder and file name."),
            member::method<&F::parseFileNameAndExtension>(
                12, u"ParseFileNameAndExtension",
                {in(u"sFileNameWithExtension"), out(u"sFileName"), out(u"sExtension")},
                u"Splits a name in front of its last dot into name and extension."),
            member::method<&F::limitFileNameLength>(
                13, u"LimitFileNameLength", {in(u"sCompleteFileName"), in(u"iMaxLen")},
                u"A path that is too long with \"\\...\\\" in place of its last folders."),
            member::reporting(
                member::method<&F::getTempDirectory>(14, u"GetTempDirectory", {optionalFso()},
                                                     u"The folder of temporary files, with a separator at its end.")),
            member::reporting(member::method<&F::getTempFileName>(15, u"GetTempFileName", {optionalFso()},
                                                                  u"A name for a temporary file, without a folder.")),
            member::reporting(member::method<&F::getTempPathFileName>(
                16, u"GetTempPathFileName", {optionalFso(), optional(in(u"sExtension"), u"")},
                u"Folder and name for a temporary file, with sExtension (and its dot) if that is given.")),
            member::reporting(member::method<&F::saveStreamToFile>(
                17, u"SaveStreamToFile",
                {in(u"sStreamToSave"), in(u"sFullFileName"), optional(in(u"bOverwrite"), Boolean(true)), optionalFso()},
                u"Writes the text to a file in the 8-bit code page.")),
            member::method<&F::getShortPath>(18, u"GetShortPath", {in(u"sLongPath")},
                                             u"The short (8.3) form of a path; empty when the path does not exist."),
            member::method<&F::getLongPath>(19, u"GetLongPath", {in(u"sShortPath")},
                                            u"The long form of a path; empty when the path does not exist."),
            member::method<&F::getSelectedFilename>(
                20, u"GetSelectedFilename",
                {in(u"sDialogTitle"), inOut(u"bCancel"), optional(in(u"sPathFileName"), u""),
                 optional(in(u"sFilterString"), u""), optional(in(u"bOpenExistingFile"), Boolean(false)),
                 optional(in(u"iFilterIndex"), std::int16_t{0}), optional(inOut(u"oCommonDialog"), ObjectRef()),
                 optional(inOut(u"hWndParent"), std::int32_t{0})},
                u"Lets the user choose a file to open and returns its path; empty when cancelled."),
        });
    return info;
}

} // namespace tarncom32::files
