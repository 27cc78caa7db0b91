#include "text/delimited.h"

#include "automation/error.h"

#include <algorithm>

namespace tarncom32::text {

using automation::String;
using automation::StringView;

namespace {

std::size_t countCharacter(StringView text, char16_t wanted) {
    return static_cast<std::size_t>(std::ranges::count(text, wanted));
}

// The position of the `n`-th `wanted`; 0 when there are fewer, and then `found` is how many there are.
std::size_t nthCharacter(StringView text, char16_t wanted, std::size_t n, std::size_t& found) {
    // Whole stretches are counted; only the one with the n-th is walked.
    constexpr std::size_t kStretch = 512;
    found = 0;
    for (std::size_t start = 0; start < text.size(); start += kStretch) {
        const std::size_t here = countCharacter(text.substr(start, kStretch), wanted);
        if (found + here < n) {
            found += here;
            continue;
        }
        std::size_t at = findCharacter(text, wanted, start);
        while (++found < n)
            at = findCharacter(text, wanted, at + 1);
        return at + 1;
    }
    return 0;
}

// Likewise for any text.
std::size_t nth(StringView text, StringView sought, std::size_t n, std::size_t& found) {
    if (sought.size() == 1) return nthCharacter(text, sought.front(), n, found);
    found = 0;
    Occurrences occurrences(text, sought, Overlap::Yes);
    for (std::size_t at; (at = occurrences.next()) != StringView::npos;)
        if (++found == n) return at + 1;
    return 0;
}

} // namespace

std::size_t positionOf(StringView text, StringView sought, std::size_t behind) {
    if (sought.size() == 1) return findCharacter(text, sought.front(), behind) + 1; // npos + 1 is 0
    const std::size_t at = Occurrences(text, sought, Overlap::No, behind).next();
    return at == StringView::npos ? 0 : at + 1;
}

std::size_t positionInReversed(StringView text, StringView sought) {
    if (sought.size() != 1) return positionOf(reversed(text), sought);
    const std::size_t at = findLastCharacter(text, sought.front());
    return at == StringView::npos ? 0 : text.size() - at;
}

std::size_t positionOfNth(StringView text, StringView sought, std::int32_t n) {
    const std::size_t wanted = n < 1 ? 1 : static_cast<std::size_t>(n);
    std::size_t found = 0;
    if (const std::size_t position = nth(text, sought, wanted, found)) return position;
    // A round is a search for each occurrence and the one that finds nothing.
    const std::size_t inLastRound = (wanted - 1) % (found + 1) + 1;
    return inLastRound > found ? 0 : nth(text, sought, inLastRound, found);
}

StringView left(StringView text, std::size_t count) noexcept {
    return text.substr(0, count);
}

StringView from(StringView text, std::size_t start) {
    if (start == 0) throw automation::Error(automation::errors::InvalidProcedureCall);
    return start > text.size() ? StringView() : text.substr(start - 1);
}

String withoutAll(StringView text, StringView sought) {
    if (sought.empty()) return String(text);
    String rest;
    rest.reserve(text.size());
    std::size_t start = 0;
    Occurrences occurrences(text, sought, Overlap::No);
    for (std::size_t at; (at = occurrences.next()) != StringView::npos; start = at + sought.size())
        rest.append(text, start, at - start);
    return rest.append(text, start);
}

String reversed(StringView text) {
    String result;
    result.assign(text);
    std::ranges::reverse(result);
    return result;
}

std::size_t countFields(StringView text, StringView delimiter) {
    if (text.empty()) return 0;
    if (delimiter.empty()) return 1;
    if (delimiter.size() == 1) return countCharacter(text, delimiter.front()) + 1;
    std::size_t fields = 1;
    Occurrences delimiters(text, delimiter, Overlap::No);
    while (delimiters.next() != StringView::npos)
        ++fields;
    return fields;
}

Fields::Fields(StringView text, StringView delimiter, std::size_t limit) noexcept
    : delimiters_(text, delimiter, Overlap::No), text_(text), delimiterSize_(delimiter.size()),
      left_(text.empty()                     ? 0
            : delimiter.empty() && limit > 1 ? 1
                                             : limit) {}

bool Fields::next() {
    if (left_ == 0) return false;
    --left_;
    // The last field that may come is not cut, and neither is the one behind the last delimiter.
    const std::size_t end = left_ == 0 ? StringView::npos : delimiters_.next();
    if (end == StringView::npos) {
        field_ = text_.substr(start_);
        left_ = 0;
    } else {
        field_ = text_.substr(start_, end - start_);
        start_ = end + delimiterSize_;
    }
    return true;
}

} // namespace tarncom32::text
