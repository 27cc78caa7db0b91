#include "text_peers.h"

#include <absl/container/flat_hash_map.h>
#include <absl/strings/numbers.h>
#include <absl/strings/str_cat.h>
#include <absl/strings/str_replace.h>
#include <absl/strings/str_split.h>

#include <unordered_map>

namespace tarncom32::bench {

namespace loop {

std::size_t countFields(std::u16string_view text, char16_t delimiter) {
    std::size_t fields = text.empty() ? 0 : 1;
    for (const char16_t c : text)
        if (c == delimiter) ++fields;
    return fields;
}

std::vector<std::u16string> split(std::u16string_view text, char16_t delimiter) {
    std::vector<std::u16string> fields;
    std::size_t start = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != delimiter) continue;
        fields.emplace_back(text.substr(start, i - start));
        start = i + 1;
    }
    fields.emplace_back(text.substr(start));
    return fields;
}

std::u16string before(std::u16string_view text, char16_t delimiter) {
    std::size_t i = 0;
    while (i < text.size() && text[i] != delimiter)
        ++i;
    return std::u16string(text.substr(0, i));
}

std::u16string behindLast(std::u16string_view text, char16_t delimiter) {
    std::size_t i = text.size();
    while (i > 0 && text[i - 1] != delimiter)
        --i;
    return std::u16string(text.substr(i));
}

std::u16string between(std::u16string_view text, std::u16string_view start, std::u16string_view end) {
    const std::u16string_view rest = text.substr(text.find(start) + start.size());
    return std::u16string(rest.substr(0, rest.find(end)));
}

namespace {

std::size_t nth(std::u16string_view text, char16_t delimiter, int n) {
    std::size_t i = 0;
    for (;; ++i)
        if (text[i] == delimiter && --n == 0) return i;
}

} // namespace

std::u16string beforeNth(std::u16string_view text, char16_t delimiter, int n) {
    return std::u16string(text.substr(0, nth(text, delimiter, n) + 1));
}

std::u16string replaceNth(std::u16string_view text, char16_t delimiter, std::u16string_view value, int n) {
    const std::size_t first = nth(text, delimiter, n);
    const std::size_t second = first + 1 + nth(text.substr(first + 1), delimiter, 1);
    std::u16string result(text.substr(0, first + 1));
    result += value;
    result += text.substr(second);
    return result;
}

std::u16string withoutNumber(std::u16string_view list, int number, char16_t delimiter) {
    std::u16string rest;
    std::size_t start = 0;
    int value = 0;
    for (std::size_t i = 0; i <= list.size(); ++i) {
        if (i < list.size() && list[i] != delimiter) {
            value = value * 10 + (list[i] - u'0');
            continue;
        }
        if (value != number) {
            rest += list.substr(start, i - start);
            rest += delimiter;
        }
        start = i + 1;
        value = 0;
    }
    return rest;
}

std::u16string without(std::u16string_view text, std::u16string_view sought) {
    std::u16string rest;
    for (std::size_t i = 0; i < text.size();) {
        if (text.substr(i, sought.size()) == sought)
            i += sought.size();
        else
            rest += text[i++];
    }
    return rest;
}

std::u16string clean(std::u16string_view text) {
    std::u16string rest;
    for (const char16_t c : text)
        if (c != u'\\' && c != u'_') rest += c;
    return rest;
}

std::u16string reverse(std::u16string_view text) {
    std::u16string result;
    for (std::size_t i = text.size(); i > 0; --i)
        result += text[i - 1];
    return result;
}

std::size_t map(std::u16string_view stream) {
    std::unordered_map<std::u16string, std::u16string> values;
    for (const std::u16string& field : split(stream, u';')) {
        const std::size_t mark = field.find(u'!');
        values.emplace(field.substr(0, mark), field.substr(mark + 1));
    }
    return values.size();
}

} // namespace loop

namespace abseil {

std::size_t countFields(absl::string_view text, char delimiter) {
    std::size_t fields = 0;
    for ([[maybe_unused]] const absl::string_view field : absl::StrSplit(text, delimiter))
        ++fields;
    return fields;
}

std::vector<std::string> split(absl::string_view text, char delimiter) {
    return absl::StrSplit(text, delimiter);
}

std::string before(absl::string_view text, char delimiter) {
    return std::string(*absl::StrSplit(text, absl::MaxSplits(delimiter, 1)).begin());
}

std::string behindLast(absl::string_view text, char delimiter) {
    return std::string(text.substr(text.rfind(delimiter) + 1));
}

std::string between(absl::string_view text, absl::string_view start, absl::string_view end) {
    const std::pair<absl::string_view, absl::string_view> halves = absl::StrSplit(text, absl::MaxSplits(start, 1));
    return std::string(*absl::StrSplit(halves.second, absl::MaxSplits(end, 1)).begin());
}

namespace {

// The end of the n-th field.
std::size_t nth(absl::string_view text, char delimiter, int n) {
    for (const absl::string_view field : absl::StrSplit(text, delimiter))
        if (--n == 0) return static_cast<std::size_t>(field.data() + field.size() - text.data());
    return text.size();
}

} // namespace

std::string beforeNth(absl::string_view text, char delimiter, int n) {
    return std::string(text.substr(0, nth(text, delimiter, n) + 1));
}

std::string replaceNth(absl::string_view text, char delimiter, absl::string_view value, int n) {
    const std::size_t first = nth(text, delimiter, n);
    const absl::string_view rest = text.substr(first + 1);
    return absl::StrCat(text.substr(0, first + 1), value, rest.substr(nth(rest, delimiter, 1)));
}

std::string withoutNumber(absl::string_view list, int number, char delimiter) {
    std::string rest;
    for (const absl::string_view field : absl::StrSplit(list, delimiter)) {
        int value = 0;
        if (absl::SimpleAtoi(field, &value) && value != number) absl::StrAppend(&rest, field, ";");
    }
    return rest;
}

std::string without(absl::string_view text, absl::string_view sought) {
    return absl::StrReplaceAll(text, {{sought, ""}});
}

std::string clean(absl::string_view text) {
    return absl::StrReplaceAll(text, {{"\\", ""}, {"_", ""}});
}

std::size_t map(absl::string_view stream) {
    absl::flat_hash_map<std::string, std::string> values;
    for (const absl::string_view field : absl::StrSplit(stream, ';'))
        values.insert(std::pair<std::string, std::string>(absl::StrSplit(field, absl::MaxSplits('!', 1))));
    return values.size();
}

} // namespace abseil

} // namespace tarncom32::bench
