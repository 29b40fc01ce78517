// Numbers as display text.
#include "host/Tools/DoubleDisplay.h"

#include "text/Text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

std::string text(double value, int decimals = 0, double exponentFrom = 1e6) {
    return EntityModel::DoubleDisplay::get().getDoubleString(value, "", decimals, exponentFrom);
}

} // namespace

TEST(DoubleDisplay, IsOneInstance) {
    EXPECT_EQ(&EntityModel::DoubleDisplay::get(), &EntityModel::DoubleDisplay::get());
}

TEST(DoubleDisplay, GivesTheShortestDecimalText) {
    EXPECT_EQ(text(0.0), "0");
    EXPECT_EQ(text(-0.0), "0");
    EXPECT_EQ(text(2.5), "2.5");
    EXPECT_EQ(text(-100.0), "-100");
    EXPECT_EQ(text(0.1), "0.1");
    EXPECT_EQ(text(999999.5), "999999.5");
    EXPECT_EQ(text(0.0001), "0.0001");
}

TEST(DoubleDisplay, LargeAndSmallMagnitudesHaveAnExponent) {
    EXPECT_EQ(text(1e6), "1e+06");
    EXPECT_EQ(text(-2.5e300), "-2.5e+300");
    EXPECT_EQ(text(2e-5), "2e-05");
    EXPECT_EQ(text(1e6, 0, 1e7), "1000000");
}

TEST(DoubleDisplay, LargestNumberWithoutExponentIsWhole) {
    EXPECT_EQ(text(std::numeric_limits<double>::max(), 0, std::numeric_limits<double>::infinity()).size(),
              309u);
    EXPECT_EQ(text(-std::numeric_limits<double>::max(), 1000, std::numeric_limits<double>::infinity()).size(),
              310u);
}

TEST(DoubleDisplay, DecimalsRoundAndDropZeros) {
    EXPECT_EQ(text(1.0 / 3.0, 3), "0.333");
    EXPECT_EQ(text(2.5, 3), "2.5");
    EXPECT_EQ(text(100.0, 3), "100");
    EXPECT_EQ(text(-0.0004, 3), "0");
}

TEST(DoubleDisplay, UnitsFollowABlank) {
    EXPECT_EQ(EntityModel::DoubleDisplay::get().getDoubleString(2.5, "C/W", 0, 1e6), "2.5 C/W");
}

TEST(DoubleDisplay, NumbersThatAreNotFiniteHaveNames) {
    EXPECT_EQ(text(std::nan("")), "nan");
    EXPECT_EQ(text(std::numeric_limits<double>::infinity()), "inf");
    EXPECT_EQ(text(-std::numeric_limits<double>::infinity()), "-inf");
}

TEST(DoubleDisplay, TextReadsBackAsTheSameNumber) {
    constexpr unsigned seed = 7;
    SCOPED_TRACE(seed);
    std::mt19937_64 random(seed);
    std::uniform_real_distribution<double> exponent(-300, 300);
    for (int i = 0; i < 10000; ++i) {
        const double value = std::pow(10.0, exponent(random));
        ASSERT_EQ(EDA::parseDouble(text(value), -1, -1), value) << text(value);
    }
}
