#include "com/bridge/foreign_object.h"

#include "automation/array.h"
#include "automation/error.h"
#include "automation/spin_lock.h"
#include "com/bridge/exported_object.h"
#include "com/bridge/failure.h"
#include "com/bridge/outbound_call.h"
#include "com/bridge/variants.h"

#include <ocidl.h>

#include <mutex>

namespace tarncom32::com {

using automation::Access;
using automation::Error;
using automation::MemberName;
using automation::ObjectRef;
using automation::String;
using automation::Variant;

namespace errors = automation::errors;

namespace {

/// The objects that stand for those from outside, by the thread to which they belong and by identity. They are not
/// held: each leaves when it ends, on whatever thread that is.
class KnownObjects {
public:
    /// Null when there is none, or it is just ending.
    automation::Ref<ForeignObject> find(IUnknown* identity) noexcept {
        const std::lock_guard guard(lock_);
        const auto found = objects_.find({GetCurrentThreadId(), identity});
        if (found == objects_.end() || !found->second->tryAddRef()) return {};
        automation::Ref<ForeignObject> object(found->second);
        found->second->release(); // the one that was tried: `object` has its own
        return found->second->hasEnded() ? nullptr : object;
    }
    void add(IUnknown* identity, ForeignObject& object) {
        const std::lock_guard guard(lock_);
        objects_.insert_or_assign({object.thread(), identity}, &object);
    }
    void remove(IUnknown* identity, const ForeignObject& object) noexcept {
        const std::lock_guard guard(lock_);
        const auto found = objects_.find({object.thread(), identity});
        if (found != objects_.end() && found->second == &object) objects_.erase(found);
    }

private:
    struct Key {
        DWORD thread;
        IUnknown* identity;
        friend bool operator==(const Key&, const Key&) = default;
    };
    struct Hash {
        std::size_t operator()(const Key& key) const noexcept {
            return std::hash<IUnknown*>()(key.identity) ^ std::size_t{key.thread} * 0x9E3779B1u;
        }
    };
    automation::SpinLock lock_;
    std::unordered_map<Key, ForeignObject*, Hash> objects_;
} knownObjects;

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

/// The enumerator of an object from outside.
class ForeignEnumerator final : public automation::Enumerator {
public:
    explicit ForeignEnumerator(ComPtr<IEnumVARIANT> items) : items_(std::move(items)) {}

    bool next(Variant& item) override {
        OwnedVariant value;
        ULONG fetched = 0;
        const HRESULT result = items_->Next(1, &value, &fetched);
        check(result);
        if (result != S_OK) return false;
        item = fromVariant(value);
        return true;
    }

    std::unique_ptr<Enumerator> clone() const override {
        ComPtr<IEnumVARIANT> copy;
        const HRESULT result = items_->Clone(copy.put());
        check(result);
        return std::make_unique<ForeignEnumerator>(std::move(copy));
    }

private:
    ComPtr<IEnumVARIANT> items_;
};

} // namespace

ForeignObject::ForeignObject(ComPtr<IUnknown> identity)
    : identity_(std::move(identity)), dispatch_(query<IDispatch>(identity_.get(), IID_IDispatch)),
      thread_(GetCurrentThreadId()) {}

void ForeignObject::finalRelease() {
    knownObjects.remove(identity_.get(), *this);
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
    OutboundCall call(arguments, byReference);
    DISPPARAMS& parameters = call.parameters();
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
    try {
        call.takeBack();
    } catch (const Error&) {
        if (SUCCEEDED(result)) throw; // else the object's own error is the one to tell
    }
    if (result == DISP_E_EXCEPTION) throw exception.error();
    check(result);
    return fromVariant(value);
}

std::unique_ptr<automation::Enumerator> ForeignObject::enumerate() {
    if (!dispatch_) return Object::enumerate();
    OwnedVariant value;
    DISPPARAMS none{};
    const HRESULT result = dispatch_->Invoke(DISPID_NEWENUM, IID_NULL, LOCALE_USER_DEFAULT,
                                             DISPATCH_METHOD | DISPATCH_PROPERTYGET, &none, &value, nullptr, nullptr);
    if (FAILED(result) || (value.vt != VT_UNKNOWN && value.vt != VT_DISPATCH)) return Object::enumerate();
    auto items = query<IEnumVARIANT>(value.punkVal, IID_IEnumVARIANT);
    if (!items) return Object::enumerate();
    return std::make_unique<ForeignEnumerator>(std::move(items));
}

ObjectRef importObject(IUnknown* pointer) {
    if (!pointer) return {};
    const auto identity = query<IUnknown>(pointer, IID_IUnknown);
    if (!identity) throw Error(errors::TypeMismatch);
    if (automation::Object* own = ownObjectBehind(identity.get())) return ObjectRef(own);
    if (ObjectRef known = knownObjects.find(identity.get())) return known;
    const auto object = automation::make<ForeignObject>(identity);
    knownObjects.add(identity.get(), *object);
    return object;
}

} // namespace tarncom32::com
