#include "com/client/library_under_test.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>

namespace client {

namespace {

std::wstring textOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

/// The windows of this process inside another (null for the desktop) that are of a class and can be seen.
std::vector<HWND> windows(HWND inside, const wchar_t* ofClass) {
    std::vector<HWND> found;
    for (HWND window = nullptr; (window = FindWindowExW(inside, window, ofClass, nullptr)) != nullptr;) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        if (process == GetCurrentProcessId() && IsWindowVisible(window)) found.push_back(window);
    }
    return found;
}

/// A host's window.
struct Window {
    HWND handle = CreateWindowExW(0, L"STATIC", L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200, 100, nullptr,
                                  nullptr, nullptr, nullptr);
    Window() = default;
    Window(const Window&) = delete;
    ~Window() { DestroyWindow(handle); }
};

std::atomic<HWND> hostWindow{nullptr}, otherWindow{nullptr};

/// Calls `FileOperations.CleanFileName` with Null, which it reports, on a thread with two windows; what the caller got.
HRESULT failInAMember() {
    const Apartment apartment;
    const Window other, host;
    hostWindow = host.handle;
    otherWindow = other.handle;
    SetActiveWindow(host.handle);
    const ComPtr<IDispatch> object = create(L"TarnCom32.FileOperations");
    if (!object) return REGDB_E_CLASSNOTREG;
    std::vector<Value> fileName(1);
    fileName[0].vt = VT_NULL;
    Value cleaned;
    const HRESULT result =
        invoke(*object.get(), idOf(*object.get(), L"CleanFileName"), INVOKE_FUNC, fileName, &cleaned);
    const bool usable = IsWindowEnabled(host.handle) && IsWindowEnabled(other.handle);
    return result == S_OK && (SysStringLen(cleaned.bstrVal) != 0 || !usable) ? E_UNEXPECTED : result;
}

TEST(ErrorReport, TellsTheUserWhatFailedAndWaitsForTheButton) {
    wchar_t log[1024] = L"";
    const bool hadLog = GetEnvironmentVariableW(L"TARNCOM32_REPORT_LOG", log, 1024) > 0;
    SetEnvironmentVariableW(L"TARNCOM32_REPORT_LOG", nullptr);
    std::future<HRESULT> call = std::async(std::launch::async, failInAMember);

    // The box waits for as long as it takes; only one that never comes ends the search.
    std::vector<HWND> shown;
    for (int tries = 0; tries < 1200 && shown.empty(); ++tries) {
        if (call.wait_for(std::chrono::milliseconds(50)) == std::future_status::ready) break;
        shown = windows(nullptr, L"#32770");
    }
    ASSERT_EQ(shown.size(), 1u);
    const HWND box = shown.front();
    EXPECT_EQ(textOf(box), L"TarnCom32");
    EXPECT_EQ(textOf(GetDlgItem(box, 0xFFFF)), L"Problem in FileOperations.CleanFileName\r\nError Number: 94\r\n"
                                               L"Error Description: Invalid use of Null");
    EXPECT_EQ(windows(box, L"Button").size(), 1u);
    EXPECT_EQ(call.wait_for(std::chrono::seconds(0)), std::future_status::timeout) << "the call did not wait";
    EXPECT_EQ(GetWindow(box, GW_OWNER), hostWindow);
    EXPECT_FALSE(IsWindowEnabled(hostWindow) || IsWindowEnabled(otherWindow)) << "the host can be used meanwhile";

    PostMessageW(box, WM_COMMAND, IDOK, 0);
    EXPECT_EQ(call.get(), S_OK);
    EXPECT_TRUE(windows(nullptr, L"#32770").empty()) << "a second box";
    if (hadLog) SetEnvironmentVariableW(L"TARNCOM32_REPORT_LOG", log);
}

} // namespace

} // namespace client
