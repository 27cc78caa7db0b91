#include "com/bridge/dispatcher.h"

#include "com/bridge/enumerator.h"
#include "com/bridge/exported_object.h"
#include "com/bridge/failure.h"
#include "com/bridge/variants.h"

#include <algorithm>
#include <array>
#include <memory>
#include <new>

namespace tarncom32::com {

using automation::ArgumentError;
using automation::ClassInfo;
using automation::Error;
using automation::MemberInfo;
using automation::Variant;

namespace errors = automation::errors;

namespace {

/// More parameters than any member has.
constexpr std::size_t kMostParameters = 16;

constexpr WORD kPut = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;

constexpr UINT kNoArgument = ~0u;

/// What `Invoke` answers where no member failed: the call itself was wrong.
struct Refusal {
    HRESULT result;
    UINT badArgument = kNoArgument; ///< its place in the caller's array
};

bool isObject(const VARIANT& value) {
    const VARTYPE type = value.vt == (VT_BYREF | VT_VARIANT) && value.pvarVal ? value.pvarVal->vt : value.vt;
    return (type & ~VT_BYREF) == VT_DISPATCH || (type & ~VT_BYREF) == VT_UNKNOWN;
}

const MemberInfo* select(const ClassTable::Accessors& accessors, WORD flags, const DISPPARAMS& parameters) {
    if (flags & kPut) {
        const bool object =
            (flags & DISPATCH_PROPERTYPUTREF) &&
            (!(flags & DISPATCH_PROPERTYPUT) || (parameters.cArgs > 0 && isObject(parameters.rgvarg[0])));
        return object ? (accessors.set ? accessors.set : accessors.let)
                      : (accessors.let ? accessors.let : accessors.set);
    }
    if ((flags & DISPATCH_METHOD) && accessors.method) return accessors.method;
    return flags & DISPATCH_PROPERTYGET ? accessors.get : nullptr;
}

/// Room for the values of a call, without a trip to the heap; only those that the member has are made, missing at
/// first.
class Values {
public:
    explicit Values(std::size_t count) : count_(count) {
        if (count > kMostParameters) throw Error(errors::InternalError);
        for (std::size_t i = 0; i < count; ++i)
            new (room_ + i * sizeof(Variant)) Variant(automation::kMissing);
    }
    Values(const Values&) = delete;
    ~Values() { std::destroy_n(first(), count_); }

    Variant* first() { return reinterpret_cast<Variant*>(room_); }
    Variant& operator[](std::size_t index) { return first()[index]; }
    /// Gives a missing value its own; it stays missing when that raises.
    void fill(std::size_t index, const VARIANT& wire) {
        new (room_ + index * sizeof(Variant)) Variant(fromVariant(wire));
    }

private:
    std::size_t count_;
    alignas(Variant) std::byte room_[kMostParameters * sizeof(Variant)];
};

/// The caller's arguments in the member's order.
class Arguments {
public:
    Arguments(const MemberInfo& member, const DISPPARAMS& wire, bool assigns)
        : member_(member), wire_(wire), values_(member.parameters.size()) {
        std::fill_n(places_.begin(), member.parameters.size(), kNoArgument);
        const UINT named = wire.cNamedArgs;
        const UINT positional = wire.cArgs - named;
        const std::size_t known = member.parameters.size();
        if (wire.cArgs > known) throw Refusal{DISP_E_BADPARAMCOUNT};
        // The value that is assigned is the last parameter, whatever else is left out.
        if (positional > known - (assigns ? 1 : 0)) throw Refusal{DISP_E_BADPARAMCOUNT};
        for (UINT i = 0; i < positional; ++i)
            take(i, wire.cArgs - 1 - i);
        for (UINT i = 0; i < named; ++i) {
            DISPID id = wire.rgdispidNamedArgs[i];
            if (id == DISPID_PROPERTYPUT) id = static_cast<DISPID>(known) - 1;
            if (id < 0 || static_cast<std::size_t>(id) >= known) throw Refusal{DISP_E_PARAMNOTFOUND, i};
            if (places_[static_cast<std::size_t>(id)] != kNoArgument) throw Refusal{DISP_E_BADPARAMCOUNT};
            take(static_cast<std::size_t>(id), i);
        }
        for (std::size_t i = 0; i < known; ++i)
            if (places_[i] == kNoArgument && !member.parameters[i].optional) throw Refusal{DISP_E_PARAMNOTOPTIONAL};
    }

    std::span<Variant> values() { return {values_.first(), count_}; }
    /// The argument's place in the caller's array; kNoArgument when it was left out.
    UINT placeOf(std::size_t parameter) const { return places_[parameter]; }

    /// Gives the caller what the member wrote into by-reference arguments.
    void writeBack() {
        for (std::size_t i = 0; i < count_; ++i) {
            if (places_[i] == kNoArgument || !member_.parameters[i].isByReference()) continue;
            VARIANT& target = wire_.rgvarg[places_[i]];
            if (target.vt & VT_BYREF) assignVariant(target, forVariable(target, std::move(values_[i])));
        }
    }

private:
    void take(std::size_t parameter, UINT place) {
        places_[parameter] = place;
        count_ = std::max(count_, parameter + 1);
        try {
            values_.fill(parameter, wire_.rgvarg[place]);
        } catch (const Error& error) {
            throw Refusal{error.number() == errors::UnsupportedType ? DISP_E_BADVARTYPE : DISP_E_TYPEMISMATCH, place};
        }
    }

