#include "platform/BiffValues.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tv::biff {
namespace {

struct NumberCase {
    double value;
    const char* text;
};

TEST(BiffValues, NumbersArePlainText) {
    for (const NumberCase& each : {NumberCase{0, "0"},
                                   {-0.0, "0"},
                                   {1, "1"},
                                   {20240131, "20240131"},
                                   {1000.5, "1000.5"},
                                   {0.1 + 0.2, "0.3"},
                                   {-42.25, "-42.25"},
                                   {0.07, "0.07"},
                                   {1.0 / 3, "0.333333333333333"},
                                   {2.0 / 3, "0.666666666666667"},
                                   {999999999999999, "999999999999999"},
                                   {9999999999999999.0, "10000000000000000"},
                                   {123456789012345678.0, "123456789012346000"},
                                   {1e20, "100000000000000000000"},
                                   {-1e-6, "-0.000001"},
                                   {1.5e-7, "0.00000015"},
                                   {12345.678, "12345.678"},
                                   {100, "100"},
                                   {9.99999999999999999, "10"}}) {
        EXPECT_EQ(numberText(each.value), each.text);
    }
    EXPECT_EQ(numberText(1e308).size(), 309U);
    EXPECT_EQ(numberText(std::numeric_limits<double>::infinity()), "");
    EXPECT_EQ(numberText(std::nan("")), "");
}

struct CodeCase {
    const char* code;
    Meaning meaning;
};

TEST(BiffValues, CodesTellDatesFromNumbers) {
    for (const CodeCase& each : {CodeCase{"General", Meaning::Number},
                                 {"@", Meaning::Number},
                                 {"0.00", Meaning::Number},
                                 {"#,##0.00_);[Red](#,##0.00)", Meaning::Number},
                                 {"0.00E+00", Meaning::Number},
                                 {"[$R$-416] #,##0.00", Meaning::Number},
                                 {"0\" dias\"", Meaning::Number},
                                 {"0\\d", Meaning::Number},
                                 {"0_d", Meaning::Number},
                                 {"[Red]0", Meaning::Number},
                                 {"0;dd", Meaning::Number},
                                 {"\"sem fim d", Meaning::Number},
                                 {"[sem fim", Meaning::Number},
                                 {"", Meaning::Number},
                                 {"dd/mm/yyyy", Meaning::Date},
                                 {"DD/MM/YYYY", Meaning::Date},
                                 {"[$-416]d \"de\" mmmm \"de\" yyyy;@", Meaning::Date},
                                 {"yyyymmdd", Meaning::Date},
                                 {"mmm-yy", Meaning::Date},
                                 {"mm", Meaning::Date},
                                 {"dd/mm/yyyy hh:mm", Meaning::Date},
                                 {"m/d/yy h:mm AM/PM", Meaning::Date},
                                 {"hh:mm:ss", Meaning::Time},
                                 {"h:mm AM/PM", Meaning::Time},
                                 {"[h]:mm", Meaning::Time},
                                 {"[ss]", Meaning::Time},
                                 {"mm:ss.0", Meaning::Time},
                                 {"\"TRUE\";\"TRUE\";\"FALSE\"", Meaning::Truth},
                                 {"\"VERDADEIRO\";\"VERDADEIRO\";\"FALSO\"", Meaning::Truth},
                                 {"\"a\";\"b\";\"c\"", Meaning::Number},
                                 {"\"a\";\"a\";\"a\"", Meaning::Number},
                                 {"\"a\";\"a\"", Meaning::Number}}) {
        EXPECT_EQ(meaningOf(each.code), each.meaning) << each.code;
    }
}

TEST(BiffValues, KnownFormatsNeedNoCode) {
    for (const int date : {14, 15, 16, 17, 22, 30, 58}) {
        EXPECT_EQ(meaningOf(static_cast<std::uint16_t>(date)), Meaning::Date) << date;
    }
    for (const int time : {18, 19, 20, 21, 45, 46, 47}) {
        EXPECT_EQ(meaningOf(static_cast<std::uint16_t>(time)), Meaning::Time) << time;
    }
    for (const int number : {0, 1, 13, 23, 37, 44, 48, 49, 164}) {
        EXPECT_EQ(meaningOf(static_cast<std::uint16_t>(number)), Meaning::Number) << number;
    }
}

struct ValueCase {
    double value;
    Meaning meaning;
    bool from1904;
    const char* text;
};

TEST(BiffValues, DatesAreEightDigits) {
    for (const ValueCase& each : {ValueCase{45322, Meaning::Date, false, "20240131"},
                                  {45351.770833333336, Meaning::Date, false, "20240229"},
                                  {45351.99999999, Meaning::Date, false, "20240301"}, // shown as midnight
                                  {43860, Meaning::Date, true, "20240131"},
                                  {0, Meaning::Date, true, "19040101"},
                                  {1, Meaning::Date, false, "19000101"},
                                  {59, Meaning::Date, false, "19000228"},
                                  {60, Meaning::Date, false, "19000228"},
                                  {61, Meaning::Date, false, "19000301"},
                                  {2958465, Meaning::Date, false, "99991231"},
                                  {2957003, Meaning::Date, true, "99991231"},
                                  {2958466, Meaning::Date, false, "2958466"},
                                  {-1, Meaning::Date, false, "-1"},
                                  {0, Meaning::Date, false, "0"},
                                  {1e300, Meaning::Time, false, nullptr},
                                  {0.75, Meaning::Time, false, "180000"},
                                  {0, Meaning::Time, false, "000000"},
                                  {1.5, Meaning::Time, false, "360000"},
                                  {0.7708912037, Meaning::Time, true, "183005"},
                                  {1, Meaning::Truth, false, "S"},
                                  {0, Meaning::Truth, false, "N"},
                                  {45322, Meaning::Number, false, "45322"}}) {
        EXPECT_EQ(valueText(each.value, each.meaning, each.from1904),
                  each.text == nullptr ? numberText(each.value) : each.text)
            << each.value;
    }
}

TEST(BiffValues, ShortNumbers) {
    EXPECT_EQ(shortNumber(20240131U << 2U | 2U), 20240131);
    EXPECT_EQ(shortNumber(100050U << 2U | 3U), 1000.5);
    EXPECT_EQ(shortNumber(static_cast<std::uint32_t>(-5) << 2U | 2U), -5);
    EXPECT_EQ(shortNumber(0x3FF00000U), 1);
    EXPECT_EQ(shortNumber(0x3FF00001U), 0.01);
}

} // namespace
} // namespace tv::biff
