#include "platform/FormatPattern.h"
#include "platform/format.h"
#include "platform/text.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace tv::format {
namespace {

namespace chr = std::chrono;

constexpr std::array<std::string_view, 12> monthNames{"janeiro",  "fevereiro", "março",    "abril",
                                                      "maio",     "junho",     "julho",    "agosto",
                                                      "setembro", "outubro",   "novembro", "dezembro"};
constexpr std::array<std::string_view, 7> dayNames{
    "domingo", "segunda-feira", "terça-feira", "quarta-feira", "quinta-feira", "sexta-feira", "sábado"};

std::string padded(int number, int width) {
    const std::string digits = std::to_string(number);
    const auto length = static_cast<std::size_t>(width);
    return digits.size() < length ? std::string(length - digits.size(), '0') + digits : digits;
}

/// Writes the parts of one moment.
class DateWriter {
public:
    DateWriter(DateTime moment, bool halfDays)
        : day_(chr::floor<chr::days>(moment))
        , date_(day_)
        , time_(moment - day_)
        , halfDays_(halfDays) {}

    std::string write(char letter, int count) {
        const bool minutes = letter == 'n' || (letter == 'm' && count <= 2 && last_ == 'h');
        last_ = minutes ? 'n' : letter;
        switch (last_) {
        case 'd':
            return dayText(count);
        case 'm':
            return monthText(count);
        case 'y':
            return yearText(count);
        case 'h':
            return padded(hour(), count);
        case 'n':
            return padded(static_cast<int>(time_.minutes().count()), count);
        case 's':
            return padded(static_cast<int>(time_.seconds().count()), count);
        case 'w':
            return std::to_string(count == 1 ? weekday() + 1 : week());
        default:
            return std::to_string((monthNumber() - 1) / 3 + 1); // the quarter
        }
    }

    std::string halfOfDay(bool lowerCase) const {
        const bool morning = time_.hours().count() < 12;
        return lowerCase ? (morning ? "am" : "pm") : (morning ? "AM" : "PM");
    }

private:
    int monthNumber() const { return static_cast<int>(static_cast<unsigned>(date_.month())); }
    int weekday() const { return static_cast<int>(chr::weekday(day_).c_encoding()); }
    int dayOfYear() const {
        const chr::local_days newYear{date_.year() / chr::January / 1};
        return static_cast<int>((day_ - newYear).count()) + 1;
    }
    /// Weeks start on Sunday; the first is that of January 1.
    int week() const { return (dayOfYear() - 1 + (weekday() - (dayOfYear() - 1) % 7 + 7) % 7) / 7 + 1; }

    int hour() const {
        const int hour = static_cast<int>(time_.hours().count());
        return halfDays_ ? (hour + 11) % 12 + 1 : hour;
    }
    std::string dayText(int count) const {
        if (count > 2) {
            return nameText(dayNames[static_cast<std::size_t>(weekday())], count);
        }
        return padded(static_cast<int>(static_cast<unsigned>(date_.day())), count);
    }
    std::string monthText(int count) const {
        return count > 2 ? nameText(monthNames[static_cast<std::size_t>(monthNumber() - 1)], count)
                         : padded(monthNumber(), count);
    }
    std::string yearText(int count) const {
        const int year = static_cast<int>(date_.year());
        return count == 4   ? padded(year, 4)
               : count == 2 ? padded(year % 100, 2)
                            : std::to_string(dayOfYear());
    }
    static std::string nameText(std::string_view name, int count) {
        return std::string(count == 3 ? text::left(name, 3) : name);
    }

