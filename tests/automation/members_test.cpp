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
    EXPECT_EQ(probe->call(u"TypeOf"), Variant(10));
    EXPECT_EQ(probe->call(u"TypeOf", Date{1}), Variant(7));
}

TEST(Members, AFlagKeepsTheBitsOfAWholeNumber) {
    using Case = std::pair<Variant, std::int16_t>;
    const auto probe = make<Probe>();
    for (const auto& [value, expected] :
         tests::table(Case(true, -1), Case(u"True", -1), Case(-1, -1), Case(-1.0, -1), Case(u"-1", -1),
                      Case(Currency{-10000}, -1), Case(std::int16_t{1}, 1), Case(2, 2), Case(u"1", 1), Case(1.0, 1),
                      Case(Currency{10000}, 1), Case(std::uint8_t{255}, 255), Case(-32768.0, -32768), Case(65535, 1),
                      Case(65536, 1), Case(0.5, 1), Case(-1.5, 1), Case(u"0", 0), Case({}, 0), Case(0.0, 0)))
        EXPECT_EQ(probe->call(u"Bits", value), Variant(expected));
}

TEST(Members, WhatWasAssignedReachesTheCaller) {
    const auto probe = make<Probe>();
    const std::tuple<Variant, std::int32_t, StringView> cases[] = {
        {2, 0, u"a++"}, {-1, 5, u"a"}, {u"many", 13, u"a"}, {3e9, 6, u"a"}};
    for (const auto& [times, error, text] : cases) {
        Variant arguments[] = {u"a", times};
        EXPECT_EQ(errorOf([&] { probe->invoke(u"Append", Access::Method, arguments); }), error);
        EXPECT_EQ(arguments[0], Variant(text));
    }
    Variant objects[] = {probe, Variant()};
    probe->invoke(u"Swap", Access::Method, objects);
    EXPECT_EQ(objects[0], Variant(ObjectRef()));
    EXPECT_EQ(objects[1], Variant(probe));
    EXPECT_EQ(probe->call(u"Swap", probe), Variant());
    Variant array[] = {Variant()};
    probe->invoke(u"Fill", Access::Method, array);
    ASSERT_TRUE(array[0].isArray());
    EXPECT_EQ(array[0].as<Array>()->upperBound(), 4);
    EXPECT_EQ(probe->call(u"Last", Array(VariantType::Long, 5, 3)), Variant(7));
}

TEST(Members, FailuresOfTheCallItself) {
    const auto probe = make<Probe>();
    using Case = std::tuple<StringView, Access, std::vector<Variant>, std::int32_t>;
    using enum Access;
    for (const auto& [name, access, arguments, number] :
         tests::table(Case(u"Absent", MethodOrGet, {}, 438), Case(u"Join", Let, {u"x"}, 438),
                      Case(u"Join", Method, {}, 449), Case(u"Join", Method, {kMissing}, 449),
                      Case(u"Join", Method, {u"a", u"b", u"c"}, 450), Case(u"Join", Method, {Null{}}, 94),
                      Case(u"Bits", Method, {u"neither"}, 13), Case(u"Last", Method, {Array(VariantType::Long)}, 9),
                      Case(u"Last", Method, {u"no array"}, 13), Case(u"Swap", Method, {std::int16_t{1}}, 13)))
        EXPECT_EQ(numberOfFailure(*probe, MemberName(name), access, arguments), number) << toUtf8(name);
    EXPECT_THROW(probe->enumerate(), Error);
}

TEST(Members, TheEmptyNameIsTheDefaultMember) {
    const auto probe = make<Probe>();
    probe->put(u"Number", u"4.5");
    EXPECT_EQ(probe->get(u""), Variant(4.5));
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
    list->call(u"Add", u"half", kMissing, kMissing, 1);
    String items;
    forEach(*list, [&](const Variant& item) { items += toText(item) + u" "; });
    EXPECT_EQ(items, u"zero half one two three ");
    EXPECT_EQ(list->call(u"Item", u"\u00C9T\u00C9"), Variant(u"two"));
    EXPECT_EQ(list->get(u"", u"first"), Variant(u"one"));
    list->call(u"Remove", u"first");
    EXPECT_EQ(list->call(u"Item", u"\u00E9t\u00E9"), Variant(u"two"));
    EXPECT_EQ(list->call(u"Count"), Variant(4));
    list->call(u"Add", u"again", u"first");
}

TEST(Collection, Refuses) {
    const auto list = make<Collection>();
    list->add(u"item", u"key");
    using Case = std::tuple<StringView, std::vector<Variant>, std::int32_t>;
    const auto cases = tests::table(
        Case(u"Add", {u"x", u"KEY"}, 457), Case(u"Add", {u"x", ErrorValue{5}}, 13), Case(u"Add", {u"x", u""}, 5),
        Case(u"Add", {u"x", std::int16_t{1}}, 13), Case(u"Add", {u"x", u"new", u"nobody"}, 5),
        Case(u"Add", {u"x", u"new", std::int16_t{2}}, 5),
        Case(u"Add", {u"x", u"new", std::int16_t{1}, std::int16_t{1}}, 5), Case(u"Item", {u"absent"}, 5),
        Case(u"Item", {std::int16_t{0}}, 9), Case(u"Item", {std::int16_t{2}}, 9), Case(u"Remove", {u""}, 5));
    for (const auto& [name, arguments, number] : cases)
        EXPECT_EQ(numberOfFailure(*list, MemberName(name), Access::Method, arguments), number) << toUtf8(name);
    EXPECT_EQ(list->count(), 1);
}

} // namespace
} // namespace tarncom32::automation
