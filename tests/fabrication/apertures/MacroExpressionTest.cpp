// Arithmetic of macros.
#include "fabrication/apertures/MacroExpression.h"
#include "fabrication/Limits.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

using namespace EDA::Fabrication;

namespace {

double evaluated(std::string const &text) {
    MacroVariables const variables{{1, 2.5}, {2, -4.0}, {10, 100.0}};
    std::size_t steps = Limits::macroSteps;
    double value = 0.0;
    if (!MacroExpression(variables, steps).evaluate(text, value))
        return std::numeric_limits<double>::infinity();
    return value;
}

bool isRefused(std::string const &text) { return evaluated(text) == std::numeric_limits<double>::infinity(); }

std::string times(std::string const &text, std::size_t count) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i)
        result += text;
    return result;
}

} // namespace

TEST(MacroExpression, DecimalsMayLackDigitsOnOneSide) {
    EXPECT_EQ(evaluated("1.25"), 1.25);
    EXPECT_EQ(evaluated(".5"), 0.5);
    EXPECT_EQ(evaluated("5."), 5.0);
    EXPECT_EQ(evaluated("0005"), 5.0);
}

TEST(MacroExpression, MultiplicationIsSpelledInBothCases) {
    EXPECT_EQ(evaluated("2x3"), 6.0);
    EXPECT_EQ(evaluated("2X3"), 6.0);
}

TEST(MacroExpression, ProductsComeBeforeSums) {
    EXPECT_EQ(evaluated("1+2x3"), 7.0);
    EXPECT_EQ(evaluated("10-4/2"), 8.0);
}

TEST(MacroExpression, EqualsAreDoneFromTheLeft) {
    EXPECT_EQ(evaluated("10-4-3"), 3.0);
    EXPECT_EQ(evaluated("8/4/2"), 1.0);
    EXPECT_EQ(evaluated("8/4x2"), 4.0);
}

TEST(MacroExpression, BracketsComeFirst) {
    EXPECT_EQ(evaluated("(1+2)x3"), 9.0);
    EXPECT_EQ(evaluated("2x(3-(1+1))"), 2.0);
}

TEST(MacroExpression, SignsStandBeforeAnyValue) {
    EXPECT_EQ(evaluated("-3"), -3.0);
    EXPECT_EQ(evaluated("+3"), 3.0);
    EXPECT_EQ(evaluated("2x-3"), -6.0);
    EXPECT_EQ(evaluated("1--3"), 4.0);
    EXPECT_EQ(evaluated("-(1+2)"), -3.0);
    EXPECT_EQ(evaluated("-$1"), -2.5);
}

TEST(MacroExpression, VariablesAreTheirNumber) {
    EXPECT_EQ(evaluated("$1+$2"), -1.5);
    EXPECT_EQ(evaluated("$10"), 100.0);
}

TEST(MacroExpression, MissingVariablesAreZero) { EXPECT_EQ(evaluated("1+$77"), 1.0); }

TEST(MacroExpression, BlanksDoNotCount) { EXPECT_EQ(evaluated(" 1 + 2\tx 3 "), 7.0); }

TEST(MacroExpression, WhatIsNoExpressionIsRefused) {
    for (auto const *text : {"", "+", "1+", "(1", "1)", "abc", "$", "$x", "1e3", "0x1p3", "inf", "nan", "1,2",
                             ".", "1 2", "2xx3", "1..2", "()"}) {
        EXPECT_TRUE(isRefused(text)) << text;
    }
}

TEST(MacroExpression, ValuesAreFinite) {
    EXPECT_TRUE(isRefused("1/0"));
    EXPECT_TRUE(isRefused("0/0"));
    EXPECT_TRUE(isRefused(std::string(400, '9')));
}

TEST(MacroExpression, ANulIsNoEnd) { EXPECT_TRUE(isRefused(std::string("1\0+2", 4))); }

TEST(MacroExpression, BracketsGoSixtyFourDeep) {
    EXPECT_EQ(evaluated(times("(", 64) + "1" + times(")", 64)), 1.0);
    EXPECT_TRUE(isRefused(times("(", 65) + "1" + times(")", 65)));
    EXPECT_TRUE(isRefused(times("(", 10000)));
}

TEST(MacroExpression, BracketsSideBySideAreNotDeep) { EXPECT_EQ(evaluated("0" + times("+(1)", 100)), 100.0); }

TEST(MacroExpression, ManySignsAreNotDeep) { EXPECT_EQ(evaluated(times("-", 50000) + "1"), 1.0); }

TEST(MacroExpression, LongTextsAreRefused) {
    EXPECT_EQ(evaluated(std::string(Limits::macroText - 1, ' ') + "1"), 1.0);
    EXPECT_TRUE(isRefused(std::string(Limits::macroText, ' ') + "1"));
}

TEST(MacroExpression, StepsRunOut) {
    MacroVariables const variables;
    std::size_t steps = 3;
    double value = 0.0;
    MacroExpression expression(variables, steps);
    EXPECT_TRUE(expression.evaluate("1+1+1", value));
    EXPECT_EQ(steps, 1U);
    EXPECT_FALSE(expression.evaluate("1+1+1", value));
    EXPECT_EQ(value, 0.0);
}
