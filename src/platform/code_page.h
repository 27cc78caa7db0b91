#pragma once

#include "automation/string.h"

namespace tarncom32::platform {

/// The 8-bit character set through which texts pass on their way to 8-bit services.
class CodePage {
public:
    virtual ~CodePage() = default;
    /// Characters that the code page lacks become "?".
    virtual std::string encode(automation::StringView text) const = 0;
    /// Every byte of the text, NULs included.
    virtual automation::String decode(std::string_view bytes) const = 0;

    /// What is left of `text` after the way there and back.
    automation::String narrow(automation::StringView text) const { return decode(encode(text)); }
};

/// Where the platform has none of its own: the Western one, Windows-1252.
const CodePage& westernCodePage();

} // namespace tarncom32::platform
