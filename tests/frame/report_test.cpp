#include "frame/report.h"

#include "support/test_platform.h"

#include <gmock/gmock.h>
#include <stdexcept>

namespace tarncom32::frame {
namespace {

using namespace automation;

TEST(Report, WritesThreeLinesWithTheNumberInDecimal) {
    // An HRESULT is negative, never hexadecimal. What another object raised without a description has none, and the
    // label's space stays; an error of this library has the host's.
    const std::pair<Error, StringView> cases[] = {
        {Error(13), u"Error Number: 13\r\nError Description: Type mismatch"},
        {Error(12290), u"Error Number: 12290\r\nError Description: Application-defined or object-defined error"},
        {Error(-2032466967, u"End of file"), u"Error Number: -2032466967\r\nError Description: End of file"},
        {Error::fromHresult(-2147220991, u""), u"Error Number: -2147220991\r\nError Description: "}};
    for (const auto& [raised, expected] : cases) {
        tests::RecordingMessageBox box;
        reportAndStop(box, u"VisioFunctions", u"SelectShape", [error = raised] { throw error; });
        EXPECT_THAT(box.shown, testing::ElementsAre(testing::FieldsAre(
                                   u"Problem in VisioFunctions.SelectShape\r\n" + String(expected), 64, u"TarnCom32")));
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

/// A class with one member that reports, and a routine that does so without being one.
struct Component {
    const ClassInfo info{u"Component", u"", {}, {}, {MemberInfo{.name = u"SelectShape", .dispid = 1, .help = u""}}};
    tests::RecordingMessageBox box{};

    void selectShape() {
        reportAndStop(box, info, [] { throw Error(5); });
    }
    void noMember() {
        reportAndStop(box, info, [] {});
    }
};

TEST(Report, AMemberReportsUnderItsPublishedName) {
    Component component;
    component.selectShape();
    EXPECT_THAT(component.box.headings(), testing::ElementsAre("Problem in Component.SelectShape"));
    EXPECT_THROW(component.noMember(), std::logic_error) << "and that it is none shows without a failure";
}

TEST(Report, ASilentStepIsSkippedWithoutAWord) {
    EXPECT_FALSE(silently([] { throw Error(9); }));
    EXPECT_FALSE(silently([] { throw std::bad_alloc(); }));
    EXPECT_TRUE(silently([] {}));
}

} // namespace
} // namespace tarncom32::frame
