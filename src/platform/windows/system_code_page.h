#pragma once

#include "platform/code_page.h"

namespace tarncom32::platform::windows {

/// The system's own 8-bit code page.
class SystemCodePage final : public CodePage {
public:
    std::string encode(automation::StringView text) const override;
    automation::String decode(std::string_view bytes) const override;
};

} // namespace tarncom32::platform::windows
