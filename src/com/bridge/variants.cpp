#include "com/bridge/variants.h"

#include "automation/convert.h"
#include "automation/error.h"
#include "com/bridge/exported_object.h"
#include "com/bridge/foreign_object.h"

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

/// A record travels as a whole VARIANT.
std::shared_ptr<void> keepRecord(const VARIANT& value) {
    auto copy = std::make_shared<OwnedVariant>();
    if (FAILED(VariantCopyInd(copy.get(), const_cast<VARIANT*>(&value)))) throw Error(errors::TypeMismatch);
    return copy;
}

template <class T>
const T& valueAt(const void* place) {
    return *static_cast<const T*>(place);
}

Variant readAt(VARTYPE type, const void* place) {
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
        return fromVariant(valueAt<VARIANT>(place));
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

/// The automation type of an element of this wire type.
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

/// Puts `object` where a variable for objects stands; for pointers of the interface `iid`, if that is not null.
void writeObject(VariantType type, IUnknown*& place, const ObjectRef& object, const IID* iid) {
    // A variable may hold another interface of its object than late binding's: what did not change stays.
    if (place && importObject(place) == object) return;
    IUnknown* pointer = type == VariantType::Object ? exportObject(object) : exportUnknown(object);
    if (pointer && iid) {
        void* typed = nullptr;
        const HRESULT result = pointer->QueryInterface(*iid, &typed);
        pointer->Release();
        pointer = SUCCEEDED(result) ? static_cast<IUnknown*>(typed) : nullptr;
    }
    if (object && !pointer) throw Error(errors::TypeMismatch);
    if (IUnknown* old = std::exchange(place, pointer)) old->Release();
}

/// Puts `value`, converted to `type`, where a variable of that type stands; what the variable held is freed. A variable
/// for objects may be one for pointers of the interface `iid`.
void writeAt(VARTYPE type, void* place, Variant&& value, const IID* iid = nullptr) {
    if (type == VT_VARIANT) {
        if (FAILED(assignVariant(*static_cast<VARIANT*>(place), std::move(value)))) throw Error(errors::TypeMismatch);
        return;
    }
    const VariantType wanted = elementTypeOf(type);
    if (wanted == VariantType::Object || wanted == VariantType::Unknown) {
        writeObject(wanted, *static_cast<IUnknown**>(place), automation::toObject(value), iid);
        return;
    }
    if (value.type() != wanted) value = automation::changeType(value, wanted);
    if (const auto* text = value.as<automation::String>()) {
        BSTR fresh = newBstr(*text);
        if (!fresh) throw std::bad_alloc();
        SysFreeString(std::exchange(*static_cast<BSTR*>(place), fresh));
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

/// The HRESULT of the exception in flight.
HRESULT resultOfFailure() noexcept {
    try {
        throw;
    } catch (const Error& error) {
        switch (error.number()) {
        case errors::TypeMismatch:
            return DISP_E_TYPEMISMATCH;
        case errors::Overflow:
            return DISP_E_OVERFLOW;
        case errors::UnsupportedType:
            return DISP_E_BADVARTYPE;
        default:
            return error.hresult();
        }
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (const std::exception&) {
        return E_UNEXPECTED;
    }
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

void fill(SAFEARRAY* array, std::vector<Variant> items) {
    const LockedElements elements(array);
    IID iid;
    const bool typed = array->fFeatures & FADF_HAVEIID && SUCCEEDED(SafeArrayGetIID(array, &iid));
    for (std::size_t i = 0; i < items.size(); ++i)
        writeAt(elements.type(), elements[i], std::move(items[i]), typed ? &iid : nullptr);
}

struct DestroyArray {
    void operator()(SAFEARRAY* array) const { SafeArrayDestroy(array); }
};

SAFEARRAY* newSafeArray(const Array& value) {
    if (!value.hasBounds()) return nullptr;
    SAFEARRAYBOUND bound{static_cast<ULONG>(value.size()), value.lowerBound()};
    const auto type = static_cast<VARTYPE>(value.elementType());
    std::unique_ptr<SAFEARRAY, DestroyArray> fresh(SafeArrayCreate(type, 1, &bound));
    if (!fresh) throw std::bad_alloc();
    fill(fresh.get(), value.items());
    return fresh.release();
}

/// Whether `target` can take the elements of `value` as it stands.
bool hasShape(SAFEARRAY* target, const Array& value) {
    VARTYPE type = VT_EMPTY;
    return target && value.hasBounds() && SafeArrayGetDim(target) == 1 &&
           SUCCEEDED(SafeArrayGetVartype(target, &type)) && elementTypeOf(type) == value.elementType() &&
           target->rgsabound[0].cElements == value.size() && target->rgsabound[0].lLbound == value.lowerBound();
}

void assignContents(VARIANT& target, Variant&& value) {
    if (target.vt == (VT_BYREF | VT_VARIANT)) {
        assignContents(*target.pvarVal, std::move(value));
        return;
    }
    if (target.vt & VT_BYREF && target.vt & VT_ARRAY)
        value = automation::changeType(value, arrayOf(elementTypeOf(target.vt & VT_TYPEMASK)));
    const Array* array = value.as<Array>();
    if ((target.vt & VT_ARRAY) && array && (target.vt & VT_BYREF || hasShape(target.parray, *array))) {
        const HRESULT result = assignSafeArray(target.vt & VT_BYREF ? *target.pparray : target.parray, *array);
        if (FAILED(result)) throw Error::fromHresult(result);
    } else if (target.vt & VT_BYREF) {
        writeAt(target.vt & VT_TYPEMASK, target.byref, std::move(value));
    } else {
        VARIANT fresh;
        initVariant(fresh, std::move(value));
        if (const HRESULT result = VariantClear(&target); FAILED(result)) {
            VariantClear(&fresh);
            throw Error::fromHresult(result);
        }
        target = fresh;
    }
}

} // namespace

Variant fromVariant(const VARIANT& value) {
    const VARTYPE type = value.vt & VT_TYPEMASK;
    // Other flags change what the value is, and no VARIANT has them.
    if (value.vt & ~(VT_TYPEMASK | VT_ARRAY | VT_BYREF)) throw Error(errors::UnsupportedType);
    if (value.vt & VT_ARRAY) {
        const bool byReference = (value.vt & VT_BYREF) != 0;
        if (byReference && !value.pparray) throw Error(errors::TypeMismatch);
        SAFEARRAY* array = byReference ? *value.pparray : value.parray;
        return array ? Variant(fromSafeArray(array, VariantType::Variant)) : Variant(Array(elementTypeOf(type)));
    }
    if (type == VT_RECORD) return automation::Record{keepRecord(value)};
    if (value.vt & VT_BYREF) return readAt(type, value.byref);
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

void initVariant(VARIANT& target, Variant&& value) noexcept {
    VariantInit(&target);
    try {
        const VariantType type = value.type();
        if (value.isEmpty()) return;
        if (const auto* array = value.as<Array>()) {
            target.parray = newSafeArray(*array);
            target.vt = static_cast<VARTYPE>(VT_ARRAY | static_cast<VARTYPE>(array->elementType()));
        } else if (const auto* record = value.as<automation::Record>()) {
            if (record->value) VariantCopy(&target, static_cast<VARIANT*>(record->value.get()));
        } else if (value.isObject()) {
            const ObjectRef& reference = *value.as<ObjectRef>();
            target.pdispVal = exportObject(reference);
            target.vt = VT_DISPATCH;
            if (target.pdispVal || !reference) return;
            target.punkVal = exportUnknown(reference);
            target.vt = VT_UNKNOWN;
        } else if (type == VariantType::Null) {
            target.vt = VT_NULL;
        } else {
            const auto wire = static_cast<VARTYPE>(type);
            target.llVal = 0;
            writeAt(wire, contentsOf(target, wire), std::move(value));
            target.vt = wire;
        }
    } catch (const std::exception&) {
        target.vt = VT_EMPTY; // See the header.
    }
}

HRESULT assignVariant(VARIANT& target, Variant&& value) noexcept {
    try {
        assignContents(target, std::move(value));
        return S_OK;
    } catch (const std::exception&) {
        return resultOfFailure();
    }
}

Array fromSafeArray(SAFEARRAY* array, VariantType element) {
    if (!array) return Array(element);
    const LockedElements elements(array);
    const VariantType type = elementTypeOf(elements.type());
    if (element != VariantType::Variant && type != element) throw Error(errors::TypeMismatch);
    std::vector<Variant> items;
    items.reserve(elements.size());
    for (std::size_t i = 0; i < elements.size(); ++i)
        items.push_back(readAt(elements.type(), elements[i]));
    return Array(type, elements.lowerBound(), std::move(items));
}

HRESULT assignSafeArray(SAFEARRAY*& target, const Array& value) noexcept {
    try {
        if (hasShape(target, value)) {
            fill(target, value.items());
            return S_OK;
        }
        std::unique_ptr<SAFEARRAY, DestroyArray> fresh(newSafeArray(value));
        if (target) {
            // The memory of such an array is its owner's, and so is its size.
            constexpr unsigned kFixed = FADF_AUTO | FADF_STATIC | FADF_EMBEDDED | FADF_FIXEDSIZE;
            if (target->fFeatures & kFixed) return DISP_E_ARRAYISLOCKED;
            if (const HRESULT result = SafeArrayDestroy(target); FAILED(result)) return result;
        }
        target = fresh.release();
        return S_OK;
    } catch (const std::exception&) {
        return resultOfFailure();
    }
}

} // namespace tarncom32::com
