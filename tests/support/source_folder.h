#pragma once

#include <filesystem>

namespace tarncom32::tests {

/// The root of the checkout, for tests that read files kept there. Tests write nothing below it.
[[nodiscard]] std::filesystem::path sourceFolder();

} // namespace tarncom32::tests
