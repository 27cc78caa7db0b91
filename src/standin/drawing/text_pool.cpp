#include "standin/drawing/text_pool.h"

#include <functional>

namespace tarncom32::standin::drawing {

void appendUtf16(std::u16string& to, std::string_view utf8) {
    to.reserve(to.size() + utf8.size());
    for (std::size_t i = 0; i < utf8.size();) {
        const auto lead = static_cast<unsigned char>(utf8[i]);
        const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        if (i + length > utf8.size()) return;
        char32_t point = length == 1 ? lead : lead & (0xFFu >> (length + 1));
        for (std::size_t k = 1; k < length; ++k)
            point = (point << 6) | (static_cast<unsigned char>(utf8[i + k]) & 0x3Fu);
        if (point < 0x10000) {
            to.push_back(static_cast<char16_t>(point));
        } else {
            to.push_back(static_cast<char16_t>(0xD7C0 + (point >> 10)));
            to.push_back(static_cast<char16_t>(0xDC00 + (point & 0x3FF)));
        }
        i += length;
    }
}

Text TextPool::fromUtf8(std::string_view utf8) {
    scratch_.clear();
    appendUtf16(scratch_, utf8);
    return fromUtf16(scratch_);
}

Text TextPool::fromUtf16(std::u16string_view units) {
    // A file made so that its strings share a hash must not make the search long: past this many tries the string is
    // simply kept once more.
    constexpr std::size_t maxTries = 32;

    if (count_ * 4 >= table_.size() * 3) grow();
    const std::size_t mask = table_.size() - 1;
    const std::size_t hash = std::hash<std::u16string_view>{}(units);
    Place* free = nullptr;
    for (std::size_t k = 0; k < maxTries; ++k) {
        Place& place = table_[(hash + k) & mask];
        if (!place.text.present()) {
            free = &place;
            break;
        }
        if (place.hash == hash && place.text == units) return place.text;
    }

    const auto length = static_cast<std::uint32_t>(units.size());
    auto* memory = static_cast<char16_t*>(
        arena_.allocate(sizeof length + units.size() * sizeof(char16_t), alignof(std::uint32_t)));
    std::memcpy(memory, &length, sizeof length);
    std::memcpy(memory + 2, units.data(), units.size() * sizeof(char16_t));
    Text text;
    text.units_ = memory + 2;
    if (free != nullptr) {
        *free = {text, hash};
        ++count_;
    }
    return text;
}

void TextPool::grow() {
    std::vector<Place> old(table_.empty() ? 1024 : table_.size() * 2);
    old.swap(table_);
    const std::size_t mask = table_.size() - 1;
    for (const Place& place : old) {
        if (!place.text.present()) continue;
        std::size_t at = place.hash;
        while (table_[at & mask].text.present())
            ++at;
        table_[at & mask] = place;
    }
}

} // namespace tarncom32::standin::drawing
