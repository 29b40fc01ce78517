// Arithmetic expressions with variables.
#include "host/EntityModel/MathsExpressionParser.h"

#include <gtest/gtest.h>

#include <random>

using EntityModel::MathsExpressionParser;
using Variables = std::map<std::string, std::string>;

namespace {

struct Row {
    const char *text;
    double value;
};

const Row rows[] = {
    {"1", 1.0},          {"1.5", 1.5},        {".5", 0.5},        {"5.", 5.0},      {"1e3", 1000.0},
    {"1+2x3", 7.0},      {"1+2X3", 7.0},      {"1 + 2 * 3", 7.0}, {"(1+2)x3", 9.0}, {"8/4/2", 1.0},
    {"8-4-2", 2.0},      {"2^3^2", 512.0},    {"-2^2", -4.0},     {"2^-1", 0.5},    {"-3", -3.0},
    {"+3", 3.0},         {"2--3", 5.0},       {"2x-3", -6.0},     {"2+-3", -1.0},   {"0x5", 0.0},
    {"2x0x10", 0.0},     {"$1x$2", 6.0},      {"$1X$2", 6.0},     {"2x$1", 4.0},    {"$1x(2+$2)", 10.0},
    {"$10", 7.0},        {"$3", 5.0},         {"$3x2", 10.0},     {"width/2", 4.5}, {"x", 11.0},
    {"x x x", 121.0},    {"sin(30)x2", 1.0},  {"2xsqrt(9)", 6.0}, {"cos(0)", 1.0},  {"abs(-4)", 4.0},
    {"min(3,1,2)", 1.0}, {"max(3,1,2)", 3.0}, {"\t7 ", 7.0},
};

const Variables variables = {{"$1", "2"},    {"$2", "3"}, {"$3", "$1+$2"},  {"$10", "7"},
                             {"width", "9"}, {"x", "11"}, {"bad", "1 + + "}};

const char *const badTexts[] = {"",    " ",      "1+",   "(1",       "1)",   "1 2", "$9",  "nothing", "2..3",
                                "1,2", "sin 30", "sin(", "min()",    "1/0",  "0/0", "bad", "1e999",   "*2",
                                "#",   "$",      "1e",   "sqrt(-1)", "2xx3", "inf", "nan", "abs(1,2)"};

double valueOf(const std::string &text) { return MathsExpressionParser(text).evaluate(variables); }

std::string repeated(const std::string &text, int count) {
    std::string result;
    for (int i = 0; i < count; ++i)
        result += text;
    return result;
}

} // namespace

class Expression : public testing::TestWithParam<Row> {};

TEST_P(Expression, HasItsValue) {
    MathsExpressionParser parser(GetParam().text);
    EXPECT_NEAR(parser.evaluate(variables), GetParam().value, 1e-12) << GetParam().text;
    EXPECT_TRUE(parser.isValid()) << parser.error();
    EXPECT_EQ(parser.error(), "");
}

INSTANTIATE_TEST_SUITE_P(All, Expression, testing::ValuesIn(rows));

TEST(MathsExpressionParser, BadTextsGiveZeroAndAreNotValid) {
    for (const char *text : badTexts) {
        MathsExpressionParser parser(text);
        EXPECT_EQ(parser.evaluate(variables), 0.0) << text;
        EXPECT_FALSE(parser.isValid()) << text;
        EXPECT_NE(parser.error(), "") << text;
        EXPECT_FALSE(parser.isLimitHit()) << text;
    }
}

TEST(MathsExpressionParser, NulByteIsNoEnd) {
    MathsExpressionParser parser(std::string("1\0+2", 4));
    EXPECT_EQ(parser.evaluate({}), 0.0);
    EXPECT_FALSE(parser.isValid());
}

TEST(MathsExpressionParser, ErrorNamesThePlace) {
    MathsExpressionParser parser("1+$7");
    parser.evaluate({});
    EXPECT_EQ(parser.error(), "unknown variable \"$7\" at character 5 of \"1+$7\"");
}

TEST(MathsExpressionParser, CanBeEvaluatedAgainWithOtherVariables) {
    MathsExpressionParser parser("$1x2");
    EXPECT_EQ(parser.evaluate({}), 0.0);
    EXPECT_FALSE(parser.isValid());
    EXPECT_EQ(parser.evaluate({{"$1", "4"}}), 8.0);
    EXPECT_TRUE(parser.isValid());
}

TEST(MathsExpressionParser, VariablesInRingsHitTheLimit) {
    for (const Variables &ring : {Variables{{"$1", "$1"}}, Variables{{"$1", "$2"}, {"$2", "$1"}}}) {
        MathsExpressionParser parser("$1");
        EXPECT_EQ(parser.evaluate(ring), 0.0);
        EXPECT_TRUE(parser.isLimitHit());
    }
}

TEST(MathsExpressionParser, DoublingVariablesAreEvaluatedOnceEach) {
    Variables doubling{{"$0", "1"}};
    for (int i = 1; i <= 40; ++i) {
        const std::string before = "$" + std::to_string(i - 1);
        doubling["$" + std::to_string(i)] = before + "+" + before;
    }
    EXPECT_EQ(MathsExpressionParser("$40").evaluate(doubling), 1099511627776.0);
}

TEST(MathsExpressionParser, DeepNestingHitsTheLimit) {
    for (const std::string &text :
         {repeated("(", 10000) + "1" + repeated(")", 10000), repeated("-", 10000) + "1", repeated("(", 65000),
          repeated("1^", 10000) + "1", repeated("sin(", 10000)}) {
        MathsExpressionParser parser(text);
        EXPECT_EQ(parser.evaluate({}), 0.0);
        EXPECT_TRUE(parser.isLimitHit());
    }
    EXPECT_EQ(valueOf(repeated("(", 60) + "1" + repeated(")", 60)), 1.0);
}

TEST(MathsExpressionParser, LongTextsAreLinearAndLimited) {
    EXPECT_EQ(valueOf(repeated("1+", 30000) + "1"), 30001.0);
    MathsExpressionParser parser(repeated("1+", 40000) + "1");
    EXPECT_EQ(parser.evaluate({}), 0.0);
    EXPECT_TRUE(parser.isLimitHit());
    MathsExpressionParser variable("$1");
    variable.evaluate({{"$1", repeated("1+", 40000) + "1"}});
    EXPECT_TRUE(variable.isLimitHit());
}

TEST(MathsExpressionParser, StepsAreLimited) {
    Variables many;
    std::string sum = "0";
    for (int i = 1; i <= 10; ++i) {
        const std::string name = "$" + std::to_string(i);
        many[name] = repeated("1+", 15000) + "1";
        sum += "+" + name;
    }
    MathsExpressionParser parser(sum);
    EXPECT_EQ(parser.evaluate(many), 0.0);
    EXPECT_TRUE(parser.isLimitHit());
}

TEST(MathsExpressionParser, RandomTextsEnd) {
    constexpr unsigned seed = 4711;
    std::mt19937 random(seed);
    const std::string alphabet = "0123456789.+-*/^xX$()ab ,sinmax";
    int valid = 0;
    for (int i = 0; i < 20000; ++i) {
        std::string text;
        for (unsigned n = random() % 24; n > 0; --n)
            text += alphabet[random() % alphabet.size()];
        MathsExpressionParser parser(text);
        const double value = parser.evaluate(variables);
        ASSERT_EQ(value, value) << text << ", seed " << seed;
        valid += parser.isValid() ? 1 : 0;
    }
    EXPECT_GT(valid, 100);
}
