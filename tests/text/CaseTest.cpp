// Upper-casing and the comparisons built on it.
#include "text/Text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <vector>

using EDA::equalsIgnoreCase;
using EDA::lessIgnoreCase;
using EDA::upperCase;

TEST(UpperCase, AsciiLettersAreRaisedAndNothingElse) {
    EXPECT_EQ(upperCase("aZ.board_outline-9{`"), "AZ.BOARD_OUTLINE-9{`");
}

TEST(UpperCase, LettersOfTheBasicPlaneAreRaised) {
    EXPECT_EQ(upperCase("\xC3\xA9\xCF\x89\xD1\x8F"), "\xC3\x89\xCE\xA9\xD0\xAF");
}

TEST(UpperCase, MicroSignBecomesGreekMu) { EXPECT_EQ(upperCase("\xC2\xB5m"), "\xCE\x9CM"); }

TEST(UpperCase, MappingMayChangeTheLengthInBytes) {
    EXPECT_EQ(upperCase("\xC4\xB1"), "I");
    EXPECT_EQ(upperCase("\xC8\xBF"), "\xE2\xB1\xBE");
}

TEST(UpperCase, SharpSHasNoSimpleMapping) { EXPECT_EQ(upperCase("\xC3\x9F"), "\xC3\x9F"); }

TEST(UpperCase, CharactersAboveTheBasicPlaneAreCopied) {
    const std::string deseret = "\xF0\x90\x90\xA8"; // has an upper-case form, outside the plane
    EXPECT_EQ(upperCase(deseret + "a"), deseret + "A");
}

TEST(UpperCase, InvalidBytesAreCopiedAndTheRestIsStillRaised) {
    EXPECT_EQ(upperCase("a\xFF"
                        "b\xC3"),
              "A\xFF"
              "B\xC3");
    EXPECT_EQ(upperCase("\xC0\xA1x"), "\xC0\xA1X");         // overlong
    EXPECT_EQ(upperCase("\xED\xA0\x80x"), "\xED\xA0\x80X"); // surrogate
}

TEST(EqualsIgnoreCase, FoldsAsciiCase) {
    EXPECT_TRUE(equalsIgnoreCase(".Board_Outline", ".BOARD_OUTLINE"));
    EXPECT_FALSE(equalsIgnoreCase("TOP", "TOPS"));
    EXPECT_FALSE(equalsIgnoreCase("TOPS", "TOP"));
    EXPECT_FALSE(equalsIgnoreCase("[", "{"));
    EXPECT_TRUE(equalsIgnoreCase("", ""));
    EXPECT_FALSE(equalsIgnoreCase("", "a"));
}

TEST(EqualsIgnoreCase, FoldsOtherLettersAndCrossesIntoAscii) {
    EXPECT_TRUE(equalsIgnoreCase("\xC3\xA9t\xC3\xA9", "\xC3\x89T\xC3\x89"));
    EXPECT_TRUE(equalsIgnoreCase("\xC5\xBFize", "SIZE")); // long s
    EXPECT_FALSE(equalsIgnoreCase("\xC3\xA9", "e"));
}

TEST(EqualsIgnoreCase, InvalidBytesMustBeTheSame) {
    EXPECT_TRUE(equalsIgnoreCase("a\xFF", "A\xFF"));
    EXPECT_FALSE(equalsIgnoreCase("a\xFF", "A\xFE"));
}

TEST(EqualsIgnoreCase, NulBytesAreText) {
    EXPECT_FALSE(equalsIgnoreCase(std::string_view("a\0b", 3), std::string_view("a\0c", 3)));
    EXPECT_TRUE(equalsIgnoreCase(std::string_view("a\0b", 3), std::string_view("A\0B", 3)));
}

TEST(LessIgnoreCase, APrefixStandsBeforeTheLongerText) {
    EXPECT_TRUE(lessIgnoreCase("net", "NETS"));
    EXPECT_FALSE(lessIgnoreCase("NETS", "net"));
    EXPECT_FALSE(lessIgnoreCase("net", "NET"));
}

TEST(LessIgnoreCase, ComparesUpperCaseFormsAsUnsignedBytes) {
    EXPECT_TRUE(lessIgnoreCase("z", "_")); // 'Z' is below '_', 'z' is not
    EXPECT_TRUE(lessIgnoreCase("Z", "\xC3\xA9"));
    EXPECT_FALSE(lessIgnoreCase("\xFF", "\xC3\xA9"));
}

TEST(LessIgnoreCase, AgreesWithComparingTheUpperCaseForms) {
    constexpr unsigned seed = 20240611;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const std::vector<std::string> pieces = {"a",        "A",        "z",        "Z",    "_", "1", "\xC3\xA9",
                                             "\xC3\x89", "\xC4\xB1", "\xC5\xBF", "\xFF", "i", "s", "\xC3"};
    const auto text = [&] {
        std::string result;
        for (unsigned n = random() % 4; n > 0; --n)
            result += pieces[random() % pieces.size()];
        return result;
    };
    int equal = 0;
    for (int i = 0; i < 20000; ++i) {
        const std::string a = text(), b = text();
        ASSERT_EQ(equalsIgnoreCase(a, b), upperCase(a) == upperCase(b)) << a << " " << b;
        ASSERT_EQ(lessIgnoreCase(a, b), upperCase(a) < upperCase(b)) << a << " " << b;
        equal += equalsIgnoreCase(a, b) ? 1 : 0;
    }
    EXPECT_GT(equal, 100);
}

TEST(LessIgnoreCase, OrdersAMapWithoutCase) {
    std::map<std::string, int, EDA::LessIgnoreCase> map;
    map["Gnd"] = 1;
    map["GND"] = 2;
    EXPECT_EQ(map.size(), 1u);
    EXPECT_EQ(map.find(std::string_view("gnd"))->second, 2);
}
