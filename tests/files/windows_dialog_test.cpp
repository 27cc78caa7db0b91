// The system's own dialogs: each is opened, looked at, and answered by a thread of the test.
#include "files/common_dlg.h"
#include "files/file_operations.h"
#include "platform/windows/windows_files.h"
#include "support/error_of.h"
#include "support/temporary_folder.h"
#include "support/test_platform.h"

#include <fstream>
#include <gmock/gmock.h>
#include <thread>
#include <windows.h>

#include <dlgs.h>

namespace tarncom32::files {
namespace {

using testing::ElementsAre;
using tests::errorOf;

constexpr std::int32_t kExplorer = 524288;
constexpr std::int32_t kFileMustExist = 4096;

String textOf(HWND window) {
    wchar_t text[1024] = L"";
    SendMessageW(window, WM_GETTEXT, 1024, reinterpret_cast<LPARAM>(text));
    return reinterpret_cast<const char16_t*>(text);
}

String classOf(HWND window) {
    wchar_t name[64] = L"";
    GetClassNameW(window, name, 64);
    return reinterpret_cast<const char16_t*>(name);
}

// A visible dialog of this process other than `known`; null when there is none yet.
HWND findDialog(HWND known = nullptr) {
    for (HWND window = nullptr; (window = FindWindowExW(nullptr, window, L"#32770", nullptr));) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        if (process == GetCurrentProcessId() && window != known && IsWindowVisible(window)) return window;
    }
    return nullptr;
}

// A control of the dialog, at whatever depth, by its class and either of two numbers; null when there is none.
HWND control(HWND dialog, StringView className, int id, int otherId) {
    for (HWND child = nullptr; (child = FindWindowExW(dialog, child, nullptr, nullptr));) {
        const int number = GetDlgCtrlID(child);
        if ((number == id || number == otherId) && classOf(child) == className) return child;
        if (const HWND inner = control(child, className, id, otherId)) return inner;
    }
    return nullptr;
}

void press(HWND dialog, int button) {
    PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(dialog, button)));
}

// Answers the next dialog: looks at it, types a name and presses a button.
class Answerer {
public:
    /// `proposed`: the dialog starts with a name.
    Answerer(bool proposed, String typed, int button) : thread_([=, this] { answer(proposed, typed, button); }) {}
    ~Answerer() { join(); }
    void join() {
        if (thread_.joinable()) thread_.join();
    }

    String title, name;
    std::vector<String> filters;
    LRESULT filter = -1;
    bool refused = false; // a message box came up behind the button

private:
    void answer(bool proposed, const String& typed, int button) {
        HWND dialog = nullptr;
        for (int i = 0; i < 1500 && !(dialog = findDialog()); ++i)
            Sleep(20);
        if (!dialog) return;
        title = textOf(dialog);
        const HWND edit = control(dialog, u"Edit", edt1, cmb13);
        const HWND combo = control(dialog, u"ComboBox", cmb1, cmb1);
        // The dialog is visible before its name is filled in.
        for (int i = 0; i < 500 && (name = textOf(edit)).empty() && proposed; ++i)
            Sleep(20);
        for (LRESULT i = 0, count = SendMessageW(combo, CB_GETCOUNT, 0, 0); i < count; ++i) {
            wchar_t item[256] = L"";
            SendMessageW(combo, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(item));
            filters.emplace_back(reinterpret_cast<const char16_t*>(item));
        }
        filter = SendMessageW(combo, CB_GETCURSEL, 0, 0);
        if (!typed.empty()) SendMessageW(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(typed.c_str()));
        press(dialog, button);
        // Either it goes, or it complains; then it is cancelled.
        for (int i = 0; i < 500 && IsWindow(dialog) && IsWindowVisible(dialog); ++i) {
            if (const HWND box = findDialog(dialog)) {
                refused = true;
                PostMessageW(box, WM_CLOSE, 0, 0);
                while (IsWindow(box))
                    Sleep(10);
                press(dialog, IDCANCEL);
            }
            Sleep(20);
        }
        // Nothing waits for ever for a dialog that does not do what is expected.
        if (IsWindow(dialog)) press(dialog, IDCANCEL);
    }

