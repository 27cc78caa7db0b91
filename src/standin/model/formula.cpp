#include "standin/model/formula.h"

#include "standin/visio_error.h"

namespace tarncom32::standin {

namespace {

using automation::equalsIgnoreCase;
using automation::trim;

bool isText(const drawing::Cell& cell) {
    return cell.unit == u"STR";
}

bool isTruth(const drawing::Cell& cell) {
    return cell.unit == u"BOOL";
}

/// The text of a formula that is one quoted literal; nullopt for any other.
std::optional<String> literalText(StringView formula) {
    if (formula.size() < 2 || formula.front() != u'"' || formula.back() != u'"') return std::nullopt;
    String text;
    for (std::size_t i = 1; i + 1 < formula.size(); ++i) {
        if (formula[i] == u'"' && (++i + 1 >= formula.size() || formula[i] != u'"')) return std::nullopt;
        text.push_back(formula[i]);
    }
    return text;
}

/// Whether quotes close and parentheses match outside of them.
bool isBalanced(StringView formula) {
    bool quote = false;
    int depth = 0;
    for (const char16_t c : formula) {
        if (c == u'"') quote = !quote;
        if (quote) continue;
        if (c == u'(') ++depth;
        if (c == u')' && --depth < 0) return false;
    }
    return !quote && depth == 0;
}

/// A number and its unit ("25.4 mm", "25.4mm", "3"); nullopt for any other formula.
std::optional<CellContent> measure(StringView formula) {
    const std::size_t digits = formula.find_last_of(u"0123456789.");
    if (digits == StringView::npos) return std::nullopt;
    if (const auto number = parsePlainNumber(formula)) return CellContent{String(formula), {}, {}};
    const auto number = parsePlainNumber(trim(formula.substr(0, digits + 1)));
    // "in." ends in a point as well.
    const std::size_t end = formula.find_last_of(u"0123456789");
    const auto bare = end == StringView::npos ? std::nullopt : parsePlainNumber(trim(formula.substr(0, end + 1)));
    if (number)
        if (const Unit* unit = unitInFormula(trim(formula.substr(digits + 1)))) return numberContent(*number, unit);
    if (bare)
        if (const Unit* unit = unitInFormula(trim(formula.substr(end + 1)))) return numberContent(*bare, unit);
    return std::nullopt;
}

/// What GUARD( ) is around; the formula itself when it is around nothing.
StringView withoutGuard(StringView formula) {
    return isGuarded(formula) ? trim(formula.substr(6, formula.size() - 7)) : formula;
}

std::optional<CellContent> constant(StringView formula) {
    if (auto text = literalText(formula)) return CellContent{std::move(*text), u"STR", {}};
    if (equalsIgnoreCase(formula, u"TRUE")) return CellContent{u"1", u"BOOL", {}};
    if (equalsIgnoreCase(formula, u"FALSE")) return CellContent{u"0", u"BOOL", {}};
    return measure(formula);
}

} // namespace

bool isGuarded(StringView formula) {
    return formula.size() > 6 && equalsIgnoreCase(formula.substr(0, 6), u"GUARD(") && formula.back() == u')';
}

CellContent numberContent(double number, const Unit* unit) {
    return {exactNumberText(unit ? number * unit->internal : number), unit ? String(unit->fileName) : String(), {}};
}

CellContent parseFormula(StringView formula) {
    formula = trim(formula);
    if (formula.starts_with(u'=')) formula = trim(formula.substr(1));
    if (formula.empty()) return {{}, {}, u"No Formula"};
    if (!isBalanced(formula))
        throw visio_error::invalidParameter(u"the quotes or parentheses of a formula do not match: " + String(formula));
    if (auto content = constant(formula)) return *content;
    CellContent content = constant(withoutGuard(formula)).value_or(CellContent{u"0", {}, {}});
    content.formula = formula;
    return content;
}

String quoted(StringView text) {
    String out = u"\"";
    for (const char16_t c : text) {
        if (c == u'"') out.push_back(c);
        out.push_back(c);
    }
    return out + u'"';
}

String formulaText(const drawing::Cell& cell) {
    if (cell.formula == u"No Formula") return {};
    if (cell.formula.present() && cell.formula != u"Inh") return String(cell.formula.view());
    if (isText(cell)) return quoted(cell.value.view());
    if (isTruth(cell)) return internalNumber(cell) != 0 ? u"TRUE" : u"FALSE";
    return resultText(cell, nullptr);
}

double internalNumber(const drawing::Cell& cell) {
    if (isText(cell)) return 0;
    return parsePlainNumber(cell.value.view()).value_or(0);
}

String resultText(const drawing::Cell& cell, const Unit* unit) {
    if (isText(cell)) return String(cell.value.view());
    const auto number = parsePlainNumber(cell.value.view());
    if (!number) return String(cell.value.view()); // texts, colours and the like without a unit
    if (isTruth(cell) && !unit) return *number != 0 ? u"TRUE" : u"FALSE";
    if (!unit) unit = unitInFile(cell.unit.view());
    if (!unit) return String(cell.value.view());
    return numberText(*number / unit->internal) + (unit->text == u"%" ? u"" : u" ") + String(unit->text);
}

} // namespace tarncom32::standin
