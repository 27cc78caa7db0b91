#include "fakes.h"
#include "files/path_forms.h"

namespace tarncom32::files {
namespace {

using testing::ElementsAre;

class PathFormsTest : public FilesTest {
protected:
    String byFinding(StringView path) { return PathForms(files_, platform::westernCodePage()).longPathByFinding(path); }
};

// Version 4 is treated in opposite ways.
TEST_F(PathFormsTest, TakeTheCallOfTheVersion) {
    const std::tuple<platform::SystemVersion, std::string, std::string> cases[] = {
        {{3, 51}, "8 260 C:\\\xC4?", ""},
        {{4, 0}, "16 32000 \\\\?\\C:\\\u00C4\u0416", ""},
        {{4, 1}, "8 260 C:\\\xC4?", "8 260 C:\\\xC4?"},
        {{5, 0}, "16 32000 \\\\?\\C:\\\u00C4\u0416", "16 32000 \\\\?\\C:\\\u00C4\u0416"}};
    for (const auto& [version, shortCall, longCall] : cases) {
        files_.systemVersion = version;
        files_.converted.clear();
        files_.searched.clear();
        operations_->getShortPath(u"C:\\\u00C4\u0416");
        EXPECT_THAT(files_.converted, ElementsAre(shortCall));
        files_.converted.clear();
        operations_->getLongPath(u"C:\\\u00C4\u0416");
        if (longCall.empty())
            EXPECT_THAT(files_.searched, ElementsAre("C:\\\xC4?"));
        else
            EXPECT_THAT(files_.converted, ElementsAre(longCall));
    }
}

TEST_F(PathFormsTest, CutTheBufferAsTheCallsAnswer) {
    const std::string prefix = "\\\\?\\";
    const std::tuple<std::string, String, String> cases[] = {
        {"", u"", u""}, // the call failed
        {prefix + "C:\\PROGRA~1", u"\\\\?\\C:\\PROGRA~1", u"C:\\PROGRA~1"},
        {std::string(259, 'x'), String(259, u'x'), String(255, u'x')},
        {std::string(260, 'x'), String(260, u'!'), String(256, u'x')}, // does not fit: the buffer as it was
        {std::string(40000, 'x'), String(260, u'!'), String(31996, u'!')}};
    for (const auto& [form, narrow, wide] : cases) {
        files_.form = form;
        files_.systemVersion = {4, 10};
        EXPECT_EQ(operations_->getShortPath(u"p"), narrow) << form.size();
        EXPECT_EQ(operations_->getLongPath(u"p"), narrow) << form.size();
        files_.systemVersion = {10, 0};
        EXPECT_EQ(operations_->getShortPath(u"p"), wide) << form.size();
        EXPECT_EQ(operations_->getLongPath(u"p"), wide) << form.size();
    }
    EXPECT_TRUE(fakes_.messageBox.shown.empty());
}

TEST_F(PathFormsTest, FindsTheLongFormFolderByFolder) {
    files_.stored = {{"C:\\PROGRA~1", "Program Files"},
                     {"C:\\Program Files\\COMPAN~1", "Company\xC4"},
                     {"sub", "Sub Folder"},
                     {"Sub Folder\\X", "x.txt"}};
    const std::pair<StringView, StringView> cases[] = {
        {u"", u""},
        {u"C:\\", u"C:\\"},
        {u"C:\\PROGRA~1", u"C:\\Program Files"},
        {u"C:\\PROGRA~1\\", u"C:\\Program Files\\\\"},
        {u"C:\\PROGRA~1\\COMPAN~1\\nothing", u"C:\\Program Files\\Company\u00C4\\nothing"},
        {u"sub\\X", u"Sub Folder\\x.txt"}, // from the current folder
        {u"\\", u"\\\\"},
        {u"C:\\D:\\x", u"D:\\x"}, // a later drive takes the place of the first
    };
    for (const auto& [path, expected] : cases)
        EXPECT_EQ(byFinding(path), expected) << toUtf8(path);
    EXPECT_EQ(files_.searched.front(), "C:\\PROGRA~1"); // a drive alone is not sought
}

TEST_F(PathFormsTest, ReportAFailureUnderTheRoutineThatFailed) {
    files_.callError = 57;
    for (const std::uint32_t major : {4U, 10U}) {
        files_.systemVersion = {major, 0};
        EXPECT_EQ(operations_->getLongPath(u"C:\\x"), u"");
        EXPECT_EQ(operations_->getShortPath(u"C:\\x"), u"");
    }
    EXPECT_THAT(reports(),
                ElementsAre("Problem in FileOperations.GetLongPathUsingFindMethod",
                            "Problem in FileOperations.GetShortPath", "Problem in FileOperations.GetLongPath",
                            "Problem in FileOperations.GetShortPath"));
}

} // namespace
} // namespace tarncom32::files
