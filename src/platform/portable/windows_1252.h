#pragma once

#include "platform/code_page.h"

namespace tarncom32::platform::portable {

/// The code page of Western Windows systems. Its five unassigned bytes stand for the control characters of the same
/// number.
class Windows1252 final : public CodePage {
public:
    std::string encode(automation::StringView text) const override;
    automation::String decode(std::string_view bytes) const override;
};

} // namespace tarncom32::platform::portable
