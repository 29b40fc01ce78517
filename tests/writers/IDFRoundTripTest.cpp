// What is written is read back: examples, real designs, and each loss that is known.
#include "BoardsEqual.h"
#include "IDFWriterSupport.h"
#include "readers/IDFReader.h"

#include <algorithm>
#include <filesystem>

namespace {

using namespace IDFTest;
using EDA::IDFReader;
using EDA::test::addPoints;
namespace fs = std::filesystem;

class IDFRoundTrip : public IDFWriterTest {
protected:
    // Writes the board as a pair of this name.
    void write(const EDA::EDABoard &written, const std::string &name) const {
        EDA::IDFWriter().writeFile(folder.path(name + ".emn"), folder.path(name + ".emp"), written);
    }
    // Reads the pair back; false with the reader's error where that fails.
    bool read(const std::string &name, IDFReader &into) const {
        return into.readFile(folder.path(name + ".emn")) && into.readFile(folder.path(name + ".emp"));
    }
    void readWell(const std::string &name, IDFReader &into) const {
        EXPECT_TRUE(read(name, into));
        EXPECT_EQ(into.getError(), "");
    }

    // The board comes back but for the known losses, and what is written of that is the same from then on.
    void expectRoundTrip(const EDA::EDABoard &original) const {
        write(original, "first");
        IDFReader second;
        readWell("first", second);
        expectBoardComesBack(original, second.getBoard());
        write(second.getBoard(), "second");
        IDFReader third;
        readWell("second", third);
        write(third.getBoard(), "third");
        EXPECT_EQ(folder.read("third.emn"), folder.read("second.emn"));
        EXPECT_EQ(folder.read("third.emp"), folder.read("second.emp"));
    }

    // A board with units, which the reader asks for.
    void SetUp() override { board.setUnits("MM"); }
    const EDA::EDABoard &back() {
        write(board, "out");
        readWell("out", reader);
        return reader.getBoard();
    }

