#pragma once

#include "platform/Value.h"

#include <concepts>
#include <optional>
#include <string>
#include <string_view>

/// The general formatter of a value by a pattern.
///
/// Number patterns have up to four sections parted by ";" (positive, negative, zero, null) and are made of
/// "0" (digit or zero), "#" (digit or nothing), "." (decimal point), "," (groups of three; at the end of the
/// whole part it divides by a thousand), "%" (times a hundred), "E+", "E-", "e+", "e-" (exponent), "\" before
/// a literal character, quoted literals, and the literals "-", "+", "$", "(", ")" and blank. Numbers are
/// rounded half away from zero on their 15 significant digits. Group character ",", decimal character ".".
///
/// Date patterns are made of "D", "DD", "DDD", "DDDD", "M", "MM", "MMM", "MMMM", "YY", "YYYY", "H", "HH",
/// "N", "NN", "S", "SS", "Y", "W", "WW", "Q", "AM/PM", "/" and ":"; "M" behind an hour means minutes, so
/// "HH:MM:SS" is a time. Names of days and months are Portuguese. Letters count in either case.
///
/// Text patterns are made of "@" (character or blank), "&" (character or nothing), "<" (lower case), ">"
/// (upper case), "!" (fill from the left), with an optional second section for empty texts.
///
/// The first character of a pattern that belongs to one kind alone settles the kind. A section that is left
/// empty is written as the positive one. What a section rounds to zero is written as a zero, without a sign.
///
/// An empty pattern gives the value's default text. A text under a number pattern is first read as a number,
/// under a date pattern as a date (DD/MM/YYYY, YYYY-MM-DD, with or without HH:MM:SS) or as the number of one;
/// a text that reads as neither comes back as it is. Null gives the empty text, unless a number pattern has a
/// fourth section.
///
/// A date counts as the number of days since 1899-12-30, a logical as -1 and 0.
namespace tv::format {

/// `value` formatted by `pattern`. Never throws for a pattern; unknown characters of a pattern stand for
/// themselves.
std::string format(const Value& value, std::string_view pattern);
template<std::convertible_to<std::string_view> Text>
std::string format(const Text& text, std::string_view pattern) {
    return format(Value(std::string(std::string_view(text))), pattern);
}

/// What a pattern is made of; the catalog's check asks.
enum class PatternKind { Empty, Number, Date, Text, Literal };
PatternKind kindOf(std::string_view pattern);

/// "YYYYMMDD", "HH:MM:SS" and the like for a moment.
std::string format(DateTime moment, std::string_view pattern);

/// A date in one of the forms above, blanks around allowed. Nothing for any other text.
std::optional<DateTime> readDate(std::string_view text);

} // namespace tv::format
