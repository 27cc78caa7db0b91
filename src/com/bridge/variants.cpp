#include "com/bridge/variants.h"

#include "automation/convert.h"
#include "automation/error.h"
#include "com/bridge/exported_object.h"
#include "com/bridge/failure.h"
#include "com/bridge/foreign_object.h"

#include <algorithm>
#include <memory>
#include <new>

namespace tarncom32::com {

using automation::Array;
using automation::Boolean;
using automation::Error;
using automation::ObjectRef;
using automation::OtherInteger;
using automation::Variant;
using automation::VariantType;

namespace errors = automation::errors;

namespace {

/// The variable that `value` refers to, if that is a VARIANT in turn.
const VARIANT& target(const VARIANT& value) noexcept {
    return value.vt == (VT_BYREF | VT_VARIANT) && value.pvarVal ? *value.pvarVal : value;
}

/// The record that `value` holds or refers to, as a whole VARIANT of its own.
automation::Record copyOfRecord(const VARIANT& value) {
    auto copy = std::make_shared<OwnedVariant>();
    check(VariantCopyInd(copy.get(), const_cast<VARIANT*>(&value)));
    automation::Record record = recordIn(*copy);
    record.owner = std::move(copy);
    record.isForeign = true;
    return record;
}

template <class T>
const T& valueAt(const void* place) {
    return *static_cast<const T*>(place);
}

/// Reads values, arrays within arrays among them.
class Reader {
public:
    Variant read(const VARIANT& value, bool isReferredTo = false) const;
    Array read(SAFEARRAY* array, VariantType element) const;

private:
    Reader(const Reader& outer, const SAFEARRAY* array);
    Reader() = default;
    friend Variant(::tarncom32::com::fromVariant)(const VARIANT&);
    friend Array(::tarncom32::com::fromSafeArray)(SAFEARRAY*, VariantType);
    Variant readAt(VARTYPE type, const void* place) const;

