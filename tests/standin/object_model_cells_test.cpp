#include "automation/convert.h"
#include "standin/object_model.h"

#include <gtest/gtest.h>

namespace tarncom32::standin {
namespace {

using namespace tests;

struct FormulaCase {
    StringView assigned;
    const char* formula; ///< as read back
    const char* text;    ///< ResultStr("")
    double internal;     ///< ResultIU
    bool constant = true;
};

TEST(ObjectModelCells, Formulas) {
    const FormulaCase cases[] = {
        {u"\"abc\"", "\"abc\"", "abc", 0},
        {u"=\"abc\"", "\"abc\"", "abc", 0},
        {u"\"say \"\"x\"\"\"", "\"say \"\"x\"\"\"", "say \"x\"", 0},
        {u"\"\"", "\"\"", "", 0},
        {u"\"a\"&\"b\"", "\"a\"&\"b\"", "0", 0, false}, // an expression is kept, not computed
        {u"12.5", "12.5", "12.5", 12.5},
        {u"-3", "-3", "-3", -3},
        {u" 25.4 mm ", "25.4 mm", "25.4 mm", 1},
        {u"2 in.", "2 in", "2 in", 2},
        {u"50%", "50%", "50%", 0.5},
        {u"180 deg", "180 deg", "180 deg", 3.14159265358979312},
        {u"TRUE", "TRUE", "TRUE", 1},
        {u"RUNADDONWARGS(\"x\",\"(\")", "RUNADDONWARGS(\"x\",\"(\")", "0", 0, false},
        {u"Width*0.5", "Width*0.5", "0", 0, false},
        {u"", "", "", 0, false},
    };
    const BlankDrawing drawing;
    const ObjectRef cell = objectIn(drawing.square()->get(u"Cells", u"Comment"));
    for (const FormulaCase& c : cases) {
        SCOPED_TRACE(automation::toUtf8(c.assigned));
        cell->put(u"Formula", c.assigned);
        EXPECT_EQ(get(cell, u"FormulaU"), c.formula);
        EXPECT_EQ(textIn(cell->get(u"ResultStr", u"")), c.text);
        EXPECT_DOUBLE_EQ(automation::toDouble(cell->get(u"ResultIU")), c.internal);
        EXPECT_EQ(get(cell, u"IsConstant"), c.constant ? "-1" : "0");
    }
    for (const StringView broken : {u"\"abc", u"(1", u"1)", u"a\"b"})
        EXPECT_EQ(errorOf([&] { cell->put(u"Formula", broken); }).substr(0, 29), "-2147024809 Invalid parameter")
            << automation::toUtf8(broken);
}

TEST(ObjectModelCells, ResultsInUnits) {
    const BlankDrawing drawing;
    const ObjectRef width = objectIn(drawing.square()->get(u"Cells", u"Width"));
    const struct {
        Variant unit;
        double result;
        const char* text;
    } cases[] = {{u"mm", 25.4, "25.4 mm"}, {70, 25.4, "25.4 mm"}, {u"", 1, "1 in"},
                 {0, 1, "1 in"},           {50, 72, "72 pt"},     {u"ft", 1.0 / 12, "0.08333333333 ft"},
                 {32, 1, "1 in"}};
    for (const auto& c : cases) {
        EXPECT_DOUBLE_EQ(automation::toDouble(width->get(u"Result", c.unit)), c.result);
        EXPECT_EQ(textIn(width->get(u"ResultStr", c.unit)), c.text);
    }
    EXPECT_EQ(errorOf([&] { width->get(u"Result", u"parsec"); }), "5 Bad measurement unit");
    width->put(u"Result", u"cm", 2.54);
    EXPECT_EQ(get(width, u"Formula"), "2.54 cm");
    width->put(u"ResultIU", 2);
    EXPECT_EQ(get(width, u"Formula"), "5.08 cm") << "a number keeps the cell's unit";
    EXPECT_DOUBLE_EQ(automation::toDouble(Variant(width)), 2) << "a cell reads as its result";
}

TEST(ObjectModelCells, GuardedCellsNeedForce) {
    const BlankDrawing drawing;
    const ObjectRef cell = objectIn(drawing.square()->get(u"Cells", u"Width"));
    cell->put(u"Formula", u"GUARD(2 in)");
    EXPECT_DOUBLE_EQ(automation::toDouble(cell->get(u"ResultIU")), 2);
    const std::string refused =
        "-2032465766 Requested operation is presently disabled (the cell is guarded; use FormulaForce)";
    EXPECT_EQ(errorOf([&] { cell->put(u"FormulaU", u"3"); }), refused);
    EXPECT_EQ(errorOf([&] { cell->put(u"ResultIU", 3); }), refused);
    cell->put(u"FormulaForceU", u"3");
    EXPECT_EQ(get(cell, u"Formula"), "3");
}

TEST(ObjectModelCells, NamedRows) {
    const BlankDrawing drawing;
    const ObjectRef sheet = objectIn(drawing.document->get(u"DocumentSheet"));
    EXPECT_EQ(sheet->get(u"SectionExists", 242, 0), Variant(std::int16_t{0}));
    EXPECT_EQ(sheet->call(u"AddNamedRow", 242, u"Version", 0), Variant(std::int16_t{0}));
    EXPECT_EQ(sheet->call(u"AddNamedRow", 242, u"", 0), Variant(std::int16_t{1}));
    EXPECT_EQ(sheet->get(u"SectionExists", 242, 1), Variant(std::int16_t{-1}));
    EXPECT_EQ(errorOf([&] { sheet->call(u"AddNamedRow", 242, u"VERSION", 0); }),
              "-2147024809 The name 'VERSION' is already in use.");
    EXPECT_NE(errorOf([&] { sheet->call(u"AddSection", 242); }), "");
    const struct {
        StringView cell;
        int exists;
    } cases[] = {{u"User.Version", -1},
                 {u"user.version", -1},
                 {u"User.Version.Value", -1},
                 {u"User.Version.Prompt", -1},
                 {u"User.Row_1", -1},
                 {u"User.Version.Label", 0},
                 {u"User", 0},
                 {u"User.", 0},
                 {u"Prop.Version", 0},
                 {u"Version", 0},
                 {u"", 0},
                 {u"Nothing.Version", 0}};
    for (const auto& c : cases)
        for (const int locally : {0, 1})
            EXPECT_EQ(sheet->get(u"CellExists", c.cell, locally), Variant(static_cast<std::int16_t>(c.exists)))
                << automation::toUtf8(c.cell);
    const ObjectRef version = objectIn(sheet->get(u"Cells", u"User.Version"));
    EXPECT_EQ(get(version, u"Formula"), "") << "a new row is empty";
    version->put(u"Formula", u"\"2.5\"");
    EXPECT_EQ(textIn(objectIn(sheet->get(u"CellsU", u"user.version.value"))->get(u"ResultStr", 0)), "2.5");
    EXPECT_EQ(textIn(objectIn(sheet->get(u"Cells", u"user.version.prompt"))->get(u"Name")), "User.Version.Prompt");
}

} // namespace
} // namespace tarncom32::standin
