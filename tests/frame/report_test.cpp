#include "frame/report.h"

#include "support/test_platform.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace tarncom32::frame {
namespace {

using automation::Error;
using automation::String;
using automation::StringView;

struct ReportCase {
    const char* name;
    std::int32_t number;
    StringView description;
    StringView expected;
};

TEST(Report, WritesThreeLinesWithTheNumberInDecimal) {
    const ReportCase cases[] = {
        {"a host's number", 13, u"Type mismatch",
         u"Problem in VisioFunctions.SelectShape\r\nError Number: 13\r\nError Description: Type mismatch"},
        {"an HRESULT is negative, never hexadecimal", -2032466967, u"Unexpected end of file",
         u"Problem in VisioFunctions.SelectShape\r\nError Number: -2032466967\r\nError Description: Unexpected end of "
         u"file"},
        {"the label's space stays without a description", 5, u"",
         u"Problem in VisioFunctions.SelectShape\r\nError Number: 5\r\nError Description: "},
    };
    for (const ReportCase& c : cases) {
        SCOPED_TRACE(c.name);
        tests::RecordingMessageBox box;
        reportAndStop(box, u"VisioFunctions", u"SelectShape", [&] { throw Error(c.number, c.description); });
        const std::vector<tests::RecordingMessageBox::Shown> expected{{String(c.expected), 64, u"TarnCom32"}};
        EXPECT_EQ(box.shown, expected);
    }
}

TEST(Report, WithoutAnErrorShowsNumberZeroAndLeavesTheStateAlone) {
    tests::RecordingMessageBox box;
    reportError(box, u"RecycleBin", u".VisEventProc");
    ASSERT_EQ(box.shown.size(), 1u);
    EXPECT_EQ(box.shown[0].text, u"Problem in RecycleBin..VisEventProc\r\nError Number: 0\r\nError Description: ");

    const CurrentErrorScope outer(Error(70));
    {
        const CurrentErrorScope inner(Error(91));
        reportError(box, u"A", u"B");
        EXPECT_EQ(currentError().number, 91);
    }
    EXPECT_EQ(currentError().number, 70);
}

TEST(Report, TheRestOfAFailingBodyDoesNotRunAndNothingEscapes) {
    tests::RecordingMessageBox box;
    int steps = 0;
    reportAndStop(box, u"A", u"B", [&] {
        ++steps;
        throw std::length_error("too long");
        ++steps;
    });
    EXPECT_EQ(steps, 1);
    ASSERT_EQ(box.shown.size(), 1u);
    EXPECT_EQ(box.shown[0].text, u"Problem in A.B\r\nError Number: 51\r\nError Description: too long");
    EXPECT_EQ(currentError().number, 0);
}

TEST(Report, ASilentStepIsSkippedWithoutAWord) {
    EXPECT_FALSE(silently([] { throw Error(9); }));
    EXPECT_FALSE(silently([] { throw std::bad_alloc(); }));
    EXPECT_TRUE(silently([] {}));
}

} // namespace
} // namespace tarncom32::frame
