#include "platform/Decimal.h"
#include "platform/FormatPattern.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace tv::format {
namespace {

constexpr int significantDigits = 15;

bool isPlaceholder(char c) {
    return c == '0' || c == '#';
}

/// One section of a number pattern, ready to write numbers.
class NumberSection {
public:
    explicit NumberSection(Symbols symbols) {
        for (std::size_t i = 0; i < symbols.size();) {
            i += read(symbols.subspan(i));
        }
        finishWhole();
    }

    /// A number as this section shows it.
    struct Shown {
        Decimal digits;
        int exponent = 0;
    };
    Shown show(const Decimal& number) const {
        Shown shown{number, 0};
        shown.digits.scale(scale_);
        if (hasExponent_ && !shown.digits.isZero()) {
            shown.exponent = shown.digits.integerDigits() - wholePlaces_;
            shown.digits.scale(-shown.exponent);
        }
        shown.digits.round(fractionPlaces_, Decimal::Tie::AwayFromZero);
        if (hasExponent_ && shown.digits.integerDigits() > wholePlaces_) { // 9.99 became 10.0
            shown.digits.scale(-1);
            ++shown.exponent;
        }
        return shown;
    }

    std::string write(const Shown& shown) const;
    /// The literal characters alone.
    std::string writeLiterals() const {
        std::string out;
        for (const Part& part : parts_) {
            out += part.kind == Part::Kind::Literal ? part.text : "";
        }
        return out;
    }

private:
    struct Part {
        enum class Kind { Literal, Digit, Point, Exponent };
        Kind kind;
        std::string text; // of a literal; the placeholder of a digit
    };

    std::size_t read(Symbols rest);
    std::size_t readExponent(Symbols rest);
    void readPlaceholder(char placeholder);
    void finishWhole() {
        scale_ -= 3 * pendingCommas_;
        pendingCommas_ = 0;
    }
    void add(Part::Kind kind, std::string_view text) { parts_.push_back({kind, std::string(text)}); }

    std::vector<Part> parts_;
    int wholePlaces_ = 0;
    int fractionPlaces_ = 0;
    int lastForced_ = 0; // the last place behind the point that is always written
    int scale_ = 0;      // power of ten to multiply by
    int pendingCommas_ = 0;
    bool grouped_ = false;
    bool hasPoint_ = false;
    bool hasExponent_ = false;
    bool exponentPlus_ = false;
    char exponentLetter_ = 'E';
    int exponentDigits_ = 0;
};

void NumberSection::readPlaceholder(char placeholder) {
    add(Part::Kind::Digit, std::string_view(&placeholder, 1));
    if (hasPoint_) {
        ++fractionPlaces_;
        lastForced_ = placeholder == '0' ? fractionPlaces_ : lastForced_;
        return;
    }
    grouped_ = grouped_ || pendingCommas_ > 0;
    pendingCommas_ = 0;
    ++wholePlaces_;
}

/// "E+00": the letter, the sign and at least one placeholder. 0 when it is none.
std::size_t NumberSection::readExponent(Symbols rest) {
    const bool starts = rest.size() >= 3 && !hasExponent_ && wholePlaces_ + fractionPlaces_ > 0 &&
                        rest[0].meaning() == 'e' && (rest[1].meaning() == '+' || rest[1].meaning() == '-');
    std::size_t length = 2;
    while (starts && length < rest.size() && isPlaceholder(rest[length].meaning())) {
        exponentDigits_ += rest[length].meaning() == '0' ? 1 : 0;
        ++length;
    }
    if (!starts || length == 2) {
        return 0;
    }
    hasExponent_ = true;
    exponentPlus_ = rest[1].meaning() == '+';
    exponentLetter_ = rest[0].text[0];
    add(Part::Kind::Exponent, {});
    return length;
}

/// Reads what stands in front; gives the number of symbols taken.
std::size_t NumberSection::read(Symbols rest) {
    if (const std::size_t exponent = readExponent(rest)) {
        return exponent;
    }
    const char meaning = rest[0].meaning();
    if (isPlaceholder(meaning) && !hasExponent_) {
        readPlaceholder(meaning);
    } else if (meaning == '.' && !hasPoint_ && !hasExponent_) {
        finishWhole();
        hasPoint_ = true;
        add(Part::Kind::Point, {});
    } else if (meaning == ',' && !hasPoint_ && !hasExponent_) {
        pendingCommas_ += wholePlaces_ > 0 ? 1 : 0;
    } else {
        scale_ += meaning == '%' ? 2 : 0;
        add(Part::Kind::Literal, rest[0].text);
    }
    return 1;
}

/// Writes the digits of one number into the parts of a section.
class DigitWriter {
public:
    DigitWriter(const Decimal& digits, bool grouped, int wholePlaces)
        : digits_(digits)
        , grouped_(grouped)
        , nextPower_(wholePlaces - 1) {}

