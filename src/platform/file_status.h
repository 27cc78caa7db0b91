#pragma once

#include "automation/string.h"

#include <cstdint>

namespace tarncom32::platform {

/// Bits of a file's attribute word, numbered as the system numbers them.
namespace file_attribute {
inline constexpr std::uint32_t kReadOnly = 1;
inline constexpr std::uint32_t kDirectory = 16;
inline constexpr std::uint32_t kNormal = 128;      ///< stands alone: no other attribute
inline constexpr std::uint32_t kNone = 0xFFFFFFFF; ///< there is no such file, or it cannot be asked
} // namespace file_attribute

/// What is asked of single files.
class FileStatus {
public:
    virtual ~FileStatus() = default;
    /// The attribute word; all bits set for a file that does not exist.
    virtual std::uint32_t attributes(automation::StringView path) = 0;
    /// Opens the file for reading with nobody else allowed to have it open, and closes it at once. Raises 53 when the
    /// file does not exist, 70 when somebody has it open, and whatever else keeps the file from being opened.
    virtual void openExclusively(automation::StringView path) = 0;
};

} // namespace tarncom32::platform
