#pragma once

#include "platform/code_page.h"
#include "platform/path_calls.h"
#include "platform/portable/drive_map.h"

namespace tarncom32::platform::portable {

/// There are no short names here: each conversion gives the path back as it is when it exists.
class PortablePathCalls final : public PathCalls {
public:
    PortablePathCalls(const DriveMap& drives, const CodePage& codePage) : drives_(drives), codePage_(codePage) {}

    /// That of a system that has all the calls.
    SystemVersion version() const override { return {10, 0}; }
    std::size_t shortPath(const std::string& path, std::span<char> buffer) override;
    std::size_t shortPath(const automation::String& path, std::span<char16_t> buffer) override;
    std::size_t longPath(const std::string& path, std::span<char> buffer) override;
    std::size_t longPath(const automation::String& path, std::span<char16_t> buffer) override;
    /// Names compare without case; an exact match goes before others.
    std::optional<std::string> findFirst(const std::string& path) override;

private:
    const DriveMap& drives_;
    const CodePage& codePage_;
};

} // namespace tarncom32::platform::portable
