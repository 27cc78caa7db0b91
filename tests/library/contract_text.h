#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The text in which a library's published contract is kept below docs/contract, a block for each enumeration, record,
/// interface, set of events and class. Whoever describes a library, from its member tables or as COM reads it, puts the
/// text together from these pieces.
namespace tarncom32::tests::contract {

struct Parameter {
    std::string words; ///< "in", "in, out, optional" and so on
    std::string type;
    std::string name;         ///< empty for the value that a property is given
    std::string defaultValue; ///< with its type in front; empty when there is none
};

struct Member {
    int slot = 0; ///< in the vtable; 0 for an event
    long dispid = 0;
    std::string words; ///< "method", "get", "restricted get" and so on
    std::string name;
    std::vector<Parameter> parameters;
    std::string result; ///< empty for none
    std::string help;
};

/// The word for a type that stands alone, by its automation number; empty for no type.
std::string typeWord(unsigned type);

/// The start of a block: what the thing is, and its help sentence.
std::string heading(const std::string& thing, const std::string& help);
std::string memberLines(const Member& member);
/// A value of an enumeration.
std::string valueLine(const std::string& name, std::int32_t value, const std::string& help);
/// One more line of a block.
std::string plainLine(const std::string& text);

/// The blocks of a text in alphabetical order.
std::string sortedBlocks(const std::string& text);

/// The checked-in text of a library. Raises `std::runtime_error` when there is none.
std::string checkedIn(std::string_view library);

/// The lines that differ, "-" in front of those of `kept` and "+" in front of those of `found`, with those around them
/// and their numbers; empty when none do.
std::string difference(const std::string& kept, const std::string& found);

} // namespace tarncom32::tests::contract
