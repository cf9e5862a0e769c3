#include "platform/text.h"

#include "platform/Utf8.h"

#include <algorithm>

namespace tv::text {
namespace {

using Byte = unsigned char;

constexpr Byte byteAt(std::string_view s, std::size_t i) {
    return static_cast<Byte>(s[i]);
}

/// Capital letters among U+0100 to U+017F stand on even places, except in two stretches.
constexpr bool isPaired(char32_t c) {
    return c != 0x130 && c != 0x131 && c != 0x138 && c != 0x149 && c <= 0x17E;
}
constexpr bool capitalIsOdd(char32_t c) {
    return (c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E);
}

constexpr char32_t lowered(char32_t c) {
    if (c == 0x178) {
        return 0xFF;
    }
    if (c >= 0xC0 && c <= 0xDE) {
        return c == 0xD7 ? c : c + 0x20;
    }
    if (c >= 0x100 && isPaired(c) && (c % 2 == 1) == capitalIsOdd(c)) {
        return c + 1;
    }
    return c;
}

constexpr char32_t raised(char32_t c) {
    if (c == 0xFF) {
        return 0x178;
    }
    if (c >= 0xE0 && c <= 0xFE) {
        return c == 0xF7 ? c : c - 0x20;
    }
    if (c >= 0x100 && c != 0x178 && isPaired(c) && (c % 2 == 0) == capitalIsOdd(c)) {
        return c - 1;
    }
    return c;
}

/// Maps the letters of U+00C0 to U+017F. They all take two bytes, so the text keeps its length.
template<typename Ascii, typename Latin>
std::string mapLetters(std::string_view s, Ascii ascii, Latin latin) {
    std::string out(s);
    for (std::size_t i = 0; i < out.size(); ++i) {
        const Byte lead = byteAt(out, i);
        if (lead < 0x80) {
            out[i] = ascii(out[i]);
        } else if (lead >= 0xC3 && lead <= 0xC5 && i + 1 < out.size() &&
                   utf8::isContinuation(byteAt(out, i + 1))) {
            const char32_t mapped = latin(utf8::join(lead, byteAt(out, i + 1)));
            out[i] = static_cast<char>(0xC0U | (mapped >> 6U));
            out[++i] = static_cast<char>(0x80U | (mapped & 0x3FU));
        }
    }
    return out;
}

constexpr char lowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
constexpr char upperAscii(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

/// Place behind `count` characters that start at `from`.
std::size_t skip(std::string_view s, std::size_t from, std::size_t count) noexcept {
    std::size_t at = from;
    for (; count > 0 && at < s.size(); --count) {
        at += utf8::sequenceLength(s, at);
    }
    return at;
}

} // namespace

std::string_view trimLeft(std::string_view s) noexcept {
    const std::size_t first = s.find_first_not_of(' ');
    return first == std::string_view::npos ? s.substr(s.size()) : s.substr(first);
}

std::string_view trim(std::string_view s) noexcept {
    const std::string_view rest = trimLeft(s);
    return rest.substr(0, rest.find_last_not_of(' ') + 1);
}

std::string upper(std::string_view s) {
    return mapLetters(s, upperAscii, raised);
}

std::string lower(std::string_view s) {
    return mapLetters(s, lowerAscii, lowered);
}

std::string foldKey(std::string_view s) {
    return lower(s);
}

bool isFolded(std::string_view s) noexcept {
    return std::none_of(s.begin(), s.end(),
                        [](char c) { return (c >= 'A' && c <= 'Z') || static_cast<Byte>(c) >= 0x80; });
}

bool equalsNoCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() && (a == b || foldKey(a) == foldKey(b));
}

std::size_t length(std::string_view s) noexcept {
    std::size_t count = 0;
    for (std::size_t at = 0; at < s.size(); at += utf8::sequenceLength(s, at)) {
        ++count;
    }
    return count;
}

std::string_view left(std::string_view s, std::size_t count) noexcept {
    return s.substr(0, skip(s, 0, count));
}

std::string_view mid(std::string_view s, std::size_t start, std::size_t count) noexcept {
    const std::size_t from = skip(s, 0, start > 0 ? start - 1 : 0);
    return s.substr(from, skip(s, from, count) - from);
}

std::vector<std::string_view> split(std::string_view s, char separator) {
    std::vector<std::string_view> pieces;
    if (s.empty()) {
        return pieces;
    }
    std::size_t from = 0;
    for (std::size_t at = s.find(separator); at != std::string_view::npos; at = s.find(separator, from)) {
        pieces.push_back(s.substr(from, at - from));
        from = at + 1;
    }
    pieces.push_back(s.substr(from));
    return pieces;
}

std::string replaceAll(std::string_view s, std::string_view what, std::string_view by) {
    if (what.empty()) {
        return std::string(s);
    }
    std::string out;
    out.reserve(s.size());
    std::size_t from = 0;
    for (std::size_t at = s.find(what); at != std::string_view::npos; at = s.find(what, from)) {
        out.append(s, from, at - from).append(by);
        from = at + what.size();
    }
    return out.append(s, from);
}

bool contains(std::string_view s, std::string_view what) noexcept {
    return s.find(what) != std::string_view::npos;
}

bool startsWith(std::string_view s, std::string_view what) noexcept {
    return s.starts_with(what);
}

bool endsWith(std::string_view s, std::string_view what) noexcept {
    return s.ends_with(what);
}

} // namespace tv::text
