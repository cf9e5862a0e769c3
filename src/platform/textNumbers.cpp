#include "platform/Decimal.h"
#include "platform/Error.h"
#include "platform/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace tv::text {
namespace {

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
constexpr bool isSign(char c) {
    return c == '+' || c == '-';
}

[[noreturn]] void throwOverflow(std::string_view number) {
    throw Error(errc::overflow, "text", "Número fora dos limites: " + std::string(left(number, 40)));
}

/// Walks over the characters of a text that the lenient number takes into account.
class LenientCursor {
public:
    explicit LenientCursor(std::string_view s)
        : s_(s) {
        skipBlanks();
    }
    /// The character here, or NUL behind the end.
    char peek() const { return at_ < s_.size() ? s_[at_] : '\0'; }
    char take() {
        const char c = peek();
        ++at_;
        skipBlanks();
        return c;
    }
    void takeDigits(std::string& into) {
        while (isDigit(peek())) {
            into += take();
        }
    }

private:
    void skipBlanks() { at_ = std::min(s_.find_first_not_of(" \t\r\n", at_), s_.size()); }

    std::string_view s_;
    std::size_t at_ = 0;
};

/// The part of `s` that makes a number, in the form that std::from_chars reads. Empty when there is none.
std::string numberInFront(std::string_view s) {
    LenientCursor cursor(s);
    std::string number;
    if (isSign(cursor.peek())) {
        const char sign = cursor.take();
        if (sign == '-') {
            number += sign;
        }
    }
    const std::size_t signLength = number.size();
    cursor.takeDigits(number);
    if (cursor.peek() == '.') {
        number += cursor.take();
        cursor.takeDigits(number);
    }
    const bool hasDigit = std::any_of(number.begin(), number.end(), isDigit);
    if (!hasDigit) {
        return {};
    }
    if (number[signLength] == '.') {
        number.insert(signLength, 1, '0');
    }
    if (std::string_view("eEdD").find(cursor.peek()) != std::string_view::npos && cursor.peek() != '\0') {
        cursor.take();
        std::string exponent = "e";
        if (isSign(cursor.peek())) {
            exponent += cursor.take();
        }
        const std::size_t before = exponent.size();
        cursor.takeDigits(exponent);
        if (exponent.size() > before) {
            number += exponent;
        }
    }
    return number;
}

enum class Conversion { Done, Overflow };

/// Power of ten of the first digit that is not 0 in a text that is a number by its form.
std::optional<long> magnitude(std::string_view number) noexcept {
    const std::size_t exponentAt = std::min(number.find_first_of("eE"), number.size());
    const std::string_view mantissa = number.substr(0, exponentAt);
    const std::size_t firstDigit = mantissa.find_first_of("123456789");
    if (firstDigit == std::string_view::npos) {
        return std::nullopt;
    }
    constexpr long beyond = std::numeric_limits<long>::max() / 2;
    long exponent = 0;
    if (exponentAt < number.size()) {
        const bool negative = number[exponentAt + 1] == '-';
        const std::size_t digits = exponentAt + (isSign(number[exponentAt + 1]) ? 2 : 1);
        const auto read = std::from_chars(number.data() + digits, number.data() + number.size(), exponent);
        exponent = read.ec == std::errc{} ? std::min(exponent, beyond) : beyond;
        exponent = negative ? -exponent : exponent;
    }
    const auto point = static_cast<long>(std::min(mantissa.find('.'), mantissa.size()));
    return exponent + point - static_cast<long>(firstDigit);
}

/// Reads a text that is a number by its form. A result too small for a double is 0.
Conversion convert(std::string_view number, double& result) noexcept {
    const auto read = std::from_chars(number.data(), number.data() + number.size(), result);
    if (read.ec != std::errc::result_out_of_range) {
        return Conversion::Done;
    }
    // Too large and too small give the same error; the first digit's place tells them apart.
    result = 0;
    return magnitude(number).value_or(0) > 0 ? Conversion::Overflow : Conversion::Done;
}

/// `s` without its blanks and a leading "+" when it has the form of a document's number, otherwise empty.
std::string_view documentForm(std::string_view s) noexcept {
    std::string_view number = trim(s);
    std::size_t at = 0;
    if (!number.empty() && isSign(number[0])) {
        at = number[0] == '-' ? 1 : 0;
        number.remove_prefix(number[0] == '+' ? 1 : 0);
    }
    const auto digits = [&] {
        const std::size_t from = at;
        while (at < number.size() && isDigit(number[at])) {
            ++at;
        }
        return at - from;
    };
    std::size_t count = digits();
    if (at < number.size() && number[at] == '.') {
        ++at;
        count += digits();
    }
    if (count == 0) {
        return {};
    }
    if (at < number.size() && (number[at] == 'e' || number[at] == 'E')) {
        ++at;
        if (at < number.size() && isSign(number[at])) {
            ++at;
        }
        if (digits() == 0) {
            return {};
        }
    }
    return at == number.size() ? number : std::string_view{};
}

template<typename Integer>
Integer toInteger(double value) {
    const double rounded = std::nearbyint(value); // the default rounding mode: halves to the even neighbour
    if (!(rounded >= std::numeric_limits<Integer>::min() && rounded <= std::numeric_limits<Integer>::max())) {
        throwOverflow(std::to_string(value));
    }
    return static_cast<Integer>(rounded);
}

} // namespace

double lenientNumber(std::string_view s) {
    const std::string number = numberInFront(s);
    double result = 0;
    if (!number.empty() && convert(number, result) == Conversion::Overflow) {
        throwOverflow(number);
    }
    return result == 0 ? 0 : result; // no negative zero
}

std::optional<double> documentNumber(std::string_view s) noexcept {
    const std::string_view number = documentForm(s);
    double result = 0;
    if (number.empty() || convert(number, result) == Conversion::Overflow) {
        return std::nullopt;
    }
    return result;
}

bool isNumeric(std::string_view s) noexcept {
    return documentNumber(s).has_value();
}

std::int16_t toInt16(double value) {
    return toInteger<std::int16_t>(value);
}

std::int32_t toInt32(double value) {
    return toInteger<std::int32_t>(value);
}

double roundHalfEven(double value, int digits) {
    constexpr int trusted = 15; // a double holds that many decimal digits of any number
    if (!std::isfinite(value)) {
        return value;
    }
    Decimal decimal = Decimal::significant(value, trusted);
    if (decimal.integerDigits() + digits >= trusted) {
        decimal = Decimal::shortest(value);
    }
    decimal.round(digits, Decimal::Tie::ToEven);
    return decimal.value();
}

std::int32_t parseInt32(std::string_view s) {
    const std::string_view number = documentForm(s);
    if (number.empty()) {
        throw Error(errc::typeMismatch, "text", "O texto não é um número: " + std::string(left(s, 40)));
    }
    double result = 0;
    if (convert(number, result) == Conversion::Overflow) {
        throwOverflow(number);
    }
    return toInt32(result);
}

} // namespace tv::text
