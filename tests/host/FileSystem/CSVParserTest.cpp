// Rows and tokens of text tables.
#include "host/FileSystem/CSVParser.h"
#include "host/FileSystem/Limits.h"

#include "support/TempFolder.h"

#include <gmock/gmock.h>

#include <random>
#include <string>
#include <vector>

using FileSystem::CSVParser;
using testing::ElementsAre;
using testing::IsEmpty;
using TestSupport::TempFolder;
using namespace std::string_literals;

namespace {

using Rows = std::vector<std::vector<std::string>>;

Rows rowsOf(const CSVParser &parser) {
    Rows rows;
    for (auto row = parser.beginRows(); row != parser.endRows(); ++row)
        rows.push_back(*row);
    EXPECT_EQ(rows.size(), parser.getNumberOfRows());
    return rows;
}

// Tokens between runs of blanks and tabs, as board files have them.
Rows blankRows(std::string_view bytes) {
    const TempFolder folder;
    CSVParser parser(' ', true, false, '\n', false);
    parser.addSeparator('\t');
    parser.setCommentCharacter('#');
    EXPECT_TRUE(parser.parseFile(folder.write("f", bytes), true, true, false)) << parser.getError();
    return rowsOf(parser);
}

// Tokens between commas, as they stand, as type map files have them.
Rows commaRows(std::string_view bytes) {
    const TempFolder folder;
    CSVParser parser(',', false, false, '\n', true);
    EXPECT_TRUE(parser.parseFile(folder.write("f", bytes), false, true)) << parser.getError();
    return rowsOf(parser);
}

} // namespace

TEST(CSVParserBlanks, RunsOfSeparatorsCountOnce) {
    EXPECT_THAT(blankRows("  a \t b\t\tc  \n"), ElementsAre(ElementsAre("a", "b", "c")));
}

TEST(CSVParserBlanks, LastLineNeedsNoLineEnd) {
    EXPECT_THAT(blankRows("a\nb"), ElementsAre(ElementsAre("a"), ElementsAre("b")));
}

TEST(CSVParserBlanks, BlankLinesMakeNoRow) {
    EXPECT_THAT(blankRows("\n\na\n \t \n\nb\n\n"), ElementsAre(ElementsAre("a"), ElementsAre("b")));
}

TEST(CSVParserBlanks, EmptyFileHasNoRows) {
    EXPECT_THAT(blankRows(""), IsEmpty());
    EXPECT_THAT(blankRows("\n"), IsEmpty());
    EXPECT_THAT(blankRows(" \t\r\n# only\n"), IsEmpty());
}

TEST(CSVParserBlanks, QuotedTextIsOneToken) {
    EXPECT_THAT(blankRows("\"a b\t# c\" d"), ElementsAre(ElementsAre("a b\t# c", "d")));
}

TEST(CSVParserBlanks, EmptyQuotesAreAKeptToken) {
    EXPECT_THAT(blankRows("a \"\" b"), ElementsAre(ElementsAre("a", "", "b")));
    EXPECT_THAT(blankRows("\"\""), ElementsAre(ElementsAre("")));
    EXPECT_THAT(blankRows("a \"\"\n"), ElementsAre(ElementsAre("a", "")));
}

TEST(CSVParserBlanks, UnclosedQuoteEndsWithItsLine) {
    EXPECT_THAT(blankRows("a \"b c\nd"), ElementsAre(ElementsAre("a", "b c"), ElementsAre("d")));
    EXPECT_THAT(blankRows("a \"\nd"), ElementsAre(ElementsAre("a", ""), ElementsAre("d")));
    EXPECT_THAT(blankRows("a \"b c\r\nd"), ElementsAre(ElementsAre("a", "b c"), ElementsAre("d")));
}

TEST(CSVParserBlanks, TextAfterAClosingQuoteBelongsToTheToken) {
    EXPECT_THAT(blankRows("\"a b\"c d"), ElementsAre(ElementsAre("a bc", "d")));
    EXPECT_THAT(blankRows("\"CONN 5\"\" x"), ElementsAre(ElementsAre("CONN 5\"", "x")));
}

TEST(CSVParserBlanks, QuoteWithinATokenIsText) {
    EXPECT_THAT(blankRows("5\" a\"b c\""), ElementsAre(ElementsAre("5\"", "a\"b", "c\"")));
}

