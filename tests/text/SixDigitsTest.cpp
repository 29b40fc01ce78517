// Numbers in six digits are what a standard stream writes.
#include "text/SixDigits.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <locale>
#include <random>
#include <sstream>

namespace {

std::string written(double value) {
    std::string text;
    EDA::appendSixDigits(text, value);
    return text;
}

class StreamText {
public:
    StreamText() { stream_.imbue(std::locale::classic()); }
    std::string of(double value) {
        stream_.str("");
        stream_ << value;
        return stream_.str();
    }

private:
    std::ostringstream stream_;
};

TEST(SixDigits, AreAppended) {
    std::string text = "x = ";
    EDA::appendSixDigits(text, -12.5);
    EXPECT_EQ(text, "x = -12.5");
}

TEST(SixDigits, RoundAndDropTrailingZeros) {
    EXPECT_EQ(written(1.6), "1.6");
    EXPECT_EQ(written(100.0), "100");
    EXPECT_EQ(written(123.4567), "123.457");
    EXPECT_EQ(written(999999.4), "999999");
    EXPECT_EQ(written(0.000123456789), "0.000123457");
}

TEST(SixDigits, ExponentOutsideThePlainRange) {
    EXPECT_EQ(written(1e6), "1e+06");
    EXPECT_EQ(written(999999.5), "1e+06");
    EXPECT_EQ(written(0.0001), "0.0001");
    EXPECT_EQ(written(0.00001), "1e-05");
    EXPECT_EQ(written(-1.23456789e-200), "-1.23457e-200");
}

TEST(SixDigits, ZeroKeepsItsSign) {
    EXPECT_EQ(written(0.0), "0");
    EXPECT_EQ(written(-0.0), "-0");
}

TEST(SixDigits, NumbersThatAreNotFinite) {
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(written(infinity), "inf");
    EXPECT_EQ(written(-infinity), "-inf");
    EXPECT_EQ(written(std::numeric_limits<double>::quiet_NaN()), "nan");
}

TEST(SixDigits, HalvesAreRoundedByTheExactNumber) {
    StreamText stream;
    for (int i = 0; i < 50'000; ++i) {
        const double half = (100'000 + i * 17) + 0.5;
        for (const double scale : {1.0, 0.1, 1e-3, 1e-5, 1e-9}) {
            const double value = half * scale;
            for (const double near : {value, std::nextafter(value, 0.0), std::nextafter(value, 1e9)})
                ASSERT_EQ(written(near), stream.of(near));
        }
    }
}

TEST(SixDigits, PowersOfTenAndTheirNeighbours) {
    StreamText stream;
    for (int exponent = -330; exponent <= 308; ++exponent) {
        const double power = std::pow(10.0, exponent);
        for (const double near : {power, std::nextafter(power, 0.0), std::nextafter(power, 1e308),
                                  power * 9.999995, power * 9.9999949}) {
            ASSERT_EQ(written(near), stream.of(near));
            ASSERT_EQ(written(-near), stream.of(-near));
        }
    }
}

TEST(SixDigits, RandomNumbersOfAllSizes) {
    StreamText stream;
    std::mt19937_64 random(7);
    for (int i = 0; i < 100'000; ++i) {
        const std::uint64_t bits = random();
        double any = 0.0;
        std::memcpy(&any, &bits, sizeof any);
        const double plain =
            std::ldexp(static_cast<double>(bits % 1'000'000'000) / 1e4, static_cast<int>(bits >> 60) - 8);
        for (const double value : {any, plain}) {
            if (std::isnan(value)) continue; // of either sign
            ASSERT_EQ(written(value), stream.of(value));
        }
    }
}

} // namespace
