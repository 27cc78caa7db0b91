#include "automation/array.h"

#include "automation/error.h"

namespace tarncom32::automation {

Array::Array(VariantType elementType, std::int32_t lowerBound, std::size_t count)
    : elementType_(elementType), lowerBound_(lowerBound), hasBounds_(true), items_(count, emptyValueOf(elementType)) {}

std::int32_t Array::lowerBound() const {
    if (!hasBounds_) throw Error(errors::SubscriptOutOfRange);
    return lowerBound_;
}

std::int32_t Array::upperBound() const {
    return static_cast<std::int32_t>(lowerBound() + static_cast<std::int64_t>(items_.size()) - 1);
}

Variant& Array::at(std::int32_t index) {
    const std::int64_t offset = static_cast<std::int64_t>(index) - lowerBound();
    if (offset < 0 || offset >= static_cast<std::int64_t>(items_.size())) throw Error(errors::SubscriptOutOfRange);
    return items_[static_cast<std::size_t>(offset)];
}

Variant emptyValueOf(VariantType type) {
    switch (type) {
    case VariantType::Null:
        return Null{};
    case VariantType::Integer:
        return std::int16_t{0};
    case VariantType::Long:
        return std::int32_t{0};
    case VariantType::Single:
        return 0.0f;
    case VariantType::Double:
        return 0.0;
    case VariantType::Currency:
        return Currency{};
    case VariantType::Date:
        return Date{};
    case VariantType::String:
        return String{};
    case VariantType::Object:
    case VariantType::Unknown:
        return ObjectRef{};
    case VariantType::Error:
        return ErrorValue{};
    case VariantType::Boolean:
        return Boolean{};
    case VariantType::Decimal:
        return Decimal{};
    case VariantType::Byte:
        return std::uint8_t{0};
    case VariantType::SignedByte:
    case VariantType::UnsignedInteger:
    case VariantType::UnsignedLong:
    case VariantType::LongLong:
    case VariantType::UnsignedLongLong:
        return OtherInteger{type, 0};
    case VariantType::Record:
        return Record{};
    case VariantType::Empty:
    case VariantType::Variant:
    case VariantType::Array:
        break;
    }
    return {};
}

} // namespace tarncom32::automation
