#include "fakes.h"
#include "files/path_text.h"

namespace tarncom32::files {
namespace {

class PathTextTest : public FilesTest {};

constexpr StringView kLong = u"C:\\Program Files\\Company\\Stencils\\Network.vss";

TEST_F(PathTextTest, SplitsAtTheLastSeparatorOrDot) {
    const std::tuple<StringView, StringView, StringView> paths[] = {
        {u"C:\\Plan.vsd", u"C:", u"Plan.vsd"},
        {u"C:\\Drawings\\", u"C:\\Drawings", u""},
        {u"\\Plan.vsd", u"", u"Plan.vsd"},
        {u"dir/Plan.vsd", u"", u"dir/Plan.vsd"}, // "/" separates nothing
        {u"", u"", u""}};
    for (const auto& [text, first, second] : paths)
        EXPECT_THAT(splitPath(text), testing::FieldsAre(first, second));
    const std::tuple<StringView, StringView, StringView> names[] = {
        {u"Plan.vsd", u"Plan", u".vsd"}, {u"C:\\Rev.2\\Plan", u"C:\\Rev", u".2\\Plan"},
        {u"a.b.c", u"a.b", u".c"},       {u"Plan.", u"Plan", u"."},
        {u".profile", u"", u".profile"}, {u"Plan", u"Plan", u""}};
    for (const auto& [text, first, second] : names)
        EXPECT_THAT(splitExtension(text), testing::FieldsAre(first, second));
}

TEST_F(PathTextTest, ShortensForDisplayByFixedNumbers) {
    const std::pair<String, String> paths[] = {
        {u"C:\\abcdefghijklmnopq", u"C:\\abcdefghijklmnopq"}, // 20 characters
        {u"C:\\abcdefghijklmnopqr", u"C:\\...\\"},
        {u"a long path without separators", u"...\\"},
        {u"  C: \\folder\\folder\\folder", u"C: \\...\\"}}; // the head loses its outer spaces
    for (const auto& [text, expected] : paths)
        EXPECT_EQ(operations_->shortenPath(text), expected);
    // Names of 21 to 23 characters grow.
    for (const auto& [size, kept, end] :
         {std::tuple{20U, 20U, u""}, {21U, 21U, u"..."}, {29U, 29U, u"..."}, {40U, 29U, u"..."}})
        EXPECT_EQ(operations_->shortenFileName(String(size, u'n')), String(kept, u'n') + end);
}

TEST_F(PathTextTest, ComparesFourCharactersAsExtension) {
    const std::tuple<StringView, StringView, bool, bool> cases[] = {
        {u"Plan.VSD", u".vsd", true, false}, // the list's case counts
        {u"Plan.vss", u"*.vsd*.vss", false, true},
        {u"page.html", u"html", true, true}, // whatever the four characters are
        {u"a.c", u".c", false, false},
        {u".c", u".c", true, true}, // shorter names count whole
        {u"\u00e4\u00f6.\u00c4\u00d6\u00dc", u".\u00e4\u00f6\u00fc", true, false},
        {u"", u"", true, false},
        {u"Plan.vsd", u"", false, false}};
    for (const auto& [name, extension, valid, inList] : cases) {
        EXPECT_EQ(operations_->isValidExtension(name, extension).isTrue(), valid) << toUtf8(name);
        EXPECT_EQ(operations_->isFileExtensionInValidList(name, extension).isTrue(), inList) << toUtf8(name);
    }
}

TEST_F(PathTextTest, DropsLastFoldersToALength) {
    const std::tuple<StringView, std::int16_t, StringView> cases[] = {
        {kLong, 45, kLong},
        {kLong, 40, u"C:\\Program Files\\Company\\...\\Network.vss"},
        {kLong, 39, u"C:\\Program Files\\...\\Network.vss"},
        {kLong, 18, u"C:\\...\\Network.vss"},
        {kLong, 17, u"\\...\\Network.vss"}, // shorter it does not get
        {u"Network.vss", 5, u"\\...\\Network.vss"},
        {u"", 0, u""}};
    for (const auto& [name, maximum, expected] : cases)
        EXPECT_EQ(operations_->limitFileNameLength(name, maximum), expected) << maximum;
}

} // namespace
} // namespace tarncom32::files