    const Reader* outer_ = nullptr;
    const SAFEARRAY* array_ = nullptr; ///< whose elements this reads
    int depth_ = 0;
};

Variant Reader::readAt(VARTYPE type, const void* place) const {
    if (!place) throw Error(errors::TypeMismatch);
    switch (type) {
    case VT_UI1:
        return valueAt<std::uint8_t>(place);
    case VT_I2:
        return valueAt<std::int16_t>(place);
    case VT_I4:
    case VT_INT:
        return valueAt<std::int32_t>(place);
    case VT_R4:
        return valueAt<float>(place);
    case VT_R8:
        return valueAt<double>(place);
    case VT_CY:
        return automation::Currency{valueAt<CY>(place).int64};
    case VT_DATE:
        return automation::Date{valueAt<double>(place)};
    case VT_BOOL:
        return Boolean::fromBits(valueAt<VARIANT_BOOL>(place));
    case VT_ERROR:
    case VT_HRESULT:
        return automation::ErrorValue{static_cast<std::int32_t>(valueAt<SCODE>(place))};
    case VT_BSTR:
        return Variant(viewOfBstr(valueAt<BSTR>(place)));
    case VT_DISPATCH:
    case VT_UNKNOWN:
        return Variant(importObject(valueAt<IUnknown*>(place)));
    case VT_VARIANT:
        return read(valueAt<VARIANT>(place), true);
    case VT_DECIMAL: {
        const auto& decimal = valueAt<DECIMAL>(place);
        return automation::Decimal{static_cast<std::uint32_t>(decimal.Hi32), decimal.Lo64, decimal.scale,
                                   decimal.sign != 0};
    }
    case VT_I1:
        return OtherInteger{VariantType::SignedByte, valueAt<std::uint8_t>(place)};
    case VT_UI2:
        return OtherInteger{VariantType::UnsignedInteger, valueAt<std::uint16_t>(place)};
    case VT_UI4:
    case VT_UINT:
        return OtherInteger{VariantType::UnsignedLong, valueAt<std::uint32_t>(place)};
    case VT_I8:
        return OtherInteger{VariantType::LongLong, valueAt<std::uint64_t>(place)};
    case VT_UI8:
        return OtherInteger{VariantType::UnsignedLongLong, valueAt<std::uint64_t>(place)};
    default:
        throw Error(errors::UnsupportedType);
    }
}

/// The automation type of an element of a SAFEARRAY.
VariantType elementTypeOf(VARTYPE type) {
    switch (type) {
    case VT_INT:
        return VariantType::Long;
    case VT_UINT:
        return VariantType::UnsignedLong;
    case VT_HRESULT:
        return VariantType::Error;
    default:
        return static_cast<VariantType>(type);
    }
}

/// The type of an array of such elements.
VariantType arrayOf(VariantType element) {
    return static_cast<VariantType>(static_cast<unsigned>(VariantType::Array) | static_cast<unsigned>(element));
}

template <class T>
void putAt(void* place, const T& value) {
    *static_cast<T*>(place) = value;
}

bool writeInteger(VARTYPE type, void* place, std::uint64_t bits) {
    switch (type) {
    case VT_I1:
    case VT_UI1:
        putAt(place, static_cast<std::uint8_t>(bits));
        return true;
    case VT_UI2:
        putAt(place, static_cast<std::uint16_t>(bits));
        return true;
    case VT_UI4:
    case VT_UINT:
        putAt(place, static_cast<std::uint32_t>(bits));
        return true;
    case VT_I8:
    case VT_UI8:
        putAt(place, bits);
        return true;
    default:
        return false;
    }
}

/// A counted pointer to `object` for a variable of that type, of the interface `iid` if that is not null.
IUnknown* pointerTo(const ObjectRef& object, VariantType type, const IID* iid) {
    ComPtr<IUnknown> pointer;
    *pointer.put() = type == VariantType::Object ? exportObject(object) : exportUnknown(object);
    if (pointer && iid) pointer = query<IUnknown>(pointer.get(), *iid);
    if (object && !pointer) throw Error(errors::TypeMismatch);
    return pointer.detach();
}

/// Puts `value`, converted to `type`, into a place for a value of that type that holds nothing yet; one for objects may
/// be for pointers of the interface `iid`.
void writeAt(VARTYPE type, void* place, Variant&& value, const IID* iid = nullptr) {
    if (type == VT_VARIANT) {
        toVariant(*static_cast<VARIANT*>(place), std::move(value));
        return;
    }
    const VariantType wanted = elementTypeOf(type);
    if (wanted == VariantType::Object || wanted == VariantType::Unknown) {
        putAt(place, pointerTo(automation::toObject(value), wanted, iid));
        return;
    }
    if (value.type() != wanted) value = automation::changeType(value, wanted);
    if (const auto* text = value.as<automation::String>()) {
        BSTR fresh = newBstr(*text);
        if (!fresh) throw std::bad_alloc();
        putAt(place, fresh);
    } else if (const auto* flag = value.as<Boolean>()) {
        putAt(place, flag->value);
    } else if (const auto* byte = value.as<std::uint8_t>()) {
        putAt(place, *byte);
    } else if (const auto* integer = value.as<std::int16_t>()) {
        putAt(place, *integer);
    } else if (const auto* number = value.as<std::int32_t>()) {
        putAt(place, *number);
    } else if (const auto* single = value.as<float>()) {
        putAt(place, *single);
    } else if (const auto* real = value.as<double>()) {
        putAt(place, *real);
    } else if (const auto* currency = value.as<automation::Currency>()) {
        putAt(place, currency->tenThousandths);
    } else if (const auto* date = value.as<automation::Date>()) {
        putAt(place, date->days);
    } else if (const auto* error = value.as<automation::ErrorValue>()) {
        putAt(place, error->code);
    } else if (const auto* decimal = value.as<automation::Decimal>()) {
        // The type of a VARIANT shares the decimal's first two bytes: they stay.
        auto& target = *static_cast<DECIMAL*>(place);
        target.scale = decimal->scale;
        target.sign = decimal->negative ? DECIMAL_NEG : 0;
        target.Hi32 = decimal->high;
        target.Lo64 = decimal->low;
    } else if (const auto* other = value.as<OtherInteger>(); !other || !writeInteger(type, place, other->bits)) {
        throw Error(errors::TypeMismatch);
    }
}

/// The address of what a VARIANT of a plain type holds.
void* contentsOf(VARIANT& target, VARTYPE type) {
    return type == VT_DECIMAL ? static_cast<void*>(&target) : static_cast<void*>(&target.llVal);
}

/// The elements of a one-dimensional array, locked while it lives.
class LockedElements {
public:
    explicit LockedElements(SAFEARRAY* array) : array_(array) {
        if (SafeArrayGetDim(array) != 1) throw Error(errors::TypeMismatch);
        if (FAILED(SafeArrayGetVartype(array, &type_))) throw Error(errors::TypeMismatch);
        if (FAILED(SafeArrayAccessData(array, &data_))) throw Error(errors::TypeMismatch);
    }
    LockedElements(const LockedElements&) = delete;
    ~LockedElements() { SafeArrayUnaccessData(array_); }

