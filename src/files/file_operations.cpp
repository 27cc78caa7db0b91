#include "files/file_operations.h"

#include "automation/convert.h"
#include "files/common_dlg.h"
#include "files/path_forms.h"
#include "files/path_text.h"
#include "frame/report.h"

namespace tarncom32::files {

using automation::Error;
using automation::Object;
using automation::toObject;
using automation::toText;
using frame::reportAndStop;
using frame::silently;

namespace errors = automation::errors;

namespace {

constexpr std::int32_t kTemporaryFolder = 2; // the file-system object's number for it

} // namespace

Object& FileOperations::fileSystemObject(ObjectRef& oFSO) {
    if (!oFSO) oFSO = platform_.files.objects.create();
    return deref(oFSO);
}

Boolean FileOperations::isFileReadOnly(StringView sFileName) {
    return (platform_.files.status.attributes(sFileName) & platform::file_attribute::kReadOnly) != 0;
}

String FileOperations::trimFileExtension(StringView sPathFileName, ObjectRef& oFSO) {
    const String extension = toText(fileSystemObject(oFSO).call(u"GetExtensionName", sPathFileName));
    if (extension.empty()) return String(sPathFileName);
    if (extension.size() >= sPathFileName.size()) throw Error(errors::InvalidProcedureCall);
    return String(sPathFileName.substr(0, sPathFileName.size() - extension.size() - 1));
}

String FileOperations::trimFilePath(StringView sPathFileName, ObjectRef& oFSO) {
    return toText(fileSystemObject(oFSO).call(u"GetFileName", sPathFileName));
}

String FileOperations::shortenPath(StringView sPath) {
    return files::shortenPath(sPath);
}

String FileOperations::shortenFileName(StringView sFileName) {
    return files::shortenFileName(sFileName);
}

Boolean FileOperations::isValidExtension(StringView sFileName, StringView sExtension) {
    return hasExtension(sFileName, sExtension);
}

Boolean FileOperations::isFileExtensionInValidList(StringView sFileName, StringView sExtensionList) {
    return isExtensionInList(sFileName, sExtensionList);
}

String FileOperations::findSystemFolder(frame::SystemFolder lngNum) {
    String path;
    silently([&] {
        const String found = platform_.files.folders.special(static_cast<std::int32_t>(lngNum));
        const StringView trimmed = automation::trim(found);
        path = automation::trim(trimmed.substr(0, trimmed.find(u'\0')));
    });
    return path;
}

Boolean FileOperations::isFileAlreadyOpened(StringView strFile) {
    Boolean opened = false;
    frame::trap([&] { platform_.files.status.openExclusively(strFile); },
                [&](const Error& error) { opened = error.number() != errors::FileNotFound; });
    return opened;
}

String FileOperations::cleanFileName(Variant& sFileName) {
    String result;
    reportAndStop(platform_.messageBox, describe(), [&] {
        String text = toText(sFileName);
        for (const char16_t unclean : kUncleanCharacters)
            text = replaceWithUnderscore(std::move(text), unclean);
        sFileName = text;
        result = std::move(text);
    });
    return result;
}

void FileOperations::parseFileAndPathName(StringView sFullTitle, String& sPath, String& sFileName) {
    // The outputs may be what is read.
    const String full(sFullTitle);
    const auto [path, name] = splitPath(full);
    sPath = path;
    sFileName = name;
}

void FileOperations::parseFileNameAndExtension(StringView sFileNameWithExtension, String& sFileName,
                                               String& sExtension) {
    const String full(sFileNameWithExtension);
    const auto [name, extension] = splitExtension(full);
    sFileName = name;
    sExtension = extension;
}

String FileOperations::limitFileNameLength(StringView sCompleteFileName, std::int16_t iMaxLen) {
    return limitLength(sCompleteFileName, iMaxLen);
}

String FileOperations::getTempDirectory(ObjectRef& oFSO) {
    String result;
    reportAndStop(platform_.messageBox, describe(), [&] {
        const Variant folder = fileSystemObject(oFSO).call(u"GetSpecialFolder", kTemporaryFolder);
        result = toText(folder.isObject() ? deref(toObject(folder)).get(u"Path") : folder);
        if (!result.ends_with(u'\\')) result.push_back(u'\\');
    });
    return result;
}

String FileOperations::getTempFileName(ObjectRef& oFSO) {
    String result;
    reportAndStop(platform_.messageBox, describe(),
                  [&] { result = toText(fileSystemObject(oFSO).call(u"GetTempName")); });
    return result;
}

String FileOperations::getTempPathFileName(ObjectRef& oFSO, StringView sExtension) {
    String result;
    reportAndStop(platform_.messageBox, describe(), [&] {
        fileSystemObject(oFSO);
        const String folder = getTempDirectory(oFSO);
        String name = getTempFileName(oFSO);
        if (!sExtension.empty()) name = String(splitExtension(name).first).append(sExtension);
        result = folder + name;
    });
    return result;
}

void FileOperations::saveStreamToFile(StringView sStreamToSave, StringView sFullFileName, Boolean bOverwrite,
                                      ObjectRef& oFSO) {
    reportAndStop(platform_.messageBox, describe(), [&] {
        // Nothing is said of UTF-16, so that the file is in the code page.
        std::array<Variant, 2> arguments{Variant(sFullFileName), Variant(bOverwrite)};
        const ObjectRef stream =
            toObject(fileSystemObject(oFSO).invokeNamed(u"CreateTextFile", u"Overwrite", arguments));
        deref(stream).call(u"Write", sStreamToSave);
        stream->call(u"Close");
    });
}

String FileOperations::getShortPath(StringView sLongPath) {
    String result;
    reportAndStop(platform_.messageBox, describe(),
                  [&] { result = PathForms(platform_.files.pathCalls, platform_.codePage).shortPath(sLongPath); });
    return result;
}

String FileOperations::getLongPath(StringView sShortPath) {
    String result;
    reportAndStop(platform_.messageBox, describe(), [&] {
        if (canUseLongPathCall(platform_.files.pathCalls.version()))
            result = PathForms(platform_.files.pathCalls, platform_.codePage).longPath(sShortPath);
        else
            result = getLongPathUsingFindMethod(sShortPath);
    });
    return result;
}

String FileOperations::getLongPathUsingFindMethod(StringView path) {
    String result;
    reportAndStop(platform_.messageBox, kClassName, u"GetLongPathUsingFindMethod",
                  [&] { result = PathForms(platform_.files.pathCalls, platform_.codePage).longPathByFinding(path); });
    return result;
}

String FileOperations::getSelectedFilename(StringView sDialogTitle, Boolean& bCancel, StringView sPathFileName,
                                           StringView sFilterString, Boolean bOpenExistingFile,
                                           std::int16_t iFilterIndex, ObjectRef& oCommonDialog,
                                           std::int32_t& hWndParent) {
    String result;
    const auto choose = [&] {
        if (!oCommonDialog) oCommonDialog = automation::make<CommonDlg>(platform_);
        Object& dialog = deref(oCommonDialog);
        const auto [path, name] = splitPath(sPathFileName);
        dialog.put(u"DialogTitle", sDialogTitle);
        dialog.put(u"Filter", sFilterString);
        dialog.put(u"FilterIndex", iFilterIndex);
        dialog.put(u"FileName", name);
        dialog.put(u"InitDir", path.empty() ? platform_.files.folders.ownFolder() : String(path));
        dialog.put(u"Flags", bOpenExistingFile.isNonZero() ? frame::FileOpenConstants::cdlOFNFileMustExist
                                                           : frame::FileOpenConstants{});
        if (hWndParent != 0) silently([&] { dialog.put(u"OwnerWindow", hWndParent); });
        dialog.put(u"CancelError", true);
        dialog.call(u"ShowOpen");
        result = toText(dialog.get(u"FileName"));
    };
    frame::trap(choose, [&](const Error& error) {
        if (error.number() == static_cast<std::int32_t>(frame::ErrorConstants::cdlCancel)) bCancel = true;
    });
    return result;
}

} // namespace tarncom32::files
