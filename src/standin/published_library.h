#pragma once

#include "frame/published_library.h"

namespace tarncom32::standin {

/// What the stand-in publishes under COM. The first class is the application, the only one that can be created; its
/// ProgID is the library's name and ".Application".
const frame::PublishedLibrary& publishedLibrary();

} // namespace tarncom32::standin
