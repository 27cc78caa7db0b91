// The delimited-text members next to a loop written by hand and to Abseil, on a text of 64 characters and one of 1 MB
// in UTF-8. The members and the loops work on the same text in UTF-16, which is twice as many bytes.

#include "platform/portable/portable_platform.h"
#include "support/comparison.h"
#include "text/string_functions.h"
#include "text_peers.h"

namespace tarncom32 {
namespace {

using bench::addComparison;
using text::Array;
using text::String;

// A text in both encodings.
struct Sample {
    explicit Sample(std::string text) : utf8(std::move(text)), utf16(automation::fromUtf8(utf8)) {}
    std::string utf8;
    String utf16;
};

// `size` characters of words that `delimiter` separates.
Sample words(std::size_t size, char delimiter) {
    static constexpr std::string_view kWords[] = {"server", "pc", "switch", "printer", "hub", "workstation"};
    std::string text;
    for (std::size_t i = 0; text.size() < size; ++i) {
        if (i > 0) text += delimiter;
        text += kWords[i % std::size(kWords)];
    }
    text.resize(size, 'x');
    text.back() = 'x';
    return Sample(text);
}

// "1;2;3;..." up to `size` characters, the numbers starting again after 999.
Sample numbers(std::size_t size) {
    std::string text;
    for (int i = 0; text.size() + 5 < size; ++i)
        text += (i > 0 ? ";" : "") + std::to_string(i % 999 + 1);
    return Sample(text);
}

// "k0!v0;k1!v1;..." up to `size` characters.
Sample stream(std::size_t size) {
    std::string text;
    for (int i = 0; text.size() + 20 < size; ++i) {
        const std::string number = std::to_string(i);
        text += (i > 0 ? ";k" : "k") + number + "!v" + number;
    }
    return Sample(text);
}

// `text` with `piece` written over it at `offset`.
Sample with(const Sample& text, std::size_t offset, std::string_view piece) {
    return Sample(std::string(text.utf8).replace(offset, piece.size(), piece));
}

void addJobs(text::StringFunctions& functions, std::size_t size, const std::string& sizeName) {
    const auto name = [&sizeName](const char* member) { return std::string(member) + ", " + sizeName; };
    const Sample list = words(size, ',');
    const Sample marked = with(list, size - 10, "!");
    const Sample framed = with(with(list, 2, "<<"), size - 10, ">>");
    const Sample sparse = with(with(list, size / 3, "needle"), size - 20, "needle");
    const Sample dated = with(with(list, size / 3, "\\"), size / 2, "_");
    const Sample front = with(list, 5, "!");
    const Sample ids = numbers(size);
    const Sample pairs = stream(size);
    const int middle = static_cast<int>(size / 16);

    addComparison(name("NumberOfElementsInDelimitedString"),
                  {{"member",
                    [&functions, list] {
                        return static_cast<std::size_t>(functions.numberOfElementsInDelimitedString(list.utf16, u","));
                    }},
                   {"loop", [list] { return bench::loop::countFields(list.utf16, u','); }},
                   {"Abseil", [list] { return bench::abseil::countFields(list.utf8, ','); }}});
    addComparison(name("SplitStringAtDelimiters"),
                  {{"member",
                    [&functions, list] {
                        Array fields;
                        functions.splitStringAtDelimiters(list.utf16, u",", fields, -1);
                        return fields.size();
                    }},
                   {"loop", [list] { return bench::loop::split(list.utf16, u',').size(); }},
                   {"Abseil", [list] { return bench::abseil::split(list.utf8, ',').size(); }}});
    addComparison(
        name("ReturnStringBeforeDelimiter"),
        {{"member", [&functions, marked] { return functions.returnStringBeforeDelimiter(marked.utf16, u"!").size(); }},
         {"loop", [marked] { return bench::loop::before(marked.utf16, u'!').size(); }},
         {"Abseil", [marked] { return bench::abseil::before(marked.utf8, '!').size(); }}});
    addComparison(
        name("ReturnStringAfterLastDelimiter"),
        {{"member", [&functions, front] { return functions.returnStringAfterLastDelimiter(front.utf16, u"!").size(); }},
         {"loop", [front] { return bench::loop::behindLast(front.utf16, u'!').size(); }},
         {"Abseil", [front] { return bench::abseil::behindLast(front.utf8, '!').size(); }}});
    addComparison(
        name("StringReturnBetween"),
        {{"member", [&functions, framed] { return functions.stringReturnBetween(framed.utf16, u"<<", u">>").size(); }},
         {"loop", [framed] { return bench::loop::between(framed.utf16, u"<<", u">>").size(); }},
         {"Abseil", [framed] { return bench::abseil::between(framed.utf8, "<<", ">>").size(); }}});
    addComparison(
        name("ReturnStringBeforeNthDelimiter"),
        {{"member", [&functions, list,
                     middle] { return functions.returnStringBeforeNthDelimiter(list.utf16, u",", middle).size(); }},
         {"loop", [list, middle] { return bench::loop::beforeNth(list.utf16, u',', middle).size(); }},
         {"Abseil", [list, middle] { return bench::abseil::beforeNth(list.utf8, ',', middle).size(); }}});
    addComparison(
        name("ReplaceValueInStream"),
        {{"member", [&functions, list,
                     middle] { return functions.replaceValueInStream(list.utf16, u",", u"value", middle).size(); }},
         {"loop", [list, middle] { return bench::loop::replaceNth(list.utf16, u',', u"value", middle).size(); }},
         {"Abseil", [list, middle] { return bench::abseil::replaceNth(list.utf8, ',', "value", middle).size(); }}});
    addComparison(
        name("RemoveIDFromListWithDelimiter"),
        {{"member", [&functions, ids] { return functions.removeIDFromListWithDelimiter(ids.utf16, 7, u";").size(); }},
         {"loop", [ids] { return bench::loop::withoutNumber(ids.utf16, 7, u';').size(); }},
         {"Abseil", [ids] { return bench::abseil::withoutNumber(ids.utf8, 7, ';').size(); }}});
    addComparison(name("NumberOfExactMatchesRemovedFromString"),
                  {{"member",
                    [&functions, text = String(sparse.utf16)]() mutable {
                        const std::int16_t removed = functions.numberOfExactMatchesRemovedFromString(text, u"needle");
                        return text.size() - 6 * static_cast<std::size_t>(removed);
                    }},
                   {"loop", [sparse] { return bench::loop::without(sparse.utf16, u"needle").size(); }},
                   {"Abseil", [sparse] { return bench::abseil::without(sparse.utf8, "needle").size(); }}});
    addComparison(name("CleanDate"),
                  {{"member", [&functions, dated] { return functions.cleanDate(dated.utf16).size(); }},
                   {"loop", [dated] { return bench::loop::clean(dated.utf16).size(); }},
                   {"Abseil", [dated] { return bench::abseil::clean(dated.utf8).size(); }}});
    addComparison(name("ReverseString"),
                  {{"member", [&functions, list] { return functions.reverseString(list.utf16).size(); }},
                   {"loop", [list] { return bench::loop::reverse(list.utf16).size(); }}});
    addComparison(
        name("CreateCollectionFromString"),
        {{"member", [&functions, pairs] { return functions.createCollectionFromString(pairs.utf16)->size(); }},
         {"loop", [pairs] { return bench::loop::map(pairs.utf16); }},
         {"Abseil", [pairs] { return bench::abseil::map(pairs.utf8); }}});
}

} // namespace
} // namespace tarncom32

int main(int argc, char** argv) {
    tarncom32::platform::portable::PortablePlatform platform;
    const auto functions = tarncom32::automation::make<tarncom32::text::StringFunctions>(platform);
    tarncom32::addJobs(*functions, 64, "64 characters");
    tarncom32::addJobs(*functions, 1 << 20, "1 MB");
    return tarncom32::bench::runComparisons(argc, argv);
}
