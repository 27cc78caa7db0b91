#include "cli/commands.h"
#include "cli/describe_json.h"
#include "cli/exit_status.h"
#include "cli/usage_error.h"
#include "cli/value_json.h"
#include "cli/value_text.h"
#include "frame/enumerations.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>

namespace tarncom32::cli {

using automation::ClassInfo;
using automation::MemberInfo;
using automation::MemberKind;
using automation::ParameterInfo;
using automation::toUtf8;

namespace {

std::string typeOf(const automation::Type& type) {
    return toUtf8(automation::typeText(type));
}

std::string defaultOf(const ParameterInfo& parameter) {
    const std::string text = readableText(parameter.defaultValue);
    return parameter.defaultValue.as<automation::String>() ? '"' + text + '"' : text;
}

/// "in/out sSource As String", "[bFlag As Boolean = False]".
std::string declaration(const ParameterInfo& parameter) {
    std::string text;
    if (parameter.isByReference()) text = directionText(parameter.direction) + ' ';
    text += toUtf8(parameter.name) + " As " + typeOf(parameter.type);
    if (!parameter.optional) return text;
    if (!parameter.defaultValue.isMissing()) text += " = " + defaultOf(parameter);
    return '[' + text + ']';
}

std::string inParentheses(const std::vector<ParameterInfo>& parameters) {
    std::string text;
    for (const ParameterInfo& parameter : parameters)
        text += (text.empty() ? "" : ", ") + declaration(parameter);
    return '(' + text + ')';
}

/// What stands behind the name: the parameters and the result.
std::string signature(const MemberInfo& member) {
    std::string text;
    if (member.kind == MemberKind::Method || !member.parameters.empty()) text = inParentheses(member.parameters);
    if (const std::string result = typeOf(member.result); !result.empty()) text += " As " + result;
    return text;
}

bool isShown(const MemberInfo& member) {
    return member.visibility == automation::Visibility::Normal;
}

/// "get, let " and so on before a property's name; nothing for a method.
std::string kindsOf(const ClassInfo& info, const MemberInfo& member) {
    std::string kinds;
    for (const MemberInfo& accessor : info.members)
        if (accessor.kind != MemberKind::Method && accessor.dispid == member.dispid)
            kinds += (kinds.empty() ? "" : ", ") + kindText(accessor.kind);
    return kinds.empty() ? "" : kinds + ' ';
}

void printClass(const Output& output, const MemberPath& path) {
    const Terminal& terminal = output.terminal;
    const library::CatalogueEntry& entry = *path.entry;
    output.out << terminal.heading(toUtf8(entry.name)) << ", " << toUtf8(frame::instancingText(entry.instancing));
    if (entry.isCreatable()) output.out << ", " << toUtf8(entry.progId());
    output.out << '\n' << terminal.paragraph(toUtf8(entry.role()), 2);
    if (entry.name == u"Enums") {
        output.out << '\n';
        for (const frame::EnumerationInfo& enumeration : frame::enumerations())
            output.out << "  " << terminal.name(toUtf8(enumeration.name)) << '\n'
                       << terminal.paragraph(toUtf8(enumeration.help), 6);
        return;
    }
    if (!path.info) {
        output.out << "  " << terminal.warning("Not built yet in this version.") << '\n';
        return;
    }
    for (const MemberInfo& member : path.info->members) {
        // A property stands there once, as its first accessor.
        const auto first = std::ranges::find(path.info->members, member.dispid, &MemberInfo::dispid);
        if (!isShown(member) || &*first != &member) continue;
        output.out << "\n  " << kindsOf(*path.info, member) << terminal.name(toUtf8(member.name)) << signature(member)
                   << '\n'
                   << terminal.paragraph(toUtf8(member.help), 6);
    }
    for (const automation::EventInfo& event : path.info->events)
        output.out << "\n  event " << terminal.name(toUtf8(event.name)) << inParentheses(event.parameters) << '\n'
                   << terminal.paragraph(toUtf8(event.help), 6);
}

void printMember(const Output& output, const ClassInfo& info, const MemberInfo& member) {
    const Terminal& terminal = output.terminal;
    const std::string result = typeOf(member.result);
    output.out << terminal.heading(toUtf8(info.name) + '.' + toUtf8(member.name)) << ", " << kindText(member.kind)
               << ", DISPID " << member.dispid << (result.empty() ? ", no result" : ", returns " + result) << '\n'
               << terminal.paragraph(toUtf8(member.help), 2);
    int nameColumns = 0;
    int typeColumns = 0;
    for (const ParameterInfo& parameter : member.parameters) {
        nameColumns = std::max(nameColumns, columnsOf(toUtf8(parameter.name)));
        typeColumns = std::max(typeColumns, columnsOf(typeOf(parameter.type)));
    }
    if (!member.parameters.empty()) output.out << '\n';
    for (const ParameterInfo& parameter : member.parameters) {
        output.out << "  " << terminal.name(padded(toUtf8(parameter.name), nameColumns)) << "  "
                   << padded(typeOf(parameter.type), typeColumns) << "  " << directionText(parameter.direction);
        if (parameter.optional) output.out << ", optional";
        if (parameter.optional && !parameter.defaultValue.isMissing()) output.out << ", else " << defaultOf(parameter);
        output.out << '\n';
    }
}

void printEnumeration(const Output& output, const frame::EnumerationInfo& enumeration) {
    const Terminal& terminal = output.terminal;
    output.out << terminal.heading(toUtf8(enumeration.name)) << ", enumeration\n"
               << terminal.paragraph(toUtf8(enumeration.help), 2) << '\n';
    int nameColumns = 0;
    int valueColumns = 0;
    for (const frame::EnumerationMember& member : enumeration.members) {
        nameColumns = std::max(nameColumns, columnsOf(toUtf8(member.name)));
        valueColumns = std::max(valueColumns, columnsOf(std::to_string(member.value)));
    }
    for (const frame::EnumerationMember& member : enumeration.members)
        output.out << "  " << terminal.name(padded(toUtf8(member.name), nameColumns)) << "  "
                   << padded(std::to_string(member.value), valueColumns) << "  " << toUtf8(member.help) << '\n';
}

} // namespace

int runDescribe(const Output& output, const std::string& text, bool json) {
    if (const frame::EnumerationInfo* enumeration = frame::findEnumeration(automation::fromUtf8(text))) {
        if (json)
            printJson(output, jsonOfEnumeration(*enumeration));
        else
            printEnumeration(output, *enumeration);
        return exit_status::kDone;
    }
    const MemberPath path = resolvePath(text);
    if (path.member.empty()) {
        if (json)
            printJson(output, jsonOfClass(path));
        else
            printClass(output, path);
        return exit_status::kDone;
    }
    if (!path.info)
        throw UsageError(toUtf8(path.entry->name) +
                         " is not built yet in this version, so that its members cannot be described");
    const std::vector<const MemberInfo*> members = membersNamed(*path.info, path.member);
    if (json) {
        printJson(output, jsonOfMember(members));
        return exit_status::kDone;
    }
    for (const MemberInfo* member : members)
        printMember(output, *path.info, *member);
    return exit_status::kDone;
}

} // namespace tarncom32::cli
