#include "platform/windows/system_message_box.h"

#include <windows.h>

#include <memory>

namespace tarncom32::platform::windows {

namespace {

using automation::String;
using automation::StringView;

const wchar_t* wide(const String& text) {
    return reinterpret_cast<const wchar_t*>(text.c_str());
}

/// Where reports go instead of a box; empty for boxes.
String reportLog() {
    String path;
    for (DWORD size = MAX_PATH;;) {
        path.resize(size);
        const DWORD length = GetEnvironmentVariableW(L"TARNCOM32_REPORT_LOG", reinterpret_cast<wchar_t*>(path.data()),
                                                     static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        size = length + 1;
    }
}

struct CloseFile {
    using pointer = HANDLE;
    void operator()(HANDLE file) const { CloseHandle(file); }
};

/// Whether the report could be written. One write, so that several processes' reports do not mix.
bool appendReport(const String& path, StringView text, StringView title) {
    const HANDLE opened = CreateFileW(wide(path), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (opened == INVALID_HANDLE_VALUE) return false;
    const std::unique_ptr<HANDLE, CloseFile> file(opened);
    const std::string report = "[" + automation::toUtf8(title) + "] " + automation::toUtf8(text) + "\r\n";
    DWORD written = 0;
    return WriteFile(file.get(), report.data(), static_cast<DWORD>(report.size()), &written, nullptr) != 0;
}

constexpr const wchar_t* kDisabledByUs = L"TarnCom32.Disabled";

BOOL CALLBACK disable(HWND window, LPARAM owner) {
    if (window != reinterpret_cast<HWND>(owner) && IsWindowVisible(window) && IsWindowEnabled(window) &&
        SetPropW(window, kDisabledByUs, window))
        EnableWindow(window, FALSE);
    return TRUE;
}

BOOL CALLBACK enable(HWND window, LPARAM) {
    if (RemovePropW(window, kDisabledByUs)) EnableWindow(window, TRUE);
    return TRUE;
}

/// Keeps the user's input from the calling thread's windows as long as it lives. A box with an owner disables only that
/// one, and enables it again before it goes, so that the host stays in front.
class OtherWindowsDisabled {
public:
    explicit OtherWindowsDisabled(HWND owner) {
        EnumThreadWindows(GetCurrentThreadId(), disable, reinterpret_cast<LPARAM>(owner));
    }
    OtherWindowsDisabled(const OtherWindowsDisabled&) = delete;
    ~OtherWindowsDisabled() { EnumThreadWindows(GetCurrentThreadId(), enable, 0); }
};

} // namespace

MessageAnswer SystemMessageBox::show(StringView text, int style, StringView title) {
    if (const String log = reportLog(); !log.empty() && appendReport(log, text, title))
        return style == message_style::kQuestionYesNo ? MessageAnswer::No : MessageAnswer::Ok;
    const HWND owner = GetActiveWindow();
    const OtherWindowsDisabled others(owner);
    const int button = MessageBoxW(owner, wide(String(text)), wide(String(title)), static_cast<UINT>(style));
    switch (button) {
    case IDYES:
        return MessageAnswer::Yes;
    case IDNO:
        return MessageAnswer::No;
    default:
        return MessageAnswer::Ok;
    }
}

} // namespace tarncom32::platform::windows
