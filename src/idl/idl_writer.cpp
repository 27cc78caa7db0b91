#include "idl/idl_writer.h"

#include "automation/convert.h"

#include <algorithm>
#include <ostream>
#include <stdexcept>

namespace tarncom32::idl {

using automation::ClassInfo;
using automation::MemberInfo;
using automation::MemberKind;
using automation::ParameterInfo;
using automation::StringView;
using automation::toUtf8;
using automation::Type;
using automation::Variant;
using automation::VariantType;
using automation::Visibility;
using frame::Instancing;
using frame::PublishedClass;
using frame::PublishedLibrary;

namespace {

std::string quoted(StringView text) {
    std::string out = "\"";
    for (const char c : toUtf8(text)) {
        if (c == '"' || c == '\\') out += '\\';
        out += c;
    }
    return out + '"';
}

/// Without the braces.
std::string uuid(const automation::Guid& guid) {
    const std::string text = toUtf8(automation::guidText(guid));
    return "uuid(" + text.substr(1, text.size() - 2) + ")";
}

class Writer {
public:
    Writer(std::ostream& out, const PublishedLibrary& library) : out_(out), library_(library) {}

    void writeAll() {
        out_ << "import \"oaidl.idl\";\nimport \"ocidl.idl\";\n\n"
             << "[" << uuid(library_.guid) << ", version(1.0), helpstring(" << quoted(library_.help) << ")]\n"
             << "library " << toUtf8(library_.name) << "\n{\n"
             << "importlib(\"stdole2.tlb\");\n\n";
        for (const PublishedClass& published : library_.classes)
            out_ << "interface _" << toUtf8(published.info->name) << ";\n";
        for (const frame::EnumerationInfo& enumeration : library_.enumerations)
            writeEnumeration(enumeration);
        for (const frame::RecordInfo& record : library_.records)
            writeRecord(record);
        for (const PublishedClass& published : library_.classes)
            writeInterface(*published.info);
        for (const PublishedClass& published : library_.classes)
            if (!published.info->sourceIid.isNull()) writeSource(*published.info);
        for (const PublishedClass& published : library_.classes)
            writeClass(published);
        out_ << "}\n";
    }

private:
    void writeEnumeration(const frame::EnumerationInfo& enumeration) {
        const std::string name = toUtf8(enumeration.name);
        out_ << "\ntypedef [helpstring(" << quoted(enumeration.help) << ")]\nenum " << name << " {\n";
        // The IDL compiler takes no help strings for values; they are put in afterwards.
        for (const frame::EnumerationMember& member : enumeration.members)
            out_ << "    " << toUtf8(member.name) << " = " << member.value
                 << (&member == &enumeration.members.back() ? "\n" : ",\n");
        out_ << "} " << name << ";\n";
    }

    void writeRecord(const frame::RecordInfo& record) {
        const std::string name = toUtf8(record.name);
        out_ << "\ntypedef [" << uuid(record.guid) << ", helpstring(" << quoted(record.help) << ")]\nstruct " << name
             << " {\n";
        for (const frame::RecordField& field : record.fields) {
            out_ << "    " << (field.record.empty() ? "long" : toUtf8(field.record)) << " " << toUtf8(field.name);
            if (field.count > 1) out_ << "[" << field.count << "]";
            out_ << ";\n";
        }
        out_ << "} " << name << ";\n";
    }

    void writeInterface(const ClassInfo& info) {
        // Browsers of the library show the class in its interface's place, if there is one.
        out_ << "\n[object, " << uuid(info.iid) << ", dual, oleautomation, nonextensible"
             << (info.clsid.isNull() ? "" : ", hidden") << ", helpstring(" << quoted(info.help) << ")]\ninterface _"
             << toUtf8(info.name) << " : IDispatch\n{\n";
        for (const MemberInfo& member : info.members)
            writeMember(member);
        out_ << "}\n";
    }

    void writeMember(const MemberInfo& member) {
        out_ << "    [id(" << member.dispid << ")";
        switch (member.kind) {
        case MemberKind::Method:
            break;
        case MemberKind::Get:
            out_ << ", propget";
            break;
        case MemberKind::Let:
            out_ << ", propput";
            break;
        case MemberKind::Set:
            out_ << ", propputref";
            break;
        }
        if (member.visibility == Visibility::Hidden) out_ << ", hidden";
        if (member.visibility == Visibility::Restricted) out_ << ", restricted";
        out_ << ", helpstring(" << quoted(member.help) << ")]\n    HRESULT " << toUtf8(member.name) << "(";
        const char* separator = "";
        for (const ParameterInfo& parameter : member.parameters) {
            out_ << std::exchange(separator, ", ");
            writeParameter(parameter);
        }
        if (member.result.type != VariantType::Empty || member.result.isArray)
            out_ << separator << "[out, retval] " << typeName(member.result) << "* pResult";
        out_ << ");\n";
    }

