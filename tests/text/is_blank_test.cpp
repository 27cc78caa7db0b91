#include "support/test_platform.h"
#include "text/string_functions.h"

#include <gtest/gtest.h>

namespace tarncom32::text {
namespace {

using automation::Currency;
using automation::Date;
using automation::Decimal;
using automation::VariantType;

class IsBlank : public testing::Test {
protected:
    bool isBlank(const Variant& value) { return functions_->isBlank(value).isTrue(); }

private:
    tests::TestPlatform platform_;
    automation::Ref<StringFunctions> functions_ = automation::make<StringFunctions>(platform_.platform);
};

TEST_F(IsBlank, JudgesSingleValuesByTheirType) {
    const struct {
        const char* what;
        Variant value;
        bool blank;
    } cases[] = {
        {"Empty", {}, true},
        {"Null", automation::Null{}, true},
        {"an error", automation::ErrorValue{5}, true},
        {"a record", automation::Record{std::make_shared<int>(1)}, true},
        {"a number type that hosts lack", automation::OtherInteger{VariantType::LongLong, 7}, true},
        {"byte 0", std::uint8_t{0}, true},
        {"byte 1", std::uint8_t{1}, false},
        {"integer 0", std::int16_t{0}, true},
        {"integer -1", std::int16_t{-1}, false},
        {"long 65536", std::int32_t{65536}, false},
        {"single 0", 0.0f, true},
        {"a tiny double", 1e-300, false},
        {"negative zero", -0.0, true},
        {"currency 0", Currency{0}, true},
        {"a ten-thousandth", Currency{1}, false},
        {"the zero date", Date{0}, true},
        {"noon of the zero date", Date{0.5}, false},
        {"decimal 0.00", Decimal{0, 0, 2, true}, true},
        {"a high decimal", Decimal{1, 0, 0, false}, false},
        {"no text", u"", true},
        {"spaces", u"   ", true},
        {"a tab is no space", u" \t ", false},
        {"the text 0", u"0", false},
        {"Nothing", ObjectRef{}, true},
        {"an object", automation::make<automation::Collection>(), false},
        {"True", true, true},
        {"False", false, false},
    };
    for (const auto& [what, value, blank] : cases)
        EXPECT_EQ(isBlank(value), blank) << what;
}

TEST_F(IsBlank, JudgesArraysByTheirElements) {
    const auto variants = [](std::vector<Variant> items) { return Array(VariantType::Variant, 3, std::move(items)); };
    EXPECT_TRUE(isBlank(variants({u"", Variant(), 0.0})));
    EXPECT_FALSE(isBlank(variants({u"", Variant(), u"x"})));
    EXPECT_FALSE(isBlank(variants({u"x", Variant()})));
    EXPECT_TRUE(isBlank(variants({})));
    EXPECT_TRUE(isBlank(variants({variants({u" "}), variants({})}))) << "nested arrays";
    EXPECT_FALSE(isBlank(variants({variants({u"x"})})));
    EXPECT_TRUE(isBlank(variants({true})));
    EXPECT_FALSE(isBlank(variants({true, false}))) << "False is not blank";
    EXPECT_TRUE(isBlank(Array(VariantType::Long, 0, std::size_t{2})));
}

TEST_F(IsBlank, TakesMissingBoundsForBlankOnlyForTypesWithBitsFourOrEight) {
    for (const auto type : {VariantType::Single, VariantType::Double, VariantType::Currency, VariantType::Date,
                            VariantType::String, VariantType::Object, VariantType::Error, VariantType::Boolean,
                            VariantType::Variant, VariantType::Unknown, VariantType::Decimal, VariantType::Record})
        EXPECT_TRUE(isBlank(Array(type))) << static_cast<int>(type);
    for (const auto type : {VariantType::Integer, VariantType::Long, VariantType::Byte}) {
        try {
            isBlank(Array(type));
            ADD_FAILURE() << "no error for " << static_cast<int>(type);
        } catch (const automation::Error& error) {
            EXPECT_EQ(error.number(), automation::errors::SubscriptOutOfRange);
        }
    }
}

} // namespace
} // namespace tarncom32::text
