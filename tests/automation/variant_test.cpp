#include "automation/array.h"
#include "automation/variant.h"
#include "values.h"

#include <gtest/gtest.h>

namespace tarncom32::automation {
namespace {

TEST(Variant, TypesHaveAutomationsNumbers) {
    const struct {
        Variant value;
        int type;
    } cases[] = {
        {{}, 0},
        {Null{}, 1},
        {std::int16_t{1}, 2},
        {std::int32_t{1}, 3},
        {1.0f, 4},
        {1.0, 5},
        {Currency{1}, 6},
        {Date{1}, 7},
        {u"a", 8},
        {ObjectRef{}, 9},
        {ErrorValue{1}, 10},
        {true, 11},
        {Decimal{}, 14},
        {std::uint8_t{1}, 17},
        {OtherInteger{VariantType::UnsignedLong, 1}, 19},
        {Record{}, 36},
        {Array(VariantType::String), 0x2008},
        {VariantType::Long, 3}, // an enumeration travels as its number
    };
    for (const auto& c : cases)
        EXPECT_EQ(static_cast<int>(c.value.type()), c.type);
}

TEST(Variant, BooleanKeepsItsBits) {
    const Variant flag = Boolean::fromBits(1);
    EXPECT_EQ(flag.as<Boolean>()->value, 1);
    EXPECT_FALSE(flag.as<Boolean>()->isTrue());
    EXPECT_TRUE(flag.as<Boolean>()->isNonZero());
    EXPECT_NE(flag, Variant(true));
}

TEST(Variant, CopiesShareObjectsAndCopyArrays) {
    Variant array = Array(VariantType::Variant, 0, {Variant(1)});
    Variant copy = array;
    array.as<Array>()->at(0) = 2;
    EXPECT_EQ(copy.as<Array>()->at(0), Variant(1));

    const std::size_t before = Object::liveCount();
    {
        const Variant object = make<ObjectWithDefault>(Variant(1));
        const Variant same = object;
        EXPECT_EQ(object, same);
        EXPECT_NE(object, Variant(make<ObjectWithDefault>(Variant(1)))) << "objects are compared by identity";
        EXPECT_EQ(Object::liveCount(), before + 1);
    }
    EXPECT_EQ(Object::liveCount(), before);
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

TEST(Variant, OnlyTheParameterNotFoundErrorIsMissing) {
    EXPECT_TRUE(Variant(kMissing).isMissing());
    EXPECT_FALSE(Variant(ErrorValue{5}).isMissing());
    EXPECT_FALSE(Variant().isMissing());
}

TEST(Variant, NothingHasNoMembers) {
    EXPECT_EQ(errorNumberOf([] { deref(ObjectRef()); }), errors::ObjectNotSet);
}

} // namespace
} // namespace tarncom32::automation
