#include "com/bridge/com_ptr.h"
#include "com/bridge/failure.h"
#include "com/type_library/description.h"

#include <functional>
#include <memory>
#include <stdexcept>

namespace tarncom32::com::testing {

namespace {

using automation::toUtf8;

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
    /// The first line of a description: what the type is.
    std::string head(const TypeReader& flagsOf) const {
        return textOf(attributes_->guid) + typeFlagWords(flagsOf.attributes().wTypeFlags) + helpText(help());
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
        return implementationWords(static_cast<unsigned>(flags));
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
            return "SAFEARRAY(" + typeText(*type.lptdesc) + ")";
        case VT_CARRAY:
            return typeText(type.lpadesc->tdescElem) + "[" + std::to_string(type.lpadesc->rgbounds[0].cElements) + "]";
        case VT_USERDEFINED:
            return referred(type.hreftype).name();
        default:
            return typeWord(type.vt);
        }
    }

    /// The accessors of a property share the names and the help text that stand under its number.
    std::string memberLine(const FUNCDESC& function, int slot, std::string result) const {
        Member member{slot,
                      function.memid,
                      static_cast<unsigned>(function.invkind),
                      function.wFuncFlags,
                      name(function.memid),
                      {},
                      std::move(result),
                      help(function.memid)};
        const std::vector<std::string> names = parameterNames(function);
        for (std::size_t i = 0; i < names.size(); ++i) {
            const ELEMDESC& parameter = function.lprgelemdescParam[i];
            const unsigned flags = parameter.paramdesc.wParamFlags;
            member.parameters.push_back({flags, typeText(parameter.tdesc), names[i], {}});
            if (flags & PARAMFLAG_FHASDEFAULT)
                member.parameters.back().defaultValue = valueText(parameter.paramdesc.pparamdescex->varDefaultValue);
        }
        return line(member);
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

std::vector<std::string> interfaceLines(const TypeReader& dispatchView) {
    // The dispatch view never says that the interface is fit for automation, but what callers through IDispatch get;
    // the vtable's view has an HRESULT there.
    const TypeReader view = dispatchView.implemented(~0u);
    std::map<std::pair<MEMBERID, INVOKEKIND>, std::string> results;
    dispatchView.forEachFunction([&](const FUNCDESC& function) {
        results[{function.memid, function.invkind}] = dispatchView.typeText(function.elemdescFunc.tdesc);
    });
    std::vector<std::string> lines{dispatchView.head(view)};
    view.forEachFunction([&](const FUNCDESC& function) {
        lines.push_back(view.memberLine(function, function.oVft / static_cast<int>(sizeof(void*)),
                                        results[{function.memid, function.invkind}]));
        if (function.funckind != FUNC_PUREVIRTUAL || function.callconv != CC_STDCALL ||
            function.elemdescFunc.tdesc.vt != VT_HRESULT)
            lines.back() += " and is no vtable entry of automation";
    });
    return lines;
}

/// What kind of thing the type is, and its lines.
std::pair<std::string, std::vector<std::string>> describeType(const TypeReader& type) {
    std::vector<std::string> lines{type.head(type)};
    switch (type.attributes().typekind) {
    case TKIND_DISPATCH:
        if (type.attributes().wTypeFlags & TYPEFLAG_FDUAL) return {"interface ", interfaceLines(type)};
        type.forEachFunction([&](const FUNCDESC& function) {
            lines.push_back(type.memberLine(function, 0, type.typeText(function.elemdescFunc.tdesc)));
        });
        return {"events ", lines};
    case TKIND_COCLASS:
        for (UINT i = 0; i < type.attributes().cImplTypes; ++i)
            lines.push_back(type.implementationWordsOf(i) + type.implemented(i).name());
        return {"class ", lines};
    case TKIND_RECORD:
        type.forEachVariable([&](const VARDESC& field) {
            lines.push_back(type.typeText(field.elemdescVar.tdesc) + " " + type.name(field.memid));
        });
        return {"record ", lines};
    case TKIND_ENUM:
        type.forEachVariable([&](const VARDESC& value) {
            const bool constant = value.varkind == VAR_CONST && value.lpvarValue->vt == VT_I4;
            lines.push_back(type.name(value.memid) + " = " +
                            (constant ? std::to_string(value.lpvarValue->lVal) : "no 32-bit constant") +
                            helpText(type.help(value.memid)));
        });
        return {"enumeration ", lines};
    default:
        return {"another type ", lines};
    }
}

std::string libraryLine(ITypeLib& library) {
    TLIBATTR* lent = nullptr;
    check(library.GetLibAttr(&lent), "GetLibAttr");
    const TLIBATTR attributes = *lent;
    library.ReleaseTLibAttr(lent);
    OwnedText name;
    OwnedText help;
    library.GetDocumentation(-1, name.put(), help.put(), nullptr, nullptr);
    return textOf(name) + " " + textOf(attributes.guid) + " " + std::to_string(attributes.wMajorVerNum) + "." +
           std::to_string(attributes.wMinorVerNum) + " of " +
           (attributes.syskind == SYS_WIN64   ? "win64"
            : attributes.syskind == SYS_WIN32 ? "win32"
                                              : "another system") +
           helpText(textOf(help));
}

} // namespace

Description describeTypeLibrary(const automation::Guid& guid) {
    ComPtr<ITypeLib> library;
    OwnedText path;
    check(QueryPathOfRegTypeLib(toGuid(guid), 1, 0, LOCALE_NEUTRAL, path.put()), "looking for the type library");
    check(LoadTypeLibEx(path.get(), REGKIND_NONE, library.put()), "loading the type library");
    Description all;
    all["library"] = {libraryLine(*library.get())};
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        ComPtr<ITypeInfo> found;
        check(library->GetTypeInfo(i, found.put()), "GetTypeInfo");
        const TypeReader type(std::move(found));
        auto [kind, lines] = describeType(type);
        all[kind + type.name()] = std::move(lines);
    }
    return all;
}

} // namespace tarncom32::com::testing
