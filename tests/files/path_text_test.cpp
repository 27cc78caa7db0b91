#include "files/path_text.h"

#include <gtest/gtest.h>

namespace tarncom32::files {
namespace {

using automation::String;
using automation::StringView;

const String kName40(40, u'n');
constexpr StringView kLong = u"C:\\Program Files\\Company\\Stencils\\Network.vss";

TEST(PathText, SplitsAtTheLastSeparatorOrDot) {
    struct Case {
        StringView text, first, second;
    };
    const Case paths[] = {{u"C:\\Drawings\\Plan.vsd", u"C:\\Drawings", u"Plan.vsd"},
                          {u"C:\\Plan.vsd", u"C:", u"Plan.vsd"},
                          {u"C:\\Drawings\\", u"C:\\Drawings", u""},
                          {u"\\Plan.vsd", u"", u"Plan.vsd"},
                          {u"dir/Plan.vsd", u"", u"dir/Plan.vsd"}, // "/" separates nothing
                          {u"", u"", u""}};
    for (const Case& c : paths) {
        EXPECT_EQ(splitPath(c.text).first, c.first);
        EXPECT_EQ(splitPath(c.text).second, c.second);
    }
    const Case names[] = {{u"Plan.vsd", u"Plan", u".vsd"}, {u"C:\\Rev.2\\Plan", u"C:\\Rev", u".2\\Plan"},
                          {u"a.b.c", u"a.b", u".c"},       {u"Plan.", u"Plan", u"."},
                          {u".profile", u"", u".profile"}, {u"Plan", u"Plan", u""}};
    for (const Case& c : names) {
        EXPECT_EQ(splitExtension(c.text).first, c.first);
        EXPECT_EQ(splitExtension(c.text).second, c.second);
    }
}

TEST(PathText, ShortensForDisplayByFixedNumbers) {
    struct Case {
        String text, expected;
    };
    const Case paths[] = {{u"C:\\abcdefghijklmnopq", u"C:\\abcdefghijklmnopq"}, // 20 characters
                          {u"C:\\abcdefghijklmnopqr", u"C:\\...\\"},
                          {u"a long path without separators", u"...\\"},
                          {u"  C: \\folder\\folder\\folder", u"C: \\...\\"}, // the head loses its outer spaces
                          {u"C:/folder/folder/folder", u"...\\"}};
    for (const Case& c : paths)
        EXPECT_EQ(shortenPath(c.text), c.expected);
    const Case names[] = {{kName40.substr(0, 20), kName40.substr(0, 20)},
                          {kName40.substr(0, 21), kName40.substr(0, 21) + u"..."}, // grows
                          {kName40.substr(0, 29), kName40.substr(0, 29) + u"..."},
                          {kName40, kName40.substr(0, 29) + u"..."}};
    for (const Case& c : names)
        EXPECT_EQ(shortenFileName(c.text), c.expected);
}

TEST(PathText, ComparesFourCharactersAsExtension) {
    struct Case {
        StringView name, extension;
        bool valid, inList;
    };
    const Case cases[] = {{u"Plan.vsd", u".vsd", true, true},
                          {u"Plan.VSD", u".vsd", true, false}, // the list's case counts
                          {u"Plan.vss", u"*.vsd*.vss", false, true},
                          {u"page.html", u".html", false, true},
                          {u"page.html", u"html", true, true}, // whatever the four characters are
                          {u"a.c", u".c", false, false},
                          {u".c", u".c", true, true}, // shorter names count whole
                          {u"\u00e4\u00f6.\u00c4\u00d6\u00dc", u".\u00e4\u00f6\u00fc", true, false},
                          {u"", u"", true, false},
                          {u"", u".vsd", false, true},
                          {u"Plan.vsd", u"", false, false}};
    for (const Case& c : cases) {
        EXPECT_EQ(hasExtension(c.name, c.extension), c.valid) << automation::toUtf8(c.name);
        EXPECT_EQ(isExtensionInList(c.name, c.extension), c.inList) << automation::toUtf8(c.name);
    }
}

TEST(PathText, DropsLastFoldersToALength) {
    struct Case {
        StringView name;
        std::int16_t maximum;
        StringView expected;
    };
    const Case cases[] = {{kLong, 45, kLong},
                          {kLong, 40, u"C:\\Program Files\\Company\\...\\Network.vss"},
                          {kLong, 39, u"C:\\Program Files\\...\\Network.vss"},
                          {kLong, 30, u"C:\\...\\Network.vss"},
                          {kLong, 18, u"C:\\...\\Network.vss"},
                          {kLong, 17, u"\\...\\Network.vss"}, // shorter it does not get
                          {kLong, -32768, u"\\...\\Network.vss"},
                          {u"Network.vss", 5, u"\\...\\Network.vss"},
                          {u"", 0, u""}};
    for (const Case& c : cases)
        EXPECT_EQ(limitLength(c.name, c.maximum), c.expected) << c.maximum;
}

} // namespace
} // namespace tarncom32::files
