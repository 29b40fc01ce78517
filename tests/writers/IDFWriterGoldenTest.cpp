// Whole files, byte for byte.
#include "IDFWriterSupport.h"
#include "readers/IDFReader.h"

#include <fstream>
#include <iterator>

namespace {

using namespace IDFTest;
using EDA::test::addPoints;
using EDA::test::hole;

class IDFWriterGolden : public IDFWriterTest {
protected:
    static std::string goldenText(const std::string &name) {
        const std::string file = std::string(EDA_TEST_DATA) + "/idf-writer/" + name;
        std::ifstream stream(std::filesystem::u8path(file), std::ios::binary);
        EXPECT_TRUE(stream) << file;
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }
    void expectPair(const std::string &name) const {
        EXPECT_EQ(boardText(), goldenText(name + ".emn"));
        EXPECT_EQ(libraryText(), goldenText(name + ".emp"));
    }

    // One of each kind, parts without symmetry on both sides among them.
    void makeBoard() {
        board.setName("one of each");
        board.setUnits("MM");
        board.setThickness(1.6);
        addPoints(board.getOutline(), 0, "0,0 40,0 40,15 35,20@90 0,20");
        board.getOutline().addInternalOutline(hole("10,10 12,10@360"));
        board.getOutline().addInternalOutline(hole("20,2 26.5,2 26.5,5"));
    }
    void addKeepouts() {
        for (const auto &[type, side] :
             {std::pair{"PLACE_KEEPOUT", "Top"}, {"VIA_KEEPOUT", ""}, {"Route", "Bottom"}}) {
            EDA::EDAKeepout keepout(type);
            keepout.setBoardSide(side);
            keepout.setHeight(2.5);
            addPoints(keepout.getOutline(), 0, "2,2 6,2 6,6.125");
            board.addKeepout(keepout);
        }
    }
    void addHoles() {
        for (const auto &[plating, part, type] :
             {std::tuple{"PTH", "BOARD", "VIA"}, {"NPTH", "BOARD", "MTG"}, {"PTH", "U1", "PIN"}}) {
            EDA::EDAVia via;
            via.setDiameter(0.8);
            via.setCentre(36.0, 4.3333333);
            via.setPlatingStyle(plating);
            via.setAssociatedPart(part);
            via.setHoleType(type);
            via.addInstance("again", 30.0, 4.0);
            board.addVia(via, false);
        }
    }
    void addParts() {
        EDA::EDAComponent &ell = addComponent("L \xC2\xB5");
        ell.setHeight(1.75);
        addPoints(ell.getOutline(), 0, "-3,-2 3,-2 3,0 -1,0 -1,2 -3,2");
        ell.addProperty("POWER_OPR", "250");
        ell.addProperty("4ZETA_TYPE", "Chip Socket");
        addPoints(addComponent("POST", "MECHANICAL").getOutline(), 0, "0,0 1.5,0@360");
        for (const char *side : {"Top", "Bottom"}) {
            EDA::EDAComponentPlacement &placed = addPlacement("L \xC2\xB5");
            placed.setLocation(25.0, 12.123456);
            placed.setAngle(30.0);
            placed.setBoardSide(side);
        }
        addPlacement("POST").setOffset(0.5);
    }
};

TEST_F(IDFWriterGolden, OneOfEachKind) {
    makeBoard();
    addKeepouts();
    addHoles();
    addParts();
    expectPair("one-of-each");
}

TEST_F(IDFWriterGolden, TheControllerExample) {
    EDA::IDFReader reader;
    ASSERT_TRUE(reader.readFile(std::string(EDA_EXAMPLES) + "/controller/controller.emn"));
    ASSERT_TRUE(reader.readFile(std::string(EDA_EXAMPLES) + "/controller/controller.emp"));
    board = reader.getBoard();
    expectPair("controller");
}

} // namespace
