#include "cli/terminal.h"

#include "automation/string.h"

#include <algorithm>
#include <cstdlib>
#include <sys/ioctl.h>
#include <unistd.h>

namespace tarncom32::cli {

namespace {

constexpr int kWidestParagraph = 100;         // longer lines are hard to read
constexpr int kUsualWidth = 80;               // of a terminal that does not tell
constexpr std::size_t kLongestQuotation = 60; // UTF-16 units

int terminalWidth() {
    winsize size{};
    const bool told = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return std::min(told ? int{size.ws_col} : kUsualWidth, kWidestParagraph);
}

bool isSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value && *value;
}

struct Range {
    char32_t first;
    char32_t last;
};

// Good enough for a table of names; an exact answer depends on the terminal anyway.
constexpr Range kWide[] = {{0x1100, 0x115F},   {0x2E80, 0x303E},  {0x3041, 0xA4CF}, {0xAC00, 0xD7A3},
                           {0xF900, 0xFAFF},   {0xFE30, 0xFE4F},  {0xFF00, 0xFF60}, {0xFFE0, 0xFFE6},
                           {0x1F300, 0x1FAFF}, {0x20000, 0x3FFFD}};
constexpr Range kCombining[] = {
    {0x0300, 0x036F}, {0x1AB0, 0x1AFF}, {0x200B, 0x200F}, {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}};

template <std::size_t N>
bool within(const Range (&ranges)[N], char32_t c) {
    return std::ranges::any_of(ranges, [c](Range range) { return c >= range.first && c <= range.last; });
}

} // namespace

Terminal Terminal::ofStandardOutput() {
    if (!isatty(STDOUT_FILENO)) return {false, 0};
    const char* kind = std::getenv("TERM");
    const bool dumb = !kind || std::string_view(kind) == "dumb";
    return {!dumb && !isSet("NO_COLOR"), terminalWidth()};
}

std::string Terminal::dressed(std::string_view text, std::string_view code) const {
    if (!colours_ || text.empty()) return std::string(text);
    return "\x1b[" + std::string(code) + "m" + std::string(text) + "\x1b[0m";
}

std::string Terminal::paragraph(std::string_view text, int indent) const {
    const std::string margin(static_cast<std::size_t>(indent), ' ');
    std::string lines = margin;
    int column = indent;
    while (!text.empty()) {
        const std::string_view word = text.substr(0, text.find(' '));
        text.remove_prefix(std::min(word.size() + 1, text.size()));
        const int columns = columnsOf(word);
        if (column > indent && width_ > 0 && column + 1 + columns > width_) {
            lines += '\n' + margin;
            column = indent;
        } else if (column > indent) {
            lines += ' ';
            ++column;
        }
        lines += word;
        column += columns;
    }
    return lines + '\n';
}

int columnsOf(std::string_view text) {
    int columns = 0;
    const automation::String units = automation::fromUtf8(text);
    for (std::size_t i = 0; i < units.size(); ++i) {
        char32_t c = units[i];
        if ((c & 0xFC00) == 0xD800 && i + 1 < units.size())
            c = 0x10000 + ((c & 0x3FF) << 10) + (static_cast<char32_t>(units[++i]) & 0x3FF);
        if (within(kCombining, c)) continue;
        columns += within(kWide, c) ? 2 : 1;
    }
    return columns;
}

std::string padded(std::string_view text, int columns) {
    std::string result(text);
    result.append(static_cast<std::size_t>(std::max(0, columns - columnsOf(text))), ' ');
    return result;
}

std::string oneLine(std::string_view text) {
    std::string line;
    line.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        // U+0080 to U+009F are two bytes; terminals obey them as they do escape sequences.
        const bool upper =
            c == '\xC2' && i + 1 < text.size() && (static_cast<unsigned char>(text[i + 1]) & 0xE0) == 0x80;
        const bool control = upper || static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
        if (upper) ++i;
        if (control && line.ends_with(' ')) continue; // "\r\n" is one blank
        line += control ? ' ' : c;
    }
    return line;
}

std::string inQuotes(std::string_view text) {
    const automation::String units = automation::fromUtf8(text.substr(0, kLongestQuotation * 4));
    const bool isWhole = units.size() <= kLongestQuotation;
    return '"' + oneLine(automation::toUtf8(automation::StringView(units).substr(0, kLongestQuotation))) +
           (isWhole ? "\"" : "...\"");
}

} // namespace tarncom32::cli