    std::thread thread_;
};

class WindowsDialogTest : public testing::Test {
protected:
    WindowsDialogTest() {
        std::ofstream(folder_.path() / "Plan.vsd") << "x";
        folderText_ = reinterpret_cast<const char16_t*>(folder_.path().wstring().c_str());
        dialog_->filter = u"Drawings (*.vsd)|*.vsd|All files (*.*)|*.*";
        dialog_->initDir = folderText_;
        dialog_->dialogTitle = u"Choose \u00C4";
        dialog_->cancelError = true;
    }

    tests::TemporaryFolder folder_;
    String folderText_;
    tests::TestPlatform fakes_;
    platform::windows::WindowsFiles files_{platform::noApplications(), platform::westernCodePage()};
    platform::Platform platform_{.messageBox = fakes_.messageBox, .files = files_.ports()};
    automation::Ref<CommonDlg> dialog_ = automation::make<CommonDlg>(platform_);
};

TEST_F(WindowsDialogTest, ShowTheRequestAndGiveTheChoice) {
    for (const std::int32_t flags : {0, kExplorer}) {
        for (const auto show : {&CommonDlg::showOpen, &CommonDlg::showSave}) {
            SCOPED_TRACE(flags);
            dialog_->fileName = u"Plan.vsd";
            dialog_->filterIndex = 2;
            dialog_->flags = flags;
            Answerer answerer(true, u"", IDOK);
            EXPECT_EQ(errorOf([&] { (*dialog_.*show)(); }), 0);
            answerer.join();
            EXPECT_EQ(answerer.title + u" " + answerer.name, u"Choose \u00C4 Plan.vsd");
            EXPECT_THAT(answerer.filters, ElementsAre(u"Drawings (*.vsd)", u"All files (*.*)"));
            EXPECT_EQ(answerer.filter, 1);
            EXPECT_TRUE(automation::toUpper(dialog_->fileName) == automation::toUpper(folderText_ + u"\\Plan.vsd"))
                << automation::toUtf8(dialog_->fileName);
            EXPECT_EQ(dialog_->filterIndex, 2);
            EXPECT_EQ(dialog_->defaultExt, u"*.*");
        }
    }
}

TEST_F(WindowsDialogTest, NumberCancelledAndFailed) {
    for (const std::int32_t flags : {0, kExplorer}) {
        SCOPED_TRACE(flags);
        dialog_->flags = flags;
        dialog_->fileName = u"Plan.vsd";
        {
            Answerer cancels(true, u"", IDCANCEL);
            EXPECT_EQ(errorOf([&] { dialog_->showOpen(); }), 32755);
        }
        EXPECT_EQ(dialog_->fileName, u"Plan.vsd");
    }
    dialog_->flags = kExplorer;
    dialog_->fileName = u"";
    dialog_->maxFileSize = 12; // less than the path needs
    Answerer chooses(false, u"Plan.vsd", IDOK);
    EXPECT_EQ(errorOf([&] { dialog_->showOpen(); }), 12291);
}

TEST_F(WindowsDialogTest, AnExistingFileIsEnforced) {
    const auto operations = automation::make<FileOperations>(platform_);
    Boolean cancelled;
    std::int32_t window = 0;
    ObjectRef used = dialog_;
    Answerer names(false, u"missing.vsd", IDOK);
    EXPECT_EQ(
        operations->getSelectedFilename(u"Existing", cancelled, folderText_ + u"\\", u"All|*.*", true, 1, used, window),
        u"");
    names.join();
    EXPECT_EQ(names.title, u"Existing");
    EXPECT_TRUE(names.refused);
    EXPECT_EQ(cancelled, Boolean(true));
}

} // namespace
} // namespace tarncom32::files