TEST(CSVParserBlanks, CommentDropsTheRestOfTheLine) {
    EXPECT_THAT(blankRows("# c\na # b c\n  # d\n#\nb"), ElementsAre(ElementsAre("a"), ElementsAre("b")));
}

TEST(CSVParserBlanks, HashWithinATokenIsText) {
    EXPECT_THAT(blankRows("PART#1 \"#2\" R# #x"), ElementsAre(ElementsAre("PART#1", "#2", "R#")));
}

TEST(CSVParserBlanks, QuoteInACommentIsNoQuote) {
    EXPECT_THAT(blankRows("a # it's \"open\nb \"c d\""),
                ElementsAre(ElementsAre("a"), ElementsAre("b", "c d")));
}

TEST(CSVParserBlanks, EveryKindOfLineEndIsTaken) {
    EXPECT_THAT(blankRows("a\r\nb\rc\n\r\r\nd\r"),
                ElementsAre(ElementsAre("a"), ElementsAre("b"), ElementsAre("c"), ElementsAre("d")));
}

TEST(CSVParserBlanks, ByteOrderMarkIsDropped) {
    EXPECT_THAT(blankRows("\xEF\xBB\xBF.HEADER x"), ElementsAre(ElementsAre(".HEADER", "x")));
}

TEST(CSVParserBlanks, Latin1BecomesUtf8) {
    EXPECT_THAT(blankRows("5\xB5m \xE9\n"), ElementsAre(ElementsAre("5\xC2\xB5m", "\xC3\xA9")));
    EXPECT_THAT(blankRows("5\xC2\xB5m"), ElementsAre(ElementsAre("5\xC2\xB5m")));
}

TEST(CSVParserBlanks, Utf16IsKnownByItsMark) {
    EXPECT_THAT(blankRows("\xFF\xFE"
                          "a\0 \0\xE9\0\r\0\n\0b\0"s),
                ElementsAre(ElementsAre("a", "\xC3\xA9"), ElementsAre("b")));
    EXPECT_THAT(blankRows("\xFE\xFF\0a\0\n\0b"s), ElementsAre(ElementsAre("a"), ElementsAre("b")));
}

TEST(CSVParserBlanks, NulBytesAreText) {
    EXPECT_THAT(blankRows("a\0b \0\n\0"s), ElementsAre(ElementsAre("a\0b"s, "\0"s), ElementsAre("\0"s)));
}

TEST(CSVParserCommas, TokensStandAsTheyAre) {
    EXPECT_THAT(commaRows(" R 1 ,\"Chip Socket\"\n#C,x y\n"),
                ElementsAre(ElementsAre(" R 1 ", "\"Chip Socket\""), ElementsAre("#C", "x y")));
}

TEST(CSVParserCommas, EmptyTokensAreKeptAtEveryPlace) {
    EXPECT_THAT(commaRows("a,\n,b\n,\na,,b\n,,"),
                ElementsAre(ElementsAre("a", ""), ElementsAre("", "b"), ElementsAre("", ""),
                            ElementsAre("a", "", "b"), ElementsAre("", "", "")));
}

TEST(CSVParserCommas, BlankLinesMakeNoRowButBlanksDo) {
    EXPECT_THAT(commaRows("\na,b\r\n\r\n "), ElementsAre(ElementsAre("a", "b"), ElementsAre(" ")));
}

TEST(CSVParserRules, LastEmptyTokenIsLeftOutIfSaid) {
    const TempFolder folder;
    CSVParser parser(',', false, false, '\n', false);
    ASSERT_TRUE(parser.parseFile(folder.write("f", "a,\n,\n,,b\n")));
    EXPECT_THAT(rowsOf(parser), ElementsAre(ElementsAre("a"), ElementsAre(""), ElementsAre("", "", "b")));
}

TEST(CSVParserRules, TrimmingSparesTheInsideOfQuotes) {
    const TempFolder folder;
    CSVParser parser(',', false, true, '\n', true);
    ASSERT_TRUE(parser.parseFile(folder.write("f", " a b\t,  \" c \" , \n")));
    EXPECT_THAT(rowsOf(parser), ElementsAre(ElementsAre("a b", " c ", "")));
}

