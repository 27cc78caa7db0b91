#pragma once

#include "standin/forward.h"

#include <filesystem>

/// File names as callers write them, and the paths of this system that they stand for.
namespace tarncom32::standin {

/// The path behind a file name: `Z:\` is the root folder, every other name is the system's own.
std::filesystem::path pathOf(StringView fileName);

/// The name of a path. Bytes that are no UTF-8 become U+FFFD, because a text has no place for them.
String fileNameOf(const std::filesystem::path& path);

} // namespace tarncom32::standin
