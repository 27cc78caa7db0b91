#include "automation/array.h"
#include "automation/convert.h"
#include "values.h"

#include <gtest/gtest.h>

#include <limits>

namespace tarncom32::automation {
namespace {

using T = VariantType;
using B = std::uint8_t;
using I = std::int16_t;

constexpr ErrorValue kOverflow{6};
constexpr ErrorValue kMismatch{13};
constexpr auto kMost64 = std::numeric_limits<std::int64_t>::max();
constexpr auto kLeast64 = std::numeric_limits<std::int64_t>::min();

// The converted value, or the error that was raised in place of it.
Variant converted(const Variant& value, VariantType type) {
    Variant result;
    const std::int32_t error = errorOf([&] { result = changeType(value, type); });
    return error ? ErrorValue{error} : result;
}

using Row = std::pair<Variant, Variant>; // a value, and what it is once it is converted

void expect(VariantType type, const auto&... rows) {
    for (int number = 0; const Row& row : {rows...}) {
        EXPECT_TRUE(converted(row.first, type) == row.second) << "row " << number << " to " << static_cast<int>(type);
        ++number;
    }
}

Variant other(VariantType type, std::int64_t number) {
    return OtherInteger{type, static_cast<std::uint64_t>(number)};
}

TEST(Convert, WholeNumbersRoundHalfToEvenAndOverflow) {
    expect(T::Byte, Row(-0.5, B{0}), Row(I{-1}, kOverflow), Row(true, B{255}), Row(u"&H100", kOverflow));
    expect(T::Integer, Row(0.5, I{0}), Row(32767.4, I{32767}), Row(32767.5, kOverflow), Row(true, I{-1}),
           Row(u"&HFFFF", I{-1}));
    expect(T::Long, Row(2.5f, 2), Row(-1.5, -2), Row(u"2.5", 2), Row(Currency{25000}, 2), Row(Currency{-35000}, -4),
           Row({}, 0), Row(Decimal{0, 25, 1, false}, 2), Row(Date{36526.75}, 36527), Row(2147483647.5, kOverflow),
           Row(-2147483648.5, -2147483647 - 1), Row(std::numeric_limits<double>::quiet_NaN(), kOverflow),
           Row(Boolean::fromBits(1), 1), Row(u"&HFFFF", 65535), Row(u"&HFFFFFFFF", -1),
           Row(u"2.50000000000000000001", 3), // more than a double tells apart
           Row(other(T::UnsignedLong, 0xFFFFFFFF), kOverflow), Row(other(T::SignedByte, -5), -5));
    expect(T::LongLong, Row(9223372036854775807.0, kOverflow), Row(u"-9223372036854775809", kOverflow),
           Row(u"9223372036854775807", other(T::LongLong, kMost64)));
    expect(T::UnsignedLongLong, Row(u"18446744073709551615", other(T::UnsignedLongLong, -1)));
    expect(T::UnsignedLong, Row(u"-1", kOverflow), Row(true, other(T::UnsignedLong, 0xFFFFFFFF)));
    expect(T::SignedByte, Row(u"&HFF", other(T::SignedByte, -1)));
}

TEST(Convert, BooleansAndTexts) {
    expect(T::Boolean, Row(Boolean::fromBits(1), Boolean::fromBits(1)), Row(1, true), Row(0.1, true),
           Row(Decimal{0, 1, 28, false}, true), Row(u"tRUE", true), Row(u"#FALSE#", false), Row(u"&H1", true),
           Row(u"yes", kMismatch), Row({}, false));
    expect(T::String, Row(Boolean::fromBits(1), u"True"), Row(false, u"False"), Row({}, u""));
}

TEST(Convert, RealNumbersAndDates) {
    expect(T::Single, Row(1e39, kOverflow), Row(u"0.1", 0.1f));
    expect(T::Double, Row(u"1E-400", 0.0), Row(Currency{1}, 0.0001), Row(Decimal{0, 1, 1, true}, -0.1),
           Row(Date{1.5}, 1.5), Row(true, -1.0), Row(u"&HFFFFFFFF", 4294967295.0));
    expect(T::Date, Row(2958466.0, kOverflow), Row(-657435.0, kOverflow), Row({}, Date{}));
}

TEST(Convert, CurrencyHasFourDecimals) {
    using C = Currency;
    expect(T::Currency, Row(u"1.00005", C{10000}), Row(u"1.00015", C{10002}), Row(u"922337203685477.5807", C{kMost64}),
           Row(u"922337203685477.5808", kOverflow), Row(u"-922337203685477.5808", C{kLeast64}), Row(-0.00005, C{0}),
           Row(12345678901.2345, C{123456789012345}), Row(kLargestDecimal, kOverflow), Row(7, C{70000}));
}

TEST(Convert, DecimalHas96Bits) {
    using D = Decimal;
    expect(T::Decimal, Row(u"1.50", D{0, 15, 1, false}), Row(u"-0", D{}), Row(u"&H10", D{0, 16, 0, false}),
           Row(u"79228162514264337593543950335", kLargestDecimal), Row(u"79228162514264337593543950336", kOverflow),
           Row(u"79228162514264337593543950335.4", kLargestDecimal), Row(u"79228162514264337593543950335.5", kOverflow),
           Row(u"18446744073709551616", D{1, 0, 0, false}), Row(u"1E-28", D{0, 1, 28, false}),
           Row(u"5E-29", D{}), // a half, to even
           Row(u"1E999", kOverflow), Row(0.1, D{0, 1, 1, false}), Row(0.1f, D{0, 1, 1, false}),
           Row(std::numeric_limits<double>::infinity(), kOverflow), Row(1e29, kOverflow), Row(-7, D{0, 7, 0, true}),
           Row(Currency{-15000}, D{0, 15, 1, true}));
}

TEST(Convert, NullAndValuesWithoutAReading) {
    for (const VariantType type : {T::Byte, T::Integer, T::Long, T::Single, T::Double, T::Currency, T::Date, T::String,
                                   T::Boolean, T::Decimal, T::LongLong})
        expect(type, Row(Null{}, ErrorValue{94}), Row(kMissing, kMismatch), Row(Record{}, kMismatch),
               Row(Array(T::Long, 0, 1), kMismatch));
    expect(T::Long, Row(u"", kMismatch), Row(ObjectRef(), ErrorValue{91}));
    expect(T::Object, Row(1, kMismatch), Row({}, ObjectRef()));
}

TEST(Convert, ObjectsReadAsTheirDefaultMember) {
    const auto number = make<ObjectWithDefault>(2.5);
    const auto chain = make<ObjectWithDefault>(number);
    EXPECT_EQ(toLong(chain), 2);
    EXPECT_EQ(toText(chain), u"2.5");
    EXPECT_EQ(toDate(chain), Date{2.5});
    EXPECT_TRUE(toBoolean(make<ObjectWithDefault>(u"true")).isTrue());
    EXPECT_TRUE(isNumeric(chain));
}

TEST(Convert, ArraysElementByElement) {
    constexpr auto arrayOf = [](VariantType element) {
        return static_cast<VariantType>(static_cast<unsigned>(element) | static_cast<unsigned>(T::Array));
    };
    using A = Array;
    expect(arrayOf(T::Long), Row(A(T::Variant, 3, {u"1", 2.5}), A(T::Long, 3, {1, 2})),
           Row(A(T::Variant, 0, {u"x"}), kMismatch), Row(1, kMismatch));
    expect(arrayOf(T::String), Row(A(T::Variant), A(T::String)));
    expect(T::String, Row(A(T::Long, 0, {Variant(1)}), kMismatch));
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
