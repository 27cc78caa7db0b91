#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace tarncom32::standin::drawing {

/// Why a file was refused. `what()` is one line of UTF-8: the file, the part where there is one, and what is wrong with
/// it. Text out of the file is cut short and freed of control characters before it comes to stand there.
class DrawingError : public std::runtime_error {
public:
    /// `file` as the caller named it; `part` "" when the trouble is with the file as a whole.
    DrawingError(std::string_view file, std::string_view part, std::string_view problem);

    /// The part that is at fault, as "visio/pages/page1.xml"; "" for the file as a whole.
    [[nodiscard]] const std::string& part() const noexcept { return part_; }

private:
    std::string part_;
};

/// UTF-8 text from a file, fit to be shown in a message: at most 120 bytes, each control character as "?".
[[nodiscard]] std::string printable(std::string_view text);

} // namespace tarncom32::standin::drawing
