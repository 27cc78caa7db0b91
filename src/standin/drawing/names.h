#pragma once

#include "standin/drawing/drawing_file.h"

#include <string>

namespace tarncom32::standin::drawing {

/// The name that formulas know a shape by: "Sheet." and its id.
[[nodiscard]] std::u16string nameId(std::uint32_t id);

/// The name of a shape that has been given none: its master's name, or "Sheet" without a master, then "." and its id.
/// (A master's first instance has the plain master name, and Visio writes that one into the file.)
[[nodiscard]] std::u16string defaultName(std::uint32_t id, std::u16string_view masterName);

/// A shape's local name: the file's, else the universal name of the file, else the default with its master's local
/// name.
[[nodiscard]] std::u16string localName(const DrawingFile& file, const Shape& shape);

/// A shape's universal name: the file's, else the local name of the file, else the default with its master's universal
/// name.
[[nodiscard]] std::u16string universalName(const DrawingFile& file, const Shape& shape);

/// What a shape inherits its cells, rows, text and sub-shapes from.
struct Prototype {
    const Shape* shape = nullptr;   ///< nullptr when it inherits from no master
    const Master* master = nullptr; ///< the master that `shape` is in; its sub-shapes' `masterShape` are ids in there
};

/// The prototype of `shape`: the top shape of its own master, else the shape that its `masterShape` names in
/// `enclosing`, the master that the group around it comes from (nullptr outside of instances). Where a file gives both,
/// the shape's own master wins. Pass the result's `master` on for its sub-shapes.
[[nodiscard]] Prototype prototypeOf(const DrawingFile& file, const Shape& shape, const Master* enclosing);

/// The text without the paragraph end that Visio writes behind the last paragraph.
[[nodiscard]] std::u16string_view withoutFinalBreak(std::u16string_view text) noexcept;

} // namespace tarncom32::standin::drawing
