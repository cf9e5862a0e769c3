#include "platform/Decimal.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>

namespace tv {

Decimal Decimal::significant(double value, int significant) {
    std::array<char, 40> text{};
    const auto written = std::to_chars(text.data(), text.data() + text.size(), value,
                                       std::chars_format::scientific, significant - 1);
    return parse(std::string(text.data(), written.ptr));
}

Decimal Decimal::shortest(double value) {
    std::array<char, 40> text{};
    const auto written =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::scientific);
    return parse(std::string(text.data(), written.ptr));
}

Decimal Decimal::parse(const std::string& scientific) {
    Decimal result;
    const std::size_t exponentAt = scientific.find('e');
    for (const char c : scientific.substr(0, exponentAt)) {
        if (c == '-') {
            result.negative_ = true;
        } else if (c != '.') {
            result.digits_ += c;
        }
    }
    const std::size_t from = exponentAt + (scientific[exponentAt + 1] == '+' ? 2 : 1);
    std::from_chars(scientific.data() + from, scientific.data() + scientific.size(), result.point_);
    ++result.point_;
    result.normalise();
    return result;
}

void Decimal::normalise() {
    digits_.erase(digits_.find_last_not_of('0') + 1);
    const std::size_t zeros = std::min(digits_.find_first_not_of('0'), digits_.size());
    digits_.erase(0, zeros);
    point_ -= static_cast<int>(zeros);
    if (digits_.empty()) {
        point_ = 0;
    }
}

char Decimal::digit(int power) const noexcept {
    const int index = point_ - 1 - power;
    return index >= 0 && index < static_cast<int>(digits_.size()) ? digits_[static_cast<std::size_t>(index)]
                                                                  : '0';
}

int Decimal::lastPower() const noexcept {
    return isZero() ? 0 : point_ - static_cast<int>(digits_.size());
}

void Decimal::round(int places, Tie tie) {
    const int kept = point_ + places; // digits that stay; may be negative
    if (kept >= static_cast<int>(digits_.size())) {
        return;
    }
    if (kept < 0) {
        digits_.clear();
        normalise();
        return;
    }
    const auto cut = static_cast<std::size_t>(kept);
    const bool exactTie = digits_[cut] == '5' && cut + 1 == digits_.size();
    const bool lastIsOdd = cut > 0 && (digits_[cut - 1] - '0') % 2 == 1;
    const bool up = exactTie && tie == Tie::ToEven ? lastIsOdd : digits_[cut] >= '5';
    digits_.erase(cut);
    if (up) {
        digits_.insert(digits_.begin(), '0'); // room for a carry
        ++point_;
        std::size_t i = digits_.size() - 1;
        for (; digits_[i] == '9'; --i) {
            digits_[i] = '0';
        }
        ++digits_[i];
    }
    normalise();
}

double Decimal::value() const {
    const std::string text = (negative_ ? "-0." : "0.") + digits_ + "0e" + std::to_string(point_);
    double result = 0;
    std::from_chars(text.data(), text.data() + text.size(), result);
    return result;
}

} // namespace tv
