#include "text/search.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace tarncom32::text {

using automation::StringView;

namespace {

constexpr std::size_t npos = StringView::npos;

// Eight characters are looked at in one step. The compiler's vector types say it without naming a processor; they
// stay inside these functions, for passing them on would depend on the processor's calling convention.
using Block [[gnu::vector_size(16)]] = std::uint16_t;
constexpr std::size_t kBlock = 8;
static_assert(std::endian::native == std::endian::little, "the first character is taken to stand in the lowest bits");

// 16 bits for each of eight characters, all set where it is the wanted one; the first character's are the lowest.
struct Hits {
    std::uint64_t low;
    std::uint64_t high;

    bool any() const { return (low | high) != 0; }
    std::size_t first() const {
        return static_cast<std::size_t>(low ? std::countr_zero(low) : 64 + std::countr_zero(high)) / 16;
    }
    std::size_t last() const {
        return kBlock - 1 - static_cast<std::size_t>(high ? std::countl_zero(high) : 64 + std::countl_zero(low)) / 16;
    }
};

inline Hits hitsAt(const char16_t* text, char16_t wanted) {
    Block block;
    std::memcpy(&block, text, sizeof block);
    const auto equal = block == static_cast<std::uint16_t>(wanted);
    Hits hits;
    std::memcpy(&hits, &equal, sizeof hits);
    return hits;
}

// The offset of the first place at or behind `from` that has `first`, and `last` at `distance` behind it: looking at
// both ends of a sought text at once leaves few places to compare in full.
std::size_t findPair(StringView text, char16_t first, char16_t last, std::size_t distance, std::size_t from) {
    if (text.size() <= distance) return npos;
    const std::size_t end = text.size() - distance; // behind the last place
    const char16_t* const data = text.data();
    for (; from + kBlock <= end; from += kBlock) {
        const Hits atFirst = hitsAt(data + from, first);
        const Hits atLast = hitsAt(data + from + distance, last);
        const Hits both{atFirst.low & atLast.low, atFirst.high & atLast.high};
        if (both.any()) return from + both.first();
    }
    for (; from < end; ++from)
        if (data[from] == first && data[from + distance] == last) return from;
    return npos;
}

std::size_t commonPrefix(const char16_t* left, const char16_t* right, std::size_t size) {
    return static_cast<std::size_t>(std::mismatch(left, left + size, right).first - left);
}

} // namespace

std::size_t findCharacter(StringView text, char16_t wanted, std::size_t from) noexcept {
    const char16_t* const data = text.data();
    const std::size_t size = text.size();
    for (; from + kBlock <= size; from += kBlock)
        if (const Hits hits = hitsAt(data + from, wanted); hits.any()) return from + hits.first();
    for (; from < size; ++from)
        if (data[from] == wanted) return from;
    return npos;
}

std::size_t findLastCharacter(StringView text, char16_t wanted) noexcept {
    const char16_t* const data = text.data();
    std::size_t end = text.size();
    for (; end >= kBlock; end -= kBlock)
        if (const Hits hits = hitsAt(data + end - kBlock, wanted); hits.any()) return end - kBlock + hits.last();
    while (end > 0)
        if (data[--end] == wanted) return end;
    return npos;
}

std::size_t Occurrences::next() {
    if (from_ >= text_.size()) return npos;
    if (sought_.empty()) return from_++;
    if (!table_.empty()) return nextByTable();
    if (sought_.size() > 1) return nextByComparing();
    const std::size_t at = findCharacter(text_, sought_.front(), from_);
    from_ = at == npos ? text_.size() : at + 1;
    return at;
}

std::size_t Occurrences::nextByComparing() {
    const std::size_t rest = sought_.size() - 1;
    for (;;) {
        const std::size_t at = findPair(text_, sought_.front(), sought_.back(), rest, from_);
        if (at == npos) {
            from_ = text_.size();
            return npos;
        }
        const std::size_t same = commonPrefix(text_.data() + at, sought_.data(), rest);
        const bool found = same == rest;
        const std::size_t step = found && overlap_ == Overlap::No ? sought_.size() : 1;
        from_ = at + step;
        if (step == 1) compared_ += same;
        // Texts that repeat themselves would be compared again and again.
        if (compared_ > 4 * from_ + 1024) {
            buildTable();
            return found ? at : nextByTable();
        }
        if (found) return at;
    }
}

void Occurrences::buildTable() {
    table_.assign(sought_.size(), 0);
    std::uint32_t matched = 0;
    for (std::size_t i = 1; i < sought_.size(); ++i) {
        while (matched > 0 && sought_[i] != sought_[matched])
            matched = table_[matched - 1];
        if (sought_[i] == sought_[matched]) ++matched;
        table_[i] = matched;
    }
}

std::size_t Occurrences::nextByTable() {
    for (; from_ < text_.size(); ++from_) {
        while (matched_ > 0 && text_[from_] != sought_[matched_])
            matched_ = table_[matched_ - 1];
        if (text_[from_] == sought_[matched_]) ++matched_;
        if (matched_ == sought_.size()) {
            matched_ = overlap_ == Overlap::Yes ? table_.back() : 0;
            return ++from_ - sought_.size();
        }
    }
    return npos;
}

} // namespace tarncom32::text
