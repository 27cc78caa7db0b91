#include "automation/array.h"
#include "automation/convert.h"
#include "values.h"

#include <gtest/gtest.h>

#include <limits>

namespace tarncom32::automation {
namespace {

using T = VariantType;

// The raised error, or the converted value: one kind of result for both kinds of case.
struct Outcome {
    Variant value;
    std::int32_t error = 0;
    friend bool operator==(const Outcome&, const Outcome&) = default;
};

Outcome convert(const Variant& value, VariantType type) {
    Outcome outcome;
    outcome.error = errorOf([&] { outcome.value = changeType(value, type); });
    return outcome;
}

Outcome raises(std::int32_t error) {
    return {{}, error};
}
Outcome gives(Variant value) {
    return {std::move(value)};
}
Variant other(VariantType type, std::int64_t number) {
    return OtherInteger{type, static_cast<std::uint64_t>(number)};
}
Variant i2(int number) {
    return static_cast<std::int16_t>(number);
}
Variant byte(int number) {
    return static_cast<std::uint8_t>(number);
}

struct Case {
    Variant from;
    VariantType type;
    Outcome expected;
};

void check(std::initializer_list<Case> cases) {
    int line = 0;
    for (const Case& c : cases) {
        const Outcome actual = convert(c.from, c.type);
        EXPECT_TRUE(actual == c.expected) << "case " << line << ": error " << actual.error;
        ++line;
    }
}

TEST(Convert, WholeNumbersRoundHalfToEvenAndOverflow) {
    check({
        {0.5, T::Integer, gives(i2(0))},
        {2.5f, T::Long, gives(2)},
        {-0.5, T::Byte, gives(byte(0))},
        {-1.5, T::Long, gives(-2)},
        {u"2.5", T::Long, gives(2)},
        {u"2.50000000000000000001", T::Long, gives(3)}, // more than a double tells apart
        {Currency{25000}, T::Long, gives(2)},
        {Currency{-35000}, T::Long, gives(-4)},
        {Decimal{0, 25, 1, false}, T::Long, gives(2)},
        {Date{36526.75}, T::Long, gives(36527)},
        {32767.4, T::Integer, gives(i2(32767))},
        {32767.5, T::Integer, raises(6)},
        {i2(-1), T::Byte, raises(6)},
        {2147483647.5, T::Long, raises(6)},
        {-2147483648.5, T::Long, gives(-2147483647 - 1)},
        {std::numeric_limits<double>::quiet_NaN(), T::Long, raises(6)},
        {9223372036854775807.0, T::LongLong, raises(6)},
        {u"9223372036854775807", T::LongLong, gives(other(T::LongLong, std::numeric_limits<std::int64_t>::max()))},
        {u"-9223372036854775809", T::LongLong, raises(6)},
        {u"18446744073709551615", T::UnsignedLongLong, gives(other(T::UnsignedLongLong, -1))},
        {u"-1", T::UnsignedLong, raises(6)},
        {other(T::UnsignedLong, 0xFFFFFFFF), T::Long, raises(6)},
        {other(T::SignedByte, -5), T::Long, gives(-5)},
    });
}

TEST(Convert, HexadecimalTextFillsTheBitsOfTheType) {
    check({
        {u"&HFFFF", T::Integer, gives(i2(-1))},
        {u"&HFFFF", T::Long, gives(65535)},
        {u"&HFFFFFFFF", T::Long, gives(-1)},
        {u"&HFFFFFFFF", T::Double, gives(4294967295.0)},
        {u"&H100", T::Byte, raises(6)},
        {u"&HFF", T::SignedByte, gives(other(T::SignedByte, -1))},
        {u"&H10", T::Decimal, gives(Decimal{0, 16, 0, false})},
    });
}

TEST(Convert, BooleansAndNumbers) {
    check({
        {true, T::Integer, gives(i2(-1))},
        {true, T::Byte, gives(byte(255))},
        {true, T::Double, gives(-1.0)},
        {true, T::UnsignedLong, gives(other(T::UnsignedLong, 0xFFFFFFFF))},
        {Boolean::fromBits(1), T::Long, gives(1)},
        {Boolean::fromBits(1), T::Boolean, gives(Boolean::fromBits(1))},
        {Boolean::fromBits(1), T::String, gives(u"True")},
        {false, T::String, gives(u"False")},
        {1, T::Boolean, gives(true)},
        {0.1, T::Boolean, gives(true)},
        {Decimal{0, 1, 28, false}, T::Boolean, gives(true)},
        {u"tRUE", T::Boolean, gives(true)},
        {u"#FALSE#", T::Boolean, gives(false)},
        {u"&H1", T::Boolean, gives(true)},
        {u"yes", T::Boolean, raises(13)},
    });
}

TEST(Convert, RealNumbers) {
    check({
        {1e39, T::Single, raises(6)},
        {u"0.1", T::Single, gives(0.1f)},
        {u"1E-400", T::Double, gives(0.0)},
        {Currency{1}, T::Double, gives(0.0001)},
        {Decimal{0, 1, 1, true}, T::Double, gives(-0.1)},
        {2958466.0, T::Date, raises(6)},
        {-657435.0, T::Date, raises(6)},
        {Date{1.5}, T::Double, gives(1.5)},
    });
}

TEST(Convert, CurrencyHasFourDecimals) {
    using C = Currency;
    check({
        {u"1.00005", T::Currency, gives(C{10000})},
        {u"1.00015", T::Currency, gives(C{10002})},
        {u"922337203685477.5807", T::Currency, gives(C{std::numeric_limits<std::int64_t>::max()})},
        {u"922337203685477.5808", T::Currency, raises(6)},
        {u"-922337203685477.5808", T::Currency, gives(C{std::numeric_limits<std::int64_t>::min()})},
        {-0.00005, T::Currency, gives(C{0})},
        {12345678901.2345, T::Currency, gives(C{123456789012345})},
        {kLargestDecimal, T::Currency, raises(6)},
        {7, T::Currency, gives(C{70000})},
    });
}

TEST(Convert, DecimalHas96Bits) {
    using D = Decimal;
    check({
        {u"1.50", T::Decimal, gives(D{0, 15, 1, false})},
        {u"-0", T::Decimal, gives(D{})},
        {u"79228162514264337593543950335", T::Decimal, gives(kLargestDecimal)},
        {u"79228162514264337593543950336", T::Decimal, raises(6)},
        {u"79228162514264337593543950335.4", T::Decimal, gives(kLargestDecimal)},
        {u"79228162514264337593543950335.5", T::Decimal, raises(6)},
        {u"18446744073709551616", T::Decimal, gives(D{1, 0, 0, false})},
        {u"1E-28", T::Decimal, gives(D{0, 1, 28, false})},
        {u"5E-29", T::Decimal, gives(D{})}, // a half, to even
        {u"1E999", T::Decimal, raises(6)},
        {0.1, T::Decimal, gives(D{0, 1, 1, false})},
        {0.1f, T::Decimal, gives(D{0, 1, 1, false})},
        {std::numeric_limits<double>::infinity(), T::Decimal, raises(6)},
        {1e29, T::Decimal, raises(6)},
        {-7, T::Decimal, gives(D{0, 7, 0, true})},
        {Currency{-15000}, T::Decimal, gives(D{0, 15, 1, true})},
    });
}

TEST(Convert, EmptyNullAndValuesWithoutAReading) {
    check({
        {{}, T::Long, gives(0)},
        {{}, T::String, gives(u"")},
        {{}, T::Boolean, gives(false)},
        {{}, T::Date, gives(Date{})},
        {{}, T::Object, gives(ObjectRef())},
    });
    for (const VariantType type : {T::Byte, T::Integer, T::Long, T::Single, T::Double, T::Currency, T::Date, T::String,
                                   T::Boolean, T::Decimal, T::LongLong}) {
        EXPECT_EQ(convert(Null{}, type), raises(94));
        EXPECT_EQ(convert(kMissing, type), raises(13));
        EXPECT_EQ(convert(Record{}, type), raises(13));
        EXPECT_EQ(convert(Array(T::Long, 0, 1), type), raises(13));
    }
    EXPECT_EQ(convert(u"", T::Long), raises(13));
    EXPECT_EQ(convert(1, T::Object), raises(13));
}

TEST(Convert, ObjectsReadAsTheirDefaultMember) {
    const auto number = make<ObjectWithDefault>(2.5);
    const auto chain = make<ObjectWithDefault>(number);
    EXPECT_EQ(toLong(chain), 2);
    EXPECT_EQ(toText(chain), u"2.5");
    EXPECT_EQ(toDate(chain), Date{2.5});
    EXPECT_TRUE(toBoolean(make<ObjectWithDefault>(u"true")).isTrue());
    EXPECT_TRUE(isNumeric(chain));
    EXPECT_EQ(toObject(number), ObjectRef(number));
    EXPECT_EQ(convert(ObjectRef(), T::Long), raises(91));
}

TEST(Convert, ArraysElementByElement) {
    const auto arrayOf = [](VariantType element) {
        return static_cast<VariantType>(static_cast<unsigned>(element) | static_cast<unsigned>(T::Array));
    };
    using A = Array;
    check({
        {A(T::Variant, 3, {u"1", 2.5}), arrayOf(T::Long), gives(A(T::Long, 3, {1, 2}))},
        {A(T::Variant, 0, {u"x"}), arrayOf(T::Long), raises(13)},
        {A(T::Variant), arrayOf(T::String), gives(A(T::String))},
        {A(T::Long, 0, {Variant(1)}), T::String, raises(13)},
        {1, arrayOf(T::Long), raises(13)},
    });
}

TEST(Convert, NumericIsWhatReadsAsANumber) {
    for (const Variant& value : {Variant(), Variant(1), Variant(true), Variant(u" (1,000) "), Variant(u"&HFF")})
        EXPECT_TRUE(isNumeric(value));
    for (const Variant& value : {Variant(Null{}), Variant(u""), Variant(u"1/2/2000"), Variant(Date{1}),
                                 Variant(kMissing), Variant(ObjectRef()), Variant(Array(T::Long, 0, 1))})
        EXPECT_FALSE(isNumeric(value));
}

} // namespace
} // namespace tarncom32::automation
