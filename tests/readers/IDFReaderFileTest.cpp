// Headers, the walk over the sections, what a file as a whole may be.
#include "readers/IDFTestSupport.h"

namespace {

using namespace IDFTest;

using IDFReaderFile = IDFReaderTest;

std::pair<std::string, int> details(const EDA::IDFReader &reader) {
    std::pair<std::string, int> result;
    reader.getLastFileDetails(result.first, result.second);
    return result;
}

std::pair<std::string, std::string> sources(const EDA::EDABoard &board) {
    std::pair<std::string, std::string> result;
    board.getSourceFilename(result.first, result.second);
    return result;
}

const std::string component = ".ELECTRICAL\nQFP P1 MM 1.5\n0 0 0 0\n0 4 0 0\n0 4 4 0\n.END_ELECTRICAL\n";

TEST_F(IDFReaderFile, BoardHeaderGivesTypeVersionNameAndUnits) {
    readWell(boardHeader);
    EXPECT_EQ(details(reader), std::make_pair(std::string("BOARD_FILE"), 3));
    EXPECT_EQ(board().getName(), "board");
    EXPECT_EQ(board().getUnits(), "MM");
}

TEST_F(IDFReaderFile, LibraryHeaderHasNoThirdRecord) {
    readWell(libraryHeader + component);
    EXPECT_EQ(details(reader), std::make_pair(std::string("LIBRARY_FILE"), 3));
    EXPECT_EQ(board().getUnits(), "");
    EXPECT_EQ(board().numComponents(), 1u);
}

TEST_F(IDFReaderFile, DetailsAreEmptyBeforeTheFirstFile) {
    EXPECT_EQ(details(reader), std::make_pair(std::string(), 0));
}

TEST_F(IDFReaderFile, VersionIsTheWholePartOfItsText) {
    for (const auto &[text, version] : std::vector<std::pair<std::string, int>>{
             {"3.0", 3}, {"2", 2}, {"2.9", 2}, {"V3", 0}, {"1e9", 1}, {"99999999999", 0}}) {
        readWell(headerOfVersion(text));
        EXPECT_EQ(details(reader).second, version) << text;
    }
}

TEST_F(IDFReaderFile, LowerCaseHeaderOpensTheHeader) {
    readWell(".header\nboard_file 3.0\nlower mm\n.end_header\n.electrical\nQFP P1 MM 1\n0 0 0 "
             "0\n.end_electrical\n");
    EXPECT_EQ(board().getName(), "lower");
    ASSERT_EQ(board().numComponents(), 1u);
    EXPECT_EQ(board().beginComponents()->getType(), "ELECTRICAL");
    EXPECT_NE(sources(board()).first, "");
}

TEST_F(IDFReaderFile, MissingFileFailsWithoutAMessage) {
    EXPECT_FALSE(reader.readFile(folder.path("absent.emn")));
    EXPECT_EQ(reader.getError(), "");
    EXPECT_EQ(sources(board()), std::make_pair(std::string(), std::string()));
}

TEST_F(IDFReaderFile, FolderFailsWithoutAMessage) {
    EXPECT_FALSE(reader.readFile(folder.path()));
    EXPECT_EQ(reader.getError(), "");
}

TEST_F(IDFReaderFile, FileWithoutRowsFailsWithoutAMessage) {
    readBadly("", "");
    readBadly("\n \t \r\n# only a comment\n", "");
    EXPECT_EQ(sources(board()), std::make_pair(std::string(), std::string()));
}

TEST_F(IDFReaderFile, MissingHeaderIsReportedAndTheSectionsAreReadAllTheSame) {
    readBadly(component, "Missing IDF file header!");
    EXPECT_EQ(board().numComponents(), 1u);
    EXPECT_EQ(sources(board()), std::make_pair(std::string(), folder.path("text.emn")));
}

TEST_F(IDFReaderFile, FileWithoutAHeaderCountsAsALibraryAfterABoardFileToo) {
    const std::string boardFile = folder.write("board.emn", boardHeader);
    ASSERT_TRUE(reader.readFile(boardFile));
    readBadly(component, "Missing IDF file header!");
    EXPECT_EQ(sources(board()), std::make_pair(boardFile, folder.path("text.emn")));
}

TEST_F(IDFReaderFile, FilesOfAPairAddToOneBoardInEitherOrder) {
    const std::string boardFile = folder.write(
        "b.emn", boardHeader + ".BOARD_OUTLINE\n1.6\n0 0 0 0\n0 9 0 0\n0 9 9 0\n.END_BOARD_OUTLINE\n");
    const std::string libraryFile = folder.write("b.emp", libraryHeader + component);
    for (const bool boardFirst : {true, false}) {
        EDA::IDFReader pair;
        EXPECT_TRUE(pair.readFile(boardFirst ? boardFile : libraryFile));
        EXPECT_TRUE(pair.readFile(boardFirst ? libraryFile : boardFile));
        EXPECT_EQ(pair.getBoard().getThickness(), 1.6);
        EXPECT_EQ(pair.getBoard().numComponents(), 1u);
        EXPECT_EQ(sources(pair.getBoard()), std::make_pair(boardFile, libraryFile));
    }
}

TEST_F(IDFReaderFile, FailedSecondReadKeepsTheBoardOfTheFirst) {
    readWell(boardHeader);
    readBadly(libraryHeader + component + ".ELECTRICAL\nQFP P1\n.END_ELECTRICAL\n",
              "IDF Component Outline record 2 has incorrect number of entries: <QFP P1>");
    EXPECT_EQ(board().getName(), "board");
    EXPECT_EQ(board().numComponents(), 1u);
}

TEST_F(IDFReaderFile, RecordOfTheWrongSizeLeavesTheSourceNameUnset) {
    readBadly(boardHeader + ".BOARD_OUTLINE\n1.6 2\n.END_BOARD_OUTLINE\n",
              "IDF Board Outline record 2 has incorrect number of entries: <1.6 2>");
    EXPECT_EQ(sources(board()), std::make_pair(std::string(), std::string()));
}

TEST_F(IDFReaderFile, NextGoodReadClearsTheError) {
    readBadly(component, "Missing IDF file header!");
    readWell(boardHeader);
}

TEST_F(IDFReaderFile, ReadWithoutRowsClearsTheError) {
    readBadly(component, "Missing IDF file header!");
    readBadly("", "");
}

TEST_F(IDFReaderFile, SectionsMayComeInAnyOrder) {
    readWell(component + ".NOTES\n1 2 3 4 x\n.END_NOTES\n" + boardHeader + component);
    EXPECT_EQ(board().numComponents(), 2u);
}

TEST_F(IDFReaderFile, SectionBeforeTheHeaderSeesTheVersionOfThePreviousFile) {
    const std::string placement = ".PLACEMENT\nQFP P1 U1\n1 2 90 TOP PLACED\n.END_PLACEMENT\n";
    readWell(placement + boardHeader);
    EXPECT_EQ(board().beginPlacements()->getXLocation(), 0.0);
    readWell(placement + boardHeader);
    EXPECT_EQ((board().beginPlacements() + 1)->getXLocation(), 1.0);
}

TEST_F(IDFReaderFile, HeaderEndsTheVersionOfThePreviousFile) {
    const std::string hole = ".DRILLED_HOLES\n0.8 1 2 PTH BOARD VIA ECAD\n.END_DRILLED_HOLES\n";
    readWell(".HEADER\nLIBRARY_FILE 2.0\n.END_HEADER\n" + component);
    readWell(boardHeader + hole);
    EXPECT_EQ(board().beginVias()->getHoleType(), "VIA");
    readBadly(
        boardHeader2 + hole,
        "IDF Drilled Holes record part 1 has incorrect number of entries: <0.8 1 2 PTH BOARD VIA ECAD>");
}

TEST_F(IDFReaderFile, FileWithoutAHeaderIsReadInTheVersionOfThePreviousFile) {
    const std::string route = ".ROUTE_OUTLINE\nALL 1\n0 0 0 0\n.END_ROUTE_OUTLINE\n";
    readBadly(route, "Missing IDF file header!");
    EXPECT_EQ(board().numRouteOutlines(), 1u);
    readWell(boardHeader);
    readBadly(route, "IDF Route Outline record 2 has incorrect number of entries: <ALL 1>");
    EXPECT_EQ(details(reader), std::make_pair(std::string("BOARD_FILE"), 3));
}

TEST_F(IDFReaderFile, SecondBoardFileAddsToTheOutlineAndOverwritesTheRest) {
    const std::string first = folder.write(
        "1.emn", boardHeader + ".BOARD_OUTLINE\n1.6\n0 0 0 0\n0 9 0 0\n0 9 9 0\n.END_BOARD_OUTLINE\n");
    const std::string second =
        folder.write("2.emn", ".HEADER\nBOARD_FILE 2.0\nother THOU\n.END_HEADER\n"
                              ".BOARD_OUTLINE\n62\n0 0 9 0\n1 2 2 0\n1 3 2 360\n.END_BOARD_OUTLINE\n");
    EXPECT_TRUE(reader.readFile(first));
    EXPECT_TRUE(reader.readFile(second));
    EXPECT_EQ(board().getName(), "other");
    EXPECT_EQ(board().getUnits(), "THOU");
    EXPECT_EQ(board().getThickness(), 62.0);
    EXPECT_EQ(stored(board().getOutline()),
              (std::vector<StoredPoint>{{0, 0, 0}, {9, 0, 0}, {9, 9, 0}, {0, 9, 0}}));
    EXPECT_EQ(board().getOutline().numInternalOutlines(), 1);
    EXPECT_EQ(sources(board()), std::make_pair(second, std::string()));
}

TEST_F(IDFReaderFile, FailedReadKeepsTheSourceNamesOfTheFilesBefore) {
    const std::string boardFile = folder.write("board.emn", boardHeader);
    ASSERT_TRUE(reader.readFile(boardFile));
    readBadly(boardHeader2 + ".BOARD_OUTLINE\n1 2\n",
              "IDF Board Outline record 2 has incorrect number of entries: <1 2>");
    EXPECT_EQ(sources(board()), std::make_pair(boardFile, std::string()));
    EXPECT_EQ(board().getUnits(), "THOU");
}

TEST_F(IDFReaderFile, EmptyTokensBeginRowsOfEverySection) {
    const std::string row = "\"\"\n";
    const std::string point = "\"\" 1 2 \"\"\n";
    readWell(boardHeader + ".BOARD_OUTLINE\n" + row + row + point + point + ".END_BOARD_OUTLINE\n" +
             ".ELECTRICAL\n\"\" \"\" \"\" \"\"\n" + row + "\"\" a b\n.END_ELECTRICAL\n" +
             ".PLACEMENT\n\"\" \"\"\n\"\" \"\" \"\" \"\" \"\" \"\"\n.END_PLACEMENT\n" +
             ".PLACE_KEEPOUT\n\"\" \"\"\n" + row + ".END_PLACE_KEEPOUT\n" +
             ".DRILLED_HOLES\n\"\" \"\" \"\" \"\" \"\"\n.END_DRILLED_HOLES\n" + ".ROUTE_OUTLINE\n" + row +
             row + ".END_ROUTE_OUTLINE\n.NOTES\n" + row + ".END_NOTES\n" + component);
    EXPECT_EQ(board().getThickness(), 0.0);
    EXPECT_EQ(board().numComponents(), 2u);
    EXPECT_EQ(board().beginPlacements()->getOffset(), 0.0);
    EXPECT_EQ(board().numVias(0), 1u);
}

TEST_F(IDFReaderFile, UnknownSectionsAndOtherRowsAreSkipped) {
    readWell(boardHeader + ".PANEL_OUTLINE MCAD\n62\n0 0 0 0\n.END_PANEL_OUTLINE\nstray row\n\"\"\n.\n" +
             component);
    EXPECT_TRUE(board().getOutline().empty());
    EXPECT_EQ(board().numComponents(), 1u);
}

TEST_F(IDFReaderFile, HeaderAtTheEndCountsAsSeen) {
    readWell(component + ".HEADER\n");
    EXPECT_EQ(details(reader), std::make_pair(std::string(), 0));
}

TEST_F(IDFReaderFile, HeaderRecord2NeedsTwoEntries) {
    readBadly(".HEADER\nBOARD_FILE\n", "IDF Header record 2 has incorrect number of entries: <BOARD_FILE>");
}

TEST_F(IDFReaderFile, HeaderRecord3NeedsTwoEntries) {
    readBadly(".HEADER\nBOARD_FILE 3.0\na  b\tc\n.END_HEADER\n",
              "IDF Board file Header record 3 has incorrect number of entries: <a b c>");
    readBadly(".HEADER\nBOARD_FILE 3.0\n.END_HEADER\n",
              "IDF Board file Header record 3 has incorrect number of entries: <.END_HEADER>");
}

TEST_F(IDFReaderFile, RowsThatEndBeforeHeaderRecord3EndTheRead) {
    readWell(".HEADER\nBOARD_FILE 3.0\n");
    EXPECT_EQ(details(reader), std::make_pair(std::string("BOARD_FILE"), 3));
}

TEST_F(IDFReaderFile, FurtherRowsOfTheHeaderAreSkipped) {
    readWell(".HEADER\nBOARD_FILE 3.0\nb MM\nmore\n.ELECTRICAL\n.END_HEADER\n" + component);
    EXPECT_EQ(board().numComponents(), 1u);
}

TEST_F(IDFReaderFile, HeaderWithoutItsEndStillLetsTheSectionsBeRead) {
    readWell(".HEADER\nBOARD_FILE 3.0\nb MM\n" + component + ".HEADER\nLIBRARY_FILE 2.0\n" + component);
    EXPECT_EQ(board().numComponents(), 2u);
    EXPECT_EQ(details(reader), std::make_pair(std::string("LIBRARY_FILE"), 2));
}

TEST_F(IDFReaderFile, HeaderWithoutItsEndIsForgottenByTheNextRead) {
    readWell(".HEADER\nLIBRARY_FILE 3.0\n");
    readWell(".HEADER\nLIBRARY_FILE 3.0\n.ELECTRICAL\n.END_HEADER\n" + component);
    EXPECT_EQ(board().numComponents(), 1u);
}

TEST_F(IDFReaderFile, CopiesKeepTheLastFileDetails) {
    readWell(boardHeader);
    const EDA::IDFReader copy(reader);
    EXPECT_EQ(details(copy), std::make_pair(std::string("BOARD_FILE"), 3));
    EDA::IDFReader assigned;
    assigned = reader;
    EXPECT_EQ(details(assigned), std::make_pair(std::string("BOARD_FILE"), 3));
    EXPECT_EQ(assigned.getBoard().getName(), "board");
}

TEST_F(IDFReaderFile, TextRulesOfRows) {
    readWell("\xEF\xBB\xBF.HEADER\r\n# comment\r\n  # and one behind blanks\r\nBOARD_FILE\t3.0\r\n"
             "\"my  board # 1\" MM # a comment\r\n\r\n.END_HEADER\r\n"
             ".ELECTRICAL\r\nQFP#64 \"\" MM 1.5\r\n.END_ELECTRICAL\r\n");
    EXPECT_EQ(board().getName(), "my  board # 1");
    ASSERT_EQ(board().numComponents(), 1u);
    EXPECT_EQ(board().beginComponents()->getName(), "QFP#64");
    EXPECT_EQ(board().beginComponents()->getPartNumber(), "");
}

TEST_F(IDFReaderFile, BytesThatAreNoUtf8AreLatin1) {
    readWell(".HEADER\nBOARD_FILE 3.0\nB\xF6rd MM\n.END_HEADER\n");
    EXPECT_EQ(board().getName(), "B\xC3\xB6rd");
}

TEST_F(IDFReaderFile, QuoteThatStaysOpenEndsWithItsLine) {
    readWell(".HEADER\nBOARD_FILE 3.0\nb \"MM # mm\n.END_HEADER\n" + component);
    EXPECT_EQ(board().getUnits(), "MM # mm");
    EXPECT_EQ(board().numComponents(), 1u);
}

TEST_F(IDFReaderFile, NulBytesAreText) {
    const std::string name = std::string("b") + '\0' + "d";
    readWell(".HEADER\nBOARD_FILE 3.0\n" + name + " MM\n.END_HEADER\n");
    EXPECT_EQ(board().getName(), name);
}

TEST(IDFReaderNames, LibraryFileGoesWithTheBoardFile) {
    const EDA::IDFReader reader;
    EXPECT_EQ(reader.getMatchingLibraryFilename("a.b/board.emn"), "a.b/board.emp");
    EXPECT_EQ(reader.getMatchingLibraryFilename("board.brd"), "board.lib");
    EXPECT_EQ(reader.getMatchingLibraryFilename("board.bdf"), "board.ldf");
    EXPECT_EQ(reader.getMatchingLibraryFilename("board.idf"), "board.lib");
}

TEST(IDFReaderNames, UnknownExtensionGetsNone) {
    const EDA::IDFReader reader;
    EXPECT_EQ(reader.getMatchingLibraryFilename("board.txt"), "board");
    EXPECT_EQ(reader.getMatchingLibraryFilename("board.EMN"), "board");
    EXPECT_EQ(reader.getMatchingLibraryFilename("board"), "board");
    EXPECT_EQ(reader.getMatchingLibraryFilename("set.emn/board"), "set.emn/board");
    EXPECT_EQ(reader.getMatchingLibraryFilename(""), "");
}

} // namespace
