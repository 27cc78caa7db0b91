#include "automation/number_text.h"

#include "automation/convert.h"
#include "automation/error.h"
#include "automation/locale.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace tarncom32::automation {

namespace {

bool isBlankAroundNumber(char16_t c) {
    return (c >= 9 && c <= 13) || c == u' ' || c == 0xA0 || c == 0x3000;
}
bool isExponentMark(char16_t c) {
    return c == u'e' || c == u'E' || c == u'd' || c == u'D';
}
bool isSign(char16_t c) {
    return c == u'+' || c == u'-';
}

/// The bits per digit that "&H" and "&O" announce; 0 for any other letter.
int bitsPerDigit(char16_t letter) {
    switch (letter) {
    case u'h':
    case u'H':
        return 4;
    case u'o':
    case u'O':
        return 3;
    default:
        return 0;
    }
}

/// The value of a digit to the base 2^`bits`, -1 for any other character.
int digitValue(char16_t c, int bits) {
    int value = -1;
    if (isDigit(c)) value = c - u'0';
    if (c >= u'a' && c <= u'f') value = c - u'a' + 10;
    if (c >= u'A' && c <= u'F') value = c - u'A' + 10;
    return value < (1 << bits) ? value : -1;
}

// Appends `digit` behind those that `bits` holds already. Raises 6 when the highest bits would be lost.
void appendBits(std::uint64_t& bits, int digit, int perDigit) {
    if (bits >> (64 - perDigit)) throw Error(errors::Overflow);
    bits = (bits << perDigit) | static_cast<std::uint64_t>(digit);
}

// Takes the digits of a decimal number one by one; leading zeros only move the exponent.
void appendDigit(DecimalDigits& number, char16_t digit, bool inFraction) {
    if (!number.digits.empty() || digit != u'0') number.digits.push_back(static_cast<char>(digit));
    if (inFraction) --number.exponent;
}

// Far beyond every type's range, and far from overflowing an int.
constexpr int kExponentLimit = 100000;

class NumberReader {
public:
    explicit NumberReader(StringView text) : text_(text), locale_(locale()) {}

    std::optional<NumberSpelling> read() {
        readPrefix();
        if (!(peek() == u'&' ? readBits() : readDecimal())) return std::nullopt;
        readSuffix();
        if (at_ < text_.size() || parentheses_ == 1) return std::nullopt;
        result_.decimal.negative = (minus_ || parentheses_ == 2) && !result_.decimal.isZero();
        return std::move(result_);
    }

private:
    char16_t peek(std::size_t ahead = 0) const { return at_ + ahead < text_.size() ? text_[at_ + ahead] : u'\0'; }

    bool takeCurrency() {
        const String& symbol = locale_.currencySymbol;
        if (currency_ || symbol.empty() || !text_.substr(at_).starts_with(symbol)) return false;
        currency_ = true;
        at_ += symbol.size();
        return true;
    }

    bool takeSign() {
        if (sign_ || !isSign(peek())) return false;
        sign_ = true;
        minus_ = text_[at_++] == u'-';
        return true;
    }

    // Opens and closes at most one pair: `expected` is how many have been seen.
    bool takeParenthesis(char16_t which, int expected) {
        if (parentheses_ != expected || peek() != which) return false;
        ++parentheses_;
        ++at_;
        return true;
    }

    bool takeBlank() {
        if (!isBlankAroundNumber(peek())) return false;
        ++at_;
        return true;
    }

    void readPrefix() {
        while (takeBlank() || takeSign() || takeCurrency() || takeParenthesis(u'(', 0)) {
        }
    }

    void readSuffix() {
        while (takeBlank() || takeSign() || takeCurrency() || takeParenthesis(u')', 1)) {
        }
    }

    // Languages that group with a no-break space are typed with an ordinary one.
    bool isGroupSeparator(char16_t c) const {
        const auto isSpace = [](char16_t space) { return space == u' ' || space == 0xA0 || space == 0x202F; };
        return c == locale_.groupSeparator || (isSpace(locale_.groupSeparator) && isSpace(c));
    }

    bool readDecimal() {
        bool any = false, inFraction = false;
        for (; at_ < text_.size(); ++at_) {
            const char16_t c = text_[at_];
            if (isDigit(c)) {
                appendDigit(result_.decimal, c, inFraction);
                any = true;
            } else if (c == locale_.decimalSeparator && !inFraction) {
                inFraction = true;
            } else if (!(any && !inFraction && isGroupSeparator(c))) {
                break;
            }
        }
        return any && (!isExponentMark(peek()) || readExponent());
    }

