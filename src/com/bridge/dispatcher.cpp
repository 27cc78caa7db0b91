#include "com/bridge/dispatcher.h"

#include "com/bridge/enumerator.h"
#include "com/bridge/exported_object.h"
#include "com/bridge/failure.h"
#include "com/bridge/variants.h"

#include <algorithm>
#include <array>
#include <memory>
#include <new>
#include <optional>

namespace tarncom32::com {

using automation::ArgumentError;
using automation::ClassInfo;
using automation::Error;
using automation::kMostParameters;
using automation::LateArgument;
using automation::MemberInfo;
using automation::Variant;
using automation::VariantType;

namespace errors = automation::errors;

namespace {

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

/// Room for the values of a call, without a trip to the heap; only those that are needed are made.
class Values {
public:
    Values() noexcept = default;
    Values(const Values&) = delete;
    ~Values() {
        for (std::size_t i = 0; i < kMostParameters; ++i)
            if (made_ >> i & 1) at(i)->~Variant();
    }

    Variant& make(std::size_t index, Variant&& value) {
        new (room_ + index * sizeof(Variant)) Variant(std::move(value));
        made_ |= 1u << index;
        return *at(index);
    }

private:
    Variant* at(std::size_t index) { return reinterpret_cast<Variant*>(room_) + index; }

    std::uint32_t made_ = 0; ///< a bit for each
    alignas(Variant) std::byte room_[kMostParameters * sizeof(Variant)];
};

/// The caller's arguments in the member's order.
class Arguments {
public:
    Arguments(const MemberInfo& member, const DISPPARAMS& caller, bool assigns) : member_(member), caller_(caller) {
        const std::size_t known = member.parameters.size();
        std::fill_n(places_.begin(), known, kNoArgument);
        const UINT named = caller.cNamedArgs;
        const UINT positional = caller.cArgs - named;
        if (caller.cArgs > known) throw Refusal{DISP_E_BADPARAMCOUNT};
        // The value that is assigned is the last parameter, whatever else is left out.
        if (positional > known - (assigns ? 1 : 0)) throw Refusal{DISP_E_BADPARAMCOUNT};
        for (UINT i = 0; i < positional; ++i)
            take(i, caller.cArgs - 1 - i);
        for (UINT i = 0; i < named; ++i) {
            DISPID id = caller.rgdispidNamedArgs[i];
            if (id == DISPID_PROPERTYPUT) id = static_cast<DISPID>(known) - 1;
            if (id < 0 || static_cast<std::size_t>(id) >= known) throw Refusal{DISP_E_PARAMNOTFOUND, i};
            if (places_[static_cast<std::size_t>(id)] != kNoArgument) throw Refusal{DISP_E_BADPARAMCOUNT};
            take(static_cast<std::size_t>(id), i);
        }
        for (std::size_t i = 0; i < known; ++i)
            if (places_[i] == kNoArgument && !member.parameters[i].optional) throw Refusal{DISP_E_PARAMNOTOPTIONAL};
    }

    std::span<LateArgument> values() { return {late_.data(), count_}; }
    /// The argument's place in the caller's array; kNoArgument when it was left out.
    UINT placeOf(std::size_t parameter) const { return places_[parameter]; }

    /// Gives the caller what the member wrote into by-reference arguments: converts all first and then hands over. Of
    /// several failures the first is given.
    std::optional<Error> giveBack() noexcept {
        std::uint32_t written = 0;
        for (std::size_t i = 0; i < count_; ++i)
            written |= (isWritten(i) ? 1u : 0u) << i;
        return written == 0 ? std::nullopt : giveBack(written);
    }

private:
    void take(std::size_t parameter, UINT place) {
        places_[parameter] = place;
        for (; count_ <= parameter; ++count_)
            std::construct_at(&late_[count_]);
        try {
            late_[parameter] = argumentOf(parameter, caller_.rgvarg[place]);
        } catch (const Error& error) {
            // What there is more to say than the HRESULT does goes to the caller as an exception.
            if (error.description() != automation::descriptionOf(error.number())) throw;
            if (error.number() == errors::OutOfMemory) throw;
            throw Refusal{error.number() == errors::UnsupportedType ? DISP_E_BADVARTYPE : DISP_E_TYPEMISMATCH, place};
        }
    }

    LateArgument argumentOf(std::size_t index, const VARIANT& given) {
        const automation::ParameterInfo& parameter = member_.parameters[index];
        const automation::Type& type = parameter.type;
        automation::StringView text;
        if (type.type == VariantType::String && !type.isArray && !parameter.isByReference() && textIn(given, text))
            return LateArgument(text);
        if (type.type == VariantType::Record) return LateArgument(values_.make(index, recordIn(given)));
        // What an array that is only written held before is not looked at.
        if (type.isArray && parameter.direction == automation::Direction::Out && isArrayOrEmpty(given))
            return LateArgument(values_.make(index, {}));
        return LateArgument(values_.make(index, fromVariant(given)));
    }

