#pragma once

#include "automation/string.h"
#include "platform/code_page.h"
#include "platform/registry.h"

#include <string>
#include <vector>

namespace tarncom32::cli {

/// A key of the registry as people write it: a root (HKEY_CURRENT_USER, HKCU ...) and names behind backslashes.
class RegistryKeyName {
public:
    /// Raises UsageError when `text` (UTF-8) does not begin with a root, or has a character that `codePage` lacks.
    RegistryKeyName(const platform::CodePage& codePage, const std::string& text);

    std::int32_t root() const { return root_; }
    /// Below the root, in the code page; empty for the root itself.
    const std::string& path() const { return path_; }
    bool isRoot() const { return path_.empty(); }
    /// The key above this one, and the last name. Not for a root.
    std::string parentPath() const;
    std::string lastName() const;

    /// The whole name in UTF-8, the root in its long form and the names as the registry spells them; names that it does
    /// not have are as they were written.
    std::string spelled(platform::Registry& registry) const;

private:
    const platform::CodePage& codePage_;
    std::int32_t root_ = 0;
    std::string path_;
};

/// The long names of the roots, in the order of their numbers.
std::vector<std::string> rootNames();

/// `text` (UTF-8) in the code page. Raises UsageError when a character would be lost.
std::string toCodePage(const platform::CodePage& codePage, const std::string& text);

} // namespace tarncom32::cli
