#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// The UTF-8 code itself, for the text rules of this folder.
namespace tv::utf8 {

/// What a broken byte becomes.
inline constexpr char32_t replacement = 0xFFFD;

constexpr bool isContinuation(unsigned char byte) noexcept {
    return (byte & 0xC0U) == 0x80U;
}

/// Character of a two-byte sequence.
constexpr char32_t join(unsigned char lead, unsigned char next) noexcept {
    return static_cast<char32_t>(((lead & 0x1FU) << 6U) | (next & 0x3FU));
}

/// One step through a text.
struct Decoded {
    char32_t character; ///< `replacement` for a broken byte.
    std::size_t length; ///< Bytes taken; 1 for a broken byte.
    bool wellFormed;
};

/// The character that starts at `at`, which must lie inside of the text. Overlong forms, surrogates and
/// values beyond U+10FFFF are broken.
Decoded decode(std::string_view s, std::size_t at) noexcept;

/// Bytes of the character that starts at `at`; 1 for a broken byte.
inline std::size_t sequenceLength(std::string_view s, std::size_t at) noexcept {
    return static_cast<unsigned char>(s[at]) < 0x80 ? 1 : decode(s, at).length;
}

/// Appends one character, which must be a legal one.
void append(std::string& out, char32_t character);

} // namespace tv::utf8
