#pragma once

#include <string>

namespace tv {

/// A finite number written out in decimal digits, for rounding and formatting as a person would on paper.
class Decimal {
public:
    /// What a digit 5 with nothing behind it does.
    enum class Tie { ToEven, AwayFromZero };

    /// The number's first `significant` digits (1 to 17), correctly rounded.
    static Decimal significant(double value, int significant);
    /// The fewest digits that tell the number from its neighbours.
    static Decimal shortest(double value);

    bool isNegative() const noexcept { return negative_; }
    bool isZero() const noexcept { return digits_.empty(); }
    /// Digits in front of the decimal point; not positive when the number is less than 0.1 .
    int integerDigits() const noexcept { return point_; }

    /// Digit of the place 10^power, 0 where the number has none.
    char digit(int power) const noexcept;
    /// Power of ten of the last digit that is not 0; 0 for zero.
    int lastPower() const noexcept;

    /// Times ten to the `power`.
    void scale(int power) noexcept { point_ += isZero() ? 0 : power; }
    /// Keeps `places` digits behind the decimal point (in front of it, when negative).
    void round(int places, Tie tie);

    /// The nearest 64-bit floating point value.
    double value() const;

private:
    static Decimal parse(const std::string& scientific);
    void normalise();

    bool negative_ = false;
    std::string digits_; ///< Without zeros at either end; empty for zero.
    int point_ = 0;      ///< The value is 0.digits times ten to this power.
};

} // namespace tv
