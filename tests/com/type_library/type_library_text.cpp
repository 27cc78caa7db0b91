#include "com/type_library/type_library_text.h"
#include "com/bridge/com_ptr.h"
#include "com/bridge/failure.h"
#include "library/contract_text.h"

#include <functional>
#include <map>
#include <memory>
#include <stdexcept>

namespace tarncom32::com::testing {

namespace {

using automation::toUtf8;
using tests::contract::heading;
using tests::contract::memberLines;
using tests::contract::plainLine;
using tests::contract::typeWord;

/// The words of the bits that are set, from the lowest on, with `separator` between them; a bit without a word by its
/// number.
std::string wordsOf(unsigned flags, std::initializer_list<const char*> words, const char* separator = " ") {
    std::string text;
    for (unsigned bit = 0; flags >> bit; ++bit)
        if (flags >> bit & 1)
            text += (text.empty() ? "" : separator) +
                    (bit < words.size() ? words.begin()[bit] : "bit " + std::to_string(bit));
    return text;
}

void check(HRESULT result, const std::string& what) {
    if (FAILED(result)) throw std::runtime_error(what + " failed with " + std::to_string(result));
}

std::string textOf(const OwnedText& text) {
    return toUtf8(viewOfBstr(text.get()));
}

std::string textOf(REFGUID guid) {
    wchar_t text[40] = L"";
    StringFromGUID2(guid, text, 40);
    return toUtf8(viewOf(text));
}

/// Reads one ITypeInfo; what it lends is given back.
class TypeReader {
public:
    explicit TypeReader(ComPtr<ITypeInfo> type) : type_(std::move(type)) {
        check(type_->GetTypeAttr(&attributes_), "GetTypeAttr");
    }
    TypeReader(const TypeReader&) = delete;
    ~TypeReader() { type_->ReleaseTypeAttr(attributes_); }

