#include "platform/windows/windows_file_status.h"

#include "automation/error.h"

#include <windows.h>

namespace tarncom32::platform::windows {

using automation::Error;
using automation::StringView;
namespace errors = automation::errors;

static_assert(file_attribute::kNone == INVALID_FILE_ATTRIBUTES && file_attribute::kReadOnly == FILE_ATTRIBUTE_READONLY);

namespace {

// The host's error for a failed opening.
std::int32_t errorNumber(DWORD code) {
    switch (code) {
    case ERROR_FILE_NOT_FOUND:
        return errors::FileNotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_BAD_NETPATH:
    case ERROR_INVALID_DRIVE:
        return errors::PathNotFound;
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_ACCESS_DENIED:
        return errors::PermissionDenied;
    case ERROR_INVALID_NAME:
    case ERROR_FILENAME_EXCED_RANGE:
        return errors::BadFileName;
    default:
        return errors::DeviceIo;
    }
}

} // namespace

std::uint32_t WindowsFileStatus::attributes(StringView path) {
    return GetFileAttributesA(codePage_.encode(path).c_str());
}

void WindowsFileStatus::openExclusively(StringView path) {
    const std::string name = codePage_.encode(path);
    const HANDLE file =
        CreateFileA(name.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) throw Error(errorNumber(GetLastError()));
    CloseHandle(file);
}

} // namespace tarncom32::platform::windows
