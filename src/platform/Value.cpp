#include "platform/Value.h"

#include "platform/Decimal.h"
#include "platform/format.h"

#include <cmath>

namespace tv {
namespace {

std::string digitsFrom(const Decimal& number, int highest, int lowest) {
    std::string out;
    for (int power = highest; power >= lowest; --power) {
        out += number.digit(power);
    }
    return out;
}

std::string plainText(const Decimal& number) {
    std::string out = number.isNegative() ? "-" : "";
    out += number.integerDigits() > 0 ? digitsFrom(number, number.integerDigits() - 1, 0) : "0";
    return number.lastPower() < 0 ? out + "." + digitsFrom(number, -1, number.lastPower()) : out;
}

std::string exponentText(const Decimal& number) {
    const int exponent = number.integerDigits() - 1;
    Decimal mantissa = number;
    mantissa.scale(-exponent);
    return plainText(mantissa) + "E+" + std::to_string(exponent);
}

std::string numberText(double value) {
    constexpr int plainDigits = 15;
    if (!std::isfinite(value)) {
        return std::isnan(value) ? "NaN" : value < 0 ? "-INF" : "INF";
    }
    const Decimal number = Decimal::shortest(value);
    if (number.isZero()) {
        return "0";
    }
    return number.integerDigits() > plainDigits ? exponentText(number) : plainText(number);
}

std::string dateText(DateTime moment) {
    const bool hasTime = moment != std::chrono::floor<std::chrono::days>(moment);
    return format::format(moment, hasTime ? "DD/MM/YYYY HH:MM:SS" : "DD/MM/YYYY");
}

struct DefaultText {
    std::string operator()(Null) const { return {}; }
    std::string operator()(std::int32_t number) const { return std::to_string(number); }
    std::string operator()(double number) const { return numberText(number); }
    std::string operator()(bool logical) const { return logical ? "True" : "False"; }
    std::string operator()(DateTime moment) const { return dateText(moment); }
    std::string operator()(const std::string& text) const { return text; }
};

} // namespace

std::string defaultText(const Value& value) {
    return std::visit(DefaultText{}, value);
}

} // namespace tv