    void wholePlace(std::string& out, bool isZero) {
        writeAbove(out, nextPower_);
        forced_ = forced_ || isZero;
        if (forced_ || nextPower_ < digits_.integerDigits()) {
            writeWhole(out, nextPower_);
        }
        --nextPower_;
    }
    /// Digits for which the pattern has no place of their own.
    void writeAbove(std::string& out, int power) {
        for (int above = digits_.integerDigits() - 1; !started_ && above > power; --above) {
            writeWhole(out, above);
        }
        started_ = true;
    }

private:
    void writeWhole(std::string& out, int power) const {
        out += digits_.digit(power);
        if (grouped_ && power > 0 && power % 3 == 0) {
            out += ',';
        }
    }

    const Decimal& digits_;
    bool grouped_;
    int nextPower_;
    bool started_ = false;
    bool forced_ = false;
};

std::string NumberSection::write(const Shown& shown) const {
    std::string out;
    DigitWriter writer(shown.digits, grouped_, wholePlaces_);
    const int lastPlace = std::max(lastForced_, -shown.digits.lastPower());
    int place = 0;
    bool behindPoint = false;
    for (const Part& part : parts_) {
        switch (part.kind) {
        case Part::Kind::Literal:
            out += part.text;
            break;
        case Part::Kind::Point:
            writer.writeAbove(out, -1);
            out += '.';
            behindPoint = true;
            break;
        case Part::Kind::Digit:
            if (!behindPoint) {
                writer.wholePlace(out, part.text == "0");
            } else if (++place <= lastPlace) {
                out += shown.digits.digit(-place);
            }
            break;
        case Part::Kind::Exponent: {
            const std::string digits = std::to_string(std::abs(shown.exponent));
            const std::size_t width = std::max(digits.size(), static_cast<std::size_t>(exponentDigits_));
            out += exponentLetter_;
            out += shown.exponent < 0 ? "-" : exponentPlus_ ? "+" : "";
            out.append(width - digits.size(), '0').append(digits);
            break;
        }
        }
    }
    return out;
}

} // namespace

std::string formatNumber(double number, Symbols pattern) {
    const std::vector<Symbols> sections = sectionsOf(pattern);
    const auto given = [&](std::size_t i) { return i < sections.size() && !sections[i].empty(); };
    const Decimal digits = Decimal::significant(std::abs(number), significantDigits);

    const bool hasNegative = number < 0 && given(1);
    const NumberSection own(sections[hasNegative ? 1 : 0]);
    const NumberSection::Shown shown = own.show(digits);
    if (!shown.digits.isZero()) {
        return (number < 0 && !hasNegative ? "-" : "") + own.write(shown);
    }
    // What the section rounds to zero is a zero, without a sign.
    const NumberSection zero(sections[given(2) ? 2 : 0]);
    return zero.write(zero.show(Decimal()));
}

std::string formatNullNumber(Symbols pattern) {
    const std::vector<Symbols> sections = sectionsOf(pattern);
    return sections.size() > 3 ? NumberSection(sections[3]).writeLiterals() : std::string();
}

} // namespace tv::format
