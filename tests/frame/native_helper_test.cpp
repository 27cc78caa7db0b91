#include "frame/native_helper.h"

#include "automation/members.h"
#include "platform/portable/windows_1252.h"

#include <gtest/gtest.h>

namespace tarncom32::frame {
namespace {

using automation::StringView;

const platform::portable::Windows1252 kCodePage;

struct ReplaceCase {
    StringView source, replacement, placeHolder, expected;
};

TEST(NativeHelper, ReplacesEveryPlaceHolderFromLeftToRight) {
    const ReplaceCase cases[] = {
        {u"LastUsedFile%s", u"12", u"%s", u"LastUsedFile12"},
        {u"%s%s", u"%s", u"%s", u"%s%s"}, // what was put in is not replaced again
        {u"aaa", u"b", u"aa", u"ba"},
        {u"text", u"b", u"", u"text"},
        {u"", u"b", u"%s", u""},
        {u"%s", u"\u0416", u"%s", u"?"}, // no such letter in the code page
        {u"\u20AC%s", u"\u00FC", u"%s", u"\u20AC\u00FC"},
    };
    for (const ReplaceCase& c : cases)
        EXPECT_EQ(replaceResourcePlaceHolder(kCodePage, c.source, c.replacement, c.placeHolder), c.expected)
            << automation::toUtf8(c.source);
}

TEST(NativeHelper, ReadsOnlyWholeStringLiterals) {
    const std::pair<StringView, StringView> cases[] = {
        {u"\"2.5\"", u"2.5"},
        {u"\"\"", u""},
        {u"\"say \"\"hi\"\"\"", u"say \"hi\""},
        {u"2.5", u"2.5"},
        {u"\"a\"&\"b\"", u"\"a\"&\"b\""},
        {u"\"", u"\""},
        {u"\"\"\"", u"\"\"\""},
        {u"", u""},
    };
    for (const auto& [formula, expected] : cases)
        EXPECT_EQ(stringFromVisio(kCodePage, formula), expected) << automation::toUtf8(formula);
}

/// A shape of which only the asking for "User.Application" matters.
class OneCellShape final : public automation::Described<OneCellShape> {
public:
    static constexpr StringView kClassName = u"Shape";
    explicit OneCellShape(const char16_t* formula) : formula_(formula) {}

    static const automation::ClassInfo& describe() {
        namespace member = automation::member;
        using automation::in;
        static const automation::ClassInfo info(
            kClassName, u"", {}, {},
            {
                member::method<&OneCellShape::cellExists>(1, u"CellExists", {in(u"name"), in(u"local")}, u""),
                member::get<&OneCellShape::cells>(2, u"Cells", {in(u"name")}, u""),
                member::get<&OneCellShape::formula>(3, u"Formula", {}, u""),
            });
        return info;
    }
    std::int16_t cellExists(StringView name, std::int16_t) {
        return formula_ && name == u"User.Application" ? std::int16_t{-1} : std::int16_t{0};
    }
    automation::ObjectRef cells(StringView) { return automation::ObjectRef(this); }
    automation::String formula() { return formula_; }

private:
    const char16_t* formula_;
};

TEST(NativeHelper, AShapeBelongsToTheApplicationThatItsCellNamesExactly) {
    struct Case {
        const char16_t* formula;
        StringView application;
        bool ours;
    };
    const Case cases[] = {
        {u"\"Planner\"", u"Planner", true},
        {u"\"Planner\"", u"planner", false},
        {u"\"Planner\"", u"", false},
        {u"\"\"", u"", true},
        {nullptr, u"", false},
        {u"Planner", u"Planner", true},
    };
    for (const Case& c : cases) {
        const auto shape = automation::make<OneCellShape>(c.formula);
        EXPECT_EQ(weCareAboutThisShape(kCodePage, *shape, c.application), c.ours);
    }
}

} // namespace
} // namespace tarncom32::frame
