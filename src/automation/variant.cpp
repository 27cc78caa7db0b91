#include "automation/variant.h"

#include "automation/array.h"

namespace tarncom32::automation {

namespace {

struct TypeOf {
    VariantType operator()(std::monostate) const { return VariantType::Empty; }
    VariantType operator()(Null) const { return VariantType::Null; }
    VariantType operator()(std::uint8_t) const { return VariantType::Byte; }
    VariantType operator()(std::int16_t) const { return VariantType::Integer; }
    VariantType operator()(std::int32_t) const { return VariantType::Long; }
    VariantType operator()(float) const { return VariantType::Single; }
    VariantType operator()(double) const { return VariantType::Double; }
    VariantType operator()(Currency) const { return VariantType::Currency; }
    VariantType operator()(Date) const { return VariantType::Date; }
    VariantType operator()(Decimal) const { return VariantType::Decimal; }
    VariantType operator()(ErrorValue) const { return VariantType::Error; }
    VariantType operator()(OtherInteger other) const { return other.type; }
    VariantType operator()(const Record&) const { return VariantType::Record; }
    VariantType operator()(Boolean) const { return VariantType::Boolean; }
    VariantType operator()(const String&) const { return VariantType::String; }
    VariantType operator()(const ObjectRef&) const { return VariantType::Object; }
    VariantType operator()(const ArrayBox& array) const {
        return static_cast<VariantType>(static_cast<unsigned>(VariantType::Array) |
                                        static_cast<unsigned>((*array).elementType()));
    }
};

} // namespace

ArrayBox::ArrayBox(Array array) : array_(std::make_unique<Array>(std::move(array))) {}
ArrayBox::ArrayBox(const ArrayBox& other) : array_(std::make_unique<Array>(*other)) {}
ArrayBox::ArrayBox(ArrayBox&& other) noexcept = default;
ArrayBox::~ArrayBox() = default;

ArrayBox& ArrayBox::operator=(ArrayBox other) noexcept {
    std::swap(array_, other.array_);
    return *this;
}

bool operator==(const ArrayBox& left, const ArrayBox& right) {
    return *left == *right;
}

Variant::Variant(Array value) : value_(ArrayBox(std::move(value))) {}

VariantType Variant::type() const noexcept {
    return std::visit(TypeOf{}, value_);
}

} // namespace tarncom32::automation
