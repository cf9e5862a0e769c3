#include "platform/BiffStrings.h"

#include "platform/BiffRecords.h"
#include "platform/Bytes.h"
#include "platform/Utf8.h"
#include "platform/text.h"

#include <algorithm>

namespace tv::biff {
namespace {

constexpr char32_t firstAstral = 0x10000;

/// Goes through the characters of a UTF-8 text as UTF-16 numbers, at most `limit`; no pair is cut.
template<typename Visit>
void eachUnit(std::string_view utf8, std::size_t limit, Visit visit) {
    std::size_t units = 0;
    for (std::size_t at = 0; at < utf8.size();) {
        const utf8::Decoded step = utf8::decode(utf8, at);
        at += step.length;
        const bool pair = step.character >= firstAstral;
        units += pair ? 2 : 1;
        if (units > limit) {
            return;
        }
        if (pair) {
            const char32_t rest = step.character - firstAstral;
            visit(static_cast<char16_t>(0xD800U + (rest >> 10U)));
            visit(static_cast<char16_t>(0xDC00U + (rest & 0x3FFU)));
        } else {
            visit(static_cast<char16_t>(step.character));
        }
    }
}

} // namespace

Characters charactersOf(std::string_view utf8, std::size_t limit) {
    Characters result;
    eachUnit(utf8, limit, [&](char16_t unit) { result.wide = result.wide || unit > 0xFF; });
    result.bytes.reserve(utf8.size() * (result.wide ? 2 : 1));
    eachUnit(utf8, limit, [&](char16_t unit) {
        if (result.wide) {
            bytes::put16(result.bytes, unit);
        } else {
            bytes::put8(result.bytes, unit);
        }
    });
    return result;
}

void appendCharacters(std::string& utf8, std::string_view from, bool wide) {
    if (!wide) {
        utf8 += text::fromLatin1(from);
        return;
    }
    std::u16string units(from.size() / 2, u'\0');
    for (std::size_t i = 0; i < units.size(); ++i) {
        units[i] = static_cast<char16_t>(bytes::get16(from, 2 * i));
    }
    text::appendUtf8(utf8, units.data(), units.size());
}

} // namespace tv::biff
