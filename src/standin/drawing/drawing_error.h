#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace tarncom32::standin::drawing {

/// Why a file was refused. `what()` is a sentence in one line of UTF-8, of which the file, or its part where there is
/// one, is the subject: "plan.vsdx: part visio/pages/page1.xml is not well-formed XML". Text out of the file is cut
/// short and freed of control characters before it comes to stand there.
class DrawingError : public std::runtime_error {
public:
    /// `file` as the caller named it; `part` "" when the trouble is with the file as a whole. `problem` goes on from
    /// there and thus begins with a verb.
    DrawingError(std::string_view file, std::string_view part, std::string_view problem);
};

/// UTF-8 text from a file, fit to be shown in a message: at most 120 bytes, each control character as "?".
[[nodiscard]] std::string printable(std::string_view text);

} // namespace tarncom32::standin::drawing
