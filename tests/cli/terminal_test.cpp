#include "cli/run_tarn.h"
#include "cli/terminal.h"

#include <gtest/gtest.h>

namespace tarncom32::tests {
namespace {

using cli::Terminal;

TEST(Terminal, HasColoursUnlessTheyAreUnwanted) {
    const struct {
        std::vector<std::string> environment;
        bool colours;
    } cases[] = {
        {{"TERM=xterm"}, true},
        {{"TERM=xterm", "NO_COLOR="}, true},
        {{"TERM=xterm", "NO_COLOR=1"}, false},
        {{"TERM=dumb"}, false},
        {{}, false},
    };
    for (const auto& line : cases) {
        const Outcome run = runTarnOnTerminal({"classes"}, line.environment);
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.out.find('\x1b') != std::string::npos, line.colours) << testing::PrintToString(line.environment);
    }
    EXPECT_EQ(runTarn({"classes"}, {"TERM=xterm"}).out.find('\x1b'), std::string::npos);
}

TEST(Terminal, BreaksParagraphsAtItsWidth) {
    const std::string words = "aaa bbb ccc dddddddddddd e";
    EXPECT_EQ(Terminal(false, 10).paragraph(words, 2), "  aaa bbb\n  ccc\n  dddddddddddd\n  e\n");
    EXPECT_EQ(Terminal(false, 0).paragraph(words, 2), "  " + words + '\n');
}

TEST(Terminal, AlignsByColumns) {
    EXPECT_EQ(cli::padded("\u00E9\u0301", 3), "\u00E9\u0301  "); // a combining mark takes no column
    EXPECT_EQ(cli::padded("\u6771\u4EAC", 5), "\u6771\u4EAC ");
    EXPECT_EQ(cli::padded("\U0001F5A5", 3), "\U0001F5A5 ");
    EXPECT_EQ(cli::padded("long", 2), "long");
}

TEST(Terminal, IsNotCommandedByTheNamesInADrawing) {
    EXPECT_EQ(cli::oneLine("a\r\nb\x1b[2J\u009B2J\x7F\u00A0"), "a b [2J 2J \u00A0");
    EXPECT_EQ(cli::oneLine("\xC2"), "\xC2");
}

} // namespace
} // namespace tarncom32::tests
