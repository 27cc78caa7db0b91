#include "library/contract_text.h"

#include "automation/type.h"
#include "support/source_folder.h"

#include <algorithm>
#include <fstream>
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
    const std::vector<std::string> before = linesOf(kept);
    const std::vector<std::string> after = linesOf(found);
    // How many lines the longest common sequence of the texts from i and from j on has.
    std::vector<std::vector<int>> common(before.size() + 1, std::vector<int>(after.size() + 1));
    for (std::size_t i = before.size(); i-- > 0;)
        for (std::size_t j = after.size(); j-- > 0;)
            common[i][j] =
                before[i] == after[j] ? common[i + 1][j + 1] + 1 : std::max(common[i + 1][j], common[i][j + 1]);
    std::string differing;
    std::string block;
    bool shown = false;
    const auto show = [&](const char* sign, const std::string& line) {
        if (!shown && line.starts_with(' ')) differing += "  " + block + "\n";
        shown = true;
        differing += sign + line + "\n";
    };
    for (std::size_t i = 0, j = 0; i < before.size() || j < after.size();) {
        if (i < before.size() && j < after.size() && before[i] == after[j]) {
            if (!before[i].starts_with(' ')) {
                block = before[i];
                shown = false;
            }
            ++i, ++j;
        } else if (j == after.size() || (i < before.size() && common[i + 1][j] >= common[i][j + 1])) {
            show("- ", before[i++]);
        } else {
            show("+ ", after[j++]);
        }
    }
    return differing;
}

} // namespace tarncom32::tests::contract
