#include "platform/format.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <ostream>
#include <string>

namespace tv::format {
namespace {

struct Row {
    Value value;
    const char* pattern;
    const char* text;
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << '"' << defaultText(row.value) << "\" under \"" << row.pattern << '"';
}

class Format : public testing::TestWithParam<Row> {};

TEST_P(Format, gives) {
    EXPECT_EQ(format(GetParam().value, GetParam().pattern), GetParam().text);
}

Value text(const char* s) {
    return std::string(s);
}
const DateTime moment = clock::at(2024, 1, 31, 14, 5, 9);  // a Wednesday
const DateTime morning = clock::at(2023, 12, 3, 0, 30, 0); // a Sunday
const DateTime leapDay = clock::at(2024, 2, 29);

/// The patterns that the system itself and its catalog use.
INSTANTIATE_TEST_SUITE_P(
    in_use, Format,
    testing::Values(
        Row{7, "00000", "00007"}, Row{123456, "00000", "123456"}, Row{7, "0000", "0007"},
        Row{12345.0, "0000", "12345"}, Row{0, "0000", "0000"}, Row{1500.5, "############0.00", "1500.50"},
        Row{0.0, "############0.00", "0.00"}, Row{-0.5, "############0.00", "-0.50"},
        Row{-1234567.891, "############0.00", "-1234567.89"},
        Row{9999999999999.99, "############0.00", "9999999999999.99"}, Row{0.005, "############0.00", "0.01"},
        Row{12.345, "#0.00", "12.35"}, Row{0.4, "#0.00", "0.40"}, Row{-3.0, "#0.00", "-3.00"},
        Row{0, "###,##0", "0"}, Row{999, "###,##0", "999"}, Row{1000, "###,##0", "1,000"},
        Row{1234567, "###,##0", "1,234,567"}, Row{1234567.891, "###,##0.00", "1,234,567.89"},
        Row{0.5, "###,##0.00\\ \\K\\B", "0.50 KB"}, Row{51737.25, "###,##0.00\\ \\K\\B", "51,737.25 KB"},
        Row{moment, "YYYYMMDD", "20240131"}, Row{moment, "HHMMSS", "140509"},
        Row{moment, "HH:MM:SS", "14:05:09"}, Row{moment, "DD/MM/YYYY \\- HH:MM:SS", "31/01/2024 - 14:05:09"},
        Row{moment, "DD/MM/YYYY", "31/01/2024"}, Row{text("20240131"), "####-##-##", "2024-01-31"},
        Row{text("19990101"), "####-##-##", "1999-01-01"}, Row{text("20240131"), "YYYYMMDD", "20240131"},
        Row{text("00000000"), "####-##-##", "--"}, Row{text("31/01/2024"), "YYYYMMDD", "20240131"},
        Row{text("2024-01-31"), "YYYYMMDD", "20240131"}, Row{text(" 5"), "0000", "0005"},
        Row{text("abc"), "0.00", "abc"}, Row{text(""), "0.00", ""}, Row{Null{}, "0.00", ""},
        Row{Null{}, "YYYYMMDD", ""}, Row{Null{}, "", ""}, Row{1.5, "", "1.5"}, Row{true, "", "True"},
        Row{moment, "", "31/01/2024 14:05:09"}, Row{text("ações"), "", "ações"}));

INSTANTIATE_TEST_SUITE_P(
    rounding, Format,
    testing::Values(Row{2.675, "0.00", "2.68"}, Row{1.005, "0.00", "1.01"}, Row{-2.675, "0.00", "-2.68"},
                    Row{0.125, "0.00", "0.13"}, Row{2.5, "0", "3"}, Row{-2.5, "0", "-3"}, Row{0.5, "0", "1"},
                    Row{-0.004, "0.00", "0.00"}, Row{-0.4, "0", "0"}, Row{9.995, "0.00", "10.00"},
                    Row{0.1 + 0.2, "0.################", "0.3"},
                    Row{1234567890123456.0, "0", "1234567890123460"},
                    Row{123456789012345.6, "0", "123456789012346"}, Row{1e22, "0", "10000000000000000000000"},
                    Row{99.99, "0.0", "100.0"}));

INSTANTIATE_TEST_SUITE_P(
    numbers, Format,
    testing::Values(Row{5, "0.##", "5."}, Row{5.1, "0.##", "5.1"}, Row{5.126, "0.##", "5.13"},
                    Row{0.5, ".00", ".50"}, Row{12.5, ".00", "12.50"}, Row{0, "#", ""}, Row{0, "#.##", "."},
                    Row{5, "0.#0", "5.00"}, Row{5, "000,000", "000,005"}, Row{1234, "0,0", "1,234"},
                    Row{1234567, "#,##0,", "1,235"}, Row{1234567890.0, "0,,", "1235"},
                    Row{1500000, "0,,.0", "1.5"}, Row{0.256, "0%", "26%"}, Row{0.256, "0.0%", "25.6%"},
                    Row{12345, "0.00E+00", "1.23E+04"}, Row{0.00012345, "0.00E+00", "1.23E-04"},
                    Row{12345, "0.0e-0", "1.2e4"}, Row{0.00012, "0.0e-00", "1.2e-04"},
                    Row{9.996, "0.00E+0", "1.00E+1"}, Row{0, "0.0E+0", "0.0E+0"},
                    Row{12345, "##0.0E+0", "123.5E+2"}, Row{5, "$ 0.00", "$ 5.00"}, Row{-5, "$0", "-$5"},
                    Row{5, "(0)", "(5)"}, Row{5, "+0", "+5"}, Row{5, "\"R$ \"0.00", "R$ 5.00"},
                    Row{5, "\\#0", "#5"}, Row{5, "0\\", "5\\"}, Row{5, "0 \"unclosed", "5 unclosed"},
                    Row{5, "0€", "5€"}, Row{1234, "0-0-0-0", "1-2-3-4"}, Row{12345, "00-00", "123-45"},
                    Row{7, "00-00", "00-07"}, Row{true, "0", "-1"}, Row{false, "0", "0"},
                    Row{moment, "0", "45323"}, Row{text("1e3"), "0", "1000"}, Row{text("1,5"), "0", "1,5"},
                    Row{text("-7"), "000", "-007"},
                    Row{text("12345678000195"), "00\\.000\\.000/0000-00", "12.345.678/0001-95"},
                    Row{std::nan(""), "0", "NaN"}, Row{std::numeric_limits<double>::infinity(), "0", "INF"}));

INSTANTIATE_TEST_SUITE_P(sections, Format,
                         testing::Values(Row{5, "0;(0)", "5"}, Row{-5, "0;(0)", "(5)"}, Row{0, "0;(0)", "0"},
                                         Row{0, "0;-0;\\z\\e\\r\\o", "zero"}, Row{-0.4, "0;(0);\\z", "z"},
                                         Row{0.4, "0;(0);\\z", "z"}, Row{-5, "0.0;;\\z", "-5.0"},
                                         Row{0, "0.0;-0.0;", "0.0"},
                                         Row{Null{}, "0;0;0;\\n\\u\\l\\o", "nulo"}, Row{Null{}, "0;0;0", ""},
                                         Row{-1234.5, "#,##0.00;#,##0.00-", "1,234.50-"},
                                         Row{5, "0\\;0", "0;5"}, Row{1, "\"a;b\"0;0", "a;b1"}));

INSTANTIATE_TEST_SUITE_P(
    dates, Format,
    testing::Values(
        Row{moment, "D/M/YY", "31/1/24"}, Row{morning, "D/M/YY H:N:S", "3/12/23 0:30:0"},
        Row{moment, "dd mmm yyyy", "31 jan 2024"},
        Row{moment, "DDDD, D \\d\\e MMMM \\d\\e YYYY", "quarta-feira, 31 de janeiro de 2024"},
        Row{moment, "DDD", "qua"}, Row{clock::at(2024, 3, 2), "DDDD MMMM", "sábado março"},
        Row{clock::at(2024, 3, 2), "DDD", "sáb"}, Row{leapDay, "Y", "60"}, Row{moment, "W", "4"},
        Row{morning, "W", "1"}, Row{moment, "WW", "5"}, Row{clock::at(2024, 1, 1), "WW", "1"},
        Row{clock::at(2023, 12, 31), "WW", "53"}, Row{clock::at(2023, 1, 7), "WW", "1"},
        Row{clock::at(2023, 1, 8), "WW", "2"}, Row{moment, "Q", "1"}, Row{clock::at(2024, 12, 1), "Q", "4"},
        Row{moment, "HH:NN", "14:05"}, Row{moment, "H:MM", "14:05"}, Row{moment, "H:M:S", "14:5:9"},
        Row{moment, "HH:MM MM", "14:05 01"}, Row{moment, "MM/HH", "01/14"},
        Row{moment, "HH:MM AM/PM", "02:05 PM"}, Row{morning, "h:nn am/pm", "12:30 am"},
        Row{clock::at(2024, 1, 1, 12), "H AM/PM", "12 PM"}, Row{moment, "\"YYYY\" YYYY", "YYYY 2024"},
        Row{clock::at(900, 1, 1), "YYYY", "0900"}, Row{text("2024-01-31 14:05:09"), "HHMMSS", "140509"},
        Row{text("1/2/2024"), "YYYYMMDD", "20240201"}, Row{text("31/02/2024"), "YYYYMMDD", "31/02/2024"},
        Row{text("abc"), "YYYYMMDD", "abc"}, Row{45322, "YYYYMMDD", "20240131"},
        Row{45322.5, "DD/MM/YYYY HH:MM", "31/01/2024 12:00"}, Row{text("45322"), "DD/MM/YYYY", "31/01/2024"},
        Row{20240131, "YYYYMMDD", "20240131"}, Row{-1e300, "YYYY", "-1E+300"}));

INSTANTIATE_TEST_SUITE_P(
    texts, Format,
    testing::Values(Row{text("12345678000195"), "@@.@@@.@@@/@@@@-@@", "12.345.678/0001-95"},
                    Row{text("ab"), "@@@@", "  ab"}, Row{text("ab"), "&&&&", "ab"},
                    Row{text("ab"), "!@@@@", "ab  "}, Row{text("abcd"), "@@-@@", "ab-cd"},
                    Row{text("abcde"), "@@-@@", "abc-de"}, Row{text("abcde"), "!@@-@@", "ab-cde"},
                    Row{text("AbÇ"), "<", "abç"}, Row{text("abç"), ">", "ABÇ"},
                    Row{text("abç"), ">@@@@", " ABÇ"}, Row{text("çã"), "@-@", "ç-ã"},
                    Row{text(""), "@@;vazio", "vazio"}, Row{text("x"), "@@;vazio", " x"},
                    Row{text(""), "@@", "  "}, Row{text(""), "&&", ""}, Row{text("ab"), "\\<&&\\>", "<ab>"},
                    Row{42, "@@@@", "  42"}, Row{text("ab"), "[>]", "[AB]"}, Row{text("ab"), "R$", "R$"},
                    Row{5, "--", "--"}, Row{Null{}, "@@@", ""}));

TEST(Format, takes_every_kind_of_text) {
    const char* pattern = "000";
    EXPECT_EQ(format("5", pattern), "005");
    EXPECT_EQ(format(std::string("5"), pattern), "005");
    EXPECT_EQ(format(std::string_view("5"), pattern), "005");
    EXPECT_EQ(format(5, pattern), "005");
}

TEST(Format, never_throws_for_a_pattern) {
    const std::string characters = "0#.,%Ee+-;\\\"@&<>!DMYHNSWQ/: \xC3\xA7\xFFx";
    std::uint32_t state = 12345;
    for (int round = 0; round < 20000; ++round) {
        std::string pattern;
        for (std::uint32_t length = state % 12; length > 0; --length) {
            state = state * 1664525U + 1013904223U;
            pattern += characters[(state >> 16U) % characters.size()];
        }
        state = state * 1664525U + 1013904223U;
        for (const Value& value :
             {Value(), Value(-1234.5), Value(7), Value(moment), text("ações"), text("")}) {
            EXPECT_NO_THROW(format(value, pattern)) << pattern;
        }
    }
}

TEST(Format, stays_quick_on_long_patterns) {
    const std::string pattern(100000, '0');
    EXPECT_EQ(format(1, pattern).size(), pattern.size());
    EXPECT_EQ(format(std::string(100000, 'x'), std::string(100000, '@')).size(), 100000U);
}

struct Kind {
    const char* pattern;
    PatternKind kind;
};

class KindOf : public testing::TestWithParam<Kind> {};

TEST_P(KindOf, is_told_by_the_first_character_that_settles_it) {
    EXPECT_EQ(kindOf(GetParam().pattern), GetParam().kind);
}

INSTANTIATE_TEST_SUITE_P(patterns, KindOf,
                         testing::Values(Kind{"", PatternKind::Empty}, Kind{"0.00", PatternKind::Number},
                                         Kind{"####-##-##", PatternKind::Number},
                                         Kind{"%", PatternKind::Number}, Kind{"YYYYMMDD", PatternKind::Date},
                                         Kind{"hh:nn", PatternKind::Date}, Kind{"@@/@@", PatternKind::Text},
                                         Kind{">", PatternKind::Text}, Kind{"##/##", PatternKind::Number},
                                         Kind{"\\0\\0", PatternKind::Literal},
                                         Kind{"\"YYYY\"", PatternKind::Literal},
                                         Kind{"- $", PatternKind::Literal},
                                         Kind{"\\D0", PatternKind::Number}));

TEST(ReadDate, takes_the_written_forms) {
    EXPECT_EQ(readDate("31/01/2024"), clock::at(2024, 1, 31));
    EXPECT_EQ(readDate(" 2024-01-31 "), clock::at(2024, 1, 31));
    EXPECT_EQ(readDate("2024-1-3"), clock::at(2024, 1, 3));
    EXPECT_EQ(readDate("29/02/2024 23:59:59"), clock::at(2024, 2, 29, 23, 59, 59));
}

TEST(ReadDate, takes_nothing_else) {
    for (const char* s :
         {"", "20240131", "29/02/2023", "31/04/2024", "00/01/2024", "01/13/2024", "1/1/24",
          "2024-01-31T10:00:00", "31/01/2024 24:00:00", "31/01/2024 10:60:00", "31/01/2024 10:00",
          "31/01/2024x", "31-01-2024", "2024/01/31", "--", "99999-01-01"}) {
        EXPECT_EQ(readDate(s), std::nullopt) << s;
    }
}

} // namespace
} // namespace tv::format
