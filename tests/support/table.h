#pragma once

#include <array>

namespace tarncom32::tests {

/// The rows as an array. Written as a call, so that short rows stand side by side.
template <class Row, class... Rows>
std::array<Row, sizeof...(Rows) + 1> table(const Row& first, const Rows&... rest) {
    return {first, rest...};
}

} // namespace tarncom32::tests
