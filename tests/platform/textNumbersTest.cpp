#include "platform/text.h"

#include "Throws.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>
#include <string>

namespace tv::text {
namespace {

using test::errorOf;

struct Reading {
    const char* text;
    double number;
};

class LenientNumber : public testing::TestWithParam<Reading> {};

TEST_P(LenientNumber, reads_what_stands_in_front) {
    EXPECT_EQ(lenientNumber(GetParam().text), GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(
    readings, LenientNumber,
    testing::Values(Reading{"", 0}, Reading{"abc", 0}, Reading{"12", 12}, Reading{"12abc", 12},
                    Reading{"abc12", 0}, Reading{" 1 2 ", 12}, Reading{"1\t2\r\n3", 123}, Reading{"-5", -5},
                    Reading{"- 5", -5}, Reading{"+5", 5}, Reading{"+-5", 0}, Reading{"--5", 0},
                    Reading{"-", 0}, Reading{".", 0}, Reading{".5", 0.5}, Reading{"5.", 5},
                    Reading{"-.25", -0.25}, Reading{"1.5.7", 1.5}, Reading{"1,5", 1}, Reading{"1e3", 1000},
                    Reading{"1E+3", 1000}, Reading{"1d3", 1000}, Reading{"25D-1", 2.5},
                    Reading{"1 e 3", 1000}, Reading{"1e", 1}, Reading{"1e+", 1}, Reading{"1e-x", 1},
                    Reading{"1ex", 1}, Reading{"e3", 0}, Reading{"-0", 0}, Reading{"0e999999", 0},
                    Reading{"1e-999999", 0}, Reading{"0001", 1}, Reading{"&H10", 0}, Reading{"1_000", 1},
                    Reading{"\xC3\xA7", 0}, Reading{"1\xA0", 1}, Reading{"inf", 0}, Reading{"nan", 0},
                    Reading{"0x10", 0}));

TEST(text, fails_on_a_lenient_number_beyond_the_type) {
    EXPECT_EQ(errorOf([] { lenientNumber("1e999"); }), errc::overflow);
    EXPECT_EQ(errorOf([] { lenientNumber("-1D400"); }), errc::overflow);
    EXPECT_EQ(errorOf([] { lenientNumber(std::string(400, '9')); }), errc::overflow);
    EXPECT_EQ(errorOf([] { lenientNumber("1e99999999999999999999"); }), errc::overflow);
    EXPECT_EQ(lenientNumber("0." + std::string(500, '0') + "1e100"), 0) << "too small is no overflow";
    EXPECT_EQ(lenientNumber("0." + std::string(500, '0') + "1e502"), 10);
}

TEST(text, reads_numbers_the_same_in_every_locale) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* locale : {"pt_BR.UTF-8", "de_DE.UTF-8", "C"}) {
        std::setlocale(LC_ALL, locale); // an absent locale changes nothing
        EXPECT_EQ(lenientNumber("1.5"), 1.5);
        EXPECT_EQ(documentNumber("1.5"), 1.5);
    }
    std::setlocale(LC_ALL, before.c_str());
}

TEST(text, reads_long_texts_of_digits_and_nonsense) {
    EXPECT_EQ(lenientNumber(std::string(100000, ' ') + "7"), 7);
    EXPECT_EQ(lenientNumber(std::string(100000, 'x')), 0);
    EXPECT_DOUBLE_EQ(lenientNumber("0." + std::string(100000, '3')), 1.0 / 3);
}

class DocumentNumber : public testing::TestWithParam<Reading> {};

TEST_P(DocumentNumber, is_read) {
    EXPECT_EQ(documentNumber(GetParam().text), GetParam().number);
    EXPECT_TRUE(isNumeric(GetParam().text));
}

INSTANTIATE_TEST_SUITE_P(readings, DocumentNumber,
                         testing::Values(Reading{"0", 0}, Reading{"1500.01", 1500.01},
                                         Reading{"  -12.5  ", -12.5}, Reading{"+3", 3}, Reading{".5", 0.5},
                                         Reading{"5.", 5}, Reading{"1e3", 1000}, Reading{"1E-2", 0.01},
                                         Reading{"1e-999", 0}, Reading{"007", 7}));

class NoDocumentNumber : public testing::TestWithParam<const char*> {};

TEST_P(NoDocumentNumber, is_nothing) {
    EXPECT_EQ(documentNumber(GetParam()), std::nullopt);
    EXPECT_FALSE(isNumeric(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(readings, NoDocumentNumber,
                         testing::Values("", " ", "abc", "1 2", "1,5", "1.2.3", "1e", "1e+", "e5", ".", "-",
                                         "+-1", "1d3", "0x10", "inf", "nan", "\t1", "1\n", "1%", "1e999",
                                         "--1", "R$ 1"));

TEST(text, rounds_to_whole_numbers_with_halves_to_the_even_neighbour) {
    EXPECT_EQ(toInt16(2.5), 2);
    EXPECT_EQ(toInt16(3.5), 4);
    EXPECT_EQ(toInt16(-2.5), -2);
    EXPECT_EQ(toInt16(32767.4), 32767);
    EXPECT_EQ(toInt16(-32768.5), -32768);
    EXPECT_EQ(toInt32(0.5), 0);
    EXPECT_EQ(toInt32(1.5), 2);
    EXPECT_EQ(toInt32(2147483647.4), 2147483647);
}

TEST(text, fails_on_whole_numbers_beyond_the_type) {
    EXPECT_EQ(errorOf([] { toInt16(32767.5); }), errc::overflow);
    EXPECT_EQ(errorOf([] { toInt16(-32769); }), errc::overflow);
    EXPECT_EQ(errorOf([] { toInt32(2147483648.0); }), errc::overflow);
    EXPECT_EQ(errorOf([] { toInt32(std::numeric_limits<double>::infinity()); }), errc::overflow);
    EXPECT_EQ(errorOf([] { toInt32(std::nan("")); }), errc::overflow);
}

struct Rounding {
    double value;
    int digits;
    double rounded;
};

class RoundHalfEven : public testing::TestWithParam<Rounding> {};

TEST_P(RoundHalfEven, sends_ties_to_the_even_digit) {
    EXPECT_EQ(roundHalfEven(GetParam().value, GetParam().digits), GetParam().rounded);
    EXPECT_EQ(roundHalfEven(-GetParam().value, GetParam().digits), -GetParam().rounded);
}

INSTANTIATE_TEST_SUITE_P(
    roundings, RoundHalfEven,
    testing::Values(Rounding{1500.005, 2, 1500.00}, Rounding{1500.015, 2, 1500.02}, Rounding{1.005, 2, 1.00},
                    Rounding{1.015, 2, 1.02}, Rounding{1.035, 2, 1.04}, Rounding{2.675, 2, 2.68},
                    Rounding{0.125, 2, 0.12}, Rounding{0.375, 2, 0.38}, Rounding{0.126, 2, 0.13},
                    Rounding{0.1251, 2, 0.13}, Rounding{2.5, 0, 2}, Rounding{9.995, 2, 10},
                    Rounding{99.999, 2, 100}, Rounding{0.004, 2, 0}, Rounding{0.005, 2, 0},
                    Rounding{0.015, 2, 0.02}, Rounding{0, 2, 0}, Rounding{1e300, 2, 1e300},
                    Rounding{12345678901234.56, 2, 12345678901234.56},
                    Rounding{1234567890123456.0, 2, 1234567890123456.0}, Rounding{5e-324, 2, 0}));

TEST(text, parses_whole_numbers_the_strict_way) {
    EXPECT_EQ(parseInt32("2000"), 2000);
    EXPECT_EQ(parseInt32(" 12.5 "), 12);
    EXPECT_EQ(errorOf([] { parseInt32("12px"); }), errc::typeMismatch);
    EXPECT_EQ(errorOf([] { parseInt32(""); }), errc::typeMismatch);
    EXPECT_EQ(errorOf([] { parseInt32("3000000000"); }), errc::overflow);
    EXPECT_EQ(errorOf([] { parseInt32("1e999"); }), errc::overflow);
}

} // namespace
} // namespace tv::text
