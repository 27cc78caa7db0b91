#include "library/contract_text.h"

#include "automation/type.h"
#include "support/source_folder.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <stdexcept>

namespace tarncom32::tests::contract {

namespace {

std::string quoted(const std::string& help) {
    return '"' + help + '"';
}

std::string text(const Parameter& parameter) {
    std::string text = "[" + parameter.words + "] " + parameter.type;
    if (!parameter.name.empty()) text += " " + parameter.name;
    return parameter.defaultValue.empty() ? text : text + " = " + parameter.defaultValue;
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

} // namespace

std::string typeWord(unsigned type) {
    return automation::toUtf8(automation::typeText({static_cast<automation::VariantType>(type), false, {}}));
}

std::string heading(const std::string& thing, const std::string& help) {
    return "\n" + thing + "\n" + plainLine(quoted(help));
}

std::string memberLines(const Member& member) {
    std::string parameters;
    for (const Parameter& parameter : member.parameters)
        parameters += (parameters.empty() ? "" : ", ") + text(parameter);
    return plainLine((member.slot ? "slot " + std::to_string(member.slot) + ", " : "") + "DISPID " +
                     std::to_string(member.dispid) + ": " + member.words + " " + member.name + "(" + parameters + ")" +
                     (member.result.empty() ? "" : " As " + member.result)) +
           plainLine("    " + quoted(member.help));
}

std::string valueLine(const std::string& name, std::int32_t value, const std::string& help) {
    return plainLine(name + " = " + std::to_string(value) + "  " + quoted(help));
}

std::string plainLine(const std::string& text) {
    return "    " + text + "\n";
}

std::string sortedBlocks(const std::string& text) {
    std::vector<std::string> blocks;
    for (const std::string& line : linesOf(text)) {
        if (line.empty() || blocks.empty()) blocks.emplace_back();
        blocks.back() += line + "\n";
    }
    if (!blocks.empty()) std::sort(blocks.begin() + 1, blocks.end());
    std::string sorted;
    for (const std::string& block : blocks)
        sorted += block;
    return sorted;
}

std::string checkedIn(std::string_view library) {
    const auto path = sourceFolder() / "docs" / "contract" / (std::string(library) + ".txt");
    std::ifstream in(path, std::ios::binary);
    if (!in) throw std::runtime_error(path.string() + " is missing");
    return {std::istreambuf_iterator<char>(in), {}};
}

std::string difference(const std::string& kept, const std::string& found) {
    if (kept == found) return {};
    // What EXPECT_EQ prints behind the two texts, which are long.
    return testing::internal::edit_distance::CreateUnifiedDiff(linesOf(kept), linesOf(found));
}

} // namespace tarncom32::tests::contract
