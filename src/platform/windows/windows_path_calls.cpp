#include "platform/windows/windows_path_calls.h"

#include <windows.h>

namespace tarncom32::platform::windows {

using automation::String;

namespace {

// Calls the conversion with the buffer, which it never overruns: it is told the size.
template <class Path, class Char>
std::size_t convert(DWORD(WINAPI* call)(const Char*, Char*, DWORD), const Path& path,
                    std::span<typename Path::value_type> buffer) {
    return call(reinterpret_cast<const Char*>(path.c_str()), reinterpret_cast<Char*>(buffer.data()),
                static_cast<DWORD>(buffer.size()));
}

} // namespace

SystemVersion WindowsPathCalls::version() const {
    const DWORD version = GetVersion();
    return {LOBYTE(LOWORD(version)), HIBYTE(LOWORD(version))};
}

std::size_t WindowsPathCalls::shortPath(const std::string& path, std::span<char> buffer) {
    return convert(&GetShortPathNameA, path, buffer);
}
std::size_t WindowsPathCalls::shortPath(const String& path, std::span<char16_t> buffer) {
    return convert(&GetShortPathNameW, path, buffer);
}
std::size_t WindowsPathCalls::longPath(const std::string& path, std::span<char> buffer) {
    return convert(&GetLongPathNameA, path, buffer);
}
std::size_t WindowsPathCalls::longPath(const String& path, std::span<char16_t> buffer) {
    return convert(&GetLongPathNameW, path, buffer);
}

std::optional<std::string> WindowsPathCalls::findFirst(const std::string& path) {
    WIN32_FIND_DATAA entry{};
    const HANDLE search = FindFirstFileA(path.c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return {};
    FindClose(search);
    return entry.cFileName;
}

} // namespace tarncom32::platform::windows
