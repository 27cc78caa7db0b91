#pragma once

#include "automation/type.h"

#include <span>

/// The public enumerations. Every one travels as a signed 32-bit number; names and values are published and never
/// change.
namespace tarncom32::frame {

/// Where on its owner the progress window stands.
enum class ePROGRESS_BAR_POSITION : std::int32_t {
    UPPER_LEFT = 1,
    UPPER_RIGHT = 2,
    LOWER_LEFT = 3,
    LOWER_RIGHT = 4,
    CENTER = 5,
    CENTER_TOP = 6,
    CENTER_BOTTOM = 7,
    CENTER_RIGHT = 8,
    CENTER_LEFT = 9,
};

/// Which difference between the versions of a document and of an add-in fails the test.
enum class eTEST_DOCUMENT_COMPATIBILITY : std::int32_t {
    FAIL_ON_OLDER = 0,
    FAIL_ON_NEWER = 1,
    FAIL_ON_BOTH = 2,
};

/// The display settings that are asked about.
enum class eDisplayModes : std::int32_t {
    eCURRENT_DISPLAY = -1,
};

/// Colour depth of the display, in bits a pixel.
enum class eCOLORS : std::int32_t {
    eFAILURE = 0,
    e16_COLOR = 4,
    e256_COLOR = 8,
    eHIGH_COLOR = 16,
    eTRUE_COLOR = 24,
    eTRUE_COLOR2 = 32,
};

/// A field of the command line with which Visio starts an add-on.
enum class VIS_CMD_INFO : std::int32_t {
    CMD_INFO_NONE = -1,
    CMD_INFO_DIRECTION = 0,
    CMD_INFO_DOCUMENT_NUMBER = 1,
    CMD_INFO_PAGE_NUMBER = 2,
    CMD_INFO_SHAPE_ID = 3,
    CMD_INFO_VISIO_HANDLE = 4,
};

/// Where a new XML node goes.
enum class eCreationPosition : std::int32_t {
    POSITION_FIRST_CHILD = 0,
    POSITION_LAST_CHILD = 1,
    POSITION_BEFORE_NODE = 2,
    POSITION_AFTER_NODE = 3,
    POSITION_INDEPENDENT = 4,
};

/// A folder of the user or of the system, by the shell's own number.
enum class SystemFolder : std::int32_t {
    Desktop = 0,
    StartMenu_Programs = 2,
    My_Documents = 5,
    Favorites = 6,
    StartUp = 7,
    Recent = 8,
    SendTo = 9,
    Start_Menu = 11,
    Windows_Desktop = 16,
    Network_Neighborhood = 19,
    Fonts = 20,
    ShellNew = 21,
    AllUsers_Desktop = 25,
    ApplicationData = 26,
    Printhood = 27,
    TemporaryInternetFiles = 32,
    Cookies = 33,
    History = 34,
};

/// Where a user profile is kept.
enum class PROFILE_STORAGE_METHOD : std::int32_t {
    STORAGE_REGISTRY = 0,
    STORAGE_XML = 1,
    STORAGE_INI = 2,
};

// The registry's own header makes macros of these published names.
#pragma push_macro("HKEY_CLASSES_ROOT")
#undef HKEY_CLASSES_ROOT
#pragma push_macro("HKEY_CURRENT_USER")
#undef HKEY_CURRENT_USER
#pragma push_macro("HKEY_LOCAL_MACHINE")
#undef HKEY_LOCAL_MACHINE
#pragma push_macro("HKEY_USERS")
#undef HKEY_USERS
#pragma push_macro("HKEY_CURRENT_CONFIG")
#undef HKEY_CURRENT_CONFIG
#pragma push_macro("HKEY_DYN_DATA")
#undef HKEY_DYN_DATA

/// A root of the registry: the predefined key handle as a signed number.
enum class REGISTRY_HIVE : std::int32_t {
    HKEY_CLASSES_ROOT = (-2147483647 - 1),
    HKEY_CURRENT_USER = -2147483647,
    HKEY_LOCAL_MACHINE = -2147483646,
    HKEY_USERS = -2147483645,
    HKEY_CURRENT_CONFIG = -2147483643,
    HKEY_DYN_DATA = -2147483642,
};

#pragma pop_macro("HKEY_CLASSES_ROOT")
#pragma pop_macro("HKEY_CURRENT_USER")
#pragma pop_macro("HKEY_LOCAL_MACHINE")
#pragma pop_macro("HKEY_USERS")
#pragma pop_macro("HKEY_CURRENT_CONFIG")
#pragma pop_macro("HKEY_DYN_DATA")

/// One of the two captions of a menu item.
enum class eDualCaptions : std::int32_t {
    eCaptionOne = 1,
    eCaptionTwo = 2,
};

/// Whose menus a menu item goes to.
enum class eMenuSet : std::int32_t {
    eApplicationLevelMenus = 1,
    eDocumentLevelMenus = 2,
};

/// Orientation of the paper.
enum class PrinterOrientationConstants : std::int32_t {
    cdlPortrait = 1,
    cdlLandscape = 2,
};

/// Flags of the colour dialog.
enum class ColorConstants : std::int32_t {
    cdlCCRGBInit = 1,
    cdlCCFullOpen = 2,
    cdlCCPreventFullOpen = 4,
    cdlCCHelpButton = 8,
};

/// Flags of the file dialogs.
enum class FileOpenConstants : std::int32_t {
    cdlOFNReadOnly = 1,
    cdlOFNOverwritePrompt = 2,
    cdlOFNHideReadOnly = 4,
    cdlOFNNoChangeDir = 8,
    cdlOFNHelpButton = 16,
    cdlOFNNoValidate = 256,
    cdlOFNAllowMultiselect = 512,
    cdlOFNExtensionDifferent = 1024,
    cdlOFNPathMustExist = 2048,
    cdlOFNFileMustExist = 4096,
    cdlOFNCreatePrompt = 8192,
    cdlOFNShareAware = 16384,
    cdlOFNNoReadOnlyReturn = 32768,
    cdlOFNNoLongNames = 262144,
    cdlOFNExplorer = 524288,
    cdlOFNNoDereferenceLinks = 1048576,
    cdlOFNLongNames = 2097152,
};

/// Flags of the font dialog.
enum class FontsConstants : std::int32_t {
    cdlCFScreenFonts = 1,
    cdlCFPrinterFonts = 2,
    cdlCFBoth = 3,
    cdlCFHelpButton = 4,
    cdlCFEffects = 256,
    cdlCFApply = 512,
    cdlCFANSIOnly = 1024,
    cdlCFNoVectorFonts = 2048,
    cdlCFNoSimulations = 4096,
    cdlCFLimitSize = 8192,
    cdlCFFixedPitchOnly = 16384,
    cdlCFWYSIWYG = 32768,
    cdlCFForceFontExist = 65536,
    cdlCFScalableOnly = 131072,
    cdlCFTTOnly = 262144,
    cdlCFNoFaceSel = 524288,
    cdlCFNoStyleSel = 1048576,
    cdlCFNoSizeSel = 2097152,
};

/// Flags of the printer dialog.
enum class PrinterConstants : std::int32_t {
    cdlPDAllPages = 0,
    cdlPDSelection = 1,
    cdlPDPageNums = 2,
    cdlPDNoSelection = 4,
    cdlPDNoPageNums = 8,
    cdlPDCollate = 16,
    cdlPDPrintToFile = 32,
    cdlPDPrintSetup = 64,
    cdlPDNoWarning = 128,
    cdlPDReturnDC = 256,
    cdlPDReturnIC = 512,
    cdlPDReturnDefault = 1024,
    cdlPDHelpButton = 2048,
    cdlPDUseDevModeCopies = 262144,
    cdlPDDisablePrintToFile = 524288,
    cdlPDHidePrintToFile = 1048576,
};

/// Commands of the help viewer.
enum class HelpConstants : std::int32_t {
    cdlHelpContext = 1,
    cdlHelpQuit = 2,
    cdlHelpIndex = 3,
    cdlHelpContents = 3,
    cdlHelpHelpOnHelp = 4,
    cdlHelpSetIndex = 5,
    cdlHelpSetContents = 5,
    cdlHelpContextPopup = 8,
    cdlHelpForceFile = 9,
    cdlHelpKey = 257,
    cdlHelpCommandHelp = 258,
    cdlHelpPartialKey = 261,
};

/// Errors of the common dialogs.
enum class ErrorConstants : std::int32_t {
    cdlInvalidPropertyValue = 380,
    cdlGetNotSupported = 394,
    cdlSetNotSupported = 383,
    cdlAlloc = 32752,
    cdlCancel = 32755,
    cdlDialogFailure = -32768,
    cdlFindResFailure = 32761,
    cdlHelp = 32751,
    cdlInitialization = 32765,
    cdlLoadResFailure = 32760,
    cdlLoadStrFailure = 32762,
    cdlLockResFailure = 32759,
    cdlMemAllocFailure = 32758,
    cdlMemLockFailure = 32757,
    cdlNoFonts = 24574,
    cdlBufferTooSmall = 20476,
    cdlInvalidFileName = 20477,
    cdlSubclassFailure = 20478,
    cdlCreateICFailure = 28661,
    cdlDndmMismatch = 28662,
    cdlGetDevModeFail = 28666,
    cdlInitFailure = 28665,
    cdlLoadDrvFailure = 28667,
    cdlNoDefaultPrn = 28663,
    cdlNoDevices = 28664,
    cdlParseFailure = 28669,
    cdlPrinterCodes = 28671,
    cdlPrinterNotFound = 28660,
    cdlRetDefFailure = 28668,
    cdlSetupFailure = 28670,
    cdlNoTemplate = 32764,
    cdlNoInstance = 32763,
    cdlInvalidSafeModeProcCall = 680,
};

/// A member of an enumeration, as published.
struct EnumerationMember {
    automation::StringView name;
    std::int32_t value;
    automation::StringView help;
};

/// An enumeration, as published.
struct EnumerationInfo {
    automation::StringView name;
    automation::StringView help;
    std::vector<EnumerationMember> members;
};

/// All public enumerations, in the order of the type library.
std::span<const EnumerationInfo> enumerations();

/// The enumeration of that name, without regard to case; null when there is none.
const EnumerationInfo* findEnumeration(automation::StringView name);

} // namespace tarncom32::frame

