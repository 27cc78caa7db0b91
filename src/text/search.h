#pragma once

#include "automation/string.h"

#include <cstdint>
#include <vector>

/// Exact searches, which from some 64 characters on are several times as quick as those of the C++ library. Offsets
/// count from 0; `StringView::npos` says that nothing was found.
namespace tarncom32::text {

/// The offset of the first `wanted` at or behind the offset `from`.
std::size_t findCharacter(automation::StringView text, char16_t wanted, std::size_t from = 0) noexcept;

/// The offset of the last `wanted`.
std::size_t findLastCharacter(automation::StringView text, char16_t wanted) noexcept;

/// Whether a search looks for the next occurrence behind the end of the last one, or behind its first character.
enum class Overlap : bool { No, Yes };

/// Walks the occurrences of one text in another from left to right:
///
///     Occurrences commas(u"a, b, c", u", ", Overlap::No);
///     commas.next();  // 1
///     commas.next();  // 4
///     commas.next();  // npos
///
/// The whole walk takes time linear in both texts, whatever they are. An empty text occurs in front of every
/// character. Both texts must outlive the walk.
class Occurrences {
public:
    /// Occurrences that start at or behind the offset `from`.
    Occurrences(automation::StringView text, automation::StringView sought, Overlap overlap,
                std::size_t from = 0) noexcept
        : text_(text), sought_(sought), overlap_(overlap), from_(from) {}

    /// The offset of the next occurrence; npos, again and again, once there is none.
    std::size_t next();

private:
    std::size_t nextByComparing();
    std::size_t nextByTable();
    void buildTable();

    automation::StringView text_;
    automation::StringView sought_;
    Overlap overlap_;
    std::size_t from_;         // where the search goes on
    std::size_t compared_ = 0; // characters looked at more than once so far
    // Knuth, Morris and Pratt's table, built only for texts that make plain comparing slow: for each start of the
    // sought text, how many of its last characters are a start of the sought text again.
    std::vector<std::uint32_t> table_;
    std::size_t matched_ = 0; // characters of the sought text that stand right before from_; used with the table
};

} // namespace tarncom32::text
