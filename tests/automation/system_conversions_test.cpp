// The library's conversions beside the system's own, in several locales.
#include "automation/convert.h"
#include "automation/locale.h"
#include "platform/windows/user_locale.h"
#include "support/table.h"
#include "values.h"

#include <gtest/gtest.h>
#include <memory>
#include <windows.h>

#include <oleauto.h>

namespace tarncom32::automation {
namespace {

constexpr LCID kLocales[] = {LOCALE_USER_DEFAULT, 0x0409 /* en-US */, 0x0407 /* de-DE */, 0x040C /* fr-FR */,
                             0x041D /* sv-SE */};

bool isWine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

struct FreeText {
    void operator()(wchar_t* text) const { SysFreeString(text); }
};
using SystemText = std::unique_ptr<wchar_t, FreeText>;

SystemText systemText(StringView text) {
    return SystemText(SysAllocStringLen(reinterpret_cast<const wchar_t*>(text.data()), static_cast<UINT>(text.size())));
}

// What a call of the system gave, or the error by which it failed.
template <class T>
Variant outcome(HRESULT result, const T& value) {
    return FAILED(result) ? Variant(ErrorValue{Error::fromHresult(result).number()}) : Variant(value);
}

// What a call of the library gave, likewise.
Variant outcome(auto&& convert) {
    Variant result;
    const std::int32_t error = errorOf([&] { result = convert(); });
    return error ? Variant(ErrorValue{error}) : result;
}

std::string shown(const Variant& value) {
    if (const auto* error = value.as<ErrorValue>()) return "error " + std::to_string(error->code);
    return toUtf8(toText(value));
}

template <class T>
Variant bySystem(HRESULT(WINAPI* convert)(OLECHAR*, LCID, ULONG, T*), StringView text, LCID locale) {
    T value{};
    const HRESULT result = convert(systemText(text).get(), locale, 0, &value);
    if constexpr (std::is_same_v<T, LONG>)
        return outcome(result, std::int32_t{value});
    else
        return outcome(result, value);
}

template <class T>
Variant textBySystem(HRESULT(WINAPI* convert)(T, LCID, ULONG, BSTR*), T value, LCID locale) {
    BSTR text = nullptr;
    const HRESULT result = convert(value, locale, 0, &text);
    const SystemText owner(text);
    return outcome(result, String(reinterpret_cast<const char16_t*>(text ? text : L"")));
}

TEST(SystemConversions, ReadTextsAlike) {
    // Wine's functions, unlike the library, take group separators in the fraction, know the month names of the locale
    // only, and read points between the numbers of a date only where the locale writes them.
    struct Row {
        StringView text;
        bool numbersDifferInWine = false, datesDifferInWine = false;
    };
    const auto rows =
        tests::table(Row{u""}, Row{u" 12 "}, Row{u"1.5"}, Row{u"1,5"}, Row{u"1.234,5", true}, Row{u"1,234.5", true},
                     Row{u"-3"}, Row{u"(3)"}, Row{u"1E3"}, Row{u"2.5"}, Row{u"3000000000"}, Row{u"&HFF"}, Row{u"abc"},
                     Row{u"True"}, Row{u"false"}, Row{u"1/2/2000"}, Row{u"31/12/1999"}, Row{u"2000-01-02"},
                     Row{u"1.2.2000", false, true}, Row{u"5 january 2000", false, true},
                     Row{u"Jan 5, 2000", false, true}, Row{u"13:30"}, Row{u"1/2/2000 18:30:15"});
    for (const LCID id : kLocales) {
        const Locale rules = platform::windows::localeOf(id);
        const LocaleScope scope(rules);
        for (const auto& [text, numbersDifferInWine, datesDifferInWine] : rows) {
            SCOPED_TRACE(std::to_string(id) + ": " + toUtf8(text));
            if (!numbersDifferInWine || !isWine()) {
                EXPECT_EQ(shown(outcome([&] { return toDouble(text); })),
                          shown(bySystem<double>(&VarR8FromStr, text, id)));
                EXPECT_EQ(shown(outcome([&] { return toLong(text); })), shown(bySystem<LONG>(&VarI4FromStr, text, id)));
                VARIANT_BOOL flag = 0;
                const HRESULT result = VarBoolFromStr(systemText(text).get(), id, 0, &flag);
                EXPECT_EQ(shown(outcome([&] { return toBoolean(text); })),
                          shown(outcome(result, Boolean::fromBits(flag))));
            }
            // That the text of a number counts days is the hosts' own doing.
            if (isNumeric(text) || ((datesDifferInWine || numbersDifferInWine) && isWine())) continue;
            EXPECT_EQ(shown(outcome([&] { return toDate(text).days; })),
                      shown(bySystem<double>(&VarDateFromStr, text, id)));
        }
    }
}

TEST(SystemConversions, WriteNumbersAndDatesAlike) {
    for (const LCID id : kLocales) {
        SCOPED_TRACE(id);
        const Locale rules = platform::windows::localeOf(id);
        const LocaleScope scope(rules);
        for (const double value : {0.0, -1.5, 0.1 + 0.2, 2 / 3.0, 1e15, 1.5e-5, 123456789012345.0, -1e100}) {
            // Wine writes a point in front of an exponent, whatever the locale.
            if (value == 1.5e-5 && isWine()) continue;
            EXPECT_EQ(shown(toText(value)), shown(textBySystem<double>(&VarBstrFromR8, value, id)));
        }
        for (const double days : {0.0, 0.5, 1.0, 36526.0, 36585.75, 36526.7604166667, -1.25, 2958465.0})
            EXPECT_EQ(shown(toText(Date{days})), shown(textBySystem<DATE>(&VarBstrFromDate, days, id)));
    }
}

constexpr LCID kByCode = 0; // texts are compared by the codes of their characters, as the hosts do it

VARIANT systemValue(const Variant& value, SystemText& text) {
    VARIANT result{};
    result.vt = static_cast<VARTYPE>(value.type());
    if (const auto* number = value.as<std::int16_t>()) result.iVal = *number;
    if (const auto* number = value.as<std::int32_t>()) result.lVal = *number;
    if (const auto* number = value.as<float>()) result.fltVal = *number;
    if (const auto* number = value.as<double>()) result.dblVal = *number;
    if (const auto* amount = value.as<Currency>()) result.cyVal.int64 = amount->tenThousandths;
    if (const auto* date = value.as<Date>()) result.date = date->days;
    if (const auto* flag = value.as<Boolean>()) result.boolVal = flag->value;
    if (const auto* string = value.as<String>()) {
        text = systemText(*string);
        result.bstrVal = text.get();
    }
    return result;
}

TEST(SystemConversions, CompareAlike) {
    const Variant values[] = {Variant(), Null{},    std::int16_t{-1}, 0,    2,   1.5f, 0.1f,
                              0.1,       -1e300,    Currency{15000},  true, u"", u"1", u"abc",
                              u"ABC",    Date{1.5}, Date{0}};
    for (const Variant& left : values)
        for (const Variant& right : values) {
            SystemText leftText, rightText;
            VARIANT leftValue = systemValue(left, leftText), rightValue = systemValue(right, rightText);
            const HRESULT system = VarCmp(&leftValue, &rightValue, kByCode, 0);
            const std::partial_ordering order = compare(left, right);
            const HRESULT ours = order < 0 ? VARCMP_LT : order > 0 ? VARCMP_GT : order == 0 ? VARCMP_EQ : VARCMP_NULL;
            EXPECT_EQ(ours, system) << static_cast<int>(left.type()) << " and " << static_cast<int>(right.type());
        }
}

} // namespace
} // namespace tarncom32::automation
