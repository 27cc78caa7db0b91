#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tarncom32::tests {

/// The parts of a package by their names.
using Parts = std::map<std::string, std::string>;

/// The part that holds the shapes of its first page.
inline constexpr const char* page1 = "visio/pages/page1.xml";

/// A small whole drawing: two pages, of which the second is the first one's background, and two masters, "PC" (id 2,
/// shapes 5 to 7) and "Desk" (id 4, shape 5 and in it an instance of "PC"). Tests change what they are about.
[[nodiscard]] Parts smallDrawing();

/// An element of Visio's main namespace with the prefix r for relationship ids.
[[nodiscard]] std::string visioPart(std::string_view root, std::string_view content);

/// Replaces the one occurrence of `from` in a part; a test that changes nothing is a mistake in the test.
void change(Parts& parts, const std::string& part, std::string_view from, std::string_view to);

/// The pattern with the number in place of each "#".
[[nodiscard]] std::string numbered(std::string_view pattern, int number);

/// The small drawing with masters of the ids 1 to `count` in place of its own; `shapes` has the shapes of each.
[[nodiscard]] Parts drawingWithMasters(int count, const std::function<std::string(int number)>& shapes);

/// The parts as a zip file, packed.
[[nodiscard]] std::vector<std::byte> zipped(const Parts& parts);

} // namespace tarncom32::tests
