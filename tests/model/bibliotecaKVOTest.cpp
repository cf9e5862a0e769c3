#include "model/bibliotecaKVO.h"
#include "logging/LogFolder.h"
#include "platform/Clock.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

using bibliotecaKVO::isCNPJ;
using bibliotecaKVO::isData;
using bibliotecaKVO::isValorTabela;
using test::GlobalLogger;
using test::occurrences;
using test::startLogger;
using test::TemporaryFolder;

struct TextCase {
    const char* name;
    std::string value;
    bool expected;
};

void PrintTo(const TextCase& c, std::ostream* out) {
    *out << c.name << " '" << c.value << "'";
}

struct DataTest : ::testing::TestWithParam<TextCase> {};

TEST_P(DataTest, JudgesTheDate) {
    EXPECT_EQ(isData(GetParam().value), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Dates, DataTest,
    ::testing::Values(
        TextCase{"NoLeapDayInACommonYear", "20090229", false}, TextCase{"LeapDay", "20080229", true},
        TextCase{"YearMustBeOver1900", "19000101", false}, TextCase{"FirstYear", "19010101", true},
        TextCase{"CenturiesAreLeapYears", "21000229", true},
        TextCase{"NoThirtiethOfFebruary", "20080230", false}, TextCase{"BlanksAreSkipped", "2009 1 1", true},
        TextCase{"TabsAreSkipped", "2009\t1\t1", true}, TextCase{"Hyphens", "2009-01-01", false},
        TextCase{"Empty", "", false}, TextCase{"TooShort", "2009011", false},
        TextCase{"MonthZero", "20090001", false}, TextCase{"MonthThirteen", "20091301", false},
        TextCase{"DayZero", "20090100", false}, TextCase{"DayThirtyTwo", "20090132", false},
        TextCase{"LongMonth", "20090131", true}, TextCase{"ShortMonth", "20090430", true},
        TextCase{"ShortMonthsEnd", "20090431", false}, TextCase{"Letters", "abcdefgh", false},
        TextCase{"DigitBehindWhichReadingStops", "20091x1x", true},
        TextCase{"YearWithAnExponent", "2E030101", true},
        TextCase{"YearBeyondSixteenBits", "9E990101", false},
        TextCase{"YearWithAShortExponent", "1E5 0101", false},
        TextCase{"HalfMonthsGoToTheEvenNeighbour", "2009.501", false}, TextCase{"HalfDay", "200901.5", false},
        TextCase{"AccentedLettersCountOnce", "200901é1", false},
        TextCase{"AccentedLetterBehindTheDay", "2009011é", true}),
    [](const auto& row) { return std::string(row.param.name); });

struct CnpjTest : ::testing::TestWithParam<TextCase> {};

TEST_P(CnpjTest, JudgesTheNumber) {
    EXPECT_EQ(isCNPJ(GetParam().value), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Numbers, CnpjTest,
    ::testing::Values(TextCase{"Zeros", "00000000000000", true}, TextCase{"Letters", "abcdefghijklmn", true},
                      TextCase{"AccentedLetters", "ãáàâéêíóôõúçãá", true},
                      TextCase{"Sound", "11222333000181", true},
                      TextCase{"AnotherSound", "11444777000161", true},
                      TextCase{"FirstDigitWrong", "11222333000191", false},
                      TextCase{"SecondDigitWrong", "11222333000182", false},
                      TextCase{"Punctuated", "11.222.333/0001-81", false},
                      TextCase{"Short", "1122233300018", false}, TextCase{"Long", "112223330001811", false},
                      TextCase{"Empty", "", false}, TextCase{"LetterReadsAsZero", "11222333OOO181", true}),
    [](const auto& row) { return std::string(row.param.name); });

Entradas table() {
    Entradas entradas;
    entradas.Add({"LFT", "Letra"}, "LFT");
    entradas.Add({"ntn", "Nota"}, "ntn");
    entradas.Add({"Ação", "Ação"}, "Ação");
    return entradas;
}

struct TableTest : ::testing::TestWithParam<TextCase> {};

TEST_P(TableTest, ComparesByExactText) {
    const Entradas entradas = table();
    EXPECT_EQ(isValorTabela(&entradas, GetParam().value), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Values, TableTest,
    ::testing::Values(TextCase{"Exact", "LFT", true}, TextCase{"LowerCase", "ntn", true},
                      TextCase{"Accented", "Ação", true}, TextCase{"OtherCase", "lft", false},
                      TextCase{"OtherCaseUp", "NTN", false}, TextCase{"OtherAccent", "AÇÃO", false},
                      TextCase{"TheTextOfAnEntry", "Letra", false}, TextCase{"Empty", "", false},
                      TextCase{"BlanksAround", " LFT", false}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(TableTest, EmptyTableHoldsNothing) {
    const Entradas entradas;
    EXPECT_FALSE(isValorTabela(&entradas, ""));
    EXPECT_FALSE(isValorTabela(&entradas, "LFT"));
}

TEST(TableTest, EntriesUnderOtherKeysThanTheirOwnAreFound) {
    Entradas entradas;
    entradas.Add({"LFT", "Letra"}, "1");
    EXPECT_TRUE(isValorTabela(&entradas, "LFT"));
    EXPECT_FALSE(isValorTabela(&entradas, "1"));
}

struct CheckLogTest : ::testing::Test {
    TemporaryFolder folder;
    clock::Frozen now{clock::at(2024, 3, 5, 14, 7, 9)};
    GlobalLogger global{startLogger(folder, clsLogger::typeTXT, library::level::all)};

    std::string log() const { return folder.read("log20240305.txt"); }
};

TEST_F(CheckLogTest, EachCheckStandsOnTheCallStack) {
    const Entradas entradas = table();
    isValorTabela(&entradas, "LFT");
    isData("20240101");
    isCNPJ("00000000000000");
    for (const char* name : {"isValorTabela", "isData", "isCNPJ"}) {
        EXPECT_EQ(occurrences(log(), std::string("14:07:09 - STACK  bibliotecaKVO.") + name + "\r\n"), 1U)
            << name;
        EXPECT_EQ(occurrences(log(), std::string("14:07:09 - END    bibliotecaKVO.") + name + "\r\n"), 1U)
            << name;
    }
    EXPECT_EQ(occurrences(log(), "FATAL"), 0U);
}

TEST_F(CheckLogTest, NumberBeyondSixteenBitsIsLoggedAsOverflow) {
    EXPECT_FALSE(isData("9E990101"));
    EXPECT_EQ(occurrences(log(), " - FATAL  bibliotecaKVO.isData"), 1U);
    EXPECT_EQ(occurrences(log(), "[6]]\r\n"), 1U);
}

TEST_F(CheckLogTest, MissingTableIsLogged) {
    EXPECT_FALSE(isValorTabela(nullptr, "LFT"));
    EXPECT_EQ(occurrences(log(), " - FATAL  bibliotecaKVO.isValorTabela"), 1U);
    EXPECT_EQ(occurrences(log(), "[91]]\r\n"), 1U);
}

TEST_F(CheckLogTest, AnOrdinaryNoIsNotLogged) {
    EXPECT_FALSE(isData("20090229"));
    EXPECT_FALSE(isCNPJ("123"));
    EXPECT_EQ(occurrences(log(), "FATAL"), 0U);
}

} // namespace
} // namespace tv
