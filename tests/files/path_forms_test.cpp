#include "fakes.h"
#include "files/file_operations.h"
#include "files/path_forms.h"

#include <gmock/gmock.h>

namespace tarncom32::files {
namespace {

using testing::ElementsAre;

class PathFormsTest : public testing::Test {
protected:
    FakePlatform surroundings_;
    FakeFiles& files_ = surroundings_.files;
    automation::Ref<FileOperations> operations_ = automation::make<FileOperations>(surroundings_.platform);

    String byFinding(StringView path) { return PathForms(files_, surroundings_.codePage).longPathByFinding(path); }
};

TEST_F(PathFormsTest, TreatVersionFourInOppositeWays) {
    struct Case {
        std::uint32_t major, minor;
        bool longCall, wideCalls;
    };
    const Case cases[] = {{3, 51, false, false}, {4, 0, false, true}, {4, 1, true, false}, {4, 90, true, false},
                          {5, 0, true, true},    {6, 2, true, true},  {10, 0, true, true}};
    for (const Case& c : cases) {
        EXPECT_EQ(canUseLongPathCall({c.major, c.minor}), c.longCall) << c.major << "." << c.minor;
        EXPECT_EQ(canUseWidePathCalls({c.major, c.minor}), c.wideCalls) << c.major << "." << c.minor;
    }
}

TEST_F(PathFormsTest, TakeTheCallOfTheVersion) {
    struct Case {
        platform::SystemVersion version;
        std::string shortCall, longCall; // empty: by finding
    };
    const Case cases[] = {{{3, 51}, "8 260 C:\\\xC4?", ""},
                          {{4, 0}, "16 32000 \\\\?\\C:\\\u00C4\u0416", ""},
                          {{4, 10}, "8 260 C:\\\xC4?", "8 260 C:\\\xC4?"},
                          {{10, 0}, "16 32000 \\\\?\\C:\\\u00C4\u0416", "16 32000 \\\\?\\C:\\\u00C4\u0416"}};
    for (const Case& c : cases) {
        files_.systemVersion = c.version;
        files_.converted.clear();
        files_.searched.clear();
        operations_->getShortPath(u"C:\\\u00C4\u0416");
        EXPECT_THAT(files_.converted, ElementsAre(c.shortCall));
        files_.converted.clear();
        operations_->getLongPath(u"C:\\\u00C4\u0416");
        if (c.longCall.empty())
            EXPECT_THAT(files_.searched, ElementsAre("C:\\\xC4?"));
        else
            EXPECT_THAT(files_.converted, ElementsAre(c.longCall));
    }
}

TEST_F(PathFormsTest, CutTheBufferAsTheCallsAnswer) {
    struct Case {
        std::string form;
        String narrow, wide;
    };
    const std::string prefix = "\\\\?\\";
    const Case cases[] = {
        {"", u"", u""}, // the call failed
        {prefix + "C:\\PROGRA~1", u"\\\\?\\C:\\PROGRA~1", u"C:\\PROGRA~1"},
        {"abc", u"abc", u""},
        {std::string(259, 'x'), String(259, u'x'), String(255, u'x')},
        {std::string(260, 'x'), String(260, u'!'), String(256, u'x')}, // does not fit: the buffer as it was
        {std::string(40000, 'x'), String(260, u'!'), String(31996, u'!')}};
    for (const Case& c : cases) {
        files_.form = c.form;
        files_.systemVersion = {4, 10};
        EXPECT_EQ(operations_->getShortPath(u"p"), c.narrow) << c.form.size();
        EXPECT_EQ(operations_->getLongPath(u"p"), c.narrow) << c.form.size();
        files_.systemVersion = {10, 0};
        EXPECT_EQ(operations_->getShortPath(u"p"), c.wide) << c.form.size();
        EXPECT_EQ(operations_->getLongPath(u"p"), c.wide) << c.form.size();
    }
    EXPECT_TRUE(surroundings_.messageBox.shown.empty());
}

TEST_F(PathFormsTest, FindsTheLongFormFolderByFolder) {
    files_.stored = {{"C:\\PROGRA~1", "Program Files"},
                     {"C:\\Program Files\\COMPAN~1", "Company\xC4"},
                     {"sub", "Sub Folder"},
                     {"Sub Folder\\X", "x.txt"}};
    struct Case {
        StringView path, expected;
    };
    const Case cases[] = {
        {u"", u""},
        {u"C:\\", u"C:\\"},
        {u"C:", u"C:"},
        {u"C:\\PROGRA~1", u"C:\\Program Files"},
        {u"C:\\PROGRA~1\\", u"C:\\Program Files\\\\"},
        {u"C:\\PROGRA~1\\COMPAN~1\\nothing", u"C:\\Program Files\\Company\u00C4\\nothing"},
        {u"sub\\X", u"Sub Folder\\x.txt"}, // from the current folder
        {u"\\\\server\\share", u"\\\\server\\share"},
        {u"\\", u"\\\\"},
        {u"C:\\D:\\x", u"D:\\x"}, // a later drive takes the place of the first
    };
    for (const Case& c : cases)
        EXPECT_EQ(byFinding(c.path), c.expected) << automation::toUtf8(c.path);
    EXPECT_EQ(files_.searched.front(), "C:\\PROGRA~1"); // a drive alone is not sought
}

TEST_F(PathFormsTest, ReportAFailureUnderTheRoutineThatFailed) {
    class Failing final : public platform::NoFiles {
    public:
        platform::SystemVersion version() const override { return known; }
        std::optional<std::string> findFirst(const std::string&) override { throw automation::Error(57); }
        std::size_t shortPath(const String&, std::span<char16_t>) override { throw automation::Error(57); }
        std::size_t longPath(const String&, std::span<char16_t>) override { throw automation::Error(57); }
        platform::SystemVersion known{4, 0};
    } failing;
    platform::Platform& platform = surroundings_.platform;
    platform::Platform broken{platform.messageBox, platform.applications, platform.codePage, platform.registry,
                              failing.ports()};
    const auto operations = automation::make<FileOperations>(broken);
    EXPECT_EQ(operations->getLongPath(u"C:\\x"), u"");
    EXPECT_EQ(operations->getShortPath(u"C:\\x"), u"");
    failing.known = {10, 0};
    EXPECT_EQ(operations->getLongPath(u"C:\\x"), u"");
    const auto& shown = surroundings_.messageBox.shown;
    ASSERT_EQ(shown.size(), 3U);
    EXPECT_TRUE(shown[0].text.starts_with(u"Problem in FileOperations.GetLongPathUsingFindMethod\r\n"));
    EXPECT_TRUE(shown[1].text.starts_with(u"Problem in FileOperations.GetShortPath\r\n"));
    EXPECT_TRUE(shown[2].text.starts_with(u"Problem in FileOperations.GetLongPath\r\n"));
}

} // namespace
} // namespace tarncom32::files
