#include "com/type_library/description.h"

namespace tarncom32::com::testing {

namespace {

/// The words of the bits that are set, from the lowest on; a bit without a word by its number.
std::string wordsOf(unsigned flags, std::initializer_list<const char*> words) {
    std::string text;
    for (unsigned bit = 0; flags >> bit; ++bit)
        if (flags >> bit & 1) text += (bit < words.size() ? words.begin()[bit] : "bit " + std::to_string(bit)) + " ";
    return text;
}

std::string text(const Parameter& parameter) {
    std::string text = "[" + wordsOf(parameter.flags, {"in", "out", "lcid", "retval", "optional", "default"}) + "] ";
    text += parameter.type + " " + (parameter.name.empty() ? "(nameless)" : parameter.name);
    return parameter.defaultValue.empty() ? text : text + " = " + parameter.defaultValue;
}

} // namespace

std::string line(const Member& member) {
    std::string parameters;
    for (const Parameter& parameter : member.parameters)
        parameters += (parameters.empty() ? "" : ", ") + text(parameter);
    return "slot " + std::to_string(member.slot) + " id " + std::to_string(member.id) + " " +
           wordsOf(member.kind, {"method", "get", "put", "putref"}) +
           wordsOf(member.flags,
                   {"restricted", "source", "bindable", "requestedit", "displaybind", "defaultbind", "hidden"}) +
           member.name + "(" + parameters + ") gives " + member.result + helpText(member.help);
}

std::string typeFlagWords(unsigned flags) {
    return " " + wordsOf(flags, {"appobject", "creatable", "licensed", "predeclared", "hidden", "control", "dual",
                                 "nonextensible", "oleautomation", "restricted", "aggregatable", "replaceable",
                                 "dispatchable"});
}

std::string implementationWords(unsigned flags) {
    return wordsOf(flags, {"default", "source", "restricted", "defaultvtable"});
}

std::string typeWord(unsigned type) {
    static constexpr const char* kWords[] = {"Empty",   "Null", "I2",     "I4",    "R4",      "R8",      "Currency",
                                             "Date",    "Text", "Object", "Error", "Boolean", "Variant", "Unknown",
                                             "Decimal", "-",    "I1",     "UI1",   "UI2",     "UI4",     "I8",
                                             "UI8",     "Int",  "UInt",   "Void",  "HRESULT"};
    return type < std::size(kWords) ? kWords[type] : "type " + std::to_string(type);
}

std::string helpText(const std::string& help) {
    return " \"" + help + "\"";
}

} // namespace tarncom32::com::testing
