#include "library/type_library.h"
#include "automation/class_info.h"
#include "com/bridge/com_ptr.h"
#include "com/bridge/failure.h"
#include "com/type_library/description.h"

#include <functional>
#include <memory>
#include <set>
#include <stdexcept>

namespace tarncom32::com::testing {

namespace {

void check(HRESULT result, const std::string& what) {
    if (FAILED(result)) throw std::runtime_error(what + " failed with " + std::to_string(result));
}

std::string textOf(const OwnedText& text) {
    return automation::toUtf8(viewOfBstr(text.get()));
}

std::string textOf(REFGUID guid) {
    wchar_t text[40] = L"";
    StringFromGUID2(guid, text, 40);
    return automation::toUtf8(viewOf(text));
}

/// The words for the bits that are set; bits without a word by their number.
std::string flagWords(unsigned flags, std::initializer_list<std::pair<unsigned, const char*>> words) {
    std::string text;
    for (const auto& [bit, word] : words)
        if (flags & bit) {
            text += std::string(" ") + word;
            flags &= ~bit;
        }
    if (flags) text += " flags " + std::to_string(flags);
    return text;
}

std::string valueText(const VARIANTARG& value) {
    if (value.vt == VT_DISPATCH && !value.pdispVal) return "Nothing";
    OwnedVariant text;
    check(VariantChangeType(&text, const_cast<VARIANTARG*>(&value), 0, VT_BSTR), "a value as text");
    return automation::toUtf8(viewOfBstr(text.bstrVal));
}

struct Documentation {
    std::string name;
    std::string help;
};

/// Reads one ITypeInfo; what it lends is given back.
class TypeReader {
public:
    explicit TypeReader(ComPtr<ITypeInfo> type) : type_(std::move(type)) {
        TYPEATTR* attributes = nullptr;
        check(type_->GetTypeAttr(&attributes), "GetTypeAttr");
        attributes_ = {attributes, [type = type_.get()](TYPEATTR* lent) { type->ReleaseTypeAttr(lent); }};
    }

    const TYPEATTR& attributes() const { return *attributes_; }
    std::string guid() const { return textOf(attributes_->guid); }
    Documentation documentation(MEMBERID member = MEMBERID_NIL) const {
        OwnedText name;
        OwnedText help;
        check(type_->GetDocumentation(member, name.put(), help.put(), nullptr, nullptr), "GetDocumentation");
        return {textOf(name), helpText(textOf(help))};
    }
    TypeReader referred(HREFTYPE reference) const {
        ComPtr<ITypeInfo> found;
        check(type_->GetRefTypeInfo(reference, found.put()), "GetRefTypeInfo");
        return TypeReader(std::move(found));
    }
    /// The vtable's view of a dual interface.
    TypeReader vtableView() const {
        HREFTYPE reference = 0;
        check(type_->GetRefTypeOfImplType(~0u, &reference), "the vtable's view of a dual interface");
        return referred(reference);
    }
    /// The types that a coclass implements, with the words for their flags.
    std::vector<std::string> implemented() const {
        std::vector<std::string> lines;
        for (UINT i = 0; i < attributes_->cImplTypes; ++i) {
            HREFTYPE reference = 0;
            INT flags = 0;
            check(type_->GetRefTypeOfImplType(i, &reference), "GetRefTypeOfImplType");
            check(type_->GetImplTypeFlags(i, &flags), "GetImplTypeFlags");
            const std::string words =
                flagWords(static_cast<unsigned>(flags), {{IMPLTYPEFLAG_FDEFAULT, "default"},
                                                         {IMPLTYPEFLAG_FSOURCE, "source"},
                                                         {IMPLTYPEFLAG_FRESTRICTED, "restricted"}});
            lines.push_back((words.empty() ? "" : words.substr(1) + " ") + referred(reference).documentation().name);
        }
        return lines;
    }
    void forEachFunction(const std::function<void(const FUNCDESC&)>& visit) const {
        for (UINT i = 0; i < attributes_->cFuncs; ++i) {
            FUNCDESC* function = nullptr;
            check(type_->GetFuncDesc(i, &function), "GetFuncDesc of " + documentation().name + " " + std::to_string(i));
            const std::shared_ptr<FUNCDESC> lent(function, [this](FUNCDESC* it) { type_->ReleaseFuncDesc(it); });
            visit(*function);
        }
    }
    void forEachVariable(const std::function<void(const VARDESC&)>& visit) const {
        for (UINT i = 0; i < attributes_->cVars; ++i) {
            VARDESC* variable = nullptr;
            check(type_->GetVarDesc(i, &variable), "GetVarDesc");
            const std::shared_ptr<VARDESC> lent(variable, [this](VARDESC* it) { type_->ReleaseVarDesc(it); });
            visit(*variable);
        }
    }
    /// The member's parameters by name.
    std::vector<std::string> parameterNames(const FUNCDESC& function) const {
        std::vector<BSTR> names(static_cast<std::size_t>(function.cParams) + 1);
        UINT count = 0;
        check(type_->GetNames(function.memid, names.data(), static_cast<UINT>(names.size()), &count), "GetNames");
        std::vector<std::string> texts;
        for (UINT i = 0; i < count; ++i) {
            if (i > 0) texts.push_back(automation::toUtf8(viewOfBstr(names[i])));
            SysFreeString(names[i]);
        }
        return texts;
    }

