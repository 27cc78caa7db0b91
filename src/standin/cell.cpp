#include "standin/cell.h"

#include "standin/model/formula.h"
#include "standin/shape.h"
#include "standin/visio_error.h"

namespace tarncom32::standin {

namespace {

/// What a cell holds that was written nowhere: nothing in a row, else the plain number 0.
drawing::Cell unwritten(const CellAddress& address, drawing::TextPool& texts) {
    drawing::Cell cell;
    if (address.section)
        cell.formula = texts.fromUtf16(u"No Formula");
    else
        cell.value = texts.fromUtf16(u"0");
    return cell;
}

} // namespace

const automation::ClassInfo& Cell::describe() {
    using namespace automation;
    static const ClassInfo info(
        kClassName, u"A cell of a shape, a page or a document.", Guid{}, "de98b094-09b0-48b8-9205-b199bd501dfd"_guid,
        {
            member::get<&Cell::application>(1, u"Application", {}, u"The application."),
            member::get<&Cell::document>(2, u"Document", {}, u"The document."),
            member::get<&Cell::error>(3, u"Error", {}, u"The error that the value is; 0 for none."),
            member::get<&Cell::formula>(4, u"Formula", {}, u"The formula."),
            member::let<&Cell::setFormula>(4, u"Formula", {in(u"localeSpecificFormula")}, u"The formula."),
            member::let<&Cell::setFormulaForce>(5, u"FormulaForce", {in(u"localeSpecificFormula")},
                                                u"Assigns the formula, guarded or not."),
            member::let<&Cell::setFormulaForce>(6, u"FormulaForceU", {in(u"localeIndependentFormula")},
                                                u"Assigns the universal formula, guarded or not."),
            member::get<&Cell::formula>(7, u"FormulaU", {}, u"The formula in universal syntax."),
            member::let<&Cell::setFormula>(7, u"FormulaU", {in(u"localeIndependentFormula")},
                                           u"The formula in universal syntax."),
            member::get<&Cell::isConstant>(8, u"IsConstant", {}, u"Whether the formula is a constant."),
            member::get<&Cell::isInherited>(9, u"IsInherited", {}, u"Whether the formula is inherited."),
            member::get<&Cell::name>(10, u"Name", {}, u"The name of the cell."),
            member::get<&Cell::objectType>(11, u"ObjectType", {}, u"The type of the object: 4."),
            member::get<&Cell::result>(12, u"Result", {in(u"UnitsNameOrCode")}, u"The value in a unit."),
            member::let<&Cell::setResult>(12, u"Result", {in(u"UnitsNameOrCode"), in(u"lpResult")},
                                          u"The value in a unit."),
            member::get<&Cell::resultIU>(0, u"ResultIU", {}, u"The value in internal units."),
            member::let<&Cell::setResultIU>(0, u"ResultIU", {in(u"lpResult")}, u"The value in internal units."),
            member::get<&Cell::resultStr>(13, u"ResultStr", {in(u"UnitsNameOrCode")}, u"The value as text."),
            member::get<&Cell::shape>(14, u"Shape", {}, u"The shape that the cell is in."),
        });
    return info;
}

FoundCell Cell::find() const {
    document_->requireOpen();
    if (node_.deleted) throw visio_error::inappropriateSource(u"the shape has been deleted");
    auto found = findCell(node_, address_, NameKind::Universal, Reach::Inherited);
    if (!found) throw visio_error::unexpectedEndOfFile();
    return std::move(*found);
}

drawing::Cell Cell::content() const {
    const FoundCell found = find();
    if (!found.value) return unwritten(address_, document_->model().texts());
    drawing::Cell cell = *found.value;
    cell.formula = found.formula ? found.formula->formula : drawing::Text();
    return cell;
}

std::int16_t Cell::error() {
    static constexpr struct {
        StringView text;
        std::int16_t number;
    } kErrors[] = {{u"#DIV/0!", 39}, {u"#VALUE!", 47}, {u"#REF!", 55}, {u"#NAME?", 61}, {u"#NUM!", 68}, {u"#N/A", 74}};
    const drawing::Cell cell = content();
    for (const auto& known : kErrors)
        if (cell.error == known.text) return known.number;
    return 0;
}

String Cell::formula() {
    return formulaText(content());
}

void Cell::setFormula(StringView localeSpecificFormula) {
    requireUnguarded();
    write(parseFormula(localeSpecificFormula));
}

void Cell::setFormulaForce(StringView localeSpecificFormula) {
    write(parseFormula(localeSpecificFormula));
}

std::int16_t Cell::isConstant() {
    return content().formula.present() ? 0 : -1;
}

std::int16_t Cell::isInherited() {
    return find().local ? 0 : -1;
}

String Cell::name() {
    return find().address.name();
}

double Cell::result(const Variant& UnitsNameOrCode) {
    const Unit* unit = unitOfArgument(UnitsNameOrCode);
    return internalNumber(content()) / (unit ? unit->internal : 1);
}

void Cell::setResult(const Variant& UnitsNameOrCode, double lpResult) {
    const Unit* unit = unitOfArgument(UnitsNameOrCode);
    requireUnguarded();
    write(numberContent(lpResult, unit));
}

double Cell::resultIU() {
    return internalNumber(content());
}

void Cell::setResultIU(double lpResult) {
    requireUnguarded();
    CellContent number = numberContent(lpResult, nullptr);
    number.unit = unitInFile(content().unit.view()) ? String(content().unit.view()) : String();
    write(number);
}

String Cell::resultStr(const Variant& UnitsNameOrCode) {
    return resultText(content(), unitOfArgument(UnitsNameOrCode));
}

Ref<Shape> Cell::shape() {
    find();
    return document_->objectOf(node_);
}

void Cell::write(const CellContent& content) {
    find();
    DocumentModel& model = document_->model();
    drawing::Cell& cell = ownCell(node_, address_, model.texts());
    const auto text = [&](const String& value) {
        return value.empty() ? drawing::Text() : model.texts().fromUtf16(value);
    };
    cell.value = text(content.value);
    cell.unit = text(content.unit);
    cell.formula = text(content.formula);
    cell.error = {};
    model.changed = true;
}

void Cell::requireUnguarded() {
    if (isGuarded(content().formula.view()))
        throw visio_error::presentlyDisabled(u"the cell is guarded; use FormulaForce");
}

} // namespace tarncom32::standin