    void writeParameter(const ParameterInfo& parameter) {
        // Every parameter that is written starts with what the caller has in it.
        out_ << (parameter.isByReference() ? "[in, out" : "[in");
        if (parameter.optional) out_ << ", optional" << defaultOf(parameter);
        out_ << "] " << typeName(parameter.type) << (parameter.isAddress() ? "* " : " ") << toUtf8(parameter.name);
    }

    void writeSource(const ClassInfo& info) {
        out_ << "\n[" << uuid(info.sourceIid) << ", hidden, helpstring("
             << quoted(u"Events of " + automation::String(info.name) + u".") << ")]\ndispinterface __"
             << toUtf8(info.name) << "\n{\nproperties:\nmethods:\n";
        for (const automation::EventInfo& event : info.events) {
            out_ << "    [id(" << event.dispid << "), helpstring(" << quoted(event.help) << ")]\n    void "
                 << toUtf8(event.name) << "(";
            const char* separator = "";
            for (const ParameterInfo& parameter : event.parameters) {
                out_ << std::exchange(separator, ", ");
                writeParameter(parameter);
            }
            out_ << ");\n";
        }
        out_ << "}\n";
    }

    void writeClass(const PublishedClass& published) {
        const ClassInfo& info = *published.info;
        if (info.clsid.isNull()) {
            if (isCreatable(published.instancing))
                throw std::logic_error(toUtf8(info.name) + ": what can be created needs a CLSID");
            return; // only its interface is published
        }
        out_ << "\n[" << uuid(info.clsid) << ", version(1.0)";
        if (published.instancing == Instancing::Global) out_ << ", appobject";
        if (!isCreatable(published.instancing)) out_ << ", noncreatable";
        out_ << ", helpstring(" << quoted(info.help) << ")]\ncoclass " << toUtf8(info.name)
             << "\n{\n    [default] interface _" << toUtf8(info.name) << ";\n";
        if (!info.sourceIid.isNull()) out_ << "    [default, source] dispinterface __" << toUtf8(info.name) << ";\n";
        out_ << "}\n";
    }

    std::string typeName(const Type& type) const {
        const std::string element = elementName(type);
        return type.isArray ? "SAFEARRAY(" + element + ")" : element;
    }

    std::string elementName(const Type& type) const {
        if (type.type == VariantType::Object && isPublished(type.name)) return "_" + toUtf8(type.name) + "*";
        if (type.type == VariantType::Long && !type.name.empty()) return toUtf8(type.name);
        if (type.type == VariantType::Record) return recordName(type.name);
        switch (type.type) {
        case VariantType::Byte:
            return "unsigned char";
        case VariantType::Integer:
            return "short";
        case VariantType::Long:
            return "long";
        case VariantType::Single:
            return "float";
        case VariantType::Double:
            return "double";
        case VariantType::Currency:
            return "CURRENCY";
        case VariantType::Date:
            return "DATE";
        case VariantType::String:
            return "BSTR";
        case VariantType::Boolean:
            return "VARIANT_BOOL";
        case VariantType::Variant:
            return "VARIANT";
        case VariantType::Object:
            return "IDispatch*";
        case VariantType::Unknown:
            return "IUnknown*";
        default:
            throw std::logic_error("a member's type has no place in a type library");
        }
    }

    std::string recordName(StringView name) const {
        if (std::ranges::find(library_.records, name, &frame::RecordInfo::name) == library_.records.end())
            throw std::logic_error("the record " + toUtf8(name) + " is not among those that " + toUtf8(library_.name) +
                                   " publishes; add it to the library's records");
        return toUtf8(name);
    }

    bool isPublished(StringView name) const {
        return !name.empty() && std::ranges::any_of(library_.classes, [&](const PublishedClass& published) {
            return published.info->name == name;
        });
    }

    /// `, defaultvalue(...)`; nothing for a variant that may be missing.
    static std::string defaultOf(const ParameterInfo& parameter) {
        const Variant& value = parameter.defaultValue;
        const auto number = [](std::int32_t n) { return ", defaultvalue(" + std::to_string(n) + ")"; };
        const bool isVariant = parameter.type.type == VariantType::Variant;
        if (value.isMissing() && (isVariant || parameter.isByReference())) return "";
        switch (isVariant ? value.type() : parameter.type.type) {
        case VariantType::String:
            return ", defaultvalue(" + quoted(value.isMissing() ? u"" : automation::toText(value)) + ")";
        case VariantType::Object:
            if (value.isMissing() || value == Variant(automation::ObjectRef())) return number(0);
            break;
        case VariantType::Byte:
        case VariantType::Integer:
        case VariantType::Long:
        case VariantType::Boolean:
            return number(value.isMissing() ? 0 : automation::toLong(value));
        default:
            break;
        }
        throw std::logic_error(
            toUtf8(parameter.name) + ": the IDL compiler has no way to write a default of the type " +
            toUtf8(automation::typeText(parameter.type)) + "; let the parameter be a Variant, or not optional");
    }

    std::ostream& out_;
    const PublishedLibrary& library_;
};

} // namespace

void write(std::ostream& out, const PublishedLibrary& library) {
    Writer(out, library).writeAll();
}

} // namespace tarncom32::idl