    std::string typeText(const TYPEDESC& type) const {
        switch (type.vt) {
        case VT_PTR:
            return typeText(*type.lptdesc) + "*";
        case VT_SAFEARRAY:
            return "SAFEARRAY(" + typeText(*type.lptdesc) + ")";
        case VT_CARRAY:
            return typeText(type.lpadesc->tdescElem) + "[" + std::to_string(type.lpadesc->rgbounds[0].cElements) + "]";
        case VT_USERDEFINED:
            return referred(type.hreftype).documentation().name;
        case VT_VOID:
            return "void";
        case VT_HRESULT:
            return "HRESULT";
        case VT_UI1:
            return "UI1";
        case VT_I2:
            return "I2";
        case VT_I4:
            return "I4";
        case VT_R4:
            return "R4";
        case VT_R8:
            return "R8";
        case VT_CY:
            return "CY";
        case VT_DATE:
            return "DATE";
        case VT_BSTR:
            return "BSTR";
        case VT_BOOL:
            return "BOOL";
        case VT_VARIANT:
            return "VARIANT";
        case VT_UNKNOWN:
            return "UNKNOWN";
        case VT_DISPATCH:
            return "DISPATCH";
        default:
            return "type " + std::to_string(type.vt);
        }
    }

    std::string parameterText(const ELEMDESC& parameter) const {
        const unsigned flags = parameter.paramdesc.wParamFlags;
        std::string text = flagWords(flags & ~unsigned{PARAMFLAG_FHASDEFAULT}, {{PARAMFLAG_FIN, "in"},
                                                                                {PARAMFLAG_FOUT, "out"},
                                                                                {PARAMFLAG_FRETVAL, "retval"},
                                                                                {PARAMFLAG_FOPT, "optional"}});
        if (flags & PARAMFLAG_FHASDEFAULT) text += "=" + valueText(parameter.paramdesc.pparamdescex->varDefaultValue);
        return "[" + (text.empty() ? text : text.substr(1)) + "] " + typeText(parameter.tdesc);
    }

