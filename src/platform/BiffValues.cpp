#include "platform/BiffValues.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace tv::biff {
namespace {

using std::chrono::days;
using std::chrono::sys_days;

constexpr int secondsADay = 86400;

char lowerAscii(char c) noexcept {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// The letters of a format's first part that speak of dates and times.
struct Letters {
    bool date = false;
    bool time = false;
    bool month = false; // or minutes
};

bool comes(std::string_view code, std::size_t at, std::string_view lowerWord) noexcept {
    for (std::size_t i = 0; i < lowerWord.size(); ++i) {
        if (at + i >= code.size() || lowerAscii(code[at + i]) != lowerWord[i]) {
            return false;
        }
    }
    return true;
}

void see(char letter, Letters& seen) noexcept {
    switch (lowerAscii(letter)) {
    case 'd':
    case 'y':
        seen.date = true;
        break;
    case 'h':
    case 's':
        seen.time = true;
        break;
    case 'm':
        seen.month = true;
        break;
    default:
        break;
    }
}

/// What stands in square brackets is a colour, a country or a condition, but [h], [m] and [s] are lengths of
/// time.
std::size_t behindBrackets(std::string_view code, std::size_t at, Letters& seen) noexcept {
    const std::size_t end = std::min(code.find(']', at), code.size());
    if (at + 1 < end) {
        const char letter = lowerAscii(code[at + 1]);
        const bool length = letter == 'h' || letter == 'm' || letter == 's';
        bool alone = length;
        for (std::size_t i = at + 1; i < end; ++i) {
            alone = alone && lowerAscii(code[i]) == letter;
        }
        seen.time = seen.time || alone;
    }
    return end + 1;
}

/// Programs that know truth values as numbers alone show them so: "TRUE";"TRUE";"FALSE".
bool isTruth(std::string_view code) noexcept {
    const std::size_t first = code.find(';');
    const std::size_t second = first == std::string_view::npos ? first : code.find(';', first + 1);
    if (second == std::string_view::npos) {
        return false;
    }
    const auto isWord = [](std::string_view part) {
        return part.size() > 2 && part.front() == '"' && part.find('"', 1) == part.size() - 1;
    };
    const std::string_view positive = code.substr(0, first);
    const std::string_view zero = code.substr(second + 1);
    return isWord(positive) && positive == code.substr(first + 1, second - first - 1) && isWord(zero) &&
           zero != positive;
}

std::string dateText(sys_days day) {
    const std::chrono::year_month_day parts(day);
    std::array<char, 40> text{};
    const int length =
        std::snprintf(text.data(), text.size(), "%04d%02u%02u", static_cast<int>(parts.year()),
                      static_cast<unsigned>(parts.month()), static_cast<unsigned>(parts.day()));
    return {text.data(), static_cast<std::size_t>(length)};
}

std::string timeText(long long seconds) {
    std::array<char, 40> text{};
    const int length = std::snprintf(text.data(), text.size(), "%02lld%02lld%02lld", seconds / 3600,
                                     seconds / 60 % 60, seconds % 60);
    return {text.data(), static_cast<std::size_t>(length)};
}

/// Days count from 31 December 1899 up to February 1900 and from the day before behind it, because the
/// format counts a 29 February 1900, which never was; that number is taken for the 28th.
sys_days dayOf(long count, bool from1904) {
    using namespace std::chrono;
    constexpr long falseLeapDay = 60;
    if (from1904) {
        return sys_days{year{1904} / January / 1} + days{count};
    }
    return sys_days{year{1899} / December / 30} + days{count + (count < falseLeapDay ? 1 : 0)};
}

} // namespace

Meaning meaningOf(std::string_view code) noexcept {
    if (isTruth(code)) {
        return Meaning::Truth;
    }
    Letters seen;
    for (std::size_t at = 0; at < code.size() && code[at] != ';';) {
        switch (code[at]) {
        case '\\':
        case '_':
        case '*':
            at += 2; // the next character stands for itself, or for its width
            break;
        case '"':
            at = std::min(code.find('"', at + 1), code.size()) + 1;
            break;
        case '[':
            at = behindBrackets(code, at, seen);
            break;
        default:
            if (comes(code, at, "am/pm") || comes(code, at, "general")) {
                at += std::size_t{comes(code, at, "general") ? 7U : 5U};
            } else {
                see(code[at], seen);
                ++at;
            }
        }
    }
    if (seen.date || (seen.month && !seen.time)) {
        return Meaning::Date;
    }
    return seen.time ? Meaning::Time : Meaning::Number;
}

Meaning meaningOf(std::uint16_t format) noexcept {
    const auto within = [format](int first, int last) { return format >= first && format <= last; };
    if (within(14, 17) || format == 22 || within(27, 31) || format == 36 || within(50, 54) ||
        within(57, 58)) {
        return Meaning::Date;
    }
    if (within(18, 21) || within(32, 35) || within(45, 47) || within(55, 56)) {
        return Meaning::Time;
    }
    return Meaning::Number;
}

std::string numberText(double value) {
    if (!std::isfinite(value)) {
        return {};
    }
    if (value == 0) {
        return "0"; // also for a zero with a sign
    }
    constexpr int decimals = 14; // behind the first digit
    std::array<char, 40> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), std::abs(value),
                                   std::chars_format::scientific, decimals);
    const std::string_view written(text.data(), static_cast<std::size_t>(end.ptr - text.data()));
    const std::size_t mark = written.find('e');
    int exponent = 0;
    const std::size_t digitsAt = mark + (written[mark + 1] == '+' ? 2 : 1);
    std::from_chars(written.data() + digitsAt, written.data() + written.size(), exponent);
    std::string digits = std::string(written.substr(0, 1)) + std::string(written.substr(2, mark - 2));
    digits.erase(digits.find_last_not_of('0') + 1);

    std::string plain = value < 0 ? "-" : "";
    if (exponent < 0) {
        return plain + "0." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + digits;
    }
    const auto whole = static_cast<std::size_t>(exponent) + 1;
    if (digits.size() <= whole) {
        return plain + digits + std::string(whole - digits.size(), '0');
    }
    return plain + digits.substr(0, whole) + "." + digits.substr(whole);
}

std::string valueText(double value, Meaning meaning, bool from1904) {
    if (meaning == Meaning::Truth) {
        return value != 0 ? "S" : "N";
    }
    constexpr double endOf9999 = 2958466;
    if (meaning == Meaning::Number || !(value >= 0) || value >= endOf9999 - (from1904 ? 1462 : 0)) {
        return numberText(value);
    }
    const long long seconds = std::llround(value * secondsADay); // what the programs show
    if (meaning == Meaning::Time) {
        return timeText(seconds);
    }
    const auto day = static_cast<long>(seconds / secondsADay);
    return day == 0 && !from1904 ? numberText(value) : dateText(dayOf(day, from1904));
}

double shortNumber(std::uint32_t bits) noexcept {
    const bool whole = (bits & 2U) != 0;
    const double value = whole ? static_cast<double>(static_cast<std::int32_t>(bits) >> 2)
                               : std::bit_cast<double>(std::uint64_t{bits & 0xFFFFFFFCU} << 32U);
    return (bits & 1U) != 0 ? value / 100 : value;
}

} // namespace tv::biff
