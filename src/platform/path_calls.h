#pragma once

#include "automation/string.h"

#include <optional>
#include <span>

namespace tarncom32::platform {

/// The version of the operating system, as it reports it.
struct SystemVersion {
    std::uint32_t major = 0;
    std::uint32_t minor = 0;
};

/// The system's conversions between long and short (8.3) forms of a path, through 8-bit texts and through UTF-16.
///
/// Each conversion fills the buffer from its start, with a NUL behind, and returns the number of characters without
/// that NUL. It returns 0 when it fails, which it does for a path that does not exist. When the buffer is too small it
/// leaves it as it is and returns the number of characters that it needs, the NUL included.
class PathCalls {
public:
    virtual ~PathCalls() = default;
    /// The version that decides which of the calls are used.
    virtual SystemVersion version() const = 0;
    /// To the short form, in 8-bit texts or in UTF-16.
    virtual std::size_t shortPath(const std::string& path, std::span<char> buffer) = 0;
    virtual std::size_t shortPath(const automation::String& path, std::span<char16_t> buffer) = 0;
    /// To the long form.
    virtual std::size_t longPath(const std::string& path, std::span<char> buffer) = 0;
    virtual std::size_t longPath(const automation::String& path, std::span<char16_t> buffer) = 0;
    /// The stored name (without folders) of the first directory entry that `path` names; nothing when there is none.
    virtual std::optional<std::string> findFirst(const std::string& path) = 0;
};

} // namespace tarncom32::platform
