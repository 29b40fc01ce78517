// The numbers of outlines, which are those that their text would give.
#include "import/EDAImporterDetail.h"
#include "support/Outlines.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>

namespace {

double throughText(double value) {
    char buffer[400];
    std::snprintf(buffer, sizeof buffer, "%lf", value);
    return std::strtod(buffer, nullptr);
}

bool sameBits(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

void expectSame(double value) {
    EXPECT_PRED2(sameBits, EDA::outlineNumber(value), throughText(value))
        << testing::PrintToString(value) << " as text " << throughText(value);
}

} // namespace

TEST(OutlineNumbers, EdgesAreThoseOfTheText) {
    for (const double value : {0.0, 5e-7, 1.5e-6, 2.5e-6, 0.5, 1.0, 0.1234565, 0.1234575, 1e-7, 4.9999999e-7,
                               5.0000001e-7, 1e-300, 999999999.9999995, 1e9, 1e15, 1e16, 1e300,
                               std::numeric_limits<double>::denorm_min(), 4503599627.370496}) {
        expectSame(value);
        expectSame(-value);
    }
}

TEST(OutlineNumbers, TrueHalvesGoToTheEvenNeighbour) {
    // Odd multiples of 2^-7 have seven decimals that end in 5.
    for (int i = 1; i < 4001; i += 2) {
        expectSame(i / 128.0);
        expectSame(-i / 128.0);
    }
}

TEST(OutlineNumbers, NeighboursOfHalvesGoToTheirOwnSide) {
    EDA::test::Random random(7);
    for (int i = 0; i < 200000; ++i) {
        const double half = (random.below(2000000000) - 1000000000 + 0.5) / 1e6;
        expectSame(half);
        expectSame(std::nextafter(half, 1e9));
        expectSame(std::nextafter(half, -1e9));
        if (testing::Test::HasFailure()) return;
    }
}

TEST(OutlineNumbers, SeededValuesAreThoseOfTheText) {
    EDA::test::Random random(20240612);
    for (int i = 0; i < 300000; ++i) {
        expectSame(random.between(-1.0, 1.0) * std::pow(10.0, random.between(-9.0, 12.0)));
        if (testing::Test::HasFailure()) return;
    }
}

TEST(OutlineNumbers, WhatIsNotFiniteStaysSo) {
    EXPECT_TRUE(std::isnan(EDA::outlineNumber(std::nan(""))));
    EXPECT_TRUE(std::isinf(EDA::outlineNumber(HUGE_VAL)));
    EXPECT_TRUE(std::isinf(EDA::outlineNumber(-HUGE_VAL)));
}
