#include "text/delimited.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <vector>

namespace tarncom32::text {
namespace {

using automation::String;
using automation::StringView;

std::vector<String> fieldsOf(StringView text, StringView delimiter, std::size_t limit = Fields::kUnlimited) {
    std::vector<String> fields;
    for (Fields walk(text, delimiter, limit); walk.next();)
        fields.emplace_back(walk.field());
    return fields;
}

TEST(Fields, SplitAsAHostDoes) {
    const struct {
        const char* what;
        StringView text, delimiter;
        std::size_t limit;
        std::vector<String> fields;
    } cases[] = {
        {"empty fields count", u"a,,b", u",", Fields::kUnlimited, {u"a", u"", u"b"}},
        {"delimiters at the ends", u",a,", u",", Fields::kUnlimited, {u"", u"a", u""}},
        {"an empty text has no field", u"", u",", Fields::kUnlimited, {}},
        {"an empty delimiter cuts nothing", u"a,b", u"", Fields::kUnlimited, {u"a,b"}},
        {"occurrences do not overlap", u"a:::b", u"::", Fields::kUnlimited, {u"a", u":b"}},
        {"the last field keeps the rest", u"a,b,c,d", u",", 2, {u"a", u"b,c,d"}},
        {"a limit of one cuts nothing", u"a,b", u",", 1, {u"a,b"}},
        {"a limit that is not reached", u"a,b", u",", 9, {u"a", u"b"}},
        {"a limit of none", u"a,b", u",", 0, {}},
    };
    for (const auto& [what, text, delimiter, limit, fields] : cases) {
        EXPECT_EQ(fieldsOf(text, delimiter, limit), fields) << what;
        if (limit == Fields::kUnlimited) {
            EXPECT_EQ(countFields(text, delimiter), fields.size()) << what;
        }
    }
}

// The cycle as the members describe it, one search after another.
std::size_t nthOneByOne(StringView text, StringView sought, std::int32_t n) {
    std::size_t start = 0, position = 0;
    std::int32_t k = 0;
    do {
        const std::size_t at = start < text.size() ? text.find(sought, start) : StringView::npos;
        position = at == StringView::npos ? 0 : at + 1;
        start = position; // 0-based: behind the find's first character, or at the beginning again
    } while (++k < n);
    return position;
}

TEST(PositionOfNth, GoesRoundAsSearchAfterSearchWould) {
    std::mt19937 random(7);
    for (int round = 0; round < 3000; ++round) {
        String text(random() % 40, u'a');
        for (char16_t& c : text)
            c = static_cast<char16_t>(u'a' + random() % 3);
        const StringView soughtTexts[] = {u"a", u"ab", u"aa", u"aba", u"", u"x"};
        const StringView sought = soughtTexts[random() % std::size(soughtTexts)];
        const auto n = static_cast<std::int32_t>(random() % 60) - 3;
        ASSERT_EQ(positionOfNth(text, sought, n), nthOneByOne(text, sought, n))
            << testing::PrintToString(text) << " " << testing::PrintToString(sought) << " " << n;
    }
}

TEST(PositionOfNth, FindsFarOccurrencesAndAnswersForTheLargestN) {
    String text;
    for (int i = 0; i < 5000; ++i)
        text += u"ab,";
    EXPECT_EQ(positionOfNth(text, u",", 4321), 4321u * 3);
    EXPECT_EQ(positionOfNth(text, u"b,", 4321), 4321u * 3 - 1);
    EXPECT_EQ(positionOfNth(text, u",", 5001), 0u);
    EXPECT_EQ(positionOfNth(text, u",", 5002), 3u);
    constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
    const std::size_t inRound = static_cast<std::size_t>(kMost - 1) % 5001 + 1;
    EXPECT_EQ(positionOfNth(text, u",", kMost), inRound * 3);
    EXPECT_EQ(positionOfNth(text, u"x", kMost), 0u);
    EXPECT_EQ(positionOfNth(text, u"", kMost), static_cast<std::size_t>(kMost) % 15001);
}

} // namespace
} // namespace tarncom32::text
