#pragma once

#include "automation/variant.h"

#include <vector>

namespace tarncom32::automation {

/// How deep arrays that come from outside may be nested in each other: what walks them takes stack for each level.
inline constexpr int kDeepestNesting = 64;

/// A one-dimensional automation array: an element type, a lower bound, and possibly no bounds at all yet.
/// Elements are held as variants; those of a typed array all have the array's element type.
class Array {
public:
    /// An array without bounds.
    explicit Array(VariantType elementType = VariantType::Variant) : elementType_(elementType) {}
    /// `count` elements with the empty value of their type, the first at `lowerBound`.
    Array(VariantType elementType, std::int32_t lowerBound, std::size_t count);
    /// An array that holds `items`, the first at `lowerBound`; their type must be `elementType`.
    Array(VariantType elementType, std::int32_t lowerBound, std::vector<Variant> items)
        : elementType_(elementType), lowerBound_(lowerBound), hasBounds_(true), items_(std::move(items)) {}

    VariantType elementType() const { return elementType_; }
    bool hasBounds() const { return hasBounds_; }
    /// Raise 9 for an array without bounds; an empty array with bounds has an upper bound of lower bound - 1.
    std::int32_t lowerBound() const;
    std::int32_t upperBound() const;

    std::size_t size() const { return items_.size(); }
    std::vector<Variant>& items() { return items_; }
    const std::vector<Variant>& items() const { return items_; }
    /// The element at `index`, counted from the lower bound. Raises 9 outside the bounds.
    Variant& at(std::int32_t index);
    const Variant& at(std::int32_t index) const { return const_cast<Array*>(this)->at(index); }

    friend bool operator==(const Array&, const Array&) = default;

private:
    VariantType elementType_;
    std::int32_t lowerBound_ = 0;
    bool hasBounds_ = false;
    std::vector<Variant> items_;
};

/// How a member takes an array: always the caller's own, filled or sorted in place, whose elements have a type that the
/// member's declaration fixes (`Variant`: any).
template <VariantType Element>
class ArrayRef {
public:
    ArrayRef(Array& array) : array_(&array) {}
    Array& operator*() const { return *array_; }
    Array* operator->() const { return array_; }

private:
    Array* array_;
};

using StringArray = ArrayRef<VariantType::String>;
using VariantArray = ArrayRef<VariantType::Variant>;

/// The value that a new variable of the type has: 0, "", false, Nothing, or Empty.
Variant emptyValueOf(VariantType type);

} // namespace tarncom32::automation