    /// Scripts can look into arrays of variants only: a variable of theirs that held no typed array gets one of those.
    static Variant forVariable(const VARIANT& target, Variant value) {
        const auto* array = value.as<automation::Array>();
        if (!array || !array->hasBounds() || target.vt != (VT_BYREF | VT_VARIANT)) return value;
        const auto typed = static_cast<VARTYPE>(VT_ARRAY | static_cast<VARTYPE>(array->elementType()));
        if ((target.pvarVal->vt & ~VT_BYREF) == typed) return value;
        return automation::Array(automation::VariantType::Variant, array->lowerBound(), array->items());
    }

    const MemberInfo& member_;
    const DISPPARAMS& wire_;
    Values values_;
    std::array<UINT, kMostParameters> places_; ///< as many as there are parameters
    std::size_t count_ = 0;
};

/// An argument that does not convert is the caller's mistake, and so is one that is left out.
Refusal refusalOf(const ArgumentError& error, const Arguments& arguments) {
    const UINT place = arguments.placeOf(error.index());
    switch (error.number()) {
    case errors::TypeMismatch:
        return {DISP_E_TYPEMISMATCH, place};
    case errors::Overflow:
        return {DISP_E_OVERFLOW, place};
    case errors::ArgumentNotOptional:
        return {DISP_E_PARAMNOTOPTIONAL, place};
    default:
        throw error;
    }
}

Variant call(automation::Object& self, const MemberInfo& member, const DISPPARAMS& parameters, bool assigns) {
    Arguments arguments(member, parameters, assigns);
    struct WriteBack {
        Arguments& arguments;
        ~WriteBack() { arguments.writeBack(); }
    };
    try {
        const WriteBack atTheEnd{arguments};
        return member.invoke(self, member, arguments.values());
    } catch (const ArgumentError& error) {
        throw refusalOf(error, arguments);
    }
}

HRESULT startWalk(automation::Object& self, const MemberInfo& member, const DISPPARAMS& parameters, VARIANT* result) {
    if (parameters.cArgs != 0) return DISP_E_BADPARAMCOUNT;
    if (!result) return S_OK;
    VariantInit(result);
    result->punkVal = exportEnumerator(member.enumerate(self));
    result->vt = VT_UNKNOWN;
    return S_OK;
}

/// The object that a property gives without arguments, for whose default member a call was meant.
ComPtr<IDispatch> objectOf(automation::Object& self, const ClassTable::Accessors& accessors) {
    const MemberInfo* get = accessors.get;
    if (!get || !get->invoke || !get->parameters.empty()) return {};
    const automation::VariantType type = get->result.type;
    if (type != automation::VariantType::Object && type != automation::VariantType::Variant) return {};
    Variant value = get->invoke(self, *get, {});
    const auto* object = value.as<automation::ObjectRef>();
    ComPtr<IDispatch> pointer;
    if (object) *pointer.put() = exportObject(*object);
    return pointer;
}

} // namespace

HRESULT idsOfNames(const ClassInfo& info, LPOLESTR* names, UINT count, DISPID* ids) noexcept {
    if (count == 0) return S_OK;
    if (!names || !ids) return E_POINTER;
    std::fill_n(ids, count, DISPID_UNKNOWN);
    const MemberInfo* member = info.findAny(automation::MemberName(viewOf(names[0])));
    if (!member) return DISP_E_UNKNOWNNAME;
    ids[0] = member->dispid;
    HRESULT result = S_OK;
    for (UINT i = 1; i < count; ++i) {
        const auto found = std::ranges::find_if(member->parameters, [&](const automation::ParameterInfo& parameter) {
            return automation::equalsIgnoreCase(parameter.name, viewOf(names[i]));
        });
        if (found == member->parameters.end())
            result = DISP_E_UNKNOWNNAME;
        else
            ids[i] = static_cast<DISPID>(found - member->parameters.begin());
    }
    return result;
}

HRESULT invokeMember(automation::wire::Face& face, const ClassTable& table, DISPID dispid, WORD flags,
                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception, UINT* badArgument) noexcept {
    if (!parameters) return E_POINTER;
    if (parameters->cNamedArgs > parameters->cArgs || (parameters->cArgs > 0 && !parameters->rgvarg) ||
        (parameters->cNamedArgs > 0 && !parameters->rgdispidNamedArgs))
        return E_INVALIDARG;
    if (!(flags & (kPut | DISPATCH_METHOD | DISPATCH_PROPERTYGET))) return E_INVALIDARG;
    const ClassTable::Accessors* accessors = table.find(dispid);
    if (!accessors) return DISP_E_MEMBERNOTFOUND;
    const automation::wire::Held held(face);
    try {
        automation::Object& self = *face.object;
        const bool assigns = (flags & kPut) != 0;
        const MemberInfo* member = select(*accessors, flags, *parameters);
        // DISPID_NEWENUM is asked for as a method and as a property.
        if (!member && accessors->get && accessors->get->enumerate && !assigns) member = accessors->get;
        const bool forDefaultMember =
            assigns ? !member && parameters->cArgs > 1 : member && member->parameters.empty() && parameters->cArgs > 0;
        if (forDefaultMember && dispid != DISPID_VALUE) {
            if (const ComPtr<IDispatch> target = objectOf(self, *accessors))
                return target->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT, flags, parameters, result, exception,
                                      badArgument);
        }
        if (!member) return DISP_E_MEMBERNOTFOUND;
        if (member->enumerate) return startWalk(self, *member, *parameters, result);
        Variant value = call(self, *member, *parameters, assigns);
        if (result) initVariant(*result, std::move(value));
        return S_OK;
    } catch (const Refusal& refusal) {
        if (badArgument && refusal.badArgument != kNoArgument) *badArgument = refusal.badArgument;
        return refusal.result;
    } catch (...) {
        const Error error = errorInFlight();
        if (!exception) return error.hresult();
        fillException(*exception, error);
        return DISP_E_EXCEPTION;
    }
}

} // namespace tarncom32::com
