// Reading numbers.
#include "text/Text.h"

#include <gtest/gtest.h>

#include <climits>
#include <clocale>
#include <cmath>
#include <limits>
#include <string>

namespace {

constexpr double bad = -77.0;
constexpr double nothing = -88.0;
constexpr int badInt = -77;
constexpr int nothingInt = -88;

double number(std::string_view text) { return EDA::parseDouble(text, bad, nothing); }
int whole(std::string_view text) { return EDA::parseInt(text, badInt, nothingInt); }

struct Row {
    const char *text;
    double value;
};

class Spelling : public testing::TestWithParam<Row> {};

} // namespace

TEST_P(Spelling, IsReadAsItsNumber) { EXPECT_EQ(number(GetParam().text), GetParam().value); }

INSTANTIATE_TEST_SUITE_P(Good, Spelling,
                         testing::Values(Row{"0", 0.0}, Row{"2.5", 2.5}, Row{"-2.5", -2.5}, Row{"+2.5", 2.5},
                                         Row{".5", 0.5}, Row{"-.5", -0.5}, Row{"5.", 5.0}, Row{"1e5", 1e5},
                                         Row{"1E-3", 1e-3}, Row{"1e+3", 1e3}, Row{" \t\n\v\f\r7", 7.0},
                                         Row{"0x1p3", 8.0}, Row{"0X.8", 0.5}, Row{"-0x1F", -31.0},
                                         Row{"0x1.8p+1z", 3.0}, Row{"1e-310", 1e-310},
                                         Row{"0e999999999999", 0.0}));

INSTANTIATE_TEST_SUITE_P(TextAfterIt, Spelling,
                         testing::Values(Row{"3.0 mm", 3.0}, Row{"1.2.3", 1.2}, Row{"1e", 1.0},
                                         Row{"1e+", 1.0}, Row{"1,5", 1.0}, Row{"0x", 0.0}, Row{"0xg", 0.0},
                                         Row{"0x.", 0.0}, Row{"0x1p", 1.0}, Row{"5\xC2\xB5m", 5.0}));

INSTANTIATE_TEST_SUITE_P(Bad, Spelling,
                         testing::Values(Row{"abc", bad}, Row{".", bad}, Row{"-", bad}, Row{"+-5", bad},
                                         Row{"--5", bad}, Row{"- 5", bad}, Row{"e5", bad}, Row{" ", bad},
                                         Row{",5", bad},
                                         Row{"\xC2\xA0"
                                             "5",
                                             bad}));

INSTANTIATE_TEST_SUITE_P(OutOfRange, Spelling,
                         testing::Values(Row{"1e400", bad}, Row{"-1e400", bad}, Row{"1e-400", bad},
                                         Row{"1e99999999999999999999", bad}, Row{"0x1p99999", bad},
                                         Row{"inf", bad}, Row{"-inf", bad}, Row{"Infinity", bad},
                                         Row{"nan", bad}, Row{"NaN(1)", bad}));

TEST(ParseDouble, EmptyTextGivesTheEmptyValue) { EXPECT_EQ(number(""), nothing); }

TEST(ParseDouble, InvalidUtf8AnywhereGivesTheEmptyValue) {
    EXPECT_EQ(number("5\xFF"), nothing);
    EXPECT_EQ(number("\xC3"), nothing);
}

TEST(ParseDouble, MinusZeroKeepsItsSign) { EXPECT_TRUE(std::signbit(number("-0"))); }

TEST(ParseDouble, NulByteEndsTheNumber) { EXPECT_EQ(number(std::string_view("4\0002", 3)), 4.0); }

TEST(ParseDouble, FourHundredDigits) {
    EXPECT_EQ(number(std::string(400, '9')), bad);
    EXPECT_EQ(number("0." + std::string(400, '3')), 1.0 / 3.0);
    EXPECT_EQ(number(std::string(400, '0') + "1"), 1.0);
}

TEST(ParseDouble, TextIsReadOnlyToItsEnd) {
    const std::string digits = "12345";
    EXPECT_EQ(number(std::string_view(digits).substr(0, 2)), 12.0);
}

TEST(ParseDouble, ProcessLocaleDoesNotMatter) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    bool found = false;
    for (const char *name : {"de_DE.UTF-8", "fr_FR.UTF-8", "German_Germany.1252"})
        found = found || std::setlocale(LC_ALL, name) != nullptr;
    const double value = number("1.5");
    std::setlocale(LC_ALL, before.c_str());
    EXPECT_EQ(value, 1.5);
    if (!found) GTEST_SKIP() << "no locale with decimal commas on this machine";
}

TEST(ParseInt, ReadsAWholeNumberAndIgnoresTheRest) {
    EXPECT_EQ(whole("42"), 42);
    EXPECT_EQ(whole(" -7 x"), -7);
    EXPECT_EQ(whole("+3"), 3);
    EXPECT_EQ(whole("3.0"), 3);
    EXPECT_EQ(whole("1e5"), 1);
    EXPECT_EQ(whole("0x10"), 0);
    EXPECT_EQ(whole("010"), 10);
}

TEST(ParseInt, NoNumberGivesTheDefault) {
    for (const char *text : {"x", "-", "+-1", "-+1", ".5", " ", "inf"})
        EXPECT_EQ(whole(text), badInt) << text;
}

TEST(ParseInt, EmptyOrInvalidTextGivesTheEmptyValue) {
    EXPECT_EQ(whole(""), nothingInt);
    EXPECT_EQ(whole("1\xFF"), nothingInt);
}

TEST(ParseInt, RangeOfIntIsRead) {
    EXPECT_EQ(whole("2147483647"), INT_MAX);
    EXPECT_EQ(whole("-2147483648"), INT_MIN);
    EXPECT_EQ(whole("2147483648"), badInt);
    EXPECT_EQ(whole("-2147483649"), badInt);
    EXPECT_EQ(whole(std::string(400, '9')), badInt);
}

TEST(ToInt, CutsTowardZero) {
    EXPECT_EQ(EDA::toInt(2.9), 2);
    EXPECT_EQ(EDA::toInt(-2.9), -2);
}

TEST(ToInt, HoldsToTheRangeAndNanIsZero) {
    EXPECT_EQ(EDA::toInt(std::numeric_limits<double>::quiet_NaN()), 0);
    EXPECT_EQ(EDA::toInt(1e300), INT_MAX);
    EXPECT_EQ(EDA::toInt(-std::numeric_limits<double>::infinity()), INT_MIN);
    EXPECT_EQ(EDA::toInt(2147483647.5), INT_MAX);
    EXPECT_EQ(EDA::toInt(-2147483648.5), INT_MIN);
}
