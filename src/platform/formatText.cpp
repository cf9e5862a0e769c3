#include "platform/FormatPattern.h"
#include "platform/text.h"

#include <algorithm>

namespace tv::format {
namespace {

bool isPlaceholder(const Symbol& symbol) {
    return symbol.meaning() == '@' || symbol.meaning() == '&';
}

bool holds(Symbols pattern, char mark) {
    return std::any_of(pattern.begin(), pattern.end(),
                       [mark](const Symbol& symbol) { return symbol.meaning() == mark; });
}

bool isMark(const Symbol& symbol) {
    return symbol.meaning() != '\0' &&
           std::string_view("<>!").find(symbol.meaning()) != std::string_view::npos;
}

/// Deals out the characters of a text to places, of which there may be more or fewer.
class Dealer {
public:
    Dealer(std::string_view characters, std::size_t places, bool fromLeft)
        : rest_(characters)
        , length_(text::length(characters))
        , places_(places)
        , fromLeft_(fromLeft) {}

    /// What the next place holds: more than one character where the text is longer than the places.
    std::string_view next() {
        const std::size_t share = fromLeft_ ? shareFromLeft() : shareFromRight();
        const std::string_view dealt = text::left(rest_, share);
        rest_.remove_prefix(dealt.size());
        length_ -= share;
        --places_;
        return dealt;
    }

private:
    std::size_t shareFromLeft() const { return places_ == 1 ? length_ : std::min<std::size_t>(length_, 1); }
    std::size_t shareFromRight() const { return length_ >= places_ ? length_ - places_ + 1 : 0; }

    std::string_view rest_;
    std::size_t length_; ///< Of what is left, in characters.
    std::size_t places_; ///< That are still to come.
    bool fromLeft_;
};

std::string inCase(std::string_view text, Symbols pattern) {
    if (holds(pattern, '<')) {
        return text::lower(text);
    }
    return holds(pattern, '>') ? text::upper(text) : std::string(text);
}

} // namespace

std::string formatText(std::string_view text, Symbols pattern) {
    const std::vector<Symbols> sections = sectionsOf(pattern);
    const Symbols section = sections[text.empty() && sections.size() > 1 ? 1 : 0];
    const std::string characters = inCase(text, section);
    const auto places =
        static_cast<std::size_t>(std::count_if(section.begin(), section.end(), isPlaceholder));
    Dealer dealer(characters, places, holds(section, '!'));
    bool whole = places == 0 && !text.empty(); // the text still stands out as a whole
    std::string out;
    for (const Symbol& symbol : section) {
        if (isPlaceholder(symbol)) {
            const std::string_view dealt = dealer.next();
            out += dealt.empty() && symbol.meaning() == '@' ? " " : dealt;
        } else if (!isMark(symbol)) {
            out += symbol.text;
        } else if (whole) {
            out += characters;
            whole = false;
        }
    }
    return out;
}

} // namespace tv::format
