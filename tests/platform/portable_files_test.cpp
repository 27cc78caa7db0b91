#include "automation/convert.h"
#include "platform/portable/component_names.h"
#include "platform/portable/file_error.h"
#include "platform/portable/file_system_object.h"
#include "platform/portable/portable_file_status.h"
#include "platform/portable/portable_folders.h"
#include "platform/portable/portable_path_calls.h"
#include "platform/portable/windows_1252.h"
#include "support/environment_variable.h"
#include "support/error_of.h"
#include "support/table.h"
#include "support/temporary_folder.h"

#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <sys/file.h>

namespace tarncom32::platform::portable {
namespace {

namespace fs = std::filesystem;
using namespace automation;
using namespace tests;

class PortableFilesTest : public testing::Test {
protected:
    TemporaryFolder folder_;
    DriveMap drives_{folder_.path() / "c"};
    Windows1252 codePage_;
    PortableFileStatus status_{drives_};
    PortablePathCalls calls_{drives_, codePage_};
    Ref<FileSystemObject> object_ = make<FileSystemObject>(drives_, codePage_);

    String onZ(StringView below) { return drives_.toAutomation(folder_.path()) + u"\\" + String(below); }
};

TEST_F(PortableFilesTest, DrivesAreFolders) {
    const std::string c = (folder_.path() / "c").native();
    using Case = std::pair<StringView, std::optional<fs::path>>;
    const auto cases =
        table(Case(u"Z:\\", "/"), Case(u"z:/etc\\X", "/etc/X"), Case(u"C:\\a\\b.txt", c + "/a/b.txt"),
              Case(u"c:a\\", c + "/a/"), Case(u"\\\\?\\Z:\\etc", "/etc"), Case(u"/etc/\u00E4", "/etc/\u00E4"),
              Case(u"sub\\x", "sub/x"), Case(u"", std::nullopt), Case(u"D:\\x", std::nullopt),
              Case(u"\\\\server\\share", std::nullopt), Case(StringView(u"Z:\\a\0b", 6), std::nullopt));
    for (const auto& [path, native] : cases)
        EXPECT_EQ(drives_.toNative(path), native) << toUtf8(path);
    EXPECT_TRUE(fs::is_directory(c)); // made when it was first named
    EXPECT_EQ(DriveMap({}).toNative(u"C:\\x"), std::nullopt);

    EXPECT_EQ(drives_.toAutomation("/a/../b/c"), u"Z:\\b\\c");
    EXPECT_EQ(drives_.toAutomation(c), u"C:\\");
    EXPECT_EQ(drives_.toAutomation(c + "/d/e"), u"C:\\d\\e");
    EXPECT_EQ(drives_.toAutomation(c + "d").substr(0, 2), u"Z:"); // a longer name is another folder
}

TEST_F(PortableFilesTest, ReadOnlyIsTheOwnersRight) {
    folder_.write("f");
    EXPECT_EQ(status_.attributes(onZ(u"f")), file_attribute::kNormal);
    fs::permissions(folder_.path() / "f", fs::perms::owner_read | fs::perms::group_all);
    EXPECT_EQ(status_.attributes(onZ(u"f")), file_attribute::kReadOnly); // for root as well
    EXPECT_EQ(status_.attributes(onZ(u"")), file_attribute::kDirectory);
    for (const StringView missing : {u"Z:\\no\\such", u"D:\\x", u""})
        EXPECT_EQ(status_.attributes(missing), file_attribute::kNone);
}

TEST_F(PortableFilesTest, AnothersHoldOnAFileIsSeen) {
    folder_.write("f", "text");
    const auto open = [&] { status_.openExclusively(onZ(u"f")); };
    EXPECT_EQ(errorOf(open), 0);

    for (const bool wholeFile : {true, false}) {
        const int other = ::open((folder_.path() / "f").c_str(), O_RDWR);
        struct flock record {};
        record.l_type = F_WRLCK;
        record.l_whence = SEEK_SET;
        // These belong to the descriptor, so that the file's own process is to them as another one is.
        ASSERT_EQ(wholeFile ? flock(other, LOCK_EX) : fcntl(other, F_OFD_SETLK, &record), 0);
        EXPECT_EQ(errorOf(open), errors::PermissionDenied);
        close(other);
        EXPECT_EQ(errorOf(open), 0);
    }

    const std::pair<String, std::int32_t> refused[] = {{onZ(u"no"), errors::FileNotFound},
                                                       {onZ(u"no\\f"), errors::PathNotFound},
                                                       {onZ(u"f\\f"), errors::PathNotFound},
                                                       {onZ(u""), errors::PathFileAccess},
                                                       {u"", errors::PathFileAccess}};
    for (const auto& [path, error] : refused)
        EXPECT_EQ(errorOf([&, file = path] { status_.openExclusively(file); }), error) << toUtf8(path);
}

TEST_F(PortableFilesTest, TheObjectNamesPathsParts) {
    const std::tuple<StringView, StringView, StringView> cases[] = {
        {u"C:\\Dir\\Plan.vsd", u"Plan.vsd", u"vsd"},
        {u"C:\\Rev.2\\Plan", u"Plan", u""},
        {u"C:\\Dir\\", u"Dir", u""},
        {u"C:\\", u"", u""},
        {u"C:f.x", u"f.x", u"x"},
        {u"a/b.c", u"a/b.c", u"c"},
        {u"", u"", u""},
    };
    for (const auto& [path, name, extension] : cases) {
        EXPECT_EQ(toText(object_->call(u"GetFileName", path)), name) << toUtf8(path);
        EXPECT_EQ(toText(object_->call(u"GetExtensionName", path)), extension) << toUtf8(path);
    }
}

TEST_F(PortableFilesTest, TheObjectWritesFilesInTheCodePage) {
    const auto save = [&](StringView name, bool overwrite, StringView text) {
        return errorOf([&] {
            const auto stream = object_->createTextFile(name, overwrite);
            stream->call(u"Write", text);
            stream->call(u"Close");
        });
    };
    EXPECT_EQ(save(u"C:\\out.txt", false, u"a\r\nb\u20AC\u0416\U0001F600\u00FC"), 0);
    EXPECT_EQ(folder_.read("c/out.txt"), "a\r\nb\x80??\xFC"); // as it is, and nothing behind it
    EXPECT_EQ(save(u"C:\\out.txt", false, u"new"), errors::FileAlreadyExists);
    EXPECT_EQ(save(u"C:\\out.txt", true, u"new"), 0);
    EXPECT_EQ(folder_.read("c/out.txt"), "new");
    EXPECT_EQ(save(onZ(u"c"), true, u""), errors::PermissionDenied);
    EXPECT_EQ(save(u"Q:\\f", true, u""), errors::PathNotFound);
    EXPECT_EQ(save(onZ(String(300, u'n')), true, u""), errors::BadFileName);
    if (fs::exists("/dev/full")) {
        EXPECT_EQ(save(u"/dev/full", true, u"text"), errors::DiskFull);
    }
    const auto closed = object_->createTextFile(u"C:\\f", true);
    closed->close();
    EXPECT_EQ(errorOf([&] { closed->write(u"x"); }), errors::BadFileName);
}

TEST_F(PortableFilesTest, TheObjectGivesAPlaceAndNamesForTemporaryFiles) {
    EnvironmentVariable place("TMPDIR", (folder_.path() / "t").native() + "/");
    const ObjectRef folder = toObject(object_->call(u"GetSpecialFolder", 2));
    EXPECT_EQ(toText(folder->get(u"Path")), onZ(u"t"));
    place.set("/");
    EXPECT_EQ(object_->getSpecialFolder(2)->path(), u"Z:\\");
    place.set("relative");
    EXPECT_EQ(object_->getSpecialFolder(2)->path(), u"Z:\\tmp");
    EXPECT_EQ(errorOf([&] { object_->getSpecialFolder(0); }), errors::InvalidProcedureCall);

    const std::string name = toUtf8(object_->getTempName());
    EXPECT_TRUE(std::regex_match(name, std::regex("rad[0-9A-F]{5}\\.tmp"))) << name;
    // Chance does not give the same name four times.
    EXPECT_FALSE(name == toUtf8(object_->getTempName()) && name == toUtf8(object_->getTempName()) &&
                 name == toUtf8(object_->getTempName()));
}

TEST_F(PortableFilesTest, SpecialFoldersFollowTheUsersOwn) {
    const EnvironmentVariable home("HOME", "/home/u");
    const EnvironmentVariable config("XDG_CONFIG_HOME", folder_.path().native());
    EnvironmentVariable data("XDG_DATA_HOME", "/data/");
    EnvironmentVariable cache("XDG_CACHE_HOME", "not/absolute");
    folder_.write("user-dirs.dirs", "# XDG_DOCUMENTS_DIR=\"/wrong\"\n"
                                    "XDG_DESKTOP_DIR=\"$HOME/My \\\"Desk\\\"\"\n"
                                    "  XDG_DOCUMENTS_DIR=\"/srv/docs\"\n"
                                    "XDG_TEMPLATES_DIR=\"$HOME/\"\n");
    PortableFolders folders(drives_);
    using Case = std::pair<std::int32_t, String>;
    const auto cases =
        table(Case(0, u"Z:\\home\\u\\My \"Desk\""), Case(16, u"Z:\\home\\u\\My \"Desk\""), Case(5, u"Z:\\srv\\docs"),
              Case(21, u"Z:\\home\\u"), Case(2, u"Z:\\data\\applications"), Case(20, u"Z:\\data\\fonts"),
              Case(26, drives_.toAutomation(folder_.path())), Case(32, u"Z:\\home\\u\\.cache"), Case(8, u""),
              Case(19, u""), Case(4711, u""), Case(-1, u""));
    for (const auto& [number, path] : cases)
        EXPECT_EQ(folders.special(number), path) << number;
    folder_.write("user-dirs.dirs", "XDG_DESKTOP_DIR=relative\nXDG_DESKTOP_DIR=\"relative\"\n");
    EXPECT_EQ(folders.special(0), u"Z:\\home\\u\\Desktop");
    EXPECT_TRUE(fs::is_directory(*drives_.toNative(folders.ownFolder())));
}

TEST_F(PortableFilesTest, PathsKeepTheirFormsAndFoldersGiveStoredNames) {
    folder_.write("Sub Folder/\u00C4x.Txt");
    folder_.write("Sub Folder/same");
    folder_.write("Sub Folder/Same");
    std::u16string wide(100, u'!');
    std::string narrow(100, '!');
    const String path = u"\\\\?\\" + onZ(u"Sub Folder");
    ASSERT_EQ(calls_.longPath(path, wide), path.size());
    EXPECT_EQ(wide.substr(0, path.size() + 2), path + u'\0' + u'!');
    EXPECT_EQ(calls_.shortPath(onZ(u"missing"), wide), 0U);
    // A buffer without room for the NUL stays as it is.
    const std::string bytes = codePage_.encode(onZ(u"Sub Folder"));
    narrow.assign(bytes.size(), '!');
    EXPECT_EQ(calls_.shortPath(bytes, narrow), bytes.size() + 1);
    EXPECT_EQ(narrow, std::string(bytes.size(), '!'));

    const auto find = [&](StringView below) { return calls_.findFirst(codePage_.encode(onZ(below))); };
    EXPECT_EQ(find(u"SUB FOLDER"), "Sub Folder");
    EXPECT_EQ(find(u"Sub Folder\\\u00E4X.tXT"), "\xC4x.Txt");
    EXPECT_EQ(find(u"Sub Folder\\same"), "same");
    EXPECT_EQ(find(u"Sub Folder\\SAME"), "Same");
    EXPECT_EQ(find(u"Sub Folder\\"), std::nullopt);
    EXPECT_EQ(find(u"nothing\\x"), std::nullopt);
}

} // namespace
} // namespace tarncom32::platform::portable
