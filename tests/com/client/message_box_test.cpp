#include "com/client/library_under_test.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>

namespace client {

namespace {

std::wstring textOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

bool isOfClass(HWND window, const wchar_t* wanted) {
    wchar_t name[16] = L"";
    GetClassNameW(window, name, 16);
    return IsWindowVisible(window) && std::wstring(name) == wanted;
}

BOOL CALLBACK addDialog(HWND window, LPARAM list) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == GetCurrentProcessId() && isOfClass(window, L"#32770"))
        reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

/// The dialogs of this process that can be seen on the desktop.
std::vector<HWND> dialogs() {
    std::vector<HWND> found;
    EnumWindows(&addDialog, reinterpret_cast<LPARAM>(&found));
    return found;
}

BOOL CALLBACK countButton(HWND child, LPARAM count) {
    if (isOfClass(child, L"Button")) ++*reinterpret_cast<int*>(count);
    return TRUE;
}

/// What a message box says, and how many buttons it has.
struct Box {
    std::wstring title;
    std::wstring text;
    int buttons = 0;
};

Box read(HWND dialog) {
    Box box{textOf(dialog), textOf(GetDlgItem(dialog, 0xFFFF))};
    EnumChildWindows(dialog, &countButton, reinterpret_cast<LPARAM>(&box.buttons));
    return box;
}

/// Calls `FileOperations.CleanFileName` with Null, which it reports; what the caller got.
HRESULT failInAMember() {
    const Apartment apartment;
    const Pointer<IDispatch> object = create(L"TarnCom32.FileOperations");
    if (!object) return REGDB_E_CLASSNOTREG;
    auto* name = const_cast<LPOLESTR>(L"CleanFileName");
    DISPID id = 0;
    if (const HRESULT result = object->GetIDsOfNames(IID_NULL, &name, 1, 0, &id); FAILED(result)) return result;
    Value fileName;
    fileName.vt = VT_NULL;
    DISPPARAMS parameters{&fileName, nullptr, 1, 0};
    Value cleaned;
    const HRESULT result = object->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &parameters, &cleaned, nullptr, nullptr);
    return result == S_OK && SysStringLen(cleaned.bstrVal) != 0 ? E_UNEXPECTED : result;
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
        shown = dialogs();
    }
    ASSERT_EQ(shown.size(), 1u);
    const Box box = read(shown.front());
    EXPECT_EQ(box.title, L"TarnCom32");
    EXPECT_EQ(box.text, L"Problem in FileOperations.CleanFileName\r\nError Number: 94\r\n"
                        L"Error Description: Invalid use of Null");
    EXPECT_EQ(box.buttons, 1);
    EXPECT_EQ(call.wait_for(std::chrono::seconds(0)), std::future_status::timeout) << "the call did not wait";

    PostMessageW(shown.front(), WM_COMMAND, IDOK, 0);
    EXPECT_EQ(call.get(), S_OK);
    EXPECT_TRUE(dialogs().empty()) << "a second box";
    if (hadLog) SetEnvironmentVariableW(L"TARNCOM32_REPORT_LOG", log);
}

} // namespace

} // namespace client
