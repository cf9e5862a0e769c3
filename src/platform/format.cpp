#include "platform/format.h"

#include "platform/FormatPattern.h"
#include "platform/Utf8.h"
#include "platform/text.h"

#include <cmath>
#include <optional>

namespace tv::format {
namespace {

namespace chr = std::chrono;

/// Dates count in days from here, as numbers under date patterns and the other way round.
constexpr chr::local_days dayZero{chr::year{1899} / chr::December / 30};
constexpr double firstDay = -657434; // 0100-01-01
constexpr double lastDay = 2958465;  // 9999-12-31
constexpr double secondsOfDay = 86400;

double toNumber(DateTime moment) {
    return static_cast<double>((moment - dayZero).count()) / secondsOfDay;
}

std::optional<DateTime> toDate(double number) {
    if (!(number >= firstDay && number < lastDay + 1)) {
        return std::nullopt;
    }
    return dayZero + chr::seconds(std::llround(number * secondsOfDay));
}

struct AsNumber {
    std::optional<double> operator()(Null) const { return std::nullopt; }
    std::optional<double> operator()(std::int32_t number) const { return number; }
    std::optional<double> operator()(double number) const { return number; }
    std::optional<double> operator()(bool logical) const { return logical ? -1 : 0; }
    std::optional<double> operator()(DateTime moment) const { return toNumber(moment); }
    std::optional<double> operator()(const std::string& text) const { return text::documentNumber(text); }
};

struct AsDate {
    std::optional<DateTime> operator()(DateTime moment) const { return moment; }
    std::optional<DateTime> operator()(const std::string& text) const {
        const std::optional<DateTime> read = readDate(text);
        return read ? read : fromNumber(text::documentNumber(text));
    }
    template<typename Other>
    std::optional<DateTime> operator()(const Other& other) const {
        return fromNumber(AsNumber{}(other));
    }
    static std::optional<DateTime> fromNumber(std::optional<double> number) {
        return number ? toDate(*number) : std::nullopt;
    }
};

bool holds(std::string_view letters, char c) {
    return c != '\0' && letters.find(c) != std::string_view::npos;
}

/// The first character that belongs to one kind alone settles the kind.
PatternKind kindOf(Symbols symbols) {
    for (const Symbol& symbol : symbols) {
        const char meaning = symbol.meaning();
        if (holds("0#.,%", meaning)) {
            return PatternKind::Number;
        }
        if (holds("dmyhnswq/:", meaning)) {
            return PatternKind::Date;
        }
        if (holds("@&<>!", meaning)) {
            return PatternKind::Text;
        }
    }
    return symbols.empty() ? PatternKind::Empty : PatternKind::Literal;
}

std::string joined(Symbols symbols) {
    std::string out;
    for (const Symbol& symbol : symbols) {
        out += symbol.text;
    }
    return out;
}

} // namespace

char Symbol::meaning() const noexcept {
    if (literal || text.size() != 1) {
        return '\0';
    }
    const char c = text[0];
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::vector<Symbol> symbolsOf(std::string_view pattern) {
    std::vector<Symbol> symbols;
    bool quoted = false;
    bool escaped = false;
    for (std::size_t at = 0; at < pattern.size();) {
        const std::string_view character = pattern.substr(at, utf8::sequenceLength(pattern, at));
        at += character.size();
        if (!escaped && character == "\"") {
            quoted = !quoted;
        } else if (!escaped && !quoted && character == "\\" && at < pattern.size()) {
            escaped = true;
        } else {
            symbols.push_back({character, escaped || quoted});
            escaped = false;
        }
    }
    return symbols;
}

std::vector<Symbols> sectionsOf(Symbols symbols) {
    std::vector<Symbols> sections;
    std::size_t from = 0;
    for (std::size_t i = 0; i < symbols.size(); ++i) {
        if (symbols[i].meaning() == ';') {
            sections.push_back(symbols.subspan(from, i - from));
            from = i + 1;
        }
    }
    sections.push_back(symbols.subspan(from));
    return sections;
}

PatternKind kindOf(std::string_view pattern) {
    return kindOf(Symbols(symbolsOf(pattern)));
}

std::string format(const Value& value, std::string_view pattern) {
    const std::vector<Symbol> symbols = symbolsOf(pattern);
    const PatternKind kind = kindOf(Symbols(symbols));
    if (isNull(value)) {
        return kind == PatternKind::Number ? formatNullNumber(symbols) : std::string();
    }
    switch (kind) {
    case PatternKind::Empty:
        break;
    case PatternKind::Literal:
        return joined(symbols);
    case PatternKind::Number:
        if (const auto number = std::visit(AsNumber{}, value); number && std::isfinite(*number)) {
            return formatNumber(*number, symbols);
        }
        break;
    case PatternKind::Date:
        if (const auto moment = std::visit(AsDate{}, value)) {
            return formatDate(*moment, symbols);
        }
        break;
    case PatternKind::Text:
        return formatText(defaultText(value), symbols);
    }
    return defaultText(value);
}

std::string format(DateTime moment, std::string_view pattern) {
    return format(Value(moment), pattern);
}

} // namespace tv::format
