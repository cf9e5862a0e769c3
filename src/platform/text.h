#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Text rules of the core. All texts are UTF-8; "blanks" are U+0020 only.
namespace tv::text {

/// Hash for containers that are asked with a std::string_view.
struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view s) const noexcept { return std::hash<std::string_view>{}(s); }
};

/// Cuts blanks at both ends; tabs and line ends stay.
std::string_view trim(std::string_view s) noexcept;
/// Cuts blanks at the left end.
std::string_view trimLeft(std::string_view s) noexcept;
/// Upper and lower case of ASCII and of the accented Latin letters (U+00C0 to U+017F); other characters stay,
/// and so do broken bytes.
std::string upper(std::string_view s);
std::string lower(std::string_view s);
/// The form in which keys compare: lower case as above.
std::string foldKey(std::string_view s);
/// True when foldKey(s) == s is certain without a copy: pure ASCII with no capital letter.
bool isFolded(std::string_view s) noexcept;
/// Equal without regard to case.
bool equalsNoCase(std::string_view a, std::string_view b);

/// Number of characters (code points; a broken byte counts as one).
std::size_t length(std::string_view s) noexcept;
/// The first `count` characters, or the whole text if it is shorter.
std::string_view left(std::string_view s, std::size_t count) noexcept;
/// `count` characters from the 1-based position `start`; shorter or empty where the text ends before.
std::string_view mid(std::string_view s, std::size_t start, std::size_t count) noexcept;

/// Pieces between separators; an empty text gives no piece at all.
std::vector<std::string_view> split(std::string_view s, char separator);
/// Every occurrence of `what` replaced, from left to right, replacements not searched again.
std::string replaceAll(std::string_view s, std::string_view what, std::string_view by);
bool contains(std::string_view s, std::string_view what) noexcept;
bool startsWith(std::string_view s, std::string_view what) noexcept;
bool endsWith(std::string_view s, std::string_view what) noexcept;

/// The lenient number: reads from the left end, skips blanks, tabs and line ends wherever they stand,
/// understands a sign, one decimal point and an exponent (letters e, E, d, D), stops at the first character
/// that cannot continue. No number in front gives 0. Throws Error 6 when the result is beyond a 64-bit
/// floating point value.
double lenientNumber(std::string_view s);
/// A number of a document in the cross-field sums: blanks around, a sign, digits, at most one point, an
/// exponent. Anything else, the empty text included, is nothing.
std::optional<double> documentNumber(std::string_view s) noexcept;
/// True when `s` is a number in the sense of documentNumber.
bool isNumeric(std::string_view s) noexcept;
/// Rounds to a whole number, halves to the even neighbour. Throw Error 6 beyond the type's range.
std::int16_t toInt16(double value);
std::int32_t toInt32(double value);
/// Rounds to `digits` decimals, a tie going to the even digit. A tie is one of the number as it is written in
/// 15 digits: 2.675 is one, though its binary value lies a little below.
double roundHalfEven(double value, int digits);
/// A text read as a 32-bit whole number the strict way (documentNumber, then toInt32). Throws Error 13 when
/// the text is no number, Error 6 beyond the range.
std::int32_t parseInt32(std::string_view s);

/// UTF-8 to ISO-8859-1. Characters outside the set become `substitute`.
std::string toLatin1(std::string_view utf8, char substitute = '?');
/// UTF-8 to ISO-8859-1 for markup: characters outside the set become character references ("&#8211;"), also
/// inside CDATA sections, which are closed before and opened again behind the reference. In comments and
/// instructions, which know no references, they become "?".
std::string toLatin1Markup(std::string_view utf8);
std::string fromLatin1(std::string_view latin1);
/// Well-formed UTF-8 (no overlong forms, no surrogates).
bool isUtf8(std::string_view s) noexcept;
/// Replaces broken bytes by U+FFFD.
std::string sanitizeUtf8(std::string_view s);
/// Appends UTF-16 code units as UTF-8; lone surrogates become U+FFFD.
void appendUtf8(std::string& out, const char16_t* units, std::size_t count);

} // namespace tv::text