TEST(CSVParserRules, BlankLinesAreRowsWithoutTokensIfSaid) {
    const TempFolder folder;
    CSVParser parser(' ', true, false, '\n', false);
    parser.setCommentCharacter('#');
    ASSERT_TRUE(parser.parseFile(folder.write("f", "\na\n # c\n \n"), true, false));
    EXPECT_THAT(rowsOf(parser), ElementsAre(IsEmpty(), ElementsAre("a"), IsEmpty()));
}

TEST(CSVParserRules, TitleRowIsLeftOutIfSaid) {
    const TempFolder folder;
    CSVParser parser(',', false, false, '\n', true);
    ASSERT_TRUE(parser.parseFile(folder.write("f", "\nkey,value\n\na,b\n"), false, true, true));
    EXPECT_THAT(rowsOf(parser), ElementsAre(ElementsAre("a", "b")));
    EXPECT_EQ(parser.getValue(0, 0), "a");
    ASSERT_TRUE(parser.parseFile(folder.write("g", "key,value"), false, true, true));
    EXPECT_THAT(rowsOf(parser), IsEmpty());
    ASSERT_TRUE(parser.parseFile(folder.write("h", ""), false, true, true));
    EXPECT_THAT(rowsOf(parser), IsEmpty());
}

TEST(CSVParserRules, AnotherLineEndIsTheOnlyOne) {
    const TempFolder folder;
    CSVParser parser(' ', true, false, ';', false);
    ASSERT_TRUE(parser.parseFile(folder.write("f", "a b;c\r\nd;;")));
    EXPECT_THAT(rowsOf(parser), ElementsAre(ElementsAre("a", "b"), ElementsAre("c\r\nd")));
}

TEST(CSVParserRules, WithoutACommentCharacterHashesAreText) {
    const TempFolder folder;
    CSVParser parser(' ', true, false, '\n', false);
    ASSERT_TRUE(parser.parseFile(folder.write("f", "# a")));
    EXPECT_THAT(rowsOf(parser), ElementsAre(ElementsAre("#", "a")));
}

TEST(CSVParserFiles, MissingFileGivesNoRowsAndAReason) {
    const TempFolder folder;
    CSVParser parser(' ', true, false, '\n', false);
    ASSERT_TRUE(parser.parseFile(folder.write("f", "a")));
    EXPECT_FALSE(parser.parseFile(folder.path("none")));
    EXPECT_EQ(parser.getNumberOfRows(), 0u);
    EXPECT_TRUE(parser.beginRows() == parser.endRows());
    EXPECT_EQ(parser.getError(), folder.path("none") + ": file does not exist");
    ASSERT_TRUE(parser.parseFile(folder.path("f")));
    EXPECT_EQ(parser.getError(), "");
    EXPECT_FALSE(parser.parseFile(folder.path()));
}

TEST(CSVParserFiles, SecondFileReplacesTheFirst) {
    const TempFolder folder;
    CSVParser parser(' ', true, false, '\n', false);
    ASSERT_TRUE(parser.parseFile(folder.write("f", "a\nb\nc")));
    ASSERT_TRUE(parser.parseFile(folder.write("g", "d e")));
    EXPECT_THAT(rowsOf(parser), ElementsAre(ElementsAre("d", "e")));
    EXPECT_EQ(parser.getValue(1, 0), "");
}

TEST(CSVParserFiles, LineBeyondTheLimitGivesNoRows) {
    const TempFolder folder;
    CSVParser parser(' ', true, false, '\n', false);
    const std::string longest(FileSystem::maxLineLength, 'x');
    EXPECT_TRUE(parser.parseFile(folder.write("f", "a\n" + longest + "\nb")));
    EXPECT_EQ(parser.getNumberOfRows(), 3u);
    const std::string name = folder.write("f", "a\n" + longest + "x\nb");
    EXPECT_FALSE(parser.parseFile(name));
    EXPECT_EQ(parser.getNumberOfRows(), 0u);
    EXPECT_EQ(parser.getError(), name + ": has a row of more than 67108864 bytes or 4000000 fields");
}

