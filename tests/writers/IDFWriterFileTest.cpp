// The files of a written pair: headers, stamp, order of the sections, text encoding, failures.
#include "IDFWriterSupport.h"

#include <filesystem>

namespace {

using namespace IDFTest;
using testing::HasSubstr;
using testing::StartsWith;

TEST_F(IDFWriterTest, AnEmptyBoardHasAllItsSections) {
    EXPECT_EQ(boardText(), ".HEADER\n"
                           "BOARD_FILE 3.0 \"Velkin Solver IDF Writer\"  7-11-2026.9:5:3 1\n"
                           "\"\" \n"
                           ".END_HEADER\n"
                           ".BOARD_OUTLINE  UNOWNED\n"
                           "0\n"
                           ".END_BOARD_OUTLINE\n"
                           ".DRILLED_HOLES\n"
                           ".END_DRILLED_HOLES\n"
                           ".PLACEMENT\n"
                           ".END_PLACEMENT\n");
}

TEST_F(IDFWriterTest, AnEmptyLibraryIsItsHeader) {
    EXPECT_EQ(libraryText(), ".HEADER\n"
                             "LIBRARY_FILE 3.0 \"Velkin Solver IDF Writer\"  7-11-2026.9:5:3 1\n"
                             ".END_HEADER\n");
}

TEST_F(IDFWriterTest, NameAndUnitsStandInTheThirdRecord) {
    board.setName("main board");
    board.setUnits("THOU");
    EXPECT_THAT(boardText(), HasSubstr("\n\"main board\" THOU\n.END_HEADER\n"));
}

TEST_F(IDFWriterTest, EachFileHasTheMomentOfItsOwnWriting) {
    int minute = 0;
    Tools::Clock::setSource([&minute] { return Tools::DateTime{2000, 1, 31, 23, ++minute, 0}; });
    EDA::IDFWriter().writeFile(folder.path("a.emn"), folder.path("a.emp"), board);
    EXPECT_THAT(folder.read("a.emn"), HasSubstr("Writer\"  31-1-2000.23:1:0 1\n"));
    EXPECT_THAT(folder.read("a.emp"), HasSubstr("Writer\"  31-1-2000.23:2:0 1\n"));
}

TEST_F(IDFWriterTest, TheStampIsTheLocalTime) {
    Tools::Clock::setSource(nullptr);
    const Tools::DateTime before = Tools::Clock::now();
    const std::string text = boardText();
    const Tools::DateTime after = Tools::Clock::now();
    const auto dateOf = [](const Tools::DateTime &date) {
        return "\"  " + std::to_string(date.day) + "-" + std::to_string(date.month) + "-" +
               std::to_string(date.year) + "." + std::to_string(date.hour) + ":";
    };
    EXPECT_THAT(text, testing::AnyOf(HasSubstr(dateOf(before)), HasSubstr(dateOf(after))));
}

TEST_F(IDFWriterTest, SectionsStandInTheirOrder) {
    EDA::EDAKeepout keepout("VIA_KEEPOUT");
    board.addKeepout(keepout);
    const std::string text = boardText();
    std::size_t last = 0;
    for (const char *row :
         {".HEADER\n", ".BOARD_OUTLINE", ".VIA_KEEPOUT", ".DRILLED_HOLES\n", ".PLACEMENT\n"}) {
        const std::size_t found = text.find(row);
        ASSERT_NE(found, std::string::npos) << row;
        EXPECT_GE(found, last) << row;
        last = found;
    }
}

TEST_F(IDFWriterTest, AnEmptyNameLeavesItsFileOut) {
    EXPECT_TRUE(EDA::IDFWriter().writeFile("", "", board));
    EXPECT_EQ(folder.numEntries(), 0u);
    boardText();
    EXPECT_EQ(folder.numEntries(), 1u);
}

TEST_F(IDFWriterTest, IsTrueThoughNothingCouldBeWritten) {
    EXPECT_TRUE(EDA::IDFWriter().writeFile(folder.path("no/such/a.emn"), folder.path(), board));
    EXPECT_EQ(folder.numEntries(), 0u);
}

TEST_F(IDFWriterTest, WritesTheOtherFileWhenOneFails) {
    EXPECT_TRUE(EDA::IDFWriter().writeFile(folder.path("no/such/a.emn"), folder.path("a.emp"), board));
    EXPECT_THAT(folder.read("a.emp"), StartsWith(".HEADER\nLIBRARY_FILE"));
}

TEST_F(IDFWriterTest, ReplacesWhatTheFileHeld) {
    folder.write("out.emn", std::string(10'000, 'x'));
    EXPECT_THAT(boardText(), StartsWith(".HEADER\nBOARD_FILE"));
    EXPECT_EQ(folder.numEntries(), 1u);
}

TEST_F(IDFWriterTest, FileNamesAreUtf8) {
    EDA::IDFWriter().writeFile(folder.path("t\xC3\xA4st.emn"), "", board);
    EXPECT_THAT(folder.read("t\xC3\xA4st.emn"), StartsWith(".HEADER\n"));
}

TEST_F(IDFWriterTest, StreamsOfTheCallerTellTheirErrors) {
    FileSystem::FFofstream stream(folder.path("no/such/a.emn"));
    EDA::IDFWriter().writeBoardFile(board, stream);
    EXPECT_FALSE(stream.close());
    EXPECT_THAT(stream.error(), StartsWith(folder.path("no/such/a.emn") + ": "));
}

TEST_F(IDFWriterTest, ACopyWritesTheSame) {
    const EDA::IDFWriter writer;
    const EDA::IDFWriter copy(writer);
    copy.writeFile(folder.path("copy.emn"), "", board);
    EXPECT_EQ(folder.read("copy.emn"), boardText());
}

// Text encoding.

TEST_F(IDFWriterTest, NamesTypesAndPropertiesAreIn8BitCharacters) {
    board.setName("b\xC3\xB6\xE2\x84\xA6"); // o with dots, and the sign of the ohm
    addPlacement("p\xC3\xA9");
    EDA::EDAComponent &part = addComponent("c\xC2\xB5", "T\xC3\x84");
    part.addProperty("K\xC3\xBC", "v\xE2\x82\xAC");
    EXPECT_THAT(boardText(), HasSubstr("\n\"b\xF6?\" \n"));
    EXPECT_THAT(placementRows(), StartsWith("\"p\xE9\" "));
    const std::string library = libraryText();
    EXPECT_THAT(library, HasSubstr("\n.T\xC4\n\"c\xB5\" "));
    EXPECT_THAT(library, HasSubstr("\nPROP K\xFC v?\n.END_T\xC4\n"));
}

TEST_F(IDFWriterTest, OtherTextsStandAsTheyAre) {
    board.setUnits("\xC2\xB5m");
    EDA::EDAComponentPlacement &placed = addPlacement("part");
    placed.setPartNumber("N\xC3\xA9");
    placed.setReferenceDesignator("R\xC3\xA9");
    EDA::EDAVia via;
    via.setHoleType("H\xC3\xA9");
    board.addVia(via, false);
    EXPECT_THAT(boardText(), HasSubstr("\"\" \xC2\xB5m\n"));
    EXPECT_THAT(placementRows(), StartsWith("\"part\" \"N\xC3\xA9\" \"R\xC3\xA9\"\n"));
    EXPECT_THAT(holeRows(), HasSubstr("\"H\xC3\xA9\" UNOWNED"));
}

TEST_F(IDFWriterTest, BytesThatAreNoUtf8AreKept) {
    board.setName("\xFF\xC3");
    EXPECT_THAT(boardText(), HasSubstr("\n\"\xFF\xC3\" \n"));
}

TEST_F(IDFWriterTest, QuotesAndLineEndsInsideQuotesCannotBreakTheFile) {
    board.setName("12\" rack\r\n.PLACEMENT\tx");
    EXPECT_THAT(boardText(), HasSubstr("\n\"12' rack  .PLACEMENT x\" \n.END_HEADER\n"));
}

TEST_F(IDFWriterTest, LineEndsOutsideQuotesCannotBreakTheFile) {
    board.setUnits("MM\n.PLACEMENT\nx");
    EDA::EDAComponentPlacement &placed = addPlacement("part");
    placed.setBoardSide("TOP\n");
    placed.setStatus("\rPLACED");
    EXPECT_THAT(boardText(), HasSubstr("\"\" MM .PLACEMENT x\n.END_HEADER\n"));
    EXPECT_THAT(placementRows(), HasSubstr(" TOP   PLACED\n"));
}

TEST_F(IDFWriterTest, ANulStaysATextOfOneRow) {
    board.setName(std::string("a\0b", 3));
    EXPECT_THAT(boardText(), HasSubstr(std::string("\n\"a\0b\" \n", 8)));
}

} // namespace
