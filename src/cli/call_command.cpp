#include "cli/collecting_message_box.h"
#include "cli/commands.h"
#include "cli/error_text.h"
#include "cli/exit_status.h"
#include "cli/member_path.h"

#include "cli/usage_error.h"
#include "cli/value_argument.h"
#include "cli/value_json.h"
#include "cli/value_text.h"
#include "frame/report.h"
#include "library/library.h"
#include "platform/portable/portable_platform.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <ostream>

namespace tarncom32::cli {

using automation::Access;
using automation::Error;
using automation::MemberInfo;
using automation::MemberKind;
using automation::ParameterInfo;
using automation::toUtf8;
using automation::Variant;

namespace {

/// A call with everything that came of it.
struct Call {
    const MemberInfo* member = nullptr; ///< null for a class that is not built
    std::vector<Variant> arguments{};   ///< in the order of the parameters; afterwards what the member left in them
    Variant result{};
    std::optional<Error> error{};
    std::optional<std::size_t> refused{}; ///< the argument that did not convert, or is missing
    std::vector<std::string> reports{};   ///< messages that were shown
};

/// The accessor that is meant: the one that is called or read where it takes as many arguments, else one that assigns.
const MemberInfo* chooseMember(const MemberPath& path, std::size_t argumentCount) {
    const std::vector<const MemberInfo*> members = membersNamed(*path.info, path.member);
    const auto reads = [](const MemberInfo* member) {
        return member->kind == MemberKind::Method || member->kind == MemberKind::Get;
    };
    for (const MemberInfo* member : members)
        if (reads(member) && argumentCount <= member->parameters.size()) return member;
    for (const MemberInfo* member : members)
        if (!reads(member) && argumentCount == member->parameters.size()) return member;
    const auto reader = std::ranges::find_if(members, reads);
    return reader != members.end() ? *reader : members.front();
}

Access accessOf(const MemberInfo& member) {
    switch (member.kind) {
    case MemberKind::Method:
        return Access::Method;
    case MemberKind::Get:
        return Access::Get;
    case MemberKind::Let:
        return Access::Let;
    case MemberKind::Set:
        break;
    }
    return Access::Set;
}

/// A variable of the parameter's type as a caller's is before anything was assigned, or with the parameter's default.
Variant variableFor(const ParameterInfo& parameter) {
    if (!parameter.defaultValue.isMissing()) return parameter.defaultValue;
    return parameter.type.isArray ? Variant() : automation::emptyValueOf(parameter.type.type);
}

/// Gives every by-reference parameter that is left out or empty a variable of the caller's, so that what the member
/// writes there comes back.
void addVariables(Call& call) {
    const std::vector<ParameterInfo>& parameters = call.member->parameters;
    for (std::size_t i = 0; i < call.arguments.size() && i < parameters.size(); ++i)
        if (parameters[i].isByReference() && call.arguments[i].isEmpty())
            call.arguments[i] = variableFor(parameters[i]);
    for (std::size_t i = call.arguments.size(); i < parameters.size(); ++i) {
        const ParameterInfo& parameter = parameters[i];
        if (!parameter.isByReference())
            call.arguments.emplace_back(automation::kMissing);
        else
            call.arguments.push_back(variableFor(parameter));
    }
    while (!call.arguments.empty() && call.arguments.back().isMissing())
        call.arguments.pop_back();
}

std::uint32_t byReferenceBits(const std::vector<ParameterInfo>& parameters) {
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < parameters.size() && i < 32; ++i)
        if (parameters[i].isByReference()) bits |= 1u << i;
    return bits;
}

void perform(Call& call, const MemberPath& path, platform::Platform& platform) {
    frame::trap(
        [&] {
            library::Library library(platform);
            const automation::ObjectRef object =
                library.create(automation::String(frame::kLibraryName) + u"." + automation::String(path.entry->name));
            addVariables(call);
            call.result = object->invoke(automation::MemberName(path.member), accessOf(*call.member), call.arguments,
                                         byReferenceBits(call.member->parameters));
        },
        [&](const Error& error) {
            call.error = error;
            if (const auto* argument = dynamic_cast<const automation::ArgumentError*>(&error))
                call.refused = argument->index();
        });
}

/// Calls `visit(name, value)` for each by-reference parameter.
template <class Visit>
void forEachVariable(const Call& call, Visit&& visit) {
    if (!call.member) return;
    const std::vector<ParameterInfo>& parameters = call.member->parameters;
    for (std::size_t i = 0; i < parameters.size() && i < call.arguments.size(); ++i)
        if (parameters[i].isByReference()) visit(parameters[i].name, call.arguments[i]);
}

void printCallAsJson(const Output& output, const Call& call) {
    Json json;
    json["result"] = jsonOf(call.result);
    forEachVariable(
        call, [&](automation::StringView name, const Variant& value) { json["out"][toUtf8(name)] = jsonOf(value); });
    for (const std::string& report : call.reports)
        json["reports"].push_back(report);
    if (call.error) {
        json["error"]["number"] = call.error->number();
        json["error"]["description"] = jsonText(call.error->description());
    }
    output.out << compactText(json) << '\n';
}

void printCall(const Output& output, const Call& call) {
    const bool hasResult = call.member && call.member->result != automation::Type{};
    if (hasResult && !call.error) output.out << readableText(call.result) << '\n';
    // The member has not run: the arguments are still what the user wrote.
    if (call.refused) return;
    forEachVariable(call, [&](automation::StringView name, const Variant& value) {
        output.out << output.terminal.name(toUtf8(name)) << " = " << readableText(value) << '\n';
    });
}

/// "; StringFunctions.ReverseString takes sText" where the arguments are too many or too few, and "; "x" cannot
/// be lN As Long" where one of those that were given does not convert.
std::string argumentsHint(const Call& call, const MemberPath& path, const std::vector<std::string>& given) {
    const bool wrongCount = call.error->number() == automation::errors::ArgumentNotOptional ||
                            call.error->number() == automation::errors::WrongArgumentCount;
    if (!call.member) return {};
    if (!wrongCount) {
        if (!call.refused || *call.refused >= given.size()) return {};
        const ParameterInfo& parameter = call.member->parameters[*call.refused];
        const char* const advice = parameter.isByReference() ? "; write empty for a new variable"
                                   : parameter.type.isArray  ? "; write an array as in json:'[\"a\", \"b\"]'"
                                                             : "";
        return "; " + inQuotes(given[*call.refused]) + " cannot be " + toUtf8(parameter.name) + " As " +
               toUtf8(automation::typeText(parameter.type)) + advice;
    }
    std::string names;
    for (const ParameterInfo& parameter : call.member->parameters)
        names += (names.empty() ? "" : ", ") + toUtf8(parameter.name);
    return "; " + toUtf8(path.info->name) + '.' + toUtf8(call.member->name) + " takes " +
           (names.empty() ? "no arguments" : names);
}

} // namespace

int runCall(const Output& output, const CallOptions& options) {
    const MemberPath path = resolvePath(options.path);
    if (path.member.empty())
        throw UsageError("a member is called as " + toUtf8(path.entry->name) + ".MEMBER; \"tarn describe " +
                         toUtf8(path.entry->name) + "\" lists them");
    // In front of the call, whose result may be an object that still uses them.
    platform::portable::TerminalMessageBox terminalBox;
    CollectingMessageBox messageBox(options.json ? nullptr : &terminalBox);
    platform::portable::PortablePlatform platform(messageBox);
    Call call;
    for (const std::string& argument : options.arguments)
        call.arguments.push_back(argumentValue(argument));
    if (path.info) call.member = chooseMember(path, call.arguments.size());
    perform(call, path, platform);
    call.reports = messageBox.messages();

    if (options.json)
        printCallAsJson(output, call);
    else
        printCall(output, call);
    if (!call.error) return exit_status::kDone;
    if (!options.json)
        output.err << "tarn: " << errorText(*call.error) << argumentsHint(call, path, options.arguments) << '\n';
    return exit_status::kRaised;
}

} // namespace tarncom32::cli
