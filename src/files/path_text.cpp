#include "files/path_text.h"

#include <algorithm>

namespace tarncom32::files {

using automation::String;
using automation::StringView;

namespace {

constexpr char16_t kSeparator = u'\\';
constexpr StringView kGap = u"\\...\\";

StringView lastFour(StringView name) {
    return name.substr(name.size() - std::min<std::size_t>(name.size(), 4));
}

} // namespace

TextPair splitPath(StringView fullTitle) {
    const std::size_t separator = fullTitle.rfind(kSeparator);
    if (separator == StringView::npos) return {{}, fullTitle};
    return {fullTitle.substr(0, separator), fullTitle.substr(separator + 1)};
}

TextPair splitExtension(StringView name) {
    const std::size_t dot = name.rfind(u'.');
    if (dot == StringView::npos) return {name, {}};
    return {name.substr(0, dot), name.substr(dot)};
}

String shortenPath(StringView path) {
    if (path.size() <= 20) return String(path);
    const std::size_t separator = path.find(kSeparator);
    const StringView head = separator == StringView::npos ? StringView() : path.substr(0, separator + 1);
    return String(automation::trim(head)) + u"...\\";
}

String shortenFileName(StringView name) {
    if (name.size() <= 20) return String(name);
    return String(name.substr(0, 29)) + u"...";
}

bool hasExtension(StringView name, StringView extension) {
    return automation::toUpper(lastFour(name)) == automation::toUpper(extension);
}

bool isExtensionInList(StringView name, StringView list) {
    return !list.empty() && list.find(lastFour(name)) != StringView::npos;
}

String replaceWithUnderscore(String text, char16_t character) {
    std::ranges::replace(text, character, u'_');
    return text;
}

String limitLength(StringView fullName, std::int16_t maximum) {
    const auto limit = static_cast<long long>(maximum);
    if (static_cast<long long>(fullName.size()) <= limit) return String(fullName);
    auto [path, file] = splitPath(fullName);
    // An empty path has no parent that would be shorter: going on would never end.
    while (static_cast<long long>(path.size() + kGap.size() + file.size()) > limit && !path.empty())
        path = splitPath(path).first;
    return String(path).append(kGap).append(file);
}

} // namespace tarncom32::files
