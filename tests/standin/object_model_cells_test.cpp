#include "automation/convert.h"
#include "standin/object_model.h"
#include "support/table.h"

namespace tarncom32::standin {
namespace {

using namespace tests;

class ObjectModelCells : public DrawingTest {};

TEST_F(ObjectModelCells, Formulas) {
    // What is assigned, and Formula, ResultStr(""), ResultIU and IsConstant afterwards.
    const std::tuple<StringView, const char*, const char*, double, const char*> cases[] = {
        {u"=\"abc\"", "\"abc\"", "abc", 0, "-1"},
        {u"\"say \"\"x\"\"\"", "\"say \"\"x\"\"\"", "say \"x\"", 0, "-1"},
        {u"\"\"", "\"\"", "", 0, "-1"},
        {u"\"a\"&\"b\"", "\"a\"&\"b\"", "0", 0, "0"}, // an expression is kept, not computed
        {u" 25.4 mm ", "25.4 mm", "25.4 mm", 1, "-1"},
        {u"2 in.", "2 in", "2 in", 2, "-1"},
        {u"-3", "-3", "-3", -3, "-1"},
        {u"50%", "50%", "50%", 0.5, "-1"},
        {u"180 deg", "180 deg", "180 deg", 3.14159265358979312, "-1"},
        {u"TRUE", "TRUE", "TRUE", 1, "-1"},
        {u"RUNADDONWARGS(\"x\",\"(\")", "RUNADDONWARGS(\"x\",\"(\")", "0", 0, "0"},
        {u"", "", "", 0, "0"},
    };
    const ObjectRef cell = objectIn(drawing.square()->get(u"Cells", u"Comment"));
    for (const auto& [assigned, formula, text, internal, constant] : cases) {
        SCOPED_TRACE(automation::toUtf8(assigned));
        cell->put(u"Formula", assigned);
        EXPECT_EQ(get(cell, u"FormulaU"), formula);
        EXPECT_EQ(textIn(cell->get(u"ResultStr", u"")), text);
        EXPECT_DOUBLE_EQ(automation::toDouble(cell->get(u"ResultIU")), internal);
        EXPECT_EQ(get(cell, u"IsConstant"), constant);
    }
    for (const StringView broken : {u"\"abc", u"(1", u"1)", u"a\"b"})
        EXPECT_EQ(failureOf([&] { cell->put(u"Formula", broken); }).substr(0, 29), "-2147024809 Invalid parameter")
            << automation::toUtf8(broken);
}

TEST_F(ObjectModelCells, ResultsInUnits) {
    const ObjectRef width = objectIn(drawing.square()->get(u"Cells", u"Width"));
    const std::tuple<Variant, double, const char*> cases[] = {
        {u"mm", 25.4, "25.4 mm"}, {70, 25.4, "25.4 mm"}, {u"", 1, "1 in"},
        {0, 1, "1 in"},           {50, 72, "72 pt"},     {u"ft", 1.0 / 12, "0.08333333333 ft"},
        {32, 1, "1 in"}};
    for (const auto& [unit, result, text] : cases) {
        EXPECT_DOUBLE_EQ(automation::toDouble(width->get(u"Result", unit)), result);
        EXPECT_EQ(textIn(width->get(u"ResultStr", unit)), text);
    }
    EXPECT_EQ(failureOf([&] { width->get(u"Result", u"parsec"); }), "5 Bad measurement unit");
    width->put(u"Result", u"cm", 2.54);
    EXPECT_EQ(get(width, u"Formula"), "2.54 cm");
    width->put(u"ResultIU", 2);
    EXPECT_EQ(get(width, u"Formula"), "5.08 cm") << "a number keeps the cell's unit";
    EXPECT_DOUBLE_EQ(automation::toDouble(Variant(width)), 2) << "a cell reads as its result";
}

TEST_F(ObjectModelCells, GuardedCellsNeedForce) {
    const ObjectRef cell = objectIn(drawing.square()->get(u"Cells", u"Width"));
    cell->put(u"Formula", u"GUARD(2 in)");
    EXPECT_DOUBLE_EQ(automation::toDouble(cell->get(u"ResultIU")), 2);
    const std::string refused =
        "-2032465766 Requested operation is presently disabled (the cell is guarded; use FormulaForce)";
    EXPECT_EQ(failureOf([&] { cell->put(u"FormulaU", u"3"); }), refused);
    EXPECT_EQ(failureOf([&] { cell->put(u"ResultIU", 3); }), refused);
    cell->put(u"FormulaForceU", u"3");
    EXPECT_EQ(get(cell, u"Formula"), "3");
}

TEST_F(ObjectModelCells, NamedRows) {
    const ObjectRef sheet = objectIn(drawing.document->get(u"DocumentSheet"));
    EXPECT_EQ(sheet->get(u"SectionExists", 242, 0), Variant(std::int16_t{0}));
    EXPECT_EQ(sheet->call(u"AddNamedRow", 242, u"Version", 0), Variant(std::int16_t{0}));
    EXPECT_EQ(sheet->call(u"AddNamedRow", 242, u"", 0), Variant(std::int16_t{1}));
    EXPECT_EQ(sheet->get(u"SectionExists", 242, 1), Variant(std::int16_t{-1}));
    EXPECT_EQ(failureOf([&] { sheet->call(u"AddNamedRow", 242, u"VERSION", 0); }),
              "-2147024809 The name 'VERSION' is already in use.");
    EXPECT_NE(failureOf([&] { sheet->call(u"AddSection", 242); }), "");
    using Case = std::pair<StringView, int>;
    const auto cases = tests::table(
        Case(u"User.Version", -1), Case(u"user.version", -1), Case(u"User.Version.Value", -1),
        Case(u"User.Version.Prompt", -1), Case(u"User.Row_1", -1), Case(u"User.Version.Label", 0), Case(u"User", 0),
        Case(u"User.", 0), Case(u"Prop.Version", 0), Case(u"Version", 0), Case(u"", 0), Case(u"Nothing.Version", 0));
    for (const auto& [cell, exists] : cases)
        for (const int locally : {0, 1})
            EXPECT_EQ(sheet->get(u"CellExists", cell, locally), Variant(static_cast<std::int16_t>(exists)))
                << automation::toUtf8(cell);
    const ObjectRef version = objectIn(sheet->get(u"Cells", u"User.Version"));
    EXPECT_EQ(get(version, u"Formula"), "") << "a new row is empty";
    version->put(u"Formula", u"\"2.5\"");
    EXPECT_EQ(textIn(objectIn(sheet->get(u"CellsU", u"user.version.value"))->get(u"ResultStr", 0)), "2.5");
    EXPECT_EQ(textIn(objectIn(sheet->get(u"Cells", u"user.version.prompt"))->get(u"Name")), "User.Version.Prompt");
}

} // namespace
} // namespace tarncom32::standin
