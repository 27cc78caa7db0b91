#include "text/delimited.h"
#include "text/search.h"

#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <vector>

namespace tarncom32::text {
namespace {

using namespace automation;

constexpr std::size_t npos = StringView::npos;

// The plain way, which the searches must agree with.
std::vector<std::size_t> occurrencesOneByOne(StringView text, StringView sought, Overlap overlap) {
    std::vector<std::size_t> offsets;
    for (std::size_t at = 0; at + sought.size() <= text.size();) {
        const bool found = text.substr(at, sought.size()) == sought;
        if (found) offsets.push_back(at);
        at += found && overlap == Overlap::No ? sought.size() : 1;
    }
    return offsets;
}

std::vector<std::size_t> walk(StringView text, StringView sought, Overlap overlap) {
    Occurrences occurrences(text, sought, overlap);
    std::vector<std::size_t> offsets;
    for (std::size_t at; (at = occurrences.next()) != npos;)
        offsets.push_back(at);
    EXPECT_EQ(occurrences.next(), npos) << "a finished walk starts again";
    return offsets;
}

// Every place in every length up to several blocks: the ends of the blocks are where such loops go wrong.
TEST(Search, FindsACharacterAtEveryPlace) {
    for (std::size_t size = 1; size <= 40; ++size) {
        for (std::size_t place = 0; place < size; ++place) {
            // Neighbours in code and in one byte of the code must not be taken for it.
            String text(size, place % 2 == 0 ? u'\u012B' : u'\u2C2C');
            text[place] = u',';
            ASSERT_EQ(findCharacter(text, u','), place) << size;
            ASSERT_EQ(findCharacter(text, u',', place), place) << size;
            ASSERT_EQ(findCharacter(text, u',', place + 1), npos) << size;
            ASSERT_EQ(findLastCharacter(text, u','), place) << size;
        }
    }
    const String many = u"..,,.,..";
    EXPECT_EQ(findCharacter(many, u','), 2u);
    EXPECT_EQ(findLastCharacter(many, u','), 5u);
}

String randomText(std::mt19937& random, std::size_t size, unsigned letters) {
    String text(size, u'a');
    for (char16_t& c : text)
        c = static_cast<char16_t>(u'a' + random() % letters);
    return text;
}

// Texts that repeat themselves make the walk change its method on the way; it must neither lose nor repeat a find.
TEST(Occurrences, AgreeWithThePlainWayOnRandomAndOnRepetitiveTexts) {
    EXPECT_EQ(walk(u"abc", u"", Overlap::Yes), (std::vector<std::size_t>{0, 1, 2}));
    String wave;
    for (int i = 0; i < 4000; ++i)
        wave += i % 97 == 96 ? u'b' : u'a';
    std::vector<std::pair<String, String>> cases{
        {String(6000, u'a'), String(500, u'a')},
        {String(6000, u'a') + u"b", String(700, u'a') + u"b"},
        {wave, String(90, u'a')},
        {wave + u"c" + wave, wave.substr(1, 1500)},
        {wave + u"c" + wave, u"a" + String(96, u'b') + u"a"},
    };
    std::mt19937 random(20240607);
    for (int round = 0; round < 4000; ++round) {
        const auto letters = static_cast<unsigned>(1 + random() % 3);
        cases.emplace_back(randomText(random, random() % 120, letters), randomText(random, 1 + random() % 6, letters));
    }
    for (const auto& [text, sought] : cases)
        for (const Overlap overlap : {Overlap::No, Overlap::Yes})
            ASSERT_EQ(walk(text, sought, overlap), occurrencesOneByOne(text, sought, overlap))
                << testing::PrintToString(text) << " " << testing::PrintToString(sought);
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
        const String text = randomText(random, random() % 40, 3);
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
    constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
    const std::size_t inRound = static_cast<std::size_t>(kMost - 1) % 5001 + 1;
    EXPECT_EQ(positionOfNth(text, u",", kMost), inRound * 3);
    EXPECT_EQ(positionOfNth(text, u"", kMost), static_cast<std::size_t>(kMost) % 15001);
}

} // namespace
} // namespace tarncom32::text
