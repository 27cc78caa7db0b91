#include "cli/member_path.h"

#include "cli/near_names.h"
#include "cli/terminal.h"
#include "cli/usage_error.h"
#include "frame/enumerations.h"
#include "frame/report.h"

namespace tarncom32::cli {

using automation::String;
using automation::StringView;

namespace {

std::string nameInQuotes(StringView text) {
    return cli::inQuotes(automation::toUtf8(text));
}

[[noreturn]] void refuseClass(StringView name) {
    if (const frame::EnumerationInfo* enumeration = frame::findEnumeration(name))
        throw UsageError(automation::toUtf8(enumeration->name) + " is an enumeration, not a class; \"tarn describe " +
                         automation::toUtf8(enumeration->name) + "\" lists its values");
    std::vector<StringView> names;
    for (const library::CatalogueEntry& entry : library::catalogue())
        names.push_back(entry.name);
    for (const frame::EnumerationInfo& enumeration : frame::enumerations())
        names.push_back(enumeration.name);
    throw UsageError("there is no class " + nameInQuotes(name) + didYouMean(name, names) +
                     (nearNames(name, names).empty() ? ";" : "") + " \"tarn classes\" lists them all");
}

[[noreturn]] void refuseMember(const automation::ClassInfo& info, StringView name) {
    std::vector<StringView> names;
    for (const automation::MemberInfo& member : info.members)
        names.push_back(member.name);
    const std::string className = automation::toUtf8(info.name);
    throw UsageError(className + " has no member " + nameInQuotes(name) + didYouMean(name, names) +
                     (nearNames(name, names).empty() ? ";" : "") + " \"tarn describe " + className +
                     "\" lists them all");
}

} // namespace

MemberPath resolvePath(std::string_view text) {
    const String path = automation::fromUtf8(text);
    StringView rest = path;
    const std::size_t prefix = frame::kLibraryName.size();
    if (rest.size() > prefix && rest[prefix] == u'.' &&
        automation::equalsIgnoreCase(rest.substr(0, prefix), frame::kLibraryName))
        rest.remove_prefix(prefix + 1);

    const std::size_t point = rest.find(u'.');
    const StringView className = rest.substr(0, point);
    MemberPath result;
    result.entry = library::findClass(className);
    if (!result.entry) refuseClass(className);
    if (result.entry->isBuilt()) result.info = &result.entry->describe();
    if (point == StringView::npos) return result;

    result.member = rest.substr(point + 1);
    if (result.member.empty())
        throw UsageError("a member's name must follow the point in " + inQuotes(text) + "; \"tarn describe " +
                         automation::toUtf8(result.entry->name) + "\" lists them");
    if (result.info && membersNamed(*result.info, result.member).empty()) refuseMember(*result.info, result.member);
    return result;
}

std::vector<const automation::MemberInfo*> membersNamed(const automation::ClassInfo& info, StringView name) {
    std::vector<const automation::MemberInfo*> found;
    for (const automation::MemberInfo& member : info.members)
        if (automation::equalsIgnoreCase(member.name, name)) found.push_back(&member);
    return found;
}

} // namespace tarncom32::cli