    using Properties = std::vector<std::pair<std::string, std::string>>;
    // Those of the first component.
    Properties propertiesBack() {
        const auto part = back().beginComponents();
        return {part->beginProperties(), part->endProperties()};
    }
    IDFReader reader;
};

// Reads a board file and the library beside it, if there is one.
void readPair(IDFReader &reader, const std::string &boardFile) {
    ASSERT_TRUE(reader.readFile(boardFile)) << reader.getError();
    const std::string library = reader.getMatchingLibraryFilename(boardFile);
    if (!fs::exists(fs::u8path(library))) return;
    ASSERT_TRUE(reader.readFile(library)) << reader.getError();
}

TEST_F(IDFRoundTrip, OfTheExamples) {
    for (const char *name : {"controller/controller.emn", "thou-board/blinker.emn"}) {
        SCOPED_TRACE(name);
        IDFReader example;
        readPair(example, std::string(EDA_EXAMPLES) + "/" + name);
        // What the tests of the losses are about.
        EXPECT_GT(example.getBoard().numVias(1), example.getBoard().numVias(0));
        EXPECT_GT(example.getBoard().numRouteOutlines(), 0u);
        EXPECT_GT(example.getBoard().numPlacementOutlines(), 0u);
        expectRoundTrip(example.getBoard());
    }
}

std::vector<std::string> corpusBoards() {
    const fs::path corpus = fs::u8path(std::string(EDA_CORPUS) + "/idf");
    std::vector<std::string> files;
    if (!fs::exists(corpus)) return files;
    for (const auto &entry : fs::recursive_directory_iterator(corpus)) {
        const std::string extension = entry.path().extension().u8string();
        if (extension == ".emn" || extension == ".bdf" || extension == ".idf")
            files.push_back(entry.path().u8string());
    }
    std::sort(files.begin(), files.end());
    return files;
}

TEST_F(IDFRoundTrip, OfRealDesigns) {
    const std::vector<std::string> files = corpusBoards();
    if (files.empty()) GTEST_SKIP() << "no folder of real designs here";
    int compared = 0, withoutUnits = 0;
    for (const std::string &file : files) {
        SCOPED_TRACE(file);
        if (!IDFReader::describeUnsupported(file).empty()) continue;
        IDFReader design;
        readPair(design, file);
        if (!design.getBoard().getUnits().empty()) {
            expectRoundTrip(design.getBoard());
            ++compared;
            continue;
        }
        // Known loss: a board without units, as a panel gives it, cannot be read back.
        write(design.getBoard(), "panel");
        IDFReader unreadable;
        EXPECT_FALSE(read("panel", unreadable));
        EXPECT_EQ(unreadable.getError(),
                  "IDF Board file Header record 3 has incorrect number of entries: <>");
        ++withoutUnits;
    }
    EXPECT_EQ(compared, 12);
    EXPECT_EQ(withoutUnits, 2);
}

// Each loss by itself.

TEST_F(IDFRoundTrip, InstancesOfViasAreLost) {
    EDA::EDAVia via;
    via.addInstance("", 5.0, 6.0);
    board.addVia(via, false);
    EXPECT_EQ(back().numVias(1), 1u);
}

TEST_F(IDFRoundTrip, EqualHolesComeBackAsInstances) {
    for (const double x : {1.0, 2.0, 3.0}) {
        EDA::EDAVia via;
        via.setCentre(x, 0.0);
        board.addVia(via, false);
    }
    EXPECT_EQ(back().numVias(0), 1u);
    EXPECT_EQ(reader.getBoard().numVias(1), 3u);
    EXPECT_EQ(reader.getBoard().beginVias()->getInstanceXCentre(1), 3.0);
}

TEST_F(IDFRoundTrip, RoutingKeepoutsAreLost) {
    for (const char *type : {"Route", "VIA_KEEPOUT"}) {
        EDA::EDAKeepout keepout(type);
        addPoints(keepout.getOutline(), 0, "0,0 1,0 1,1");
        board.addKeepout(keepout);
    }
    EXPECT_EQ(back().numKeepouts(), 1u);
    EXPECT_EQ(reader.getBoard().beginKeepouts()->getType(), "VIA_KEEPOUT");
}

TEST_F(IDFRoundTrip, ArcsAboutACentreComeBackStraight) {
    addPoints(board.getOutline(), 0, "0,0 4,0 6,2<4,2 0,2");
    const auto point = back().getOutline().beginPoints() + 2;
    EXPECT_EQ(point->x, 6.0);
    EXPECT_FALSE(point->isArc());
}

TEST_F(IDFRoundTrip, AClosingPointOfAStraightOutlineGoes) {
    addPoints(board.getOutline(), 0, "0,0 4,0 4,2 0,2 0,0");
    EXPECT_EQ(back().getOutline().numPoints(), 4u);
}

TEST_F(IDFRoundTrip, AClosingArcStays) {
    addPoints(board.getOutline(), 0, "0,0 4,0 4,2 0,2 0,0@90");
    ASSERT_EQ(back().getOutline().numPoints(), 5u);
    EXPECT_EQ((reader.getBoard().getOutline().endPoints() - 1)->angle, 90.0);
}

TEST_F(IDFRoundTrip, ComponentsLoseTheBoundsOfTheirCutOuts) {
    EDA::EDAComponent &part = addComponent("A");
    addPoints(part.getOutline(), 0, "0,0 4,0@360");
    part.getOutline().addInternalOutline(EDA::test::hole("1,0 2,0@360"));
    const EDA::EDAOutline &outline = back().beginComponents()->getOutline();
    EXPECT_EQ(outline.numInternalOutlines(), 0);
    EXPECT_EQ(outline.numPoints(), 4u);
}

TEST_F(IDFRoundTrip, TextsWithQuotesComeBackWithApostrophes) {
    board.setName("12\" rack");
    addPlacement("a\tb");
    EXPECT_EQ(back().getName(), "12' rack");
    EXPECT_EQ(reader.getBoard().beginPlacements()->getName(), "a b");
}

TEST_F(IDFRoundTrip, TextsOfWesternCharactersComeBack) {
    board.setName("L\xC3\xBC"
                  "fter");
    addPlacement("p\xC3\xA9").setStatus("ECAD");
    EXPECT_EQ(back().getName(), "L\xC3\xBC"
                                "fter");
    EXPECT_EQ(reader.getBoard().beginPlacements()->getName(), "p\xC3\xA9");
}

TEST_F(IDFRoundTrip, PropertiesComeBack) {
    EDA::EDAComponent &part = addComponent("A");
    part.addProperty("POWER_OPR", "250.5");
    part.addProperty("4ZETA_TYPE", "Chip Socket");
    EXPECT_EQ(propertiesBack(), (Properties{{"POWER_OPR", "250.5"}, {"4ZETA_TYPE", "Chip Socket"}}));
}

// Boards that the writer does not mend and the reader does not understand.

TEST_F(IDFRoundTrip, ABoardWithoutUnitsCannotBeRead) {
    board.setName("name");
    board.setUnits("");
    write(board, "out");
    EXPECT_FALSE(read("out", reader));
    EXPECT_EQ(reader.getError(), "IDF Board file Header record 3 has incorrect number of entries: <name>");
}

TEST_F(IDFRoundTrip, AComponentWithoutUnitsTakesThePartNumberForThem) {
    addComponent("A").setUnits("");
    EXPECT_EQ(back().beginComponents()->getUnits(), "P1");
    EXPECT_EQ(reader.getBoard().beginComponents()->getPartNumber(), "");
}

TEST_F(IDFRoundTrip, APlacementWithoutSideOrStatusShiftsItsColumns) {
    EDA::EDAComponentPlacement &placed = addPlacement("A");
    placed.setStatus("");
    placed.setOffset(7.0);
    placed.setAngle(90.0);
    const auto shifted = back().beginPlacements();
    // Five entries are read as location, angle, side and status.
    EXPECT_EQ(shifted->getAngle(false), 7.0);
    EXPECT_EQ(shifted->getBoardSide(), "90");
    EXPECT_EQ(shifted->getStatus(), "TOP");
}

TEST_F(IDFRoundTrip, APlacementWithoutSideAndStatusCannotBeRead) {
    EDA::EDAComponentPlacement &placed = addPlacement("A");
    placed.setBoardSide("");
    placed.setStatus("");
    write(board, "out");
    EXPECT_FALSE(read("out", reader));
    EXPECT_EQ(reader.getError(),
              "IDF Component Placement record part 2 has incorrect number of entries: <0 0 0 0>");
}

TEST_F(IDFRoundTrip, APropertyKeyWithABlankBecomesAPoint) {
    EDA::EDAComponent &part = addComponent("A");
    addPoints(part.getOutline(), 0, "3,3 5,3"); // two points, so that no closing row stands in between
    part.addProperty("my key", "value");
    const auto part2 = back().beginComponents();
    EXPECT_EQ(part2->beginProperties(), part2->endProperties());
    ASSERT_EQ(part2->getOutline().numPoints(), 3u);
    const auto last = part2->getOutline().endPoints() - 1;
    EXPECT_EQ(last->x, 0.0);
    EXPECT_EQ(last->y, 0.0);
}

TEST_F(IDFRoundTrip, PropertiesWithoutKeyOrWithoutValueAreLost) {
    EDA::EDAComponent &part = addComponent("A");
    part.addProperty("EMPTY", "");
    part.addProperty("", "250");
    part.addProperty("POWER_MAX", "250");
    EXPECT_EQ(propertiesBack(), (Properties{{"POWER_MAX", "250"}}));
}

TEST_F(IDFRoundTrip, ABareValueThatStartsWithAQuoteLosesIt) {
    addComponent("A").addProperty("SIZE", "\"12");
    EXPECT_EQ(propertiesBack(), (Properties{{"SIZE", "12"}}));
}

TEST_F(IDFRoundTrip, APlaceKeepoutWithoutSideCannotBeRead) {
    EDA::EDAKeepout keepout("PLACE_KEEPOUT");
    keepout.setHeight(2.5);
    addPoints(keepout.getOutline(), 0, "0,0 1,0 1,1");
    board.addKeepout(keepout);
    write(board, "out");
    EXPECT_FALSE(read("out", reader));
    EXPECT_EQ(reader.getError(), "IDF Component Keepout record 2 has incorrect number of entries: <2.5>");
}

TEST_F(IDFRoundTrip, AnUnnamedComponentComesBackUnnamed) {
    addComponent("");
    addPlacement("");
    back();
    ASSERT_EQ(reader.getBoard().numComponents(), 1u);
    EXPECT_EQ(reader.getBoard().beginComponents()->getName(), "");
    EXPECT_EQ(reader.getBoard().beginComponents()->getPartNumber(), "P1");
    EXPECT_EQ(reader.getBoard().beginPlacements()->getName(), "");
}

TEST_F(IDFRoundTrip, ComponentsOfOtherTypesAreLost) {
    addComponent("A", "THERMAL");
    addComponent("B");
    EXPECT_EQ(back().numComponents(), 1u);
    EXPECT_EQ(reader.getBoard().beginComponents()->getName(), "B");
}

} // namespace
