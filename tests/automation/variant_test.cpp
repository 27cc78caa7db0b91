#include "automation/array.h"
#include "automation/variant.h"
#include "values.h"

#include <gtest/gtest.h>

namespace tarncom32::automation {
namespace {

TEST(Variant, TypesHaveAutomationsNumbers) {
    const Variant values[] = {Variant(),
                              Null{},
                              std::int16_t{1},
                              std::int32_t{1},
                              1.0f,
                              1.0,
                              Currency{1},
                              Date{1},
                              u"a",
                              ObjectRef{},
                              ErrorValue{1},
                              true,
                              Decimal{},
                              std::uint8_t{1},
                              OtherInteger{VariantType::UnsignedLong, 1},
                              Record{},
                              Array(VariantType::String),
                              VariantType::Long /* an enumeration travels as its number */};
    const int types[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 14, 17, 19, 36, 0x2008, 3};
    ASSERT_EQ(std::size(values), std::size(types));
    for (std::size_t i = 0; i < std::size(types); ++i)
        EXPECT_EQ(static_cast<int>(values[i].type()), types[i]);
}

TEST(Variant, BooleanKeepsItsBits) {
    const Variant flag = Boolean::fromBits(1);
    EXPECT_EQ(flag.as<Boolean>()->value, 1);
    EXPECT_FALSE(flag.as<Boolean>()->isTrue());
    EXPECT_TRUE(flag.as<Boolean>()->isNonZero());
    EXPECT_NE(flag, Variant(true));
    EXPECT_FALSE(Variant(ErrorValue{5}).isMissing()) << "only the error of a left-out parameter is";
}

TEST(Variant, CopiesShareObjectsAndCopyArrays) {
    Variant array = Array(VariantType::Variant, 0, {Variant(1)});
    Variant copy = array;
    array.as<Array>()->at(0) = 2;
    EXPECT_EQ(copy.as<Array>()->at(0), Variant(1));

    const std::size_t before = Object::liveCount();
    const Variant object = make<ObjectWithDefault>(Variant(1));
    const Variant same = object;
    EXPECT_EQ(object, same);
    EXPECT_NE(object, Variant(make<ObjectWithDefault>(Variant(1)))) << "objects are compared by identity";
    EXPECT_EQ(Object::liveCount(), before + 1);
}

TEST(Variant, MovedFromIsEmpty) {
    Variant from = u"text";
    const Variant to = std::move(from);
    EXPECT_TRUE(from.isEmpty());
    EXPECT_EQ(to, Variant(u"text"));
    Variant& alias = from = to;
    from = std::move(alias);
    EXPECT_EQ(from, to) << "assigning a value to itself keeps it";
}

TEST(Array, IndicesCountFromTheLowerBound) {
    Array array(VariantType::Long, -2, 3);
    EXPECT_EQ(array.lowerBound(), -2);
    EXPECT_EQ(array.upperBound(), 0);
    array.at(0) = 7;
    EXPECT_EQ(array.items()[2], Variant(7));
    EXPECT_EQ(array.at(-2), Variant(0)) << "elements start with the empty value of their type";
    EXPECT_EQ(errorOf([&] { array.at(-3); }), errors::SubscriptOutOfRange);
    EXPECT_EQ(errorOf([&] { array.at(1); }), errors::SubscriptOutOfRange);
}

TEST(Array, WithoutElementsIsNotWithoutBounds) {
    const Array empty(VariantType::String, 0, 0);
    EXPECT_TRUE(empty.hasBounds());
    EXPECT_EQ(empty.upperBound(), -1);

    const Array unbounded(VariantType::String);
    EXPECT_FALSE(unbounded.hasBounds());
    EXPECT_EQ(errorOf([&] { unbounded.lowerBound(); }), errors::SubscriptOutOfRange);
    EXPECT_EQ(errorOf([&] { unbounded.upperBound(); }), errors::SubscriptOutOfRange);
    EXPECT_EQ(errorOf([&] { unbounded.at(0); }), errors::SubscriptOutOfRange);
    EXPECT_NE(empty, unbounded);
}

} // namespace
} // namespace tarncom32::automation
