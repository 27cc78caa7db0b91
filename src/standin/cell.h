#pragma once

#include "automation/members.h"
#include "standin/document.h"
#include "standin/model/sheet_cells.h"

namespace tarncom32::standin {

/// A cell of a shape, page or document. Nothing is computed: a cell whose formula is an expression shows the value that
/// its file gave, or 0 after the expression was assigned.
class Cell final : public automation::Described<Cell> {
public:
    static constexpr StringView kClassName = u"Cell";
    static const automation::ClassInfo& describe();

    /// The cell at an address that exists.
    Cell(Ref<Document> document, ShapeNode& node, CellAddress address)
        : document_(std::move(document)), node_(node), address_(std::move(address)) {}

    Ref<Application> application() { return document_->application(); }
    Ref<Document> document() { return document_; }
    /// Visio's number of the error that the value is: 0 for none, 39 #DIV/0!, 47 #VALUE!, 55 #REF!, 61 #NAME?, 68
    /// #NUM!, 74 #N/A.
    std::int16_t error();
    /// The formula; a text constant stands in double quotes. Assigning makes the cell the sheet's own; it raises
    /// "Requested operation is presently disabled" while the formula is wrapped in GUARD( ).
    String formula();
    void setFormula(StringView localeSpecificFormula);
    /// Assigns a formula, guarded or not.
    void setFormulaForce(StringView localeSpecificFormula);
    /// -1 when the formula is a constant, else 0.
    std::int16_t isConstant();
    /// -1 when the formula comes from the master, else 0.
    std::int16_t isInherited();
    /// "PinX", "User.Version", "Prop.Cost.Label".
    String name();
    /// 4.
    std::int16_t objectType() { return 4; }
    /// The value in a unit, named by text or constant; 0 for texts. Raises "Bad measurement unit" for others.
    double result(const Variant& UnitsNameOrCode);
    void setResult(const Variant& UnitsNameOrCode, double lpResult);
    /// The value in internal units: inches and radians.
    double resultIU();
    void setResultIU(double lpResult);
    /// The value as text: a text as it is; a number with the name of the unit, the cell's own for 0 and "".
    String resultStr(const Variant& UnitsNameOrCode);
    /// The shape or sheet that the cell is in.
    Ref<Shape> shape();

private:
    /// The cell as it is now. Raises when it has gone.
    FoundCell find() const;
    /// What the cell holds; an empty one where nothing was written yet.
    drawing::Cell content() const;
    void write(const struct CellContent& content);
    void requireUnguarded();

    Ref<Document> document_;
    ShapeNode& node_;
    CellAddress address_;
};

} // namespace tarncom32::standin
