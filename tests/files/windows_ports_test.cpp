// The members over Windows' own files and calls.
#include "files/file_operations.h"
#include "files/path_forms.h"
#include "platform/windows/windows_files.h"
#include "support/temporary_folder.h"
#include "support/test_platform.h"

#include <fstream>
#include <gtest/gtest.h>
#include <windows.h>

namespace tarncom32::files {
namespace {

namespace fs = std::filesystem;

const wchar_t* wide(const String& text) {
    return reinterpret_cast<const wchar_t*>(text.c_str());
}

bool isWine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

// Windows' calls on a system that says it is another one.
class OlderWindows final : public platform::windows::WindowsPathCalls {
public:
    platform::SystemVersion version() const override { return {4, 10}; }
};

class WindowsPortsTest : public testing::Test {
protected:
    String inFolder(StringView name) const {
        return String(reinterpret_cast<const char16_t*>(folder_.path().wstring().c_str())) + u"\\" + String(name);
    }
    String write(StringView name) const {
        const String path = inFolder(name);
        std::ofstream(fs::path(path)) << "text";
        return path;
    }

    tests::TemporaryFolder folder_;
    tests::TestPlatform fakes_;
    platform::windows::WindowsFiles files_{platform::noApplications(), platform::westernCodePage()};
    platform::Platform platform_{.messageBox = fakes_.messageBox, .files = files_.ports()};
    automation::Ref<FileOperations> operations_ = automation::make<FileOperations>(platform_);
};

TEST_F(WindowsPortsTest, AskTheSystemAboutFiles) {
    const String file = write(u"Plan \u00C4.vsd");
    for (const auto& [attributes, readOnly] :
         {std::pair{FILE_ATTRIBUTE_READONLY, true}, {FILE_ATTRIBUTE_NORMAL, false}}) {
        SetFileAttributesW(wide(file), static_cast<DWORD>(attributes));
        EXPECT_EQ(operations_->isFileReadOnly(file).isTrue(), readOnly);
    }
    EXPECT_TRUE(operations_->isFileReadOnly(inFolder(u"missing")).isTrue());
    // Open and closed files are the scripts' affair.
    EXPECT_FALSE(operations_->isFileAlreadyOpened(inFolder(u"missing")).isTrue());
    EXPECT_TRUE(operations_->isFileAlreadyOpened(inFolder(u"no\\folder")).isTrue());
}

TEST_F(WindowsPortsTest, FindTheShellsFolders) {
    EXPECT_TRUE(fs::is_directory(operations_->findSystemFolder(frame::SystemFolder::My_Documents)));
    EXPECT_EQ(operations_->findSystemFolder(static_cast<frame::SystemFolder>(4711)), u"");
    EXPECT_TRUE(fs::exists(files_.ports().folders.ownFolder() + u"\\files_test.exe"));
    EXPECT_EQ(platform::windows::folderOf(u"C:\\TarnCom32.dll"), u"C:\\");
}

TEST_F(WindowsPortsTest, ConvertFormsByEitherCall) {
    const String file = write(u"A long file name.text");
    const String shorter = operations_->getShortPath(file);
    ASSERT_FALSE(shorter.empty());
    EXPECT_EQ(operations_->getLongPath(file), file);
    OlderWindows older;
    const PathForms narrow(older, platform::westernCodePage());
    EXPECT_EQ(narrow.shortPath(file), shorter);
    EXPECT_EQ(narrow.longPath(shorter), file);
    EXPECT_EQ(narrow.longPathByFinding(inFolder(u"A LONG FILE NAME.TEXT")), file);
    EXPECT_EQ(narrow.longPathByFinding(u"C:\\WINDOWS\\"), narrow.longPathByFinding(u"C:\\WINDOWS") + u"\\\\");
    // Wine gives back unasked whatever starts with "\\\\?\\".
    EXPECT_EQ(operations_->getLongPath(shorter), isWine() ? shorter : file);
    for (const String& missing : {inFolder(u"missing"), String(u"Q:\\x"), String()}) {
        EXPECT_EQ(operations_->getShortPath(missing), u"");
        EXPECT_EQ(narrow.shortPath(missing), u"");
        EXPECT_EQ(narrow.longPath(missing), u"");
        EXPECT_EQ(operations_->getLongPath(missing), isWine() ? missing : u"");
    }
}

TEST_F(WindowsPortsTest, NamesOutsideTheCodePageExistForTheWideCallsOnly) {
    const String file = write(u"\uA4D0.txt");
    ASSERT_NE(GetFileAttributesW(wide(file)), INVALID_FILE_ATTRIBUTES);
    EXPECT_TRUE(operations_->getLongPath(file).ends_with(u"\uA4D0.txt"));
    OlderWindows older;
    EXPECT_EQ(PathForms(older, platform::westernCodePage()).longPath(file), u"");
    EXPECT_TRUE(operations_->isFileReadOnly(file).isTrue());
    EXPECT_TRUE(operations_->isFileAlreadyOpened(file).isTrue());
}

TEST_F(WindowsPortsTest, LongPathsOverrunNothing) {
    String path = u"\\\\?\\" + inFolder(u"");
    path.pop_back();
    for (int i = 0; i < 4; ++i) {
        path += u"\\" + String(100, u'n');
        ASSERT_TRUE(CreateDirectoryW(wide(path), nullptr));
    }
    const String plain = path.substr(4);
    EXPECT_EQ(operations_->getLongPath(plain), plain);
    OlderWindows older;
    const PathForms narrow(older, platform::westernCodePage());
    for (const String& form : {narrow.longPath(plain), narrow.shortPath(plain)})
        EXPECT_TRUE(form.empty() || form == String(260, u'!') || form.size() < 260) << automation::toUtf8(form);
    EXPECT_EQ(narrow.longPath(path).size() % 260, 0U); // 260 exclamation marks, or nothing where the call refuses
    EXPECT_EQ(operations_->isFileAlreadyOpened(String(40000, u'x')), Boolean(true));
    for (; path.ends_with(u'n'); path.resize(path.rfind(u'\\')))
        RemoveDirectoryW(wide(path));
}

} // namespace
} // namespace tarncom32::files
