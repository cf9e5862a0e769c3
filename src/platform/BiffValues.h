#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Values of cells as the text that a document holds.
namespace tv::biff {

/// What a number in a cell stands for.
enum class Meaning : std::uint8_t { Number, Date, Time, Truth };

/// What a cell format makes of a number: by its code ("dd/mm/yyyy hh:mm", or a word for any number and
/// another one for zero, which makes it a truth value), or by its number where the format is one that every
/// program knows without its code.
Meaning meaningOf(std::string_view formatCode) noexcept;
Meaning meaningOf(std::uint16_t builtInFormat) noexcept;

/// A number as plain digits, at 15 significant ones: no exponent, no zeros at the end. Empty when it is none.
std::string numberText(double value);

/// A truth value as S or N. A date as YYYYMMDD, its time of day left off; a time without a date as HHMMSS,
/// with more hours than a day has where it is a length of time. `value` counts days, from the end of 1899 or
/// from the start of 1904. A date that lies outside of the years 1900 to 9999 is a plain number.
std::string valueText(double value, Meaning meaning, bool from1904);

/// The number in four bytes that short numbers are kept in.
double shortNumber(std::uint32_t bits) noexcept;

} // namespace tv::biff
