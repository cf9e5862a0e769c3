#include "platform/Utf8.h"
#include "platform/text.h"

#include <cstdint>
#include <cstring>

namespace tv {
namespace utf8 {

Decoded decode(std::string_view s, std::size_t at) noexcept {
    constexpr Decoded broken{replacement, 1, false};
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(s[i]); };
    const unsigned char lead = byte(at);
    if (lead < 0x80) {
        return {lead, 1, true};
    }
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || s.size() - at < length) {
        return broken;
    }
    char32_t value = lead & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if (!isContinuation(byte(at + i))) {
            return broken;
        }
        value = (value << 6U) | (byte(at + i) & 0x3FU);
    }
    const bool overlong = (length == 3 && value < 0x800) || (length == 4 && value < 0x10000);
    const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
    return overlong || surrogate || value > 0x10FFFF ? broken : Decoded{value, length, true};
}

void append(std::string& out, char32_t c) {
    const auto tail = [&](unsigned shift) { out += static_cast<char>(0x80U | ((c >> shift) & 0x3FU)); };
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0U | (c >> 6U));
        tail(0);
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0U | (c >> 12U));
        tail(6);
        tail(0);
    } else {
        out += static_cast<char>(0xF0U | (c >> 18U));
        tail(12);
        tail(6);
        tail(0);
    }
}

} // namespace utf8

namespace text {
namespace {

/// Place of the first byte from `at` on that is not ASCII. Texts of this field are nearly all ASCII, so the
/// runs between the letters with accents are worth finding quickly.
std::size_t endOfAscii(std::string_view s, std::size_t at) noexcept {
    constexpr std::uint64_t highBits = 0x8080808080808080U;
    std::uint64_t block = 0;
    for (; s.size() - at >= sizeof block; at += sizeof block) {
        std::memcpy(&block, s.data() + at, sizeof block);
        if ((block & highBits) != 0) {
            break;
        }
    }
    while (at < s.size() && static_cast<unsigned char>(s[at]) < 0x80) {
        ++at;
    }
    return at;
}

/// Copies the ASCII characters of a text and calls `visit(character, place)` for each of the others.
template<typename Visit>
void copyAscii(std::string& out, std::string_view s, Visit visit) {
    for (std::size_t at = 0; at < s.size();) {
        const std::size_t end = endOfAscii(s, at);
        out.append(s, at, end - at);
        at = end;
        if (at < s.size()) {
            const utf8::Decoded decoded = utf8::decode(s, at);
            visit(decoded.character, at);
            at += decoded.length;
        }
    }
}

/// Follows a markup text and knows in which kind of place it stands.
class MarkupPlace {
public:
    enum class Kind { Plain, CData, NoReferences };

    explicit MarkupPlace(std::string_view markup)
        : markup_(markup) {}

    /// Kind of the place `at`; the places asked for must rise.
    Kind at(std::size_t at) {
        while (next_ <= at) {
            step();
        }
        return kind_;
    }

private:
    static constexpr std::string_view cdataStart = "<![CDATA[";
    static constexpr std::string_view commentStart = "<!--";
    static constexpr std::string_view instructionStart = "<?";

    void step() {
        if (kind_ == Kind::Plain) {
            enter();
        } else {
            kind_ = Kind::Plain;
        }
        findNext();
    }

    void enter() {
        const std::string_view rest = markup_.substr(next_);
        if (rest.starts_with(cdataStart)) {
            open(Kind::CData, cdataStart, "]]>");
        } else if (rest.starts_with(commentStart)) {
            open(Kind::NoReferences, commentStart, "-->");
        } else if (rest.starts_with(instructionStart)) {
            open(Kind::NoReferences, instructionStart, "?>");
        } else {
            ++next_;
        }
    }

    void open(Kind kind, std::string_view start, std::string_view end) {
        kind_ = kind;
        end_ = end;
        next_ += start.size();
    }

    void findNext() {
        const std::size_t found = kind_ == Kind::Plain ? markup_.find('<', next_) : markup_.find(end_, next_);
        next_ = found == std::string_view::npos ? found : found + (kind_ == Kind::Plain ? 0 : end_.size());
    }

    std::string_view markup_;
    std::string_view end_;
    Kind kind_ = Kind::Plain;
    std::size_t next_ = 0; ///< Where the kind may change next.
};

} // namespace

std::string toLatin1(std::string_view utf8Text, char substitute) {
    std::string out;
    out.reserve(utf8Text.size());
    copyAscii(out, utf8Text, [&](char32_t c, std::size_t) {
        out += c <= 0xFF ? static_cast<char>(static_cast<unsigned char>(c)) : substitute;
    });
    return out;
}

std::string toLatin1Markup(std::string_view utf8Text) {
    std::string out;
    out.reserve(utf8Text.size());
    MarkupPlace place(utf8Text);
    copyAscii(out, utf8Text, [&](char32_t c, std::size_t at) {
        if (c <= 0xFF) {
            out += static_cast<char>(static_cast<unsigned char>(c));
            return;
        }
        const std::string reference = "&#" + std::to_string(static_cast<unsigned long>(c)) + ";";
        switch (place.at(at)) {
        case MarkupPlace::Kind::Plain:
            out += reference;
            break;
        case MarkupPlace::Kind::CData:
            out += "]]>" + reference + "<![CDATA[";
            break;
        case MarkupPlace::Kind::NoReferences:
            out += '?';
            break;
        }
    });
    return out;
}

std::string fromLatin1(std::string_view latin1) {
    std::string out;
    out.reserve(latin1.size() + latin1.size() / 16);
    for (std::size_t at = 0; at < latin1.size(); ++at) {
        const std::size_t end = endOfAscii(latin1, at);
        out.append(latin1, at, end - at);
        at = end;
        if (at < latin1.size()) {
            utf8::append(out, static_cast<unsigned char>(latin1[at]));
        }
    }
    return out;
}

bool isUtf8(std::string_view s) noexcept {
    for (std::size_t at = endOfAscii(s, 0); at < s.size(); at = endOfAscii(s, at)) {
        const utf8::Decoded decoded = utf8::decode(s, at);
        if (!decoded.wellFormed) {
            return false;
        }
        at += decoded.length;
    }
    return true;
}

std::string sanitizeUtf8(std::string_view s) {
    if (isUtf8(s)) {
        return std::string(s);
    }
    std::string out;
    out.reserve(s.size() + 16);
    copyAscii(out, s, [&](char32_t c, std::size_t) { utf8::append(out, c); });
    return out;
}

void appendUtf8(std::string& out, const char16_t* units, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const char16_t unit = units[i];
        const bool high = unit >= 0xD800 && unit <= 0xDBFF;
        const bool paired = high && i + 1 < count && units[i + 1] >= 0xDC00 && units[i + 1] <= 0xDFFF;
        if (paired) {
            utf8::append(out, 0x10000U + ((unit - 0xD800U) << 10U) + (units[i + 1] - 0xDC00U));
            ++i;
        } else if (unit >= 0xD800 && unit <= 0xDFFF) {
            utf8::append(out, utf8::replacement);
        } else {
            utf8::append(out, unit);
        }
    }
}

} // namespace text
} // namespace tv
