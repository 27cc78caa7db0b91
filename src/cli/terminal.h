#pragma once

#include <string>
#include <string_view>

namespace tarncom32::cli {

/// How readable output is dressed: with colours and wrapped lines on a terminal, plain everywhere else.
class Terminal {
public:
    /// What standard output is. There are no colours when NO_COLOR is set (to anything but nothing) or the terminal is
    /// a "dumb" one.
    static Terminal ofStandardOutput();

    /// `width` is in columns; 0 stands for lines of any length.
    Terminal(bool colours, int width) : colours_(colours), width_(width) {}

    std::string heading(std::string_view text) const { return dressed(text, "1"); }
    std::string name(std::string_view text) const { return dressed(text, "36"); }
    std::string faint(std::string_view text) const { return dressed(text, "2"); }
    std::string good(std::string_view text) const { return dressed(text, "32"); }
    std::string warning(std::string_view text) const { return dressed(text, "33"); }

    /// `text` broken at blanks into lines that fit the width, each `indent` blanks in and ended by a line feed. A word
    /// longer than the width stays whole.
    std::string paragraph(std::string_view text, int indent) const;

private:
    std::string dressed(std::string_view text, std::string_view code) const;

    bool colours_;
    int width_;
};

/// Columns that UTF-8 `text` takes: one a character, two for the wide ones of East Asia, none for combining marks.
int columnsOf(std::string_view text);

/// `text` followed by blanks up to `columns` columns.
std::string padded(std::string_view text, int columns);

/// UTF-8 `text` on one line: each line end and other control character is a blank.
std::string oneLine(std::string_view text);

/// What somebody wrote, for a message: in quotes, on one line, in well-formed UTF-8, its end left out where it is long.
std::string inQuotes(std::string_view text);

} // namespace tarncom32::cli