    VARTYPE type() const { return type_; }
    std::size_t size() const { return array_->rgsabound[0].cElements; }
    LONG lowerBound() const { return array_->rgsabound[0].lLbound; }
    void* operator[](std::size_t index) const { return static_cast<char*>(data_) + index * array_->cbElements; }

private:
    SAFEARRAY* array_;
    VARTYPE type_ = VT_EMPTY;
    void* data_ = nullptr;
};

struct DestroyArray {
    void operator()(SAFEARRAY* array) const { SafeArrayDestroy(array); }
};
using OwnedArray = std::unique_ptr<SAFEARRAY, DestroyArray>;

/// A new array of that element type; its elements, if objects, are for pointers of the interface `iid` where that is
/// not null.
OwnedArray makeArray(Array&& value, VARTYPE type, const IID* iid) {
    SAFEARRAYBOUND bound{static_cast<ULONG>(value.size()), value.lowerBound()};
    OwnedArray fresh(SafeArrayCreate(type, 1, &bound));
    if (!fresh) throw std::bad_alloc();
    const LockedElements elements(fresh.get());
    for (std::size_t i = 0; i < value.size(); ++i)
        writeAt(type, elements[i], std::move(value.items()[i]), iid);
    return fresh;
}

/// Whether `target` can take the elements of `value` as it stands.
bool hasShape(SAFEARRAY* target, const Array& value) {
    VARTYPE type = VT_EMPTY;
    return target && value.hasBounds() && SafeArrayGetDim(target) == 1 &&
           SUCCEEDED(SafeArrayGetVartype(target, &type)) && elementTypeOf(type) == value.elementType() &&
           target->rgsabound[0].cElements == value.size() && target->rgsabound[0].lLbound == value.lowerBound();
}

/// Raises 10 for an array that cannot be replaced: its memory or its size is its owner's, or somebody is at it.
void requireReplaceable(const SAFEARRAY* array) {
    constexpr unsigned kFixed = FADF_AUTO | FADF_STATIC | FADF_EMBEDDED | FADF_FIXEDSIZE;
    if (array && (array->fFeatures & kFixed || array->cLocks > 0)) throw Error(errors::ArrayFixedOrLocked);
}

using automation::vtable::Assignment;

/// Of a type that VARIANTs hold by value.
std::size_t sizeOf(VARTYPE type) {
    switch (type) {
    case VT_I1:
    case VT_UI1:
        return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
        return 2;
    case VT_CY:
    case VT_DATE:
    case VT_R8:
    case VT_I8:
    case VT_UI8:
        return 8;
    case VT_BSTR:
    case VT_DISPATCH:
    case VT_UNKNOWN:
        return sizeof(void*);
    default:
        return 4;
    }
}

/// For a variable of a plain type that is referred to.
void prepareContents(Assignment& assignment, VARTYPE type, void* place, Variant&& value) {
    if (!place) throw Error(errors::TypeMismatch);
    // A variable may hold another interface of its object than late binding's: what did not change stays.
    if ((type == VT_DISPATCH || type == VT_UNKNOWN) && valueAt<IUnknown*>(place) &&
        importObject(valueAt<IUnknown*>(place)) == automation::toObject(value))
        return;
    VARIANT& fresh = asVariant(assignment.value);
    writeAt(type, contentsOf(fresh, type), std::move(value));
    fresh.vt = type;
    assignment.kind = type == VT_DECIMAL ? Assignment::Kind::Decimal : Assignment::Kind::Contents;
    assignment.size = sizeOf(type);
    assignment.place = place;
}

/// For a variable that holds its value itself.
void prepareWhole(Assignment& assignment, VARIANT& target, Variant&& value) {
    Array* array = value.as<Array>();
    if ((target.vt & VT_ARRAY) && array && hasShape(target.parray, *array)) {
        prepareAssignment(assignment, target.parray, std::move(*array));
        return;
    }
    if (target.vt & VT_ARRAY) requireReplaceable(target.parray);
    toVariant(asVariant(assignment.value), std::move(value));
    assignment.kind = Assignment::Kind::Whole;
    assignment.place = &target;
}

} // namespace

Reader::Reader(const Reader& outer, const SAFEARRAY* array) : outer_(&outer), array_(array), depth_(outer.depth_ + 1) {
    bool isInItself = false;
    for (const Reader* each = &outer; each; each = each->outer_)
        isInItself = isInItself || each->array_ == array;
    if (isInItself || depth_ > automation::kDeepestNesting)
        throw Error(errors::UnsupportedType, u"Arrays that are nested in themselves, or more than " +
                                                 automation::decimalText(automation::kDeepestNesting) +
                                                 u" deep, are not supported");
}

Variant Reader::read(const VARIANT& value, bool isReferredTo) const {
    const VARTYPE type = value.vt & VT_TYPEMASK;
    const bool isReference = (value.vt & VT_BYREF) != 0;
    // Other flags change what the value is, and no VARIANT has them.
    if (value.vt & ~(VT_TYPEMASK | VT_ARRAY | VT_BYREF)) throw Error(errors::UnsupportedType);
    if (value.vt & VT_ARRAY) {
        if (isReference && !value.pparray) throw Error(errors::TypeMismatch);
        SAFEARRAY* array = isReference ? *value.pparray : value.parray;
        return array ? Variant(read(array, VariantType::Variant)) : Variant(Array(elementTypeOf(type)));
    }
    if (type == VT_RECORD) return copyOfRecord(value);
    if (isReference) {
        // An element of an array may refer to a variable, and that to no other.
        if (type == VT_VARIANT && isReferredTo && value.pvarVal && value.pvarVal->vt & VT_BYREF)
            throw Error(errors::UnsupportedType, u"A reference to a reference is not supported");
        return readAt(type, value.byref);
    }
    switch (type) {
    case VT_EMPTY:
        return {};
    case VT_NULL:
        return automation::Null{};
    case VT_VARIANT:
        throw Error(errors::UnsupportedType);
    default:
        return readAt(type, contentsOf(const_cast<VARIANT&>(value), type));
    }
}

Array Reader::read(SAFEARRAY* array, VariantType element) const {
    const LockedElements elements(array);
    const VariantType type = elementTypeOf(elements.type());
    if (element != VariantType::Variant && type != element) throw Error(errors::TypeMismatch);
    const Reader inner(*this, array);
    std::vector<Variant> items;
    items.reserve(elements.size());
    for (std::size_t i = 0; i < elements.size(); ++i)
        items.push_back(inner.readAt(elements.type(), elements[i]));
    return Array(type, elements.lowerBound(), std::move(items));
}

Variant fromVariant(const VARIANT& value) {
    return Reader().read(value);
}

Array fromSafeArray(SAFEARRAY* array, VariantType element) {
    return array ? Reader().read(array, element) : Array(element);
}

automation::Record recordIn(const VARIANT& value) {
    const VARIANT& held = target(value);
    GUID type{};
    ULONG size = 0;
    if ((held.vt & ~VT_BYREF) != VT_RECORD || !held.pRecInfo || !held.pvRecord ||
        FAILED(held.pRecInfo->GetGuid(&type)) || FAILED(held.pRecInfo->GetSize(&size)))
        throw Error(errors::TypeMismatch);
    return {nullptr, held.pvRecord, fromGuid(type), static_cast<std::uint32_t>(size), false};
}

bool textIn(const VARIANT& value, automation::StringView& text) noexcept {
    if (value.vt != VT_BSTR) return false;
    text = viewOfBstr(value.bstrVal);
    return true;
}

void toVariant(VARIANT& target, Variant&& value) {
    VariantInit(&target);
    if (value.isEmpty()) return;
    if (auto* array = value.as<Array>()) {
        const auto type = static_cast<VARTYPE>(array->elementType());
        target.parray = newSafeArray(std::move(*array));
        target.vt = static_cast<VARTYPE>(VT_ARRAY | type);
    } else if (const auto* record = value.as<automation::Record>()) {
        if (!record->isForeign) throw Error(errors::UnsupportedType);
        check(VariantCopy(&target, static_cast<VARIANT*>(record->owner.get())));
    } else if (const auto* object = value.as<ObjectRef>()) {
        target.pdispVal = exportObject(*object);
        target.vt = VT_DISPATCH;
        if (target.pdispVal || !*object) return;
        target.punkVal = exportUnknown(*object);
        target.vt = VT_UNKNOWN;
    } else if (value.as<automation::Null>()) {
        target.vt = VT_NULL;
    } else {
        const auto type = static_cast<VARTYPE>(value.type());
        target.llVal = 0;
        writeAt(type, contentsOf(target, type), std::move(value));
        target.vt = type;
    }
}

SAFEARRAY* newSafeArray(Array&& value) {
    if (!value.hasBounds()) return nullptr;
    const auto type = static_cast<VARTYPE>(value.elementType());
    return makeArray(std::move(value), type, nullptr).release();
}

void prepareAssignment(Assignment& assignment, VARIANT& target, Variant&& value) {
    // What is the same stays as it is, of its own type.
    if (!value.isArray() && fromVariant(target) == value) return;
    const VARTYPE type = target.vt & VT_TYPEMASK;
    if (!(target.vt & VT_BYREF)) {
        prepareWhole(assignment, target, std::move(value));
    } else if (!target.byref) {
        throw Error(errors::TypeMismatch);
    } else if (target.vt & VT_ARRAY) {
        value = automation::changeType(value, arrayOf(elementTypeOf(type)));
        prepareAssignment(assignment, *target.pparray, std::move(*value.as<Array>()));
    } else if (type == VT_VARIANT) {
        if (target.pvarVal->vt == (VT_BYREF | VT_VARIANT)) throw Error(errors::UnsupportedType);
        prepareAssignment(assignment, *target.pvarVal, std::move(value));
    } else {
        prepareContents(assignment, type, target.byref, std::move(value));
    }
}

void prepareAssignment(Assignment& assignment, SAFEARRAY*& target, Array&& value) {
    VARIANT& fresh = asVariant(assignment.value);
    if (hasShape(target, value)) {
        VARTYPE type = VT_EMPTY;
        check(SafeArrayGetVartype(target, &type));
        IID iid;
        const bool typed = target->fFeatures & FADF_HAVEIID && SUCCEEDED(SafeArrayGetIID(target, &iid));
        fresh.parray = makeArray(std::move(value), type, typed ? &iid : nullptr).release();
        fresh.vt = static_cast<VARTYPE>(VT_ARRAY | type);
        assignment.kind = Assignment::Kind::Elements;
        assignment.place = target;
        return;
    }
    requireReplaceable(target);
    const auto type = static_cast<VARTYPE>(value.elementType());
    fresh.parray = newSafeArray(std::move(value));
    fresh.vt = static_cast<VARTYPE>(VT_ARRAY | type);
    assignment.kind = Assignment::Kind::Contents;
    assignment.size = sizeof(SAFEARRAY*);
    assignment.place = &target;
}

void commit(Assignment& assignment) noexcept {
    VARIANT& fresh = asVariant(assignment.value);
    const auto exchange = [](void* left, void* right, std::size_t size) {
        std::swap_ranges(static_cast<char*>(left), static_cast<char*>(left) + size, static_cast<char*>(right));
    };
    switch (assignment.kind) {
    case Assignment::Kind::None:
        break;
    case Assignment::Kind::Whole:
        std::swap(*static_cast<VARIANT*>(assignment.place), fresh);
        break;
    case Assignment::Kind::Contents:
        exchange(assignment.place, &fresh.llVal, assignment.size);
        break;
    case Assignment::Kind::Decimal:
        exchange(static_cast<char*>(assignment.place) + sizeof fresh.vt,
                 reinterpret_cast<char*>(&fresh) + sizeof fresh.vt, sizeof(DECIMAL) - sizeof fresh.vt);
        break;
    case Assignment::Kind::Elements: {
        const auto* target = static_cast<SAFEARRAY*>(assignment.place);
        exchange(target->pvData, fresh.parray->pvData,
                 std::size_t{target->cbElements} * target->rgsabound[0].cElements);
        break;
    }
    }
}

} // namespace tarncom32::com
