#include "cli/near_names.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace tarncom32::cli {

using automation::String;
using automation::StringView;

namespace {

constexpr std::size_t kMostNames = 3;
constexpr std::size_t kLongestName = 100; // what is longer is no misspelling of a name

/// The least number of letters to add, take away or change to get from one text to the other.
std::size_t editDistance(StringView from, StringView to) {
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= from.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i);
        for (std::size_t j = 1; j <= to.size(); ++j) {
            const std::size_t changed = diagonal + (from[i - 1] == to[j - 1] ? 0 : 1);
            diagonal = std::exchange(row[j], std::min({row[j] + 1, row[j - 1] + 1, changed}));
        }
    }
    return row.back();
}

} // namespace

std::vector<StringView> nearNames(StringView wanted, const std::vector<StringView>& names) {
    if (wanted.empty() || wanted.size() > kLongestName) return {};
    const String folded = automation::toUpper(wanted);
    std::vector<std::pair<std::size_t, StringView>> ranked;
    for (const StringView name : names) {
        const String candidate = automation::toUpper(name);
        const std::size_t distance = editDistance(folded, candidate);
        // A part of a name counts as near from three letters on: fewer are part of almost any name.
        const bool part = folded.size() >= 3 && candidate.find(folded) != String::npos;
        if (part || distance <= std::max<std::size_t>(2, folded.size() / 4)) ranked.emplace_back(distance, name);
    }
    std::ranges::stable_sort(ranked, {}, [](const auto& entry) { return entry.first; });
    std::vector<StringView> nearest;
    for (const auto& [distance, name] : ranked)
        if (nearest.size() < kMostNames && std::ranges::find(nearest, name) == nearest.end()) nearest.push_back(name);
    return nearest;
}

std::string didYouMean(StringView wanted, const std::vector<StringView>& names) {
    const std::vector<StringView> nearest = nearNames(wanted, names);
    if (nearest.empty()) return {};
    std::string text = "; did you mean " + automation::toUtf8(nearest.front());
    for (std::size_t i = 1; i < nearest.size(); ++i)
        text += (i + 1 == nearest.size() ? " or " : ", ") + automation::toUtf8(nearest[i]);
    return text + "?";
}

} // namespace tarncom32::cli
