#include "standin/drawing/part_name.h"

#include <vector>

namespace tarncom32::standin::drawing {

namespace {

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// Undoes percent encoding. False for an encoding that is broken or hides a separator, a dot or a control character:
// nobody needs those encoded except to get past a check.
bool decode(std::string_view text, std::string& out) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            out.push_back(text[i]);
            continue;
        }
        if (i + 2 >= text.size()) return false;
        const int high = hexDigit(text[i + 1]);
        const int low = hexDigit(text[i + 2]);
        if (high < 0 || low < 0) return false;
        const auto byte = static_cast<unsigned char>(high * 16 + low);
        if (byte < 0x20 || byte == '/' || byte == '\\' || byte == '.') return false;
        out.push_back(static_cast<char>(byte));
        i += 2;
    }
    return true;
}

// Adds the segments of a path to a stack of them. False where ".." climbs above the root.
bool follow(std::string_view path, std::vector<std::string_view>& segments) {
    while (!path.empty()) {
        const std::size_t slash = path.find('/');
        const std::string_view segment = path.substr(0, slash);
        if (segment == "..") {
            if (segments.empty()) return false;
            segments.pop_back();
        } else if (!segment.empty() && segment != ".") {
            segments.push_back(segment);
        }
        if (slash == std::string_view::npos) break;
        path.remove_prefix(slash + 1);
    }
    return true;
}

} // namespace

std::string partKey(std::string_view name) {
    std::string key(name);
    for (char& c : key)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return key;
}

ResolvedTarget resolveTarget(std::string_view source, std::string_view target) {
    if (target.empty()) return {"", "is empty"};
    if (target.find('\\') != std::string_view::npos) return {"", "contains a backslash"};
    if (target.find_first_of(":?#") != std::string_view::npos)
        return {"", "is a URL or has a drive, and does not name a part of this package"};
    if (target.starts_with("//")) return {"", "names another machine"};

    std::string path;
    if (!decode(target, path)) return {"", "hides characters behind percent signs"};

    std::vector<std::string_view> segments;
    if (!target.starts_with('/')) {
        const std::size_t slash = source.rfind('/');
        if (slash != std::string_view::npos) follow(source.substr(0, slash), segments);
    }
    if (!follow(path, segments)) return {"", "leads out of the package"};

    ResolvedTarget result;
    for (const std::string_view segment : segments) {
        if (!result.part.empty()) result.part.push_back('/');
        result.part.append(segment);
    }
    if (result.part.empty() || path.ends_with('/')) return {"", "names a folder"};
    return result;
}

std::string relationshipsPart(std::string_view source) {
    const std::size_t slash = source.rfind('/');
    const std::size_t name = slash == std::string_view::npos ? 0 : slash + 1;
    return std::string(source.substr(0, name)).append("_rels/").append(source.substr(name)).append(".rels");
}

} // namespace tarncom32::standin::drawing