TEST(CSVParserFiles, RowOfTooManyTokensGivesNoRows) {
    const TempFolder folder;
    std::string line;
    for (std::size_t i = 0; i < FileSystem::maxRowTokens; ++i)
        line += "a ";
    CSVParser parser(' ', true, false, '\n', false);
    EXPECT_TRUE(parser.parseFile(folder.write("f", line)));
    EXPECT_FALSE(parser.parseFile(folder.write("f", line + "b")));
    EXPECT_EQ(parser.getNumberOfRows(), 0u);
}

TEST(CSVParserAccess, ValueOfAnyRowAndColumn) {
    const TempFolder folder;
    std::string text;
    for (int i = 0; i < 1000; ++i)
        text += "k" + std::to_string(i) + "," + std::to_string(i * i) + "\n\n";
    CSVParser parser(',', false, false, '\n', true);
    ASSERT_TRUE(parser.parseFile(folder.write("f", text), false, true));
    ASSERT_EQ(parser.getNumberOfRows(), 1000u);
    for (const std::size_t i : {0u, 1u, 63u, 64u, 65u, 500u, 999u}) {
        EXPECT_EQ(parser.getValue(i, 0), "k" + std::to_string(i));
        EXPECT_EQ(parser.getValue(i, 1), std::to_string(i * i));
    }
    EXPECT_EQ(parser.getValue(0, 2), "");
    EXPECT_EQ(parser.getValue(1000, 0), "");
    EXPECT_EQ(parser.getValue(static_cast<std::size_t>(-1), 0), "");
}

TEST(CSVParserAccess, CopyOfAnIteratorLooksAhead) {
    const TempFolder folder;
    CSVParser parser(' ', true, false, '\n', false);
    ASSERT_TRUE(parser.parseFile(folder.write("f", "a 1\nb\nc 3 4")));
    auto row = parser.beginRows();
    const std::string &held = row->front();
    auto ahead = row;
    EXPECT_TRUE(ahead == row);
    ++ahead;
    ++ahead;
    EXPECT_THAT(*ahead, ElementsAre("c", "3", "4"));
    EXPECT_EQ(held, "a") << "looking ahead leaves the first iterator's row alone";
    EXPECT_THAT(*row, ElementsAre("a", "1"));
    row = ahead;
    EXPECT_THAT(*row, ElementsAre("c", "3", "4"));
    ++row;
    EXPECT_TRUE(row == parser.endRows());
    EXPECT_FALSE(ahead == parser.endRows());
}

TEST(CSVParserAccess, EndStaysTheEnd) {
    const TempFolder folder;
    CSVParser parser(' ', true, false, '\n', false);
    ASSERT_TRUE(parser.parseFile(folder.write("f", "a")));
    auto row = parser.endRows();
    ++row;
    EXPECT_TRUE(row == parser.endRows());
    EXPECT_THAT(*row, IsEmpty());
    row = parser.beginRows();
    EXPECT_THAT(*row, ElementsAre("a"));
    ++row;
    EXPECT_THAT(*row, IsEmpty());
}

TEST(CSVParserHostile, AnyBytesGiveRowsThatAgreeWithTheirCount) {
    constexpr unsigned seed = 4711;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const TempFolder folder;
    const std::string alphabet = "ab \t\r\n\"#,;\0\xFF\xC3\xA9"s;
    std::size_t tokens = 0;
    for (int i = 0; i < 300; ++i) {
        std::string bytes;
        for (unsigned n = random() % 300; n > 0; --n)
            bytes += alphabet[random() % alphabet.size()];
        const std::string name = folder.write("f", bytes);
        CSVParser parser(i % 2 == 0 ? ' ' : ',', i % 4 < 2, i % 8 < 4, i % 3 == 0 ? ';' : '\n', i % 16 < 8);
        if (i % 5 != 0) parser.setCommentCharacter('#');
        ASSERT_TRUE(parser.parseFile(name, i % 7 < 4, i % 6 < 3, i % 9 == 0));
        const Rows rows = rowsOf(parser);
        for (std::size_t r = 0; r < rows.size(); ++r)
            for (std::size_t c = 0; c < rows[r].size(); ++c, ++tokens)
                ASSERT_EQ(parser.getValue(r, c), rows[r][c]);
    }
    EXPECT_GT(tokens, 5000u);
}