    chr::local_days day_;
    chr::year_month_day date_;
    chr::hh_mm_ss<chr::seconds> time_;
    bool halfDays_;
    char last_ = '\0'; ///< The part written last.
};

/// How many of a run of `run` equal letters make one part.
int partLength(char letter, int run) {
    switch (letter) {
    case 'd':
    case 'm':
        return std::min(run, 4);
    case 'y':
        return run >= 4 ? 4 : std::min(run, 2);
    case 'h':
    case 'n':
    case 's':
    case 'w':
        return std::min(run, 2);
    default:
        return 1;
    }
}

constexpr std::string_view halfDayMark = "am/pm";

bool isHalfDayMark(Symbols rest) {
    if (rest.size() < halfDayMark.size()) {
        return false;
    }
    for (std::size_t i = 0; i < halfDayMark.size(); ++i) {
        if (rest[i].meaning() != halfDayMark[i]) {
            return false;
        }
    }
    return true;
}

bool hasHalfDays(Symbols pattern) {
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (isHalfDayMark(pattern.subspan(i))) {
            return true;
        }
    }
    return false;
}

int runLength(Symbols rest) {
    const auto end = std::find_if(rest.begin(), rest.end(), [&](const Symbol& symbol) {
        return symbol.meaning() != rest[0].meaning();
    });
    return static_cast<int>(end - rest.begin());
}

/// Takes numbers and marks from the front of a text.
class DateReader {
public:
    explicit DateReader(std::string_view s)
        : rest_(s) {}

    /// A number of `least` to `most` digits.
    bool number(int& value, std::size_t least, std::size_t most) {
        const std::size_t digits = std::min(rest_.find_first_not_of("0123456789"), rest_.size());
        if (digits < least || digits > most) {
            return false;
        }
        std::from_chars(rest_.data(), rest_.data() + digits, value);
        rest_.remove_prefix(digits);
        return true;
    }
    bool mark(char c) {
        const bool there = !rest_.empty() && rest_[0] == c;
        rest_.remove_prefix(there ? 1 : 0);
        return there;
    }
    bool atEnd() const { return rest_.empty(); }

private:
    std::string_view rest_;
};

} // namespace

std::string formatDate(DateTime moment, Symbols pattern) {
    constexpr std::string_view letters = "dmyhnswq";
    DateWriter writer(moment, hasHalfDays(pattern));
    std::string out;
    for (std::size_t i = 0; i < pattern.size();) {
        const Symbols rest = pattern.subspan(i);
        const char meaning = rest[0].meaning();
        if (isHalfDayMark(rest)) {
            out += writer.halfOfDay(rest[0].text == "a");
            i += halfDayMark.size();
        } else if (meaning != '\0' && letters.find(meaning) != std::string_view::npos) {
            const int length = partLength(meaning, runLength(rest));
            out += writer.write(meaning, length);
            i += static_cast<std::size_t>(length);
        } else {
            out += rest[0].text;
            ++i;
        }
    }
    return out;
}

std::optional<DateTime> readDate(std::string_view s) {
    const std::string_view trimmed = text::trim(s);
    int year = 0;
    int month = 0;
    int day = 0;
    DateReader reader(trimmed);
    bool legal = reader.number(day, 1, 2) && reader.mark('/') && reader.number(month, 1, 2) &&
                 reader.mark('/') && reader.number(year, 4, 4);
    if (!legal) {
        reader = DateReader(trimmed);
        legal = reader.number(year, 4, 4) && reader.mark('-') && reader.number(month, 1, 2) &&
                reader.mark('-') && reader.number(day, 1, 2);
    }
    int hour = 0;
    int minute = 0;
    int second = 0;
    if (legal && !reader.atEnd()) {
        legal = reader.mark(' ') && reader.number(hour, 1, 2) && reader.mark(':') &&
                reader.number(minute, 2, 2) && reader.mark(':') && reader.number(second, 2, 2) &&
                reader.atEnd() && hour < 24 && minute < 60 && second < 60;
    }
    const chr::year_month_day date{chr::year{year}, chr::month{static_cast<unsigned>(month)},
                                   chr::day{static_cast<unsigned>(day)}};
    if (!legal || !date.ok()) {
        return std::nullopt;
    }
    return clock::at(year, static_cast<unsigned>(month), static_cast<unsigned>(day), hour, minute, second);
}

} // namespace tv::format
