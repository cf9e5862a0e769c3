#include "app/Ladrilhos.h"

#include <gtest/gtest.h>

namespace tv::ladrilhos {
namespace {

constexpr Tamanho area{900, 600};
constexpr Tamanho minimo{100, 50};

TEST(Ladrilhos, HorizontalPutsWindowsOneAboveTheOtherInTheWholeWidth) {
    EXPECT_EQ(horizontal(3, area, minimo),
              (std::vector<Retangulo>{{0, 0, 900, 200}, {0, 200, 900, 200}, {0, 400, 900, 200}}));
}

TEST(Ladrilhos, VerticalPutsWindowsSideBySideInTheWholeHeight) {
    EXPECT_EQ(vertical(3, area, minimo),
              (std::vector<Retangulo>{{0, 0, 300, 600}, {300, 0, 300, 600}, {600, 0, 300, 600}}));
}

TEST(Ladrilhos, OneWindowTakesTheWholeArea) {
    EXPECT_EQ(horizontal(1, area, minimo), (std::vector<Retangulo>{{0, 0, 900, 600}}));
    EXPECT_EQ(vertical(1, area, minimo), (std::vector<Retangulo>{{0, 0, 900, 600}}));
}

TEST(Ladrilhos, NoWindowsTakeNoPlaces) {
    EXPECT_TRUE(horizontal(0, area, minimo).empty());
    EXPECT_TRUE(vertical(0, area, minimo).empty());
}

TEST(Ladrilhos, ARestOfTheDivisionLeavesNoGap) {
    const auto lugares = horizontal(7, area, minimo);
    ASSERT_EQ(lugares.size(), 7U);
    for (std::size_t i = 1; i < lugares.size(); ++i) {
        EXPECT_EQ(lugares[i].y, lugares[i - 1].y + lugares[i - 1].altura);
    }
    EXPECT_EQ(lugares.back().y + lugares.back().altura, area.altura);
}

TEST(Ladrilhos, WindowsThatWouldBeTooLowStandInColumns) {
    EXPECT_EQ(horizontal(5, area, {100, 200}), (std::vector<Retangulo>{{0, 0, 450, 200},
                                                                       {0, 200, 450, 200},
                                                                       {0, 400, 450, 200},
                                                                       {450, 0, 450, 300},
                                                                       {450, 300, 450, 300}}));
}

TEST(Ladrilhos, WindowsThatWouldBeTooNarrowStandInRows) {
    EXPECT_EQ(vertical(4, area, {400, 50}),
              (std::vector<Retangulo>{
                  {0, 0, 450, 300}, {450, 0, 450, 300}, {0, 300, 450, 300}, {450, 300, 450, 300}}));
}

TEST(Ladrilhos, AnAreaBelowTheMinimumStillHoldsThemAll) {
    EXPECT_EQ(horizontal(2, {40, 20}, minimo).size(), 2U);
    EXPECT_EQ(vertical(2, {0, 0}, minimo).size(), 2U);
}

} // namespace
} // namespace tv::ladrilhos
