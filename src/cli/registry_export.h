#pragma once

#include "platform/code_page.h"
#include "platform/registry.h"

#include <functional>
#include <string>

namespace tarncom32::cli {

/// Writes a key and all below it in the text format of the system's own registry tools: UTF-16, lowest byte first,
/// with a byte order mark. `name` is the key's full name in UTF-8; `write` takes the bytes piece by piece. False when
/// there is no such key.
bool exportKey(const platform::CodePage& codePage, platform::Registry& registry, std::int32_t root,
               const std::string& path, const std::string& name, const std::function<void(std::string_view)>& write);

} // namespace tarncom32::cli
