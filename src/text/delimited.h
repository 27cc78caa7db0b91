#pragma once

#include "automation/string.h"
#include "text/search.h"

#include <cstddef>
#include <cstdint>

/// What the delimited-text members are made of. Positions are those of the hosts: they count from 1, and 0 says that
/// nothing was found.
namespace tarncom32::text {

/// The position of the first `sought` behind the position `behind`. An empty text is found at the first position
/// behind `behind` that has a character.
std::size_t positionOf(automation::StringView text, automation::StringView sought, std::size_t behind = 0);

/// The position of the first `sought` in `text` read backwards, `sought` itself read as it stands.
std::size_t positionInReversed(automation::StringView text, automation::StringView sought);

/// The position that a search for `sought`, repeated `n` times, ends with. Each search starts behind the first
/// character of the last find, so that occurrences may overlap; one that finds nothing counts too, gives 0, and is
/// followed by one from the start. `n` below 1 is 1. Takes time linear in the texts, however large `n` is.
std::size_t positionOfNth(automation::StringView text, automation::StringView sought, std::int32_t n);

/// The first `count` characters, all when there are fewer.
automation::StringView left(automation::StringView text, std::size_t count) noexcept;

/// From position `start` on; "" behind the end. Raises 5 for position 0.
automation::StringView from(automation::StringView text, std::size_t start);

/// `text` without the occurrences of `sought`, found from left to right. An empty `sought` removes nothing.
automation::String withoutAll(automation::StringView text, automation::StringView sought);

/// `text` from its last character to its first. Surrogate pairs are two characters like any other.
automation::String reversed(automation::StringView text);

/// The number of fields that a split of `text` at every `delimiter` gives: 0 for an empty text, 1 for an empty
/// delimiter.
std::size_t countFields(automation::StringView text, automation::StringView delimiter);

/// Walks the fields of a text, as a split gives them:
///
///     for (Fields fields(u"a,,b", u","); fields.next();) use(fields.field());  // "a", "", "b"
///
/// An empty text has no fields; an empty delimiter leaves the whole text as one field. Both texts must outlive the
/// walk.
class Fields {
public:
    static constexpr std::size_t kUnlimited = static_cast<std::size_t>(-1);

    /// At most `limit` fields, the last of which is all of the text that is left.
    Fields(automation::StringView text, automation::StringView delimiter, std::size_t limit = kUnlimited) noexcept;

    /// Moves to the next field; false when there is none.
    bool next();
    automation::StringView field() const noexcept { return field_; }

private:
    Occurrences delimiters_;
    automation::StringView text_;
    automation::StringView field_;
    std::size_t delimiterSize_;
    std::size_t left_;      // fields that may still come
    std::size_t start_ = 0; // offset of the next field
};

} // namespace tarncom32::text
