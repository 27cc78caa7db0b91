#include "com/bridge/foreign_object.h"

#include "automation/array.h"
#include "automation/error.h"
#include "com/bridge/exported_object.h"
#include "com/bridge/variants.h"

#include <ocidl.h>

#include <vector>

namespace tarncom32::com {

using automation::Access;
using automation::Error;
using automation::MemberName;
using automation::ObjectRef;
using automation::String;
using automation::Variant;

namespace errors = automation::errors;

namespace {

using Identities = std::unordered_map<IUnknown*, ForeignObject*>;

// A plain pointer, freed with its last entry: nothing is left to destroy when the thread or the module goes.
thread_local Identities* identities = nullptr;

WORD flagsOf(Access access) {
    switch (access) {
    case Access::Method:
        return DISPATCH_METHOD;
    case Access::Get:
        return DISPATCH_PROPERTYGET;
    case Access::MethodOrGet:
        return DISPATCH_METHOD | DISPATCH_PROPERTYGET;
    case Access::Let:
        return DISPATCH_PROPERTYPUT;
    case Access::Set:
        return DISPATCH_PROPERTYPUTREF;
    }
    return DISPATCH_METHOD;
}

bool assigns(Access access) {
    return access == Access::Let || access == Access::Set;
}

/// EXCEPINFO with its texts, freed.
struct Exception : EXCEPINFO {
    Exception() : EXCEPINFO{} {}
    ~Exception() {
        SysFreeString(bstrSource);
        SysFreeString(bstrDescription);
        SysFreeString(bstrHelpFile);
    }
    Exception(const Exception&) = delete;

    Error error() {
        if (pfnDeferredFillIn) pfnDeferredFillIn(this);
        const automation::StringView description = viewOfBstr(bstrDescription);
        if (scode == 0) return Error(wCode, description);
        return Error::fromHresult(static_cast<std::int32_t>(scode), description);
    }
};

/// The arguments of a call in the order of the wire: last one first.
class WireArguments {
public:
    WireArguments(std::span<Variant> arguments, std::uint32_t byReference)
        : arguments_(arguments), held_(arguments.size()), passed_(arguments.size()), byReference_(byReference) {
        for (std::size_t i = 0; i < arguments.size(); ++i) {
            OwnedVariant& held = held_[i];
            initVariant(held, Variant(arguments[i]));
            VARIANT& passed = passed_[arguments.size() - 1 - i];
            passed = held;
            if (!isByReference(i)) continue;
            const bool plain = held.vt == VT_EMPTY || held.vt == VT_NULL || held.vt == VT_RECORD;
            passed.vt = static_cast<VARTYPE>(VT_BYREF | (plain ? VARTYPE{VT_VARIANT} : held.vt));
            passed.byref = plain || held.vt == VT_DECIMAL ? static_cast<void*>(&held) : &held.llVal;
        }
    }

    DISPPARAMS parameters() { return {passed_.data(), nullptr, static_cast<UINT>(passed_.size()), 0}; }

    void takeBack() {
        for (std::size_t i = 0; i < arguments_.size(); ++i)
            if (isByReference(i)) arguments_[i] = fromVariant(held_[i]);
    }

private:
    bool isByReference(std::size_t i) const { return i < 32 && (byReference_ >> i & 1); }

    std::span<Variant> arguments_;
    std::vector<OwnedVariant> held_;
    std::vector<VARIANT> passed_;
    std::uint32_t byReference_;
};

/// A walk over the items of an object from outside.
class ForeignEnumerator final : public automation::Enumerator {
public:
    explicit ForeignEnumerator(ComPtr<IEnumVARIANT> walk) : walk_(std::move(walk)) {}

    bool next(Variant& item) override {
        OwnedVariant value;
        ULONG fetched = 0;
        const HRESULT result = walk_->Next(1, &value, &fetched);
        if (FAILED(result)) throw Error::fromHresult(static_cast<std::int32_t>(result));
        if (result != S_OK) return false;
        item = fromVariant(value);
        return true;
    }

