#include "com/type_library/description.h"
#include "frame/enumerations.h"
#include "frame/records.h"
#include "frame/report.h"
#include "library/library.h"
#include "library/type_library.h"

#include <set>
#include <stdexcept>

namespace tarncom32::com::testing {

using automation::ClassInfo;
using automation::MemberInfo;
using automation::MemberKind;
using automation::ParameterInfo;
using automation::toUtf8;
using automation::Type;
using automation::Variant;
using automation::VariantType;
using automation::Visibility;

namespace {

/// `dual`, `hidden` and so on are the words for the flags of types; a not-creatable class has none.
std::string classFlags(frame::Instancing instancing) {
    switch (instancing) {
    case frame::Instancing::Global:
        return " appobject creatable predeclared";
    case frame::Instancing::Creatable:
        return " creatable";
    case frame::Instancing::NotCreatable:
        return "";
    case frame::Instancing::Internal:
        break;
    }
    throw std::runtime_error("an internal class is published");
}

std::string plainType(const Type& type) {
    switch (type.type) {
    case VariantType::Empty:
        return "void";
    case VariantType::Byte:
        return "UI1";
    case VariantType::Integer:
        return "I2";
    case VariantType::Long:
        return type.name.empty() ? "I4" : toUtf8(type.name);
    case VariantType::Single:
        return "R4";
    case VariantType::Double:
        return "R8";
    case VariantType::Currency:
        return "CY";
    case VariantType::Date:
        return "DATE";
    case VariantType::String:
        return "BSTR";
    case VariantType::Boolean:
        return "BOOL";
    case VariantType::Variant:
        return "VARIANT";
    case VariantType::Unknown:
        return "UNKNOWN";
    case VariantType::Object:
        return library::findBuiltClass(type.name) ? "_" + toUtf8(type.name) + "*" : "DISPATCH";
    default:
        throw std::runtime_error("a type that no type library has");
    }
}

std::string wireType(const Type& type) {
    return type.isArray ? "SAFEARRAY(" + plainType(type) + ")" : plainType(type);
}

/// What stands for an omitted argument where its type has no way to be missing.
std::string defaultText(const ParameterInfo& parameter) {
    const Variant& value = parameter.defaultValue;
    if (!value.isMissing()) {
        if (const auto* text = value.as<automation::String>()) return "=" + toUtf8(*text);
        if (const auto* flag = value.as<automation::Boolean>()) return "=" + std::to_string(flag->value);
        if (const auto* number = value.as<std::int32_t>()) return "=" + std::to_string(*number);
        if (const auto* number = value.as<std::int16_t>()) return "=" + std::to_string(*number);
        if (value.isObject()) return "=Nothing";
        throw std::runtime_error(toUtf8(parameter.name) + ": a default of a type that is not compared yet");
    }
    if (parameter.isByReference() || parameter.type.type == VariantType::Variant) return "";
    return parameter.type.type == VariantType::String ? "=" : "=0";
}

/// Accessors of one property share a number, under which type information names the first one's parameters only.
std::string parameterText(const ParameterInfo& parameter, bool named) {
    std::string text = parameter.isByReference() ? "[in out" : "[in";
    if (parameter.optional) text += " optional" + defaultText(parameter);
    text += "] " + wireType(parameter.type);
    if (parameter.isByReference() || parameter.type.isArray) text += "*";
    return named ? text + " " + toUtf8(parameter.name) : text;
}

std::string parameterList(const std::vector<ParameterInfo>& parameters, bool named) {
    std::string text;
    for (const ParameterInfo& parameter : parameters)
        text += (text.empty() ? "" : ", ") + parameterText(parameter, named);
    return text;
}

std::string kindText(MemberKind kind) {
    constexpr const char* kTexts[] = {"method", "get", "put", "putref"};
    return kTexts[static_cast<int>(kind)];
}

std::string visibilityText(Visibility visibility) {
    constexpr const char* kTexts[] = {"", " hidden", " restricted"};
    return kTexts[static_cast<int>(visibility)];
}

std::vector<std::string> describeInterface(const ClassInfo& info) {
    std::vector<std::string> lines{toUtf8(automation::guidText(info.iid)) +
                                   " dual hidden nonextensible oleautomation dispatchable" +
                                   helpText(toUtf8(info.help))};
    std::set<std::int32_t> seen;
    int slot = 7; // behind IUnknown's and IDispatch's
    for (const MemberInfo& member : info.members) {
        const bool first = seen.insert(member.dispid).second;
        const std::string result = wireType(member.result);
        std::string parameters = parameterList(member.parameters, first);
        if (result != "void")
            parameters +=
                (parameters.empty() ? "" : ", ") + ("[out retval] " + result + "*") + (first ? " pResult" : "");
        lines.push_back(std::to_string(slot++) + " id " + std::to_string(member.dispid) + " " + kindText(member.kind) +
                        visibilityText(member.visibility) + " " + toUtf8(member.name) + "(" + parameters + ") gives " +
                        result + (first ? helpText(toUtf8(member.help)) : ""));
    }
    return lines;
}

std::vector<std::string> describeEvents(const ClassInfo& info) {
    std::vector<std::string> lines{toUtf8(automation::guidText(info.sourceIid)) + " hidden nonextensible dispatchable" +
                                   helpText("Events of " + toUtf8(info.name) + ".")};
    for (const automation::EventInfo& event : info.events)
        lines.push_back("id " + std::to_string(event.dispid) + " " + toUtf8(event.name) + "(" +
                        parameterList(event.parameters, true) + ") gives void" + helpText(toUtf8(event.help)));
    return lines;
}

std::vector<std::string> describeClass(const ClassInfo& info) {
    const frame::CatalogueEntry* entry = frame::findClass(info.name);
    if (!entry) throw std::runtime_error(toUtf8(info.name) + " is built and not in the catalogue");
    std::vector<std::string> lines{toUtf8(automation::guidText(info.clsid)) + classFlags(entry->instancing) +
                                   helpText(toUtf8(info.help))};
    lines.push_back("default _" + toUtf8(info.name));
    if (!info.sourceIid.isNull()) lines.push_back("default source __" + toUtf8(info.name));
    return lines;
}

} // namespace

LibraryDescription describeTables() {
    LibraryDescription all;
    all["library"] = {toUtf8(frame::kLibraryName) + " " + toUtf8(automation::guidText(library::kTypeLibraryId)) +
                      " 1.0 of " + (sizeof(void*) == 8 ? "win64" : "win32") +
                      helpText(toUtf8(library::kTypeLibraryHelp))};
    for (const frame::EnumerationInfo& enumeration : frame::enumerations()) {
        auto& lines = all["enumeration " + toUtf8(enumeration.name)];
        lines.push_back(helpText(toUtf8(enumeration.help)));
        for (const frame::EnumerationMember& member : enumeration.members)
            lines.push_back(toUtf8(member.name) + " = " + std::to_string(member.value));
    }
    for (const frame::RecordInfo& record : frame::records()) {
        auto& lines = all["record " + toUtf8(record.name)];
        lines.push_back(toUtf8(automation::guidText(record.guid)) + helpText(toUtf8(record.help)));
        for (const frame::RecordField& field : record.fields)
            lines.push_back((field.record.empty() ? "I4" : toUtf8(field.record)) +
                            (field.count > 1 ? "[" + std::to_string(field.count) + "]" : "") + " " +
                            toUtf8(field.name));
    }
    for (const library::BuiltClass& built : library::builtClasses()) {
        const ClassInfo& info = built.describe();
        all["class " + toUtf8(info.name)] = describeClass(info);
        all["interface _" + toUtf8(info.name)] = describeInterface(info);
        if (!info.sourceIid.isNull()) all["events __" + toUtf8(info.name)] = describeEvents(info);
    }
    return all;
}

} // namespace tarncom32::com::testing
