#include "cli/run_tarn.h"
#include "files/file_operations.h"
#include "platform/portable/drive_map.h"
#include "support/temporary_folder.h"

#include <fstream>
#include <gmock/gmock.h>
#include <set>

namespace tarncom32::tests {
namespace {

using testing::MatchesRegex;

TEST(FileOperationsFromTheShell, EveryMemberAnswers) {
    const TemporaryFolder folder;
    const std::string here = folder.path().string();
    const std::string drive = automation::toUtf8(platform::portable::DriveMap({}).toAutomation(folder.path()));
    std::ofstream(here + "/Plan.vsd") << "x";
    std::filesystem::permissions(here + "/Plan.vsd", std::filesystem::perms::owner_read);

    struct Case {
        std::string member;
        std::vector<std::string> arguments;
        std::string out; // a regular expression; [\] for a backslash
    };
    const std::string temporary = "Z:[\\][^\n]*[\\]rad[0-9A-F]+";
    const std::string made = "\noFSO = FileSystemObject\n";
    const Case cases[] = {
        {"IsFileReadOnly", {here + "/Plan.vsd"}, "True\n"},
        {"TrimFileExtension", {"C:\\a\\Plan.vsd"}, "C:[\\]a[\\]Plan" + made},
        {"TrimFilePath", {"C:\\a\\Plan.vsd"}, "Plan[.]vsd" + made},
        {"ShortenPath", {"C:\\abcdefghijklmnopqr"}, "C:[\\][.][.][.][\\]\n"},
        {"ShortenFileName", {"abcdefghijklmnopqrstu"}, "abcdefghijklmnopqrstu[.][.][.]\n"},
        {"IsValidExtension", {"Plan.VSD", ".vsd"}, "True\n"},
        {"IsFileExtensionInValidList", {"Plan.VSD", ".vsd;.vss"}, "False\n"},
        {"FindSystemFolder", {"26"}, "Z:[\\]config\n"},
        {"IsFileAlreadyOpened", {here + "/missing"}, "False\n"},
        {"CleanFileName", {"a/b:c?.vsd"}, "a_b_c_[.]vsd\nsFileName = a_b_c_[.]vsd\n"},
        {"ParseFileAndPathName", {"C:\\Drawings\\Plan.vsd"}, "sPath = C:[\\]Drawings\nsFileName = Plan[.]vsd\n"},
        {"ParseFileNameAndExtension", {"C:\\Rev.2\\Plan"}, "sFileName = C:[\\]Rev\nsExtension = [.]2[\\]Plan\n"},
        {"LimitFileNameLength", {"C:\\Folder\\Plan.vsd", "10"}, "[\\][.][.][.][\\]Plan[.]vsd\n"},
        {"GetTempDirectory", {}, "Z:[\\][^\n]*[\\]" + made},
        {"GetTempFileName", {}, "rad[0-9A-F]+[.]tmp" + made},
        {"GetTempPathFileName", {"nothing", ".vsd"}, temporary + "[.]vsd" + made},
        {"SaveStreamToFile", {"text \u20AC\u0416", here + "/out.txt"}, "oFSO = FileSystemObject\n"},
        {"GetShortPath", {"Z:\\"}, "Z:[\\]\n"},
        {"GetLongPath", {drive + "\\missing"}, "\n"},
        // Without input every dialog is cancelled.
        {"GetSelectedFilename", {"Title"}, "\nbCancel = True\noCommonDialog = CommonDlg\nhWndParent = 0\n"},
    };
    std::set<std::string> called;
    for (const Case& c : cases) {
        std::vector<std::string> arguments{"call", "FileOperations." + c.member};
        arguments.insert(arguments.end(), c.arguments.begin(), c.arguments.end());
        const Outcome outcome = runTarn(arguments, {"HOME=" + here, "TMPDIR=" + here, "XDG_CONFIG_HOME=/config"});
        EXPECT_EQ(outcome.status, 0) << c.member << ": " << outcome.err;
        EXPECT_THAT(outcome.out, MatchesRegex(c.out)) << c.member;
        called.insert(c.member);
    }
    for (const automation::MemberInfo& member : files::FileOperations::describe().members)
        EXPECT_TRUE(called.contains(automation::toUtf8(member.name))) << automation::toUtf8(member.name);

    std::ifstream saved(here + "/out.txt", std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(saved), {}), "text \x80?");
}

} // namespace
} // namespace tarncom32::tests
