#include "library/table_text.h"

#include "automation/convert.h"
#include "library/contract_text.h"

namespace tarncom32::tests::contract {
namespace {

using automation::MemberInfo;
using automation::MemberKind;
using automation::ParameterInfo;
using automation::toUtf8;
using automation::Type;
using automation::VariantType;

class TableText {
public:
    explicit TableText(const frame::PublishedLibrary& library) : library_(library) {}

    std::string all() {
        text_ = "library " + toUtf8(library_.name) + " " + guid(library_.guid) + " 1.0\n" +
                plainLine('"' + toUtf8(library_.help) + '"');
        for (const frame::EnumerationInfo& enumeration : library_.enumerations) {
            text_ += heading("enumeration " + toUtf8(enumeration.name), toUtf8(enumeration.help));
            for (const frame::EnumerationMember& member : enumeration.members)
                text_ += valueLine(toUtf8(member.name), member.value, toUtf8(member.help));
        }
        for (const frame::RecordInfo& record : library_.records) {
            text_ += heading("record " + toUtf8(record.name) + " " + guid(record.guid), toUtf8(record.help));
            for (const frame::RecordField& field : record.fields)
                text_ += plainLine((field.record.empty() ? "Long" : toUtf8(field.record)) +
                                   (field.count > 1 ? "[" + std::to_string(field.count) + "]" : "") + " " +
                                   toUtf8(field.name));
        }
        for (const frame::PublishedClass& published : library_.classes)
            addClass(published);
        return text_;
    }

private:
    static std::string guid(const automation::Guid& guid) { return toUtf8(automation::guidText(guid)); }

    void addClass(const frame::PublishedClass& published) {
        const automation::ClassInfo& info = *published.info;
        const std::string name = toUtf8(info.name);
        if (!info.clsid.isNull()) {
            text_ += heading("class " + name + " " + guid(info.clsid) + instancingWords(published.instancing),
                             toUtf8(info.help)) +
                     plainLine("default _" + name);
            if (!info.sourceIid.isNull()) text_ += plainLine("default source __" + name);
        }
        text_ += heading("interface _" + name + " " + guid(info.iid) + ":" + (info.clsid.isNull() ? "" : " hidden") +
                             " dual nonextensible oleautomation dispatchable",
                         toUtf8(info.help));
        for (int slot = 7; const MemberInfo& member : info.members) // behind IUnknown's and IDispatch's
            text_ += memberLines({slot++, member.dispid, wordsOf(member), toUtf8(member.name), parametersOf(member),
                                  typeText(member.result), toUtf8(member.help)});
        if (info.sourceIid.isNull()) return;
        text_ += heading("events __" + name + " " + guid(info.sourceIid) + ": hidden dispatchable",
                         "Events of " + name + ".");
        for (const automation::EventInfo& event : info.events)
            text_ += memberLines({0, event.dispid, "method", toUtf8(event.name), parametersOf(event.parameters), "",
                                  toUtf8(event.help)});
    }

    static std::string instancingWords(frame::Instancing instancing) {
        if (instancing == frame::Instancing::Global) return ": appobject creatable predeclared";
        return isCreatable(instancing) ? ": creatable" : "";
    }

    static std::string wordsOf(const MemberInfo& member) {
        constexpr const char* kVisibilities[] = {"", "hidden ", "restricted "};
        constexpr const char* kKinds[] = {"method", "get", "let", "set"};
        return std::string(kVisibilities[static_cast<int>(member.visibility)]) + kKinds[static_cast<int>(member.kind)];
    }

    std::vector<Parameter> parametersOf(const MemberInfo& member) const {
        std::vector<Parameter> parameters = parametersOf(member.parameters);
        if (member.kind == MemberKind::Let || member.kind == MemberKind::Set) parameters.back().name.clear();
        return parameters;
    }

    std::vector<Parameter> parametersOf(const std::vector<ParameterInfo>& infos) const {
        std::vector<Parameter> parameters;
        for (const ParameterInfo& info : infos)
            parameters.push_back(
                {std::string("in") + (info.isByReference() ? ", out" : "") + (info.optional ? ", optional" : ""),
                 typeText(info.type) + (info.isAddress() ? "*" : ""), toUtf8(info.name),
                 info.optional ? defaultOf(info) : ""});
        return parameters;
    }

    /// What stands for an omitted argument: that of a type that has no way to be missing always has something.
    static std::string defaultOf(const ParameterInfo& parameter) {
        automation::Variant value = parameter.defaultValue;
        const VariantType type = parameter.type.type;
        if (value.isMissing()) {
            if (parameter.isByReference() || type == VariantType::Variant) return "";
            value = {};
        }
        const std::string word = typeWord(static_cast<unsigned>(type)) + " ";
        if (type == VariantType::Object) return word + "Nothing";
        return word + toUtf8(automation::toText(type == VariantType::String ? value : automation::toLong(value)));
    }

    std::string typeText(const Type& type) const {
        std::string text = typeWord(static_cast<unsigned>(type.type));
        if (type.type == VariantType::Object) {
            for (const frame::PublishedClass& published : library_.classes)
                if (type.name == published.info->name) text = "_" + toUtf8(type.name) + "*";
        } else if (!type.name.empty()) {
            text = toUtf8(type.name);
        }
        return type.isArray ? text + "()" : text;
    }

    const frame::PublishedLibrary& library_;
    std::string text_;
};

} // namespace

std::string tableText(const frame::PublishedLibrary& library) {
    return TableText(library).all();
}

} // namespace tarncom32::tests::contract