    static bool isArrayOrEmpty(const VARIANT& given) {
        const VARIANT& held = given.vt == (VT_BYREF | VT_VARIANT) && given.pvarVal ? *given.pvarVal : given;
        return held.vt == VT_EMPTY || held.vt & VT_ARRAY;
    }

    bool isWritten(std::size_t i) const { return late_[i].isWritten() && caller_.rgvarg[places_[i]].vt & VT_BYREF; }

    std::optional<Error> giveBack(std::uint32_t written) noexcept {
        std::optional<Error> failure;
        std::array<Assignment, kMostParameters> assignments;
        for (std::size_t i = 0; i < count_; ++i) {
            if (!(written >> i & 1)) continue;
            try {
                VARIANT& target = caller_.rgvarg[places_[i]];
                prepareAssignment(assignments[i], target, forVariable(target, std::move(*late_[i].value())));
            } catch (...) {
                if (!failure) failure = automation::errorInFlight();
            }
        }
        for (Assignment& assignment : assignments)
            commit(assignment);
        return failure;
    }

    /// Scripts can look into arrays of variants only: a variable of theirs that held no typed array gets one of those.
    static Variant forVariable(const VARIANT& target, Variant&& value) {
        auto* array = value.as<automation::Array>();
        if (!array || !array->hasBounds() || target.vt != (VT_BYREF | VT_VARIANT)) return std::move(value);
        const auto typed = static_cast<VARTYPE>(VT_ARRAY | static_cast<VARTYPE>(array->elementType()));
        if ((target.pvarVal->vt & ~VT_BYREF) == typed) return std::move(value);
        return automation::Array(VariantType::Variant, array->lowerBound(), std::move(array->items()));
    }

    const MemberInfo& member_;
    const DISPPARAMS& caller_;
    Values values_;
    union {                                              // so that only those in use are made
        std::array<LateArgument, kMostParameters> late_; ///< as many as `count_` says
    };
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

/// Calls the member; what it gives goes into `result`, which is empty, if that is not null.
void call(automation::Object& self, const MemberInfo& member, const DISPPARAMS& parameters, bool assigns,
          VARIANT* result) {
    Arguments arguments(member, parameters, assigns);
    OwnedVariant made;
    try {
        Variant value = member.invoke(self, member, arguments.values());
        if (result) toVariant(made, std::move(value));
    } catch (const ArgumentError& error) {
        arguments.giveBack();
        throw refusalOf(error, arguments);
    } catch (...) {
        arguments.giveBack();
        throw;
    }
    const std::optional<Error> failure = arguments.giveBack();
    if (failure && !self.settlesFailure(member, *failure)) throw *failure;
    if (result) std::swap(*result, static_cast<VARIANT&>(made));
}

HRESULT startEnumerator(automation::Object& self, const MemberInfo& member, const DISPPARAMS& parameters,
                        VARIANT* result) {
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
    const VariantType type = get->result.type;
    if (type != VariantType::Object && type != VariantType::Variant) return {};
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

HRESULT invokeMember(automation::vtable::CallableWrapper& wrapper, const ClassTable& table, DISPID dispid, WORD flags,
                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception, UINT* badArgument) noexcept {
    if (!parameters) return E_POINTER;
    if (parameters->cNamedArgs > parameters->cArgs || (parameters->cArgs > 0 && !parameters->rgvarg) ||
        (parameters->cNamedArgs > 0 && !parameters->rgdispidNamedArgs))
        return E_INVALIDARG;
    if (!(flags & (kPut | DISPATCH_METHOD | DISPATCH_PROPERTYGET))) return E_INVALIDARG;
    const ClassTable::Accessors* accessors = table.find(dispid);
    if (!accessors) return DISP_E_MEMBERNOTFOUND;
    const automation::vtable::Held held(wrapper);
    try {
        automation::Object& self = *wrapper.object;
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
        if (member->enumerate) return startEnumerator(self, *member, *parameters, result);
        call(self, *member, *parameters, assigns, result);
        return S_OK;
    } catch (const Refusal& refusal) {
        if (badArgument && refusal.badArgument != kNoArgument) *badArgument = refusal.badArgument;
        return refusal.result;
    } catch (...) {
        const Error error = automation::errorInFlight();
        if (!exception) return error.hresult();
        fillException(*exception, error);
        return DISP_E_EXCEPTION;
    }
}

} // namespace tarncom32::com
