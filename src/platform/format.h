#pragma once

#include "platform/Value.h"

#include <string>
#include <string_view>

/// The general formatter of a value by a pattern.
///
/// Number patterns have up to four sections parted by ";" (positive, negative, zero, null) and are made of
/// "0" (digit or zero), "#" (digit or nothing), "." (decimal point), "," (groups of three; at the end of the whole
/// part it divides by a thousand), "%" (times a hundred), "E+", "E-", "e+", "e-" (exponent), "\" before a literal
/// character, quoted literals, and the literals "-", "+", "$", "(", ")" and blank. Numbers are rounded half away
/// from zero on their 15 significant digits. Group character ",", decimal character ".".
///
/// Date patterns are made of "D", "DD", "DDD", "DDDD", "M", "MM", "MMM", "MMMM", "YY", "YYYY", "H", "HH", "N", "NN",
/// "S", "SS", "Y", "W", "WW", "Q", "AM/PM", "/" and ":"; "M" behind an hour means minutes, so "HH:MM:SS" is a time.
/// Names of days and months are Portuguese. Letters count in either case.
///
/// Text patterns are made of "@" (character or blank), "&" (character or nothing), "<" (lower case), ">" (upper
/// case), "!" (fill from the left), with an optional second section for empty texts.
///
/// An empty pattern gives the value's default text. A text under a number pattern is first read as a number, under
/// a date pattern as a date (DD/MM/YYYY, YYYY-MM-DD, with or without HH:MM:SS); a text that reads as neither comes
/// back as it is. Null gives the empty text, unless a number pattern has a fourth section.
namespace tv::format {

/// `value` formatted by `pattern`. Never throws for a pattern; unknown characters of a pattern stand for themselves.
std::string format(const Value& value, std::string_view pattern);
std::string format(std::string_view text, std::string_view pattern);

/// What a pattern is made of; the catalog's check asks.
enum class PatternKind { Empty, Number, Date, Text, Literal };
PatternKind kindOf(std::string_view pattern);

/// "YYYYMMDD", "HH:MM:SS" and the like for a moment.
std::string format(DateTime moment, std::string_view pattern);

} // namespace tv::format