    std::string parameterList(const FUNCDESC& function, bool named) const {
        const std::vector<std::string> names = named ? parameterNames(function) : std::vector<std::string>();
        std::string text;
        for (std::size_t i = 0; i < static_cast<std::size_t>(function.cParams); ++i) {
            text += (text.empty() ? "" : ", ") + parameterText(function.lprgelemdescParam[i]);
            if (named) text += " " + (i < names.size() ? names[i] : "(nameless)");
        }
        return text;
    }

private:
    ComPtr<ITypeInfo> type_;
    std::shared_ptr<TYPEATTR> attributes_;
};

std::string typeFlags(const TypeReader& type) {
    return flagWords(type.attributes().wTypeFlags, {{TYPEFLAG_FAPPOBJECT, "appobject"},
                                                    {TYPEFLAG_FCANCREATE, "creatable"},
                                                    {TYPEFLAG_FPREDECLID, "predeclared"},
                                                    {TYPEFLAG_FDUAL, "dual"},
                                                    {TYPEFLAG_FHIDDEN, "hidden"},
                                                    {TYPEFLAG_FNONEXTENSIBLE, "nonextensible"},
                                                    {TYPEFLAG_FOLEAUTOMATION, "oleautomation"},
                                                    {TYPEFLAG_FDISPATCHABLE, "dispatchable"}});
}

std::string kindText(INVOKEKIND kind) {
    switch (kind) {
    case INVOKE_FUNC:
        return "method";
    case INVOKE_PROPERTYGET:
        return "get";
    case INVOKE_PROPERTYPUT:
        return "put";
    case INVOKE_PROPERTYPUTREF:
        return "putref";
    }
    return "kind " + std::to_string(kind);
}

std::string memberFlags(const FUNCDESC& function) {
    return flagWords(function.wFuncFlags, {{FUNCFLAG_FHIDDEN, "hidden"}, {FUNCFLAG_FRESTRICTED, "restricted"}});
}

/// What the member gives to those who call it through IDispatch; the vtable's view has an HRESULT there.
std::string dispatchResult(const TypeReader& dispatchView, const FUNCDESC& wanted) {
    std::string result = "(not there)";
    dispatchView.forEachFunction([&](const FUNCDESC& function) {
        if (function.memid == wanted.memid && function.invkind == wanted.invkind)
            result = dispatchView.typeText(function.elemdescFunc.tdesc);
    });
    return result;
}

std::vector<std::string> describeInterface(const TypeReader& dispatchView) {
    // The dispatch view never says that the interface is fit for automation.
    const TypeReader view = dispatchView.vtableView();
    std::vector<std::string> lines{dispatchView.guid() + typeFlags(view) + dispatchView.documentation().help};
    std::set<MEMBERID> seen;
    view.forEachFunction([&](const FUNCDESC& function) {
        const bool first = seen.insert(function.memid).second;
        const Documentation documentation = view.documentation(function.memid);
        std::string line = std::to_string(function.oVft / static_cast<int>(sizeof(void*))) + " id " +
                           std::to_string(function.memid) + " " + kindText(function.invkind) + memberFlags(function) +
                           " " + documentation.name + "(" + view.parameterList(function, first) + ") gives " +
                           dispatchResult(dispatchView, function) + (first ? documentation.help : "");
        if (function.funckind != FUNC_PUREVIRTUAL || function.callconv != CC_STDCALL ||
            view.typeText(function.elemdescFunc.tdesc) != "HRESULT")
            line += " and is no vtable entry of automation";
        lines.push_back(line);
    });
    return lines;
}

std::vector<std::string> describeEvents(const TypeReader& type) {
    std::vector<std::string> lines{type.guid() + typeFlags(type) + type.documentation().help};
    type.forEachFunction([&](const FUNCDESC& function) {
        const Documentation documentation = type.documentation(function.memid);
        lines.push_back("id " + std::to_string(function.memid) + " " + documentation.name + "(" +
                        type.parameterList(function, true) + ") gives " + type.typeText(function.elemdescFunc.tdesc) +
                        documentation.help);
    });
    return lines;
}

std::vector<std::string> describeValues(const TypeReader& type) {
    std::vector<std::string> lines{typeFlags(type) + type.documentation().help};
    type.forEachVariable([&](const VARDESC& variable) {
        const std::string name = type.documentation(variable.memid).name;
        if (variable.varkind != VAR_CONST || variable.lpvarValue->vt != VT_I4)
            lines.push_back(name + " is no 32-bit constant");
        else
            lines.push_back(name + " = " + std::to_string(variable.lpvarValue->lVal));
    });
    return lines;
}

std::vector<std::string> describeFields(const TypeReader& type) {
    std::vector<std::string> lines{type.guid() + typeFlags(type) + type.documentation().help};
    type.forEachVariable([&](const VARDESC& variable) {
        lines.push_back(type.typeText(variable.elemdescVar.tdesc) + " " + type.documentation(variable.memid).name);
    });
    return lines;
}

std::vector<std::string> describeClass(const TypeReader& type) {
    std::vector<std::string> lines{type.guid() + typeFlags(type) + type.documentation().help};
    for (const std::string& line : type.implemented())
        lines.push_back(line);
    return lines;
}

std::string describeLibrary(ITypeLib& library) {
    TLIBATTR* attributes = nullptr;
    check(library.GetLibAttr(&attributes), "GetLibAttr");
    OwnedText name;
    OwnedText help;
    library.GetDocumentation(-1, name.put(), help.put(), nullptr, nullptr);
    const std::string system = attributes->syskind == SYS_WIN64   ? "win64"
                               : attributes->syskind == SYS_WIN32 ? "win32"
                                                                  : "another system";
    std::string line = textOf(name) + " " + textOf(attributes->guid) + " " + std::to_string(attributes->wMajorVerNum) +
                       "." + std::to_string(attributes->wMinorVerNum) + " of " + system + helpText(textOf(help));
    library.ReleaseTLibAttr(attributes);
    return line;
}

/// The file that the registered type library is in.
std::u16string typeLibraryPath() {
    OwnedText path;
    check(QueryPathOfRegTypeLib(toGuid(library::kTypeLibraryId), 1, 0, LOCALE_NEUTRAL, path.put()),
          "looking for the registered type library");
    return std::u16string(viewOf(path.get()));
}

} // namespace

LibraryDescription describeTypeLibrary() {
    const std::u16string path = typeLibraryPath();
    ComPtr<ITypeLib> library;
    check(LoadTypeLibEx(wide(path), REGKIND_NONE, library.put()), "loading the type library");
    LibraryDescription all;
    all["library"] = {describeLibrary(*library.get())};
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        ComPtr<ITypeInfo> found;
        check(library->GetTypeInfo(i, found.put()), "GetTypeInfo");
        const TypeReader type(std::move(found));
        const std::string name = type.documentation().name;
        switch (type.attributes().typekind) {
        case TKIND_ENUM:
            all["enumeration " + name] = describeValues(type);
            break;
        case TKIND_RECORD:
            all["record " + name] = describeFields(type);
            break;
        case TKIND_COCLASS:
            all["class " + name] = describeClass(type);
            break;
        case TKIND_DISPATCH:
            if (type.attributes().wTypeFlags & TYPEFLAG_FDUAL)
                all["interface " + name] = describeInterface(type);
            else
                all["events " + name] = describeEvents(type);
            break;
        default:
            all["another type " + name] = {};
            break;
        }
    }
    return all;
}

} // namespace tarncom32::com::testing
