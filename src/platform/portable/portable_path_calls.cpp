#include "platform/portable/portable_path_calls.h"

#include <algorithm>

namespace tarncom32::platform::portable {

namespace fs = std::filesystem;
using automation::String;
using automation::StringView;

namespace {

bool exists(const DriveMap& drives, StringView path) {
    const auto native = drives.toNative(path);
    std::error_code failure;
    return native && fs::exists(*native, failure) && !failure;
}

template <class Text, class Char>
std::size_t fill(const Text& text, std::span<Char> buffer) {
    if (text.size() >= buffer.size()) return text.size() + 1;
    *std::ranges::copy(text, buffer.begin()).out = Char{};
    return text.size();
}

} // namespace

std::size_t PortablePathCalls::shortPath(const std::string& path, std::span<char> buffer) {
    return exists(drives_, codePage_.decode(path)) ? fill(path, buffer) : 0;
}
std::size_t PortablePathCalls::shortPath(const String& path, std::span<char16_t> buffer) {
    return exists(drives_, path) ? fill(path, buffer) : 0;
}
std::size_t PortablePathCalls::longPath(const std::string& path, std::span<char> buffer) {
    return shortPath(path, buffer);
}
std::size_t PortablePathCalls::longPath(const String& path, std::span<char16_t> buffer) {
    return shortPath(path, buffer);
}

std::optional<std::string> PortablePathCalls::findFirst(const std::string& path) {
    const auto native = drives_.toNative(codePage_.decode(path));
    if (!native || !native->has_filename()) return {};
    const String wanted = automation::fromUtf8(native->filename().native());
    const String folded = automation::toUpper(wanted);
    std::error_code failure;
    const fs::path folder = native->has_parent_path() ? native->parent_path() : fs::path(".");
    std::optional<String> found;
    for (fs::directory_iterator entry(folder, failure), end; !failure && entry != end; entry.increment(failure)) {
        const String name = automation::fromUtf8(entry->path().filename().native());
        if (name == wanted) return codePage_.encode(name);
        // Whatever order the folder's entries come in, the answer is the same one.
        if (automation::toUpper(name) == folded && (!found || name < *found)) found = name;
    }
    if (!found) return {};
    return codePage_.encode(*found);
}

} // namespace tarncom32::platform::portable
