#pragma once

#include "automation/string.h"

/// Questions to a path's text that the file-system object answers without looking at files.
namespace tarncom32::platform::portable {

/// Whether `c` separates the components of a path.
constexpr bool isSeparator(char16_t c) noexcept {
    return c == u'\\' || c == u'/';
}

/// The last component of the path: separators at the end do not count, a drive is no component.
automation::StringView lastComponent(automation::StringView path);

/// What follows the last "." of the last component, without it; empty when there is none.
automation::StringView extensionOf(automation::StringView path);

} // namespace tarncom32::platform::portable
