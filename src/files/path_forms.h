#pragma once

#include "platform/code_page.h"
#include "platform/path_calls.h"

/// The long and the short (8.3) form of a path, by the calls that the system's version has.
namespace tarncom32::files {

/// Whether the version is taken to have calls for long paths: 4.1 and later ones, but not 4.0.
bool canUseLongPathCall(platform::SystemVersion version);

/// Whether the version is taken to have the UTF-16 calls: 4.0, and 5 and later ones, but no other 4.x. That the two
/// treat version 4 in opposite ways is meant.
bool canUseWidePathCalls(platform::SystemVersion version);

/// Converts paths with the system's calls. A path that does not exist has neither form: the result is empty.
///
/// The 8-bit calls write to a buffer of 260 characters. A form that is longer than that is not written at all, and the
/// result is the buffer as it was: 260 exclamation marks. The UTF-16 calls have 32000 characters.
class PathForms {
public:
    /// Both must outlive the object.
    PathForms(platform::PathCalls& calls, const platform::CodePage& codePage) : calls_(calls), codePage_(codePage) {}

    /// By the UTF-16 call where `canUseWidePathCalls` is true, else by the 8-bit one.
    automation::String shortPath(automation::StringView longPath) const;
    /// By the same choice. Only for a version of which `canUseLongPathCall` is true.
    automation::String longPath(automation::StringView shortPath) const;
    /// The long form put together folder by folder: each piece of the path becomes the name that the directory stores
    /// for it, or stays when there is none. A drive stays. An empty last piece, of a path that ends in a separator,
    /// gets a separator of its own.
    automation::String longPathByFinding(automation::StringView path) const;

private:
    platform::PathCalls& calls_;
    const platform::CodePage& codePage_;
};

} // namespace tarncom32::files
