#include "platform/portable/drive_map.h"

#include "platform/portable/component_names.h"

#include <algorithm>

namespace tarncom32::platform::portable {

namespace fs = std::filesystem;
using automation::String;
using automation::StringView;

namespace {

constexpr StringView kVerbatim = u"\\\\?\\";

std::string withSlashes(StringView path) {
    std::string text = automation::toUtf8(path);
    std::ranges::replace(text, '\\', '/');
    return text;
}

} // namespace

std::optional<fs::path> DriveMap::toNative(StringView path) const {
    if (path.starts_with(kVerbatim)) path.remove_prefix(kVerbatim.size());
    if (path.empty() || path.find(u'\0') != StringView::npos || path.starts_with(u"\\\\")) return {};
    if (path.size() < 2 || path[1] != u':') return fs::path(withSlashes(path));

    const char16_t drive = path.front();
    path.remove_prefix(2);
    while (!path.empty() && isSeparator(path.front()))
        path.remove_prefix(1);
    if (drive == u'Z' || drive == u'z') return fs::path("/" + withSlashes(path));
    if ((drive != u'C' && drive != u'c') || driveC_.empty()) return {};
    std::error_code ignored; // Whoever opens the file finds out what is wrong with the folder.
    fs::create_directories(driveC_, ignored);
    return driveC_ / withSlashes(path);
}

String DriveMap::toAutomation(const fs::path& path) const {
    const fs::path absolute = fs::absolute(path).lexically_normal();
    std::string text = absolute.native();
    StringView drive = u"Z:";
    if (const std::string& root = driveC_.native();
        !root.empty() && text.starts_with(root) && (text.size() == root.size() || text[root.size()] == '/')) {
        drive = u"C:";
        text.erase(0, root.size());
        if (text.empty()) text = "/";
    }
    std::ranges::replace(text, '/', '\\');
    return String(drive) + automation::fromUtf8(text);
}

} // namespace tarncom32::platform::portable
