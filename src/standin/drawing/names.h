#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tarncom32::standin::drawing {

/// The name that formulas know a shape by: "Sheet." and its id.
[[nodiscard]] std::u16string nameId(std::uint32_t id);

/// The name of a shape that has been given none: its master's name, or "Sheet" without a master, then "." and its id.
/// (A master's first instance has the plain master name, and Visio writes that one into the file.)
[[nodiscard]] std::u16string defaultName(std::uint32_t id, std::u16string_view masterName);

/// The text without the paragraph end that Visio writes behind the last paragraph.
[[nodiscard]] std::u16string_view withoutFinalBreak(std::u16string_view text) noexcept;

} // namespace tarncom32::standin::drawing