    std::unique_ptr<Enumerator> clone() const override {
        ComPtr<IEnumVARIANT> copy;
        const HRESULT result = walk_->Clone(copy.put());
        if (FAILED(result)) throw Error::fromHresult(static_cast<std::int32_t>(result));
        return std::make_unique<ForeignEnumerator>(std::move(copy));
    }

private:
    ComPtr<IEnumVARIANT> walk_;
};

} // namespace

ForeignObject::ForeignObject(ComPtr<IUnknown> identity)
    : identity_(std::move(identity)), dispatch_(query<IDispatch>(identity_.get(), IID_IDispatch)) {
    if (!identities) identities = new Identities;
    identities->emplace(identity_.get(), this);
}

ForeignObject::~ForeignObject() {
    if (!identities) return;
    identities->erase(identity_.get());
    if (identities->empty()) delete std::exchange(identities, nullptr);
}

IUnknown* ForeignObject::identity() const {
    return ComPtr<IUnknown>(identity_).detach();
}

IDispatch* ForeignObject::dispatch() const {
    return ComPtr<IDispatch>(dispatch_).detach();
}

String ForeignObject::typeName() const {
    ComPtr<ITypeInfo> type;
    if (const auto provider = query<IProvideClassInfo>(identity_.get(), IID_IProvideClassInfo))
        provider->GetClassInfo(type.put());
    if (!type && dispatch_) dispatch_->GetTypeInfo(0, LOCALE_USER_DEFAULT, type.put());
    OwnedText name;
    if (!type || FAILED(type->GetDocumentation(MEMBERID_NIL, name.put(), nullptr, nullptr, nullptr))) return u"Object";
    automation::StringView text = viewOfBstr(name.get());
    // An interface is named after its class, with an underscore in front.
    if (text.starts_with(u'_')) text.remove_prefix(1);
    return String(text);
}

const ForeignObject::KnownName* ForeignObject::findKnown(const MemberName& name) const {
    const auto [first, last] = names_.equal_range(name.hash());
    for (auto known = first; known != last; ++known)
        if (automation::equalsIgnoreCase(known->second.text, name.text())) return &known->second;
    return nullptr;
}

HRESULT ForeignObject::dispidOf(const MemberName& name, DISPID& dispid) {
    if (!dispatch_) return E_NOINTERFACE;
    if (name.text().empty()) {
        dispid = DISPID_VALUE;
        return S_OK;
    }
    if (const KnownName* known = findKnown(name)) {
        dispid = known->dispid;
        return S_OK;
    }
    String text(name.text());
    auto* wanted = const_cast<LPOLESTR>(wide(text));
    const HRESULT result = dispatch_->GetIDsOfNames(IID_NULL, &wanted, 1, LOCALE_USER_DEFAULT, &dispid);
    if (SUCCEEDED(result)) names_.emplace(name.hash(), KnownName{std::move(text), dispid});
    return result;
}

bool ForeignObject::hasMember(const MemberName& name) {
    DISPID dispid = DISPID_UNKNOWN;
    return SUCCEEDED(dispidOf(name, dispid));
}

Variant ForeignObject::invoke(const MemberName& name, Access access, std::span<Variant> arguments,
                              std::uint32_t byReference) {
    DISPID dispid = DISPID_UNKNOWN;
    if (const HRESULT result = dispidOf(name, dispid); FAILED(result)) {
        if (result != DISP_E_UNKNOWNNAME && result != E_NOINTERFACE)
            throw Error::fromHresult(static_cast<std::int32_t>(result));
        throw Error(errors::NoSuchMember, String(automation::descriptionOf(errors::NoSuchMember)) + u": " + typeName() +
                                              u"." + String(name.text()));
    }
    DISPID assigned = DISPID_PROPERTYPUT;
    return send(dispid, access, arguments, byReference, assigns(access) ? &assigned : nullptr);
}

DISPID ForeignObject::parameterOf(const MemberName& name, const MemberName& parameter) {
    const String both = String(name.text()) + u'\n' + String(parameter.text());
    if (const KnownName* known = findKnown(MemberName(both))) return known->dispid;
    const String texts[] = {String(name.text()), String(parameter.text())};
    LPOLESTR wanted[] = {const_cast<LPOLESTR>(wide(texts[0])), const_cast<LPOLESTR>(wide(texts[1]))};
    DISPID ids[] = {DISPID_UNKNOWN, DISPID_UNKNOWN};
    const HRESULT result = dispatch_->GetIDsOfNames(IID_NULL, wanted, 2, LOCALE_USER_DEFAULT, ids);
    const DISPID found = SUCCEEDED(result) ? ids[1] : DISPID_UNKNOWN;
    names_.emplace(MemberName(both).hash(), KnownName{both, found});
    return found;
}

Variant ForeignObject::invokeNamed(const MemberName& name, const MemberName& parameter, std::span<Variant> arguments) {
    DISPID dispid = DISPID_UNKNOWN;
    DISPID last = FAILED(dispidOf(name, dispid)) ? DISPID_UNKNOWN : parameterOf(name, parameter);
    // Objects of scripts know the names of their members only.
    if (last == DISPID_UNKNOWN) return invoke(name, Access::MethodOrGet, arguments, 0);
    return send(dispid, Access::MethodOrGet, arguments, 0, &last);
}

Variant ForeignObject::send(DISPID dispid, Access access, std::span<Variant> arguments, std::uint32_t byReference,
                            DISPID* named) {
    WireArguments wire(arguments, byReference);
    DISPPARAMS parameters = wire.parameters();
    // Named arguments stand in front, and the last argument stands first.
    if (named) {
        parameters.rgdispidNamedArgs = named;
        parameters.cNamedArgs = 1;
    }
    OwnedVariant value;
    Exception exception;
    UINT badArgument = 0;
    // The object may go away while it is called.
    const ComPtr<IDispatch> target(dispatch_);
    const HRESULT result = target->Invoke(dispid, IID_NULL, LOCALE_USER_DEFAULT, flagsOf(access), &parameters,
                                          assigns(access) ? nullptr : &value, &exception, &badArgument);
    wire.takeBack();
    if (result == DISP_E_EXCEPTION) throw exception.error();
    if (FAILED(result)) throw Error::fromHresult(static_cast<std::int32_t>(result));
    return fromVariant(value);
}

std::unique_ptr<automation::Enumerator> ForeignObject::enumerate() {
    if (!dispatch_) return Object::enumerate();
    OwnedVariant value;
    DISPPARAMS none{};
    const HRESULT result = dispatch_->Invoke(DISPID_NEWENUM, IID_NULL, LOCALE_USER_DEFAULT,
                                             DISPATCH_METHOD | DISPATCH_PROPERTYGET, &none, &value, nullptr, nullptr);
    if (FAILED(result) || (value.vt != VT_UNKNOWN && value.vt != VT_DISPATCH)) return Object::enumerate();
    auto walk = query<IEnumVARIANT>(value.punkVal, IID_IEnumVARIANT);
    if (!walk) return Object::enumerate();
    return std::make_unique<ForeignEnumerator>(std::move(walk));
}

ObjectRef importObject(IUnknown* pointer) {
    if (!pointer) return {};
    const auto identity = query<IUnknown>(pointer, IID_IUnknown);
    if (!identity) throw Error(errors::TypeMismatch);
    if (automation::Object* own = ownObjectBehind(identity.get())) return ObjectRef(own);
    if (identities)
        if (const auto known = identities->find(identity.get()); known != identities->end())
            return ObjectRef(known->second);
    return automation::make<ForeignObject>(identity);
}

} // namespace tarncom32::com
