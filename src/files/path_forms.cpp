#include "files/path_forms.h"

#include <algorithm>

namespace tarncom32::files {

using automation::String;
using automation::StringView;
using platform::CodePage;
using platform::PathCalls;
using platform::SystemVersion;

namespace {

constexpr StringView kVerbatim = u"\\\\?\\"; // what lets the UTF-16 calls take long paths

template <class Char>
using Buffer = std::basic_string<Char>;

// The buffer filled by one of the calls, as far as the number that the call returned goes.
template <class Char>
Buffer<Char> callWithBuffer(PathCalls& calls, auto call, const Buffer<Char>& path, std::size_t capacity) {
    Buffer<Char> buffer(capacity, Char{'!'});
    const std::size_t length = (calls.*call)(path, std::span<Char>(buffer));
    buffer.resize(std::min(length, capacity));
    return buffer;
}

template <class Char>
using Call = std::size_t (PathCalls::*)(const Buffer<Char>&, std::span<Char>);

String convertNarrow(PathCalls& calls, const CodePage& codePage, Call<char> call, StringView path) {
    return codePage.decode(callWithBuffer(calls, call, codePage.encode(path), 260));
}

String convertWide(PathCalls& calls, Call<char16_t> call, StringView path) {
    String form = callWithBuffer(calls, call, String(kVerbatim).append(path), 32000);
    form.erase(0, kVerbatim.size());
    return form;
}

} // namespace

bool canUseLongPathCall(SystemVersion version) {
    return version.major == 4 ? version.minor != 0 : version.major >= 5;
}

bool canUseWidePathCalls(SystemVersion version) {
    return version.major == 4 ? version.minor == 0 : version.major >= 5;
}

String PathForms::shortPath(StringView longPath) const {
    if (!canUseWidePathCalls(calls_.version()))
        return convertNarrow(calls_, codePage_, &PathCalls::shortPath, longPath);
    return convertWide(calls_, &PathCalls::shortPath, longPath);
}

String PathForms::longPath(StringView shortPath) const {
    if (!canUseWidePathCalls(calls_.version()))
        return convertNarrow(calls_, codePage_, &PathCalls::longPath, shortPath);
    return convertWide(calls_, &PathCalls::longPath, shortPath);
}

String PathForms::longPathByFinding(StringView path) const {
    if (path.empty()) return {};
    String drive;
    String result;
    for (std::size_t start = 0; start <= path.size();) {
        const std::size_t end = std::min(path.find(u'\\', start), path.size());
        const String piece(path.substr(start, end - start));
        start = end + 1;
        if (piece.ends_with(u':')) {
            drive = piece + u"\\";
            if (path == drive) break;
            continue;
        }
        const auto found = calls_.findFirst(codePage_.encode(drive + result + piece));
        result += (found ? codePage_.decode(*found) : piece) + u"\\";
    }
    String form = drive + result;
    if (!form.empty() && !path.ends_with(u'\\')) form.pop_back();
    return form;
}

} // namespace tarncom32::files
