#pragma once

#include "platform/path_calls.h"

namespace tarncom32::platform::windows {

/// The system's own calls.
class WindowsPathCalls : public PathCalls {
public:
    SystemVersion version() const override;
    std::size_t shortPath(const std::string& path, std::span<char> buffer) override;
    std::size_t shortPath(const automation::String& path, std::span<char16_t> buffer) override;
    std::size_t longPath(const std::string& path, std::span<char> buffer) override;
    std::size_t longPath(const automation::String& path, std::span<char16_t> buffer) override;
    std::optional<std::string> findFirst(const std::string& path) override;
};

} // namespace tarncom32::platform::windows
