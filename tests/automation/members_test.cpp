#include "automation/collection.h"
#include "automation/events.h"
#include "automation/members.h"
#include "support/table.h"
#include "values.h"

#include <gtest/gtest.h>

namespace tarncom32::automation {
namespace {

/// A class with a parameter of each manner of passing.
class Probe final : public Described<Probe> {
public:
    static constexpr StringView kClassName = u"Probe";
    static const ClassInfo& describe();

    String join(StringView sLeft, StringView sRight) { return String(sLeft) + String(sRight); }
    std::int16_t bits(Boolean bFlag) { return bFlag.value; }
    void append(String& sText, std::int32_t lTimes) {
        for (; lTimes > 0; --lTimes)
            sText += u"+";
        if (lTimes < 0) throw Error(5);
    }
    void fill(StringArray asItems) { *asItems = Array(VariantType::String, 3, {Variant(u"a"), Variant(u"b")}); }
    std::int32_t last(VariantArray avItems) { return avItems->upperBound(); }
    VariantType typeOf(const Variant& vValue) { return static_cast<VariantType>(vValue.type()); }
    void swap(ObjectRef& oLeft, ObjectRef& oRight) { std::swap(oLeft, oRight); }
    double number() { return number_; }
    void setNumber(double fValue) { number_ = fValue; }
    ObjectRef self() { return ObjectRef(this); }

private:
    double number_ = 0;
};

} // namespace

template <>
inline constexpr StringView kEnumerationName<VariantType> = u"VbVarType";

namespace {

const ClassInfo& Probe::describe() {
    static const ClassInfo info(
        kClassName, u"", {}, {},
        {
            member::get<&Probe::number>(kDispidValue, u"Number", {}, u""),
            member::let<&Probe::setNumber>(kDispidValue, u"Number", {in(u"fValue")}, u""),
            member::method<&Probe::join>(1, u"Join", {in(u"sLeft"), optional(in(u"sRight"), u"!")}, u""),
            member::method<&Probe::bits>(2, u"Bits", {in(u"bFlag")}, u""),
            member::method<&Probe::append>(3, u"Append", {inOut(u"sText"), in(u"lTimes")}, u""),
            member::method<&Probe::fill>(4, u"Fill", {out(u"asItems")}, u""),
            member::method<&Probe::last>(5, u"Last", {inOut(u"avItems")}, u""),
            member::method<&Probe::typeOf>(6, u"TypeOf", {optional(in(u"vValue"))}, u""),
            member::method<&Probe::swap>(7, u"Swap", {inOut(u"oLeft"), optional(inOut(u"oRight"))}, u""),
            member::get<&Probe::self>(8, u"Self", {}, u""),
        });
    return info;
}

std::int32_t numberOfFailure(Object& object, const MemberName& name, Access access, std::vector<Variant> arguments) {
    return errorOf([&] { object.invoke(name, access, arguments); });
}

TEST(Members, ArgumentsConvertAsAutomationConverts) {
    const auto probe = make<Probe>();
    EXPECT_EQ(probe->call(u"JOIN", std::int16_t{1}, 2.5), Variant(u"12.5"));
    EXPECT_EQ(probe->call(u"Join", u"a"), Variant(u"a!"));
    EXPECT_EQ(probe->call(u"join", u"a", kMissing), Variant(u"a!"));
    EXPECT_EQ(probe->call(u"TypeOf"), Variant(std::int32_t{10}));
    EXPECT_EQ(probe->call(u"TypeOf", Date{1}), Variant(std::int32_t{7}));
}

TEST(Members, AFlagKeepsTheBitsOfAWholeNumber) {
    const std::pair<Variant, std::int16_t> cases[] = {
        {true, -1},
        {u"True", -1},
        {std::int32_t{-1}, -1},
        {-1.0, -1},
        {u"-1", -1},
        {Currency{-10000}, -1},
        {std::int16_t{1}, 1},
        {std::int32_t{2}, 2},
        {u"1", 1},
        {1.0, 1},
        {Currency{10000}, 1},
        {std::uint8_t{255}, 255},
        {-32768.0, -32768},
        {std::int32_t{65535}, 1},
        {std::int32_t{65536}, 1},
        {0.5, 1},
        {-1.5, 1},
        {u"0", 0},
        {Variant(), 0},
        {0.0, 0},
    };
    const auto probe = make<Probe>();
    for (const auto& [value, expected] : cases)
        EXPECT_EQ(probe->call(u"Bits", value), Variant(expected));
}

TEST(Members, WhatWasAssignedBeforeAFailureReachesTheCaller) {
    const auto probe = make<Probe>();
    Variant arguments[] = {u"a", std::int16_t{2}};
    probe->invoke(u"Append", Access::Method, arguments);
    EXPECT_EQ(arguments[0], Variant(u"a++"));

    Variant failing[] = {u"kept", std::int16_t{-1}};
    EXPECT_THROW(probe->invoke(u"Append", Access::Method, failing), Error);
    EXPECT_EQ(failing[0], Variant(u"kept"));

    Variant unconvertible[] = {u"kept", u"many"};
    EXPECT_THROW(probe->invoke(u"Append", Access::Method, unconvertible), Error);
    EXPECT_EQ(unconvertible[0], Variant(u"kept"));
}

TEST(Members, ArraysAreTheCallersOwn) {
    const auto probe = make<Probe>();
    Variant target[] = {Variant()};
    probe->invoke(u"Fill", Access::Method, target);
    ASSERT_TRUE(target[0].isArray());
    EXPECT_EQ(target[0].as<Array>()->upperBound(), 4);

    EXPECT_EQ(probe->call(u"Last", Array(VariantType::Long, 5, 3)), Variant(std::int32_t{7}));
    EXPECT_EQ(numberOfFailure(*probe, u"Last", Access::Method, {Array(VariantType::Long)}), 9);
    EXPECT_EQ(numberOfFailure(*probe, u"Last", Access::Method, {u"no array"}), 13);
}

TEST(Members, ObjectsByReferenceMayBeEmptyOrLeftOut) {
    const auto probe = make<Probe>();
    Variant both[] = {probe, Variant()};
    probe->invoke(u"Swap", Access::Method, both);
    EXPECT_EQ(both[0], Variant(ObjectRef()));
    EXPECT_EQ(both[1], Variant(probe));
    EXPECT_EQ(probe->call(u"Swap", probe), Variant());
    EXPECT_EQ(numberOfFailure(*probe, u"Swap", Access::Method, {std::int16_t{1}}), 13);
}

TEST(Members, FailuresOfTheCallItself) {
    const auto probe = make<Probe>();
    const std::tuple<StringView, Access, std::vector<Variant>, std::int32_t> cases[] = {
        {u"Absent", Access::MethodOrGet, {}, 438},
        {u"Join", Access::Let, {u"x"}, 438},
        {u"Join", Access::Method, {}, 449},
        {u"Join", Access::Method, {kMissing}, 449},
        {u"Join", Access::Method, {u"a", u"b", u"c"}, 450},
        {u"Bits", Access::Method, {u"neither"}, 13},
        {u"Append", Access::Method, {u"a", 3e9}, 6},
        {u"Join", Access::Method, {Null{}}, 94},
    };
    for (const auto& [name, access, arguments, number] : cases)
        EXPECT_EQ(numberOfFailure(*probe, MemberName(name), access, arguments), number) << toUtf8(name);
}

TEST(Members, TheEmptyNameIsTheDefaultMember) {
    const auto probe = make<Probe>();
    probe->put(u"Number", u"4.5");
    EXPECT_EQ(probe->get(u""), Variant(4.5));
    EXPECT_EQ(toDouble(Variant(probe)), 4.5);
    EXPECT_THROW(probe->enumerate(), Error);
}

TEST(Members, ATableThatContradictsItsClassIsRefused) {
    EXPECT_THROW(member::method<&Probe::join>(1, u"Join", {in(u"sLeft")}, u""), std::logic_error);
    EXPECT_THROW(member::method<&Probe::append>(1, u"Append", {in(u"sText"), in(u"lTimes")}, u""), std::logic_error);
}

TEST(Collection, KeepsOrderAndFindsKeysWithoutRegardToCase) {
    const auto list = make<Collection>();
    list->call(u"Add", u"one", u"First");
    list->call(u"Add", u"three");
    list->call(u"Add", u"two", u"\u00E9t\u00E9", std::int16_t{2});
    list->call(u"Add", u"zero", kMissing, u"FIRST");
    const Variant expected[] = {u"zero", u"one", u"two", u"three"};
    std::size_t at = 0;
    forEach(*list, [&](const Variant& item) { EXPECT_EQ(item, expected[at++]); });
    EXPECT_EQ(at, 4u);
    EXPECT_EQ(list->call(u"Item", u"\u00C9T\u00C9"), Variant(u"two"));
    EXPECT_EQ(list->get(u"", u"first"), Variant(u"one"));
    list->call(u"Remove", u"first");
    EXPECT_EQ(list->call(u"Item", u"\u00E9t\u00E9"), Variant(u"two"));
    EXPECT_EQ(list->call(u"Count"), Variant(std::int32_t{3}));
    list->call(u"Add", u"again", u"first");
}

TEST(Collection, Refuses) {
    const auto list = make<Collection>();
    list->add(u"item", u"key");
    using Case = std::tuple<StringView, std::vector<Variant>, std::int32_t>;
    const auto cases = tests::table(
        Case(u"Add", {u"x", u"KEY"}, 457), Case(u"Add", {u"x", u""}, 5), Case(u"Add", {u"x", std::int16_t{1}}, 13),
        Case(u"Add", {u"x", u"new", u"nobody"}, 5), Case(u"Add", {u"x", u"new", std::int16_t{2}}, 5),
        Case(u"Add", {u"x", u"new", std::int16_t{1}, std::int16_t{1}}, 5), Case(u"Item", {u"absent"}, 5),
        Case(u"Item", {std::int16_t{0}}, 9), Case(u"Item", {std::int16_t{2}}, 9), Case(u"Remove", {u""}, 5));
    for (const auto& [name, arguments, number] : cases)
        EXPECT_EQ(numberOfFailure(*list, MemberName(name), Access::Method, arguments), number) << toUtf8(name);
    EXPECT_EQ(list->count(), 1);
}

} // namespace
} // namespace tarncom32::automation