namespace tarncom32::automation {

template <>
inline constexpr StringView kEnumerationName<frame::ePROGRESS_BAR_POSITION> = u"ePROGRESS_BAR_POSITION";
template <>
inline constexpr StringView kEnumerationName<frame::eTEST_DOCUMENT_COMPATIBILITY> = u"eTEST_DOCUMENT_COMPATIBILITY";
template <>
inline constexpr StringView kEnumerationName<frame::eDisplayModes> = u"eDisplayModes";
template <>
inline constexpr StringView kEnumerationName<frame::eCOLORS> = u"eCOLORS";
template <>
inline constexpr StringView kEnumerationName<frame::VIS_CMD_INFO> = u"VIS_CMD_INFO";
template <>
inline constexpr StringView kEnumerationName<frame::eCreationPosition> = u"eCreationPosition";
template <>
inline constexpr StringView kEnumerationName<frame::SystemFolder> = u"SystemFolder";
template <>
inline constexpr StringView kEnumerationName<frame::PROFILE_STORAGE_METHOD> = u"PROFILE_STORAGE_METHOD";
template <>
inline constexpr StringView kEnumerationName<frame::REGISTRY_HIVE> = u"REGISTRY_HIVE";
template <>
inline constexpr StringView kEnumerationName<frame::eDualCaptions> = u"eDualCaptions";
template <>
inline constexpr StringView kEnumerationName<frame::eMenuSet> = u"eMenuSet";
template <>
inline constexpr StringView kEnumerationName<frame::PrinterOrientationConstants> = u"PrinterOrientationConstants";
template <>
inline constexpr StringView kEnumerationName<frame::ColorConstants> = u"ColorConstants";
template <>
inline constexpr StringView kEnumerationName<frame::FileOpenConstants> = u"FileOpenConstants";
template <>
inline constexpr StringView kEnumerationName<frame::FontsConstants> = u"FontsConstants";
template <>
inline constexpr StringView kEnumerationName<frame::PrinterConstants> = u"PrinterConstants";
template <>
inline constexpr StringView kEnumerationName<frame::HelpConstants> = u"HelpConstants";
template <>
inline constexpr StringView kEnumerationName<frame::ErrorConstants> = u"ErrorConstants";

} // namespace tarncom32::automation
