#include "automation/array.h"
#include "values.h"

#include <gtest/gtest.h>

namespace tarncom32::automation {
namespace {

TEST(Array, IndicesCountFromTheLowerBound) {
    Array array(VariantType::Long, -2, 3);
    EXPECT_EQ(array.lowerBound(), -2);
    EXPECT_EQ(array.upperBound(), 0);
    array.at(0) = 7;
    EXPECT_EQ(array.items()[2], Variant(7));
    EXPECT_EQ(array.at(-2), Variant(0)) << "elements start with the empty value of their type";
    EXPECT_EQ(errorNumberOf([&] { array.at(-3); }), errors::SubscriptOutOfRange);
    EXPECT_EQ(errorNumberOf([&] { array.at(1); }), errors::SubscriptOutOfRange);
}

TEST(Array, WithoutElementsIsNotWithoutBounds) {
    const Array empty(VariantType::String, 0, 0);
    EXPECT_TRUE(empty.hasBounds());
    EXPECT_EQ(empty.upperBound(), -1);

    const Array unbounded(VariantType::String);
    EXPECT_FALSE(unbounded.hasBounds());
    EXPECT_EQ(errorNumberOf([&] { unbounded.lowerBound(); }), errors::SubscriptOutOfRange);
    EXPECT_EQ(errorNumberOf([&] { unbounded.upperBound(); }), errors::SubscriptOutOfRange);
    EXPECT_EQ(errorNumberOf([&] { unbounded.at(0); }), errors::SubscriptOutOfRange);
    EXPECT_NE(empty, unbounded);
}

} // namespace
} // namespace tarncom32::automation
