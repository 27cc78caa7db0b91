#include "platform/portable/file_filters.h"
#include "platform/portable/terminal_file_dialog.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <sstream>

namespace tarncom32::platform::portable {
namespace {

using std::string_literals::operator""s;

using namespace automation;
using testing::HasSubstr;

TEST(FileFilters, FitNamesWithoutCase) {
    const std::tuple<StringView, StringView, bool> cases[] = {
        {u"*.vsd", u"Plan.VSD", true},     {u"*.vsd", u"Plan.vsdx", false},
        {u"*.*", u"no extension", true},   {u"", u"any", true},
        {u"*.vsd; *.vss", u"a.vss", true}, {u"p??n.*", u"Plan.vsd", true},
        {u"p??n", u"plaan", false},        {u"*a*b*c", u"xaybzcb", false},
        {u"\u00E4*", u"\u00C4rger", true}, {u"*", u"", true},
    };
    for (const auto& [patterns, name, fit] : cases)
        EXPECT_EQ(fits(patterns, name), fit) << toUtf8(patterns);
    const String endless(200, u'a');
    EXPECT_FALSE(fits(u"*a*a*a*a*a*a*a*a*a*a*a*a*a*b", endless)); // in reasonable time
}

TEST(FileFilters, NameAnExtensionUnlessItIsAWildcard) {
    const std::pair<StringView, StringView> cases[] = {
        {u"vsd", u".vsd"}, {u".vsd", u".vsd"}, {u"*.vsd", u".vsd"}, {u"*.vsd;*.vss", u".vsd"},
        {u"*.*", u""},     {u"*", u""},        {u"", u""},          {u"v?d", u""},
        {u"../x", u""}};
    for (const auto& [text, extension] : cases)
        EXPECT_EQ(extensionNamed(text), extension) << toUtf8(text);
}

class TerminalFileDialogTest : public testing::Test {
protected:
    TerminalFileDialogTest() {
        for (const char* name : {"Network.vsd", "Notes.txt", "Plan.vsd", "Sub/Deep.vsd"})
            folder_.write(name);
        request_.filter = u"All files (*.*)\0*.*\0Drawings (*.vsd)\0*.vsd\0\0"s;
        request_.filterIndex = 2;
        request_.initialFolder = drives_.toAutomation(folder_.path());
        request_.fileSize = 260;
    }

    FileDialogAnswer show(const std::string& input, bool save = false) {
        std::istringstream typed(input);
        std::ostringstream printed;
        TerminalFileDialog dialog(drives_, typed, printed);
        const FileDialogAnswer answer = save ? dialog.showSave(request_) : dialog.showOpen(request_);
        printed_ = printed.str();
        return answer;
    }
    // The chosen path below the folder; "cancelled" without one.
    std::string choose(const std::string& input, bool save = false) {
        const FileDialogAnswer answer = show(input, save);
        if (!answer.chosen) return answer.failure == 0 ? "cancelled" : "failed";
        const String start = request_.initialFolder + u"\\";
        return toUtf8(answer.file.starts_with(start) ? answer.file.substr(start.size()) : answer.file);
    }

    tests::TemporaryFolder folder_;
    DriveMap drives_{folder_.path() / "c"};
    FileDialogRequest request_;
    std::string printed_;
};

TEST_F(TerminalFileDialogTest, ShowsWhatThereIsToChooseFrom) {
    request_.title = u"Open a drawing";
    request_.file = u"Plan.vsd\0     "s;
    EXPECT_EQ(choose("\n"), "Plan.vsd");
    EXPECT_EQ(printed_,
              "== Open a drawing ==\n"
              "   1  All files (*.*)\n"
              " * 2  Drawings (*.vsd)\n"
              "Folder: " +
                  toUtf8(request_.initialFolder) +
                  "\n"
                  "File name (Tab lists and completes, :1 takes a filter, end of input cancels) [Plan.vsd]: ");
}

TEST_F(TerminalFileDialogTest, TakesNamesPathsAndFolders) {
    const std::pair<std::string, std::string> cases[] = {
        {"", "cancelled"},
        {"Plan.vsd", "Plan.vsd"}, // the last line needs no end
        {"Plan.vsd\r\n", "Plan.vsd"},
        {"Sub\\Deep.vsd\n", "Sub\\Deep.vsd"},
        {"Sub\nDeep.vsd\n", "Sub\\Deep.vsd"}, // a folder is gone into
        {"/etc/x\n", "Z:\\etc\\x"},
        {"Q:\\x\nPlan.vsd\n", "Plan.vsd"},
        {"pL\t\n", "Plan.vsd"},
        {"N\t\n", "Network.vsd"},          // of the filter's files
        {":1\nN\t\nNot\t\n", "Notes.txt"}, // of all files first two, then one
        {"Sub\\\t\n", "Sub\\Deep.vsd"},
        {"Zz\t\nPlan.vsd\n", "Plan.vsd"},
        {":3\n:\n:99999999999999999999\n:x\nPlan.vsd\n", "Plan.vsd"},
    };
    for (const auto& [input, chosen] : cases)
        EXPECT_EQ(choose(input), chosen) << input;
    EXPECT_EQ(show(":1\nPlan.vsd\n").filterIndex, 1);
    EXPECT_EQ(show("Plan.vsd\n").filterIndex, 2);
    choose("\t\n");
    EXPECT_THAT(printed_, HasSubstr("   Network.vsd\n   Plan.vsd\n   Sub\\\n"));
    // A name must not command the terminal.
    folder_.write("Esc\x1b[2J\u009b.vsd");
    EXPECT_EQ(choose("Esc\t\n"), "Esc\x1b[2J\u009b.vsd");
    EXPECT_THAT(printed_, HasSubstr("Esc [2J .vsd\n"));
}

TEST_F(TerminalFileDialogTest, HeedsTheFlags) {
    using namespace dialog_flag;
    const std::tuple<std::int32_t, bool, std::string, std::string, std::string> cases[] = {
        {0, false, "no.vsd\n", "no.vsd", ""},
        {kFileMustExist, false, "no.vsd\nPlan.vsd\n", "Plan.vsd", "This file does not exist."},
        {kFileMustExist, false, "Pla\n", "Plan.vsd", ""}, // completed without a Tab
        {kPathMustExist, true, "no\\x.vsd\nx.vsd\n", "x.vsd", "This folder does not exist."},
        {kOverwritePrompt, true, "Plan.vsd\nn\nPlan.vsd\ny\n", "Plan.vsd", "Replace it?"},
    };
    for (const auto& [flags, save, input, chosen, said] : cases) {
        request_.flags = flags;
        EXPECT_EQ(choose(input, save), chosen) << input;
        EXPECT_THAT(printed_, HasSubstr(said));
    }
}

TEST_F(TerminalFileDialogTest, AddsTheDefaultExtensionToNewNames) {
    request_.defaultExtension = u"*.vsd";
    for (const auto& [input, chosen] : {std::pair{"new", "new.vsd"}, {"Plan", "Plan.vsd"}, {"new.txt", "new.txt"}})
        EXPECT_EQ(choose(input, true), chosen) << input;
}

TEST_F(TerminalFileDialogTest, FailsWhenThePathHasNoRoom) {
    request_.fileSize = static_cast<std::int32_t>(request_.initialFolder.size() + 10);
    EXPECT_EQ(choose("Plan.vsd\n"), "Plan.vsd"); // its NUL takes the last place
    --request_.fileSize;
    EXPECT_EQ(show("Plan.vsd\n").failure, dialog_failure::kBufferTooSmall);
}

} // namespace
} // namespace tarncom32::platform::portable
