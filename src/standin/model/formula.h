#pragma once

#include "standin/drawing/sheet.h"
#include "standin/model/units.h"

/// Formulas of cells, as far as they are constants. Nothing is computed: a formula that is an expression is kept as it
/// stands, and the value of its cell is the last one that the file gave, or 0 where none did.
namespace tarncom32::standin {

/// What a cell is to hold after a formula was given to it, in the terms of files.
struct CellContent {
    String value;   ///< in internal units, or a text without quotes
    String unit;    ///< "STR", "BOOL", "MM" ...; empty for a plain number
    String formula; ///< of an expression; empty for a constant
};

/// Reads a formula as it is assigned: a quoted text, a number with or without a unit, TRUE, FALSE or an expression; a
/// leading "=" goes. Raises "Invalid parameter" for one whose quotes or parentheses do not match.
CellContent parseFormula(StringView formula);
/// A number given in a unit (null: internal), kept in that unit.
CellContent numberContent(double number, const Unit* unit);

/// The formula as Visio shows it: the expression, or the constant, a text in quotes and a number in its unit.
String formulaText(const drawing::Cell& cell);
/// `text` in double quotes, quotes within it doubled.
String quoted(StringView text);
/// Whether the formula is wrapped in GUARD( ).
bool isGuarded(StringView formula);

/// The value as a number in internal units; 0 for a text.
double internalNumber(const drawing::Cell& cell);
/// The value as text: a text as it is; a number in `unit`, with its name, or where `unit` is null in the cell's own.
String resultText(const drawing::Cell& cell, const Unit* unit);

} // namespace tarncom32::standin