    bool readExponent() {
        ++at_;
        const bool negative = peek() == u'-';
        if (isSign(peek())) ++at_;
        if (!isDigit(peek())) return false;
        int exponent = 0;
        for (; isDigit(peek()); ++at_)
            exponent = std::min(exponent * 10 + (peek() - u'0'), kExponentLimit);
        result_.decimal.exponent += negative ? -exponent : exponent;
        return true;
    }

    // A bit pattern has its sign within it.
    bool readBits() {
        const int perDigit = bitsPerDigit(peek(1));
        if (perDigit == 0 || sign_ || parentheses_ != 0 || currency_) return false;
        at_ += 2;
        const std::size_t first = at_;
        std::uint64_t bits = 0;
        for (int digit; (digit = digitValue(peek(), perDigit)) >= 0; ++at_)
            appendBits(bits, digit, perDigit);
        result_.bits = bits;
        sign_ = currency_ = true;
        return at_ > first;
    }

    StringView text_;
    const Locale& locale_;
    std::size_t at_ = 0;
    bool sign_ = false, minus_ = false, currency_ = false;
    int parentheses_ = 0;
    NumberSpelling result_;
};

/// Steps through a text as if its blanks, tabs and line feeds were not there.
class BlankSkipper {
public:
    explicit BlankSkipper(StringView text) : text_(text) { skip(); }
    char16_t peek() const { return at_ < text_.size() ? text_[at_] : u'\0'; }
    char16_t next() {
        const char16_t c = peek();
        if (at_ < text_.size()) ++at_;
        skip();
        return c;
    }

private:
    void skip() {
        while (at_ < text_.size() && (text_[at_] == u' ' || text_[at_] == u'\t' || text_[at_] == u'\n'))
            ++at_;
    }

    StringView text_;
    std::size_t at_ = 0;
};

// Up to 16 bits are a 16-bit number unless "&" follows, the hosts' mark of a 32-bit one.
double leadingBits(BlankSkipper& text) {
    int perDigit = bitsPerDigit(text.peek());
    if (perDigit != 0) {
        text.next();
    } else {
        perDigit = 3; // "&17" is octal too.
    }
    std::uint64_t bits = 0;
    for (int digit; (digit = digitValue(text.peek(), perDigit)) >= 0; text.next())
        appendBits(bits, digit, perDigit);
    if (bits > 0xFFFFFFFF) throw Error(errors::Overflow);
    if (bits <= 0xFFFF && text.peek() != u'&') return static_cast<std::int16_t>(bits);
    return static_cast<std::int32_t>(bits);
}

} // namespace

std::optional<NumberSpelling> spelledNumber(StringView text) {
    return NumberReader(text).read();
}

double leadingNumber(StringView text) {
    BlankSkipper rest(text);
    if (rest.peek() == u'&') {
        rest.next();
        return leadingBits(rest);
    }
    DecimalDigits number;
    if (isSign(rest.peek())) number.negative = rest.next() == u'-';
    bool any = false;
    for (bool inFraction = false;; rest.next()) {
        if (isDigit(rest.peek())) {
            appendDigit(number, rest.peek(), inFraction);
            any = true;
        } else if (rest.peek() == u'.' && !inFraction) {
            inFraction = true;
        } else {
            break;
        }
    }
    if (any && isExponentMark(rest.peek())) {
        rest.next();
        const bool negative = rest.peek() == u'-';
        if (isSign(rest.peek())) rest.next();
        int exponent = 0;
        while (isDigit(rest.peek()))
            exponent = std::min(exponent * 10 + (rest.next() - u'0'), kExponentLimit);
        number.exponent += negative ? -exponent : exponent;
    }
    return toDouble(number);
}

String realText(double value, int precision) {
    if (std::isnan(value)) return u"-1.#IND";
    if (std::isinf(value)) return value < 0 ? u"-1.#INF" : u"1.#INF";
    const double limit = precision == 15 ? 1e15 : 1e7;
    if (value == std::trunc(value) && std::fabs(value) < limit) return decimalText(static_cast<long long>(value));
    char text[48];
    const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::general, precision).ptr;
    String result(text, end);
    for (char16_t& c : result) {
        if (c == u'e') c = u'E';
        if (c == u'.') c = locale().decimalSeparator;
    }
    return result;
}

} // namespace tarncom32::automation
