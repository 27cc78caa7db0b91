#include "standin/drawing/drawing_error.h"

namespace tarncom32::standin::drawing {

namespace {

std::string compose(std::string_view file, std::string_view part, std::string_view problem) {
    std::string message(file);
    if (!part.empty()) message.append(message.empty() ? "part " : ": part ").append(printable(part));
    if (!message.empty()) message.append(" ");
    return message.append(problem);
}

} // namespace

DrawingError::DrawingError(std::string_view file, std::string_view part, std::string_view problem)
    : std::runtime_error(compose(file, part, problem)) {}

std::string printable(std::string_view text) {
    constexpr std::size_t limit = 120;
    const bool cut = text.size() > limit;
    if (cut) {
        std::size_t end = limit;
        while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
            --end; // never half a character
        text = text.substr(0, end);
    }
    std::string result(text);
    for (char& c : result)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) c = '?';
    if (cut) result += "...";
    return result;
}

} // namespace tarncom32::standin::drawing
