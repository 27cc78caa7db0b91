#include "automation/convert.h"
#include "com/type_library/description.h"

#include <oaidl.h>

namespace tarncom32::com::testing {

using automation::ClassInfo;
using automation::MemberInfo;
using automation::MemberKind;
using automation::ParameterInfo;
using automation::toUtf8;
using automation::Type;
using automation::VariantType;
using automation::Visibility;

namespace {

constexpr int kFirstSlot = 7; // behind IUnknown's and IDispatch's

class Tables {
public:
    explicit Tables(const PublishedTables& tables) : tables_(tables) {}

    Description describe() const {
        Description all;
        all["library"] = {toUtf8(tables_.name) + " " + guid(tables_.guid) + " 1.0 of " +
                          (sizeof(void*) == 8 ? "win64" : "win32") + help(tables_.help)};
        for (const frame::EnumerationInfo& enumeration : tables_.enumerations) {
            auto& lines =
                all["enumeration " + toUtf8(enumeration.name)] = {guid({}) + typeFlagWords(0) + help(enumeration.help)};
            for (const frame::EnumerationMember& member : enumeration.members)
                lines.push_back(toUtf8(member.name) + " = " + std::to_string(member.value) + help(member.help));
        }
        for (const frame::RecordInfo& record : tables_.records) {
            auto& lines =
                all["record " + toUtf8(record.name)] = {guid(record.guid) + typeFlagWords(0) + help(record.help)};
            for (const frame::RecordField& field : record.fields)
                lines.push_back((field.record.empty() ? typeWord(VT_I4) : toUtf8(field.record)) +
                                (field.count > 1 ? "[" + std::to_string(field.count) + "]" : "") + " " +
                                toUtf8(field.name));
        }
        for (const PublishedTables::Class& published : tables_.classes) {
            const ClassInfo& info = *published.info;
            const std::string name = toUtf8(info.name);
            all["interface _" + name] = interfaceLines(info);
            if (!info.sourceIid.isNull()) all["events __" + name] = eventLines(info);
            if (info.clsid.isNull()) continue;
            auto& lines = all["class " + name];
            lines = {guid(info.clsid) + typeFlagWords(published.flags) + help(info.help),
                     implementationWords(IMPLTYPEFLAG_FDEFAULT) + "_" + name};
            if (!info.sourceIid.isNull())
                lines.push_back(implementationWords(IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE) + "__" + name);
        }
        return all;
    }

private:
    static std::string guid(const automation::Guid& guid) { return toUtf8(automation::guidText(guid)); }
    static std::string help(automation::StringView text) { return helpText(toUtf8(text)); }

    std::vector<std::string> interfaceLines(const ClassInfo& info) const {
        std::vector<std::string> lines{guid(info.iid) +
                                       typeFlagWords((info.clsid.isNull() ? 0 : TYPEFLAG_FHIDDEN) | TYPEFLAG_FDUAL |
                                                     TYPEFLAG_FNONEXTENSIBLE | TYPEFLAG_FOLEAUTOMATION |
                                                     TYPEFLAG_FDISPATCHABLE) +
                                       help(info.help)};
        for (int slot = kFirstSlot; const MemberInfo& member : info.members) {
            constexpr unsigned kKinds[] = {INVOKE_FUNC, INVOKE_PROPERTYGET, INVOKE_PROPERTYPUT, INVOKE_PROPERTYPUTREF};
            constexpr unsigned kFlags[] = {0, FUNCFLAG_FHIDDEN, FUNCFLAG_FRESTRICTED};
            const std::string result = wireType(member.result);
            std::vector<Parameter> parameters = parametersOf(member.parameters);
            if (member.kind == MemberKind::Let || member.kind == MemberKind::Set) parameters.back().name.clear();
            if (result != typeWord(VT_VOID))
                parameters.push_back({PARAMFLAG_FOUT | PARAMFLAG_FRETVAL, result + "*", "pResult", {}});
            lines.push_back(line({slot++, member.dispid, kKinds[static_cast<int>(member.kind)],
                                  kFlags[static_cast<int>(member.visibility)], toUtf8(member.name),
                                  std::move(parameters), result, toUtf8(member.help)}));
        }
        return lines;
    }

    std::vector<std::string> eventLines(const ClassInfo& info) const {
        std::vector<std::string> lines{
            guid(info.sourceIid) + typeFlagWords(TYPEFLAG_FHIDDEN | TYPEFLAG_FNONEXTENSIBLE | TYPEFLAG_FDISPATCHABLE) +
            help(u"Events of " + automation::String(info.name) + u".")};
        for (const automation::EventInfo& event : info.events)
            lines.push_back(line({0, event.dispid, INVOKE_FUNC, 0, toUtf8(event.name), parametersOf(event.parameters),
                                  typeWord(VT_VOID), toUtf8(event.help)}));
        return lines;
    }

    std::vector<Parameter> parametersOf(const std::vector<ParameterInfo>& parameters) const {
        std::vector<Parameter> described;
        for (const ParameterInfo& parameter : parameters) {
            Parameter one{PARAMFLAG_FIN, wireType(parameter.type), toUtf8(parameter.name), {}};
            if (parameter.isByReference()) one.flags |= PARAMFLAG_FOUT;
            if (parameter.isAddress()) one.type += "*";
            if (parameter.optional) {
                one.flags |= PARAMFLAG_FOPT;
                one.defaultValue = defaultOf(parameter);
                if (!one.defaultValue.empty()) one.flags |= PARAMFLAG_FHASDEFAULT;
            }
            described.push_back(std::move(one));
        }
        return described;
    }

    /// What stands for an omitted argument: that of a type that has no way to be missing always has something.
    static std::string defaultOf(const ParameterInfo& parameter) {
        const VariantType type = parameter.type.type;
        automation::Variant value = parameter.defaultValue;
        if (value.isMissing()) {
            if (parameter.isByReference() || type == VariantType::Variant) return "";
            value = {};
        }
        const std::string word = typeWord(static_cast<unsigned>(type)) + " ";
        if (type == VariantType::Object) return word + "Nothing";
        return word + toUtf8(automation::toText(type == VariantType::String ? value : automation::toLong(value)));
    }

    std::string wireType(const Type& type) const {
        const std::string element = elementType(type);
        return type.isArray ? "SAFEARRAY(" + element + ")" : element;
    }

    std::string elementType(const Type& type) const {
        if (type.type == VariantType::Long && !type.name.empty()) return toUtf8(type.name);
        for (const PublishedTables::Class& published : tables_.classes)
            if (type.type == VariantType::Object && type.name == published.info->name)
                return "_" + toUtf8(type.name) + "*";
        return typeWord(type.type == VariantType::Empty ? unsigned{VT_VOID} : static_cast<unsigned>(type.type));
    }

    const PublishedTables& tables_;
};

} // namespace

Description describe(const PublishedTables& tables) {
    return Tables(tables).describe();
}

} // namespace tarncom32::com::testing
