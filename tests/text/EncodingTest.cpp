// UTF-8 characters and other encodings.
#include "text/Encoding.h"

#include <gtest/gtest.h>

#include <string>

using namespace std::string_literals;

TEST(Utf8, FirstCharacterKnowsEveryLength) {
    EXPECT_EQ(EDA::firstCharacter("a").codePoint, 0x61u);
    EXPECT_EQ(EDA::firstCharacter("\xC3\xA9").codePoint, 0xE9u);
    EXPECT_EQ(EDA::firstCharacter("\xE2\x82\xAC").codePoint, 0x20ACu);
    EXPECT_EQ(EDA::firstCharacter("\xF4\x8F\xBF\xBF").codePoint, 0x10FFFFu);
    EXPECT_EQ(EDA::firstCharacter("\xE2\x82\xAC").size, 3u);
}

TEST(Utf8, InvalidSequencesHaveNoSize) {
    for (const std::string &text :
         {"\x80"s, "\xC1\xBF"s, "\xE0\x80\x80"s, "\xED\xA0\x80"s, "\xF4\x90\x80\x80"s,
          "\xF8\x88\x80\x80\x80"s, "\xE2\x82"s, "\xE2\x28\xA1"s, ""s})
        EXPECT_EQ(EDA::firstCharacter(text).size, 0u);
}

TEST(Utf8, ValidityIsThatOfTheWholeText) {
    EXPECT_TRUE(EDA::isValidUtf8(""));
    EXPECT_TRUE(EDA::isValidUtf8("plain text of many bytes, then \xC3\xA9 and more plain text"));
    EXPECT_FALSE(EDA::isValidUtf8("plain text of many bytes, then \xE9 and more plain text"));
    EXPECT_FALSE(EDA::isValidUtf8("cut off \xE2\x82"));
}

TEST(Utf8, AsciiPrefixStopsAtTheFirstOtherByte) {
    for (std::size_t n = 0; n < 20; ++n)
        EXPECT_EQ(EDA::asciiPrefix(std::string(n, 'x') + "\x80yyyyyyyyyy"), n);
    EXPECT_EQ(EDA::asciiPrefix("plain"), 5u);
}

TEST(Utf8, AppendedCharactersAreReadBack) {
    for (const std::uint32_t c :
         {0x0u, 0x7Fu, 0x80u, 0x7FFu, 0x800u, 0xD7FFu, 0xE000u, 0xFFFFu, 0x10000u, 0x10FFFFu}) {
        std::string text;
        EDA::appendUtf8(text, c);
        EXPECT_EQ(EDA::firstCharacter(text).codePoint, c);
        EXPECT_EQ(EDA::firstCharacter(text).size, text.size());
    }
}

TEST(Utf8, CharactersThatAreNoneAppendTheReplacement) {
    std::string text;
    EDA::appendUtf8(text, 0xD800);
    EDA::appendUtf8(text, 0x110000);
    EXPECT_EQ(text, "\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(Latin1, GoesThereAndBack) {
    std::string bytes;
    for (int c = 0; c < 256; ++c)
        bytes += static_cast<char>(c);
    const std::string text = EDA::latin1ToUtf8(bytes);
    EXPECT_TRUE(EDA::isValidUtf8(text));
    EXPECT_EQ(EDA::utf8ToLatin1(text), bytes);
}

TEST(Latin1, CharactersBeyondItBecomeQuestionMarks) {
    EXPECT_EQ(EDA::utf8ToLatin1("5 \xE2\x84\xA6 \xC2\xB5\xFF"), "5 ? \xB5\xFF");
}

TEST(Utf16, PairsAreJoinedAndLoneHalvesReplaced) {
    EXPECT_EQ(EDA::utf16ToUtf8("\x3D\xD8\x00\xDE"s, false), "\xF0\x9F\x98\x80");
    EXPECT_EQ(EDA::utf16ToUtf8("\xD8\x3D\xDE\x00"s, true), "\xF0\x9F\x98\x80");
    EXPECT_EQ(EDA::utf16ToUtf8("\x3D\xD8"
                               "a\0"s,
                               false),
              "\xEF\xBF\xBD"
              "a");
    EXPECT_EQ(EDA::utf16ToUtf8("\x3D\xD8"s, false), "\xEF\xBF\xBD");
    EXPECT_EQ(EDA::utf16ToUtf8("a\0b"s, false), "a");
}

TEST(DecodedToUtf8, KnowsTheEncodingByMarkAndValidity) {
    EXPECT_EQ(EDA::decodedToUtf8("\xEF\xBB\xBF"
                                 "a\xC3\xA9"),
              "a\xC3\xA9");
    EXPECT_EQ(EDA::decodedToUtf8("a\xC3\xA9"), "a\xC3\xA9");
    EXPECT_EQ(EDA::decodedToUtf8("a\xE9"), "a\xC3\xA9");
    EXPECT_EQ(EDA::decodedToUtf8("\xFF\xFE\xE9\0"s), "\xC3\xA9");
    EXPECT_EQ(EDA::decodedToUtf8("\xFE\xFF\0\xE9"s), "\xC3\xA9");
    EXPECT_EQ(EDA::decodedToUtf8(""), "");
    EXPECT_EQ(EDA::decodedToUtf8("\xFF\xFE"), "");
    EXPECT_EQ(EDA::decodedToUtf8("\xEF\xBB\xBF\xE9"), "\xC3\xA9");
}