    const TYPEATTR& attributes() const { return *attributes_; }
    std::string name(MEMBERID member = MEMBERID_NIL) const { return documentation(member).first; }
    std::string help(MEMBERID member = MEMBERID_NIL) const { return documentation(member).second; }
    /// The start of a block: the kind of the type, its name and identifier, and the words of its flags.
    std::string start(const std::string& kind, const TypeReader& flagsOf) const {
        const std::string flags =
            wordsOf(flagsOf.attributes().wTypeFlags,
                    {"appobject", "creatable", "licensed", "predeclared", "hidden", "control", "dual", "nonextensible",
                     "oleautomation", "restricted", "aggregatable", "replaceable", "dispatchable"});
        return heading(kind + " " + name() + (attributes_->guid == GUID_NULL ? "" : " " + textOf(attributes_->guid)) +
                           (flags.empty() ? "" : ": " + flags),
                       help());
    }
    /// The type that the index-th entry of this one's list of implemented types refers to; for a dual interface ~0
    /// is the vtable's view of it.
    TypeReader implemented(UINT index) const {
        HREFTYPE reference = 0;
        check(type_->GetRefTypeOfImplType(index, &reference), "GetRefTypeOfImplType");
        return referred(reference);
    }
    std::string implementationWordsOf(UINT index) const {
        INT flags = 0;
        check(type_->GetImplTypeFlags(index, &flags), "GetImplTypeFlags");
        return wordsOf(static_cast<unsigned>(flags), {"default", "source", "restricted", "defaultvtable"});
    }
    void forEachFunction(const std::function<void(const FUNCDESC&)>& visit) const {
        for (UINT i = 0; i < attributes_->cFuncs; ++i) {
            FUNCDESC* function = nullptr;
            check(type_->GetFuncDesc(i, &function), "GetFuncDesc of " + name() + " " + std::to_string(i));
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

    std::string typeText(const TYPEDESC& type) const {
        switch (type.vt) {
        case VT_PTR:
            return typeText(*type.lptdesc) + "*";
        case VT_SAFEARRAY:
            return typeText(*type.lptdesc) + "()";
        case VT_CARRAY:
            return typeText(type.lpadesc->tdescElem) + "[" + std::to_string(type.lpadesc->rgbounds[0].cElements) + "]";
        case VT_USERDEFINED:
            return referred(type.hreftype).name();
        case VT_VOID:
            return "";
        default:
            return typeWord(type.vt);
        }
    }

    /// The accessors of a property share the names and the help text that stand under its number. `result` is what
    /// callers through IDispatch get; in the vtable it is the last parameter.
    std::string memberText(const FUNCDESC& function, int slot, const std::string& result) const {
        std::vector<tests::contract::Parameter> parameters;
        const std::vector<std::string> names = parameterNames(function);
        for (std::size_t i = 0; i < names.size(); ++i) {
            const ELEMDESC& parameter = function.lprgelemdescParam[i];
            const unsigned flags = parameter.paramdesc.wParamFlags;
            const bool hasDefault = flags & PARAMFLAG_FHASDEFAULT;
            const std::string type = typeText(parameter.tdesc);
            if (slot != 0 && flags == (PARAMFLAG_FOUT | PARAMFLAG_FRETVAL) && type == result + "*") continue;
            parameters.push_back(
                {wordsOf(flags & ~unsigned{PARAMFLAG_FHASDEFAULT}, {"in", "out", "lcid", "retval", "optional"}, ", "),
                 type, names[i], hasDefault ? valueText(parameter.paramdesc.pparamdescex->varDefaultValue) : ""});
        }
        std::string words = wordsOf(function.wFuncFlags, {"restricted", "source", "bindable", "requestedit",
                                                          "displaybind", "defaultbind", "hidden"});
        words += (words.empty() ? "" : " ") +
                 wordsOf(static_cast<unsigned>(function.invkind), {"method", "get", "let", "set"});
        return memberLines(
            {slot, function.memid, words, name(function.memid), std::move(parameters), result, help(function.memid)});
    }

private:
    std::pair<std::string, std::string> documentation(MEMBERID member) const {
        OwnedText name;
        OwnedText help;
        check(type_->GetDocumentation(member, name.put(), help.put(), nullptr, nullptr), "GetDocumentation");
        return {textOf(name), textOf(help)};
    }
    TypeReader referred(HREFTYPE reference) const {
        ComPtr<ITypeInfo> found;
        check(type_->GetRefTypeInfo(reference, found.put()), "GetRefTypeInfo");
        return TypeReader(std::move(found));
    }
    std::vector<std::string> parameterNames(const FUNCDESC& function) const {
        const auto parameters = static_cast<std::size_t>(function.cParams);
        std::vector<BSTR> found(parameters + 1);
        UINT count = 0;
        check(type_->GetNames(function.memid, found.data(), static_cast<UINT>(found.size()), &count), "GetNames");
        std::vector<std::string> names(parameters);
        for (UINT i = 0; i < count; ++i) {
            const OwnedText text(found[i]);
            if (i > 0) names[i - 1] = textOf(text);
        }
        if (function.invkind & (INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF)) names.back().clear();
        return names;
    }
    static std::string valueText(VARIANTARG& value) {
        const std::string word = typeWord(value.vt) + " ";
        if (value.vt == VT_DISPATCH && !value.pdispVal) return word + "Nothing";
        OwnedVariant text;
        check(VariantChangeType(&text, &value, 0, VT_BSTR), "a value as text");
        return word + toUtf8(viewOfBstr(text.bstrVal));
    }

    ComPtr<ITypeInfo> type_;
    TYPEATTR* attributes_ = nullptr;
};

std::string interfaceText(const TypeReader& dispatchView) {
    // The dispatch view never says that the interface is fit for automation, but what callers through IDispatch get;
    // the vtable's view has an HRESULT there.
    const TypeReader view = dispatchView.implemented(~0u);
    std::map<std::pair<MEMBERID, INVOKEKIND>, std::string> results;
    dispatchView.forEachFunction([&](const FUNCDESC& function) {
        results[{function.memid, function.invkind}] = dispatchView.typeText(function.elemdescFunc.tdesc);
    });
    std::string text = dispatchView.start("interface", view);
    view.forEachFunction([&](const FUNCDESC& function) {
        text += view.memberText(function, function.oVft / static_cast<int>(sizeof(void*)),
                                results[{function.memid, function.invkind}]);
        if (function.funckind != FUNC_PUREVIRTUAL || function.callconv != CC_STDCALL ||
            function.elemdescFunc.tdesc.vt != VT_HRESULT)
            text += plainLine("and is no vtable entry of automation");
    });
    return text;
}

std::string textOfType(const TypeReader& type) {
    std::string text;
    switch (type.attributes().typekind) {
    case TKIND_DISPATCH:
        if (type.attributes().wTypeFlags & TYPEFLAG_FDUAL) return interfaceText(type);
        text = type.start("events", type);
        type.forEachFunction([&](const FUNCDESC& function) {
            text += type.memberText(function, 0, type.typeText(function.elemdescFunc.tdesc));
        });
        return text;
    case TKIND_COCLASS:
        text = type.start("class", type);
        for (UINT i = 0; i < type.attributes().cImplTypes; ++i)
            text += plainLine(type.implementationWordsOf(i) + " " + type.implemented(i).name());
        return text;
    case TKIND_RECORD:
        text = type.start("record", type);
        type.forEachVariable([&](const VARDESC& field) {
            text += plainLine(type.typeText(field.elemdescVar.tdesc) + " " + type.name(field.memid));
        });
        return text;
    case TKIND_ENUM:
        text = type.start("enumeration", type);
        type.forEachVariable([&](const VARDESC& value) {
            if (value.varkind != VAR_CONST || value.lpvarValue->vt != VT_I4)
                throw std::runtime_error(type.name(value.memid) + " is no 32-bit constant");
            text += tests::contract::valueLine(type.name(value.memid), value.lpvarValue->lVal, type.help(value.memid));
        });
        return text;
    default:
        return type.start("another type", type);
    }
}

std::string libraryText(ITypeLib& library) {
    TLIBATTR* lent = nullptr;
    check(library.GetLibAttr(&lent), "GetLibAttr");
    const TLIBATTR attributes = *lent;
    library.ReleaseTLibAttr(lent);
    if (attributes.syskind != (sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32))
        throw std::runtime_error("the type library is of another system");
    OwnedText name;
    OwnedText help;
    library.GetDocumentation(-1, name.put(), help.put(), nullptr, nullptr);
    return "library " + textOf(name) + " " + textOf(attributes.guid) + " " + std::to_string(attributes.wMajorVerNum) +
           "." + std::to_string(attributes.wMinorVerNum) + "\n" + plainLine('"' + textOf(help) + '"');
}

} // namespace

std::string typeLibraryText(const automation::Guid& guid) {
    ComPtr<ITypeLib> library;
    OwnedText path;
    check(QueryPathOfRegTypeLib(toGuid(guid), 1, 0, LOCALE_NEUTRAL, path.put()), "looking for the type library");
    check(LoadTypeLibEx(path.get(), REGKIND_NONE, library.put()), "loading the type library");
    std::string text = libraryText(*library.get());
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        ComPtr<ITypeInfo> found;
        check(library->GetTypeInfo(i, found.put()), "GetTypeInfo");
        text += textOfType(TypeReader(std::move(found)));
    }
    return text;
}

} // namespace tarncom32::com::testing
