// Parts, placements and kinds of vias of an XFL file.
#include "readers/XFLTestSupport.h"

namespace {

using namespace XFLTest;

struct BodyCase {
    const char *kind;
    const char *points;
};

void PrintTo(const BodyCase &body, std::ostream *stream) { *stream << body.kind; }

class XFLBodies : public XFLReaderTest, public testing::WithParamInterface<BodyCase> {
protected:
    static std::string text() {
        return ".scale 2\n" + stackOf(1) +
               section("part", std::string("CHIP ") + GetParam().kind + " 0 2 8 6 10\n");
    }
};

TEST_P(XFLBodies, AreComponentsOfABoard) {
    const EDA::EDABoard &board = readBoard(text());
    ASSERT_EQ(board.numComponents(), 1u);
    const EDA::EDAComponent &part = *board.beginComponents();
    EXPECT_EQ(drawn(part.getOutline()), GetParam().points);
    EXPECT_EQ(part.getName(), "CHIP");
    EXPECT_EQ(part.getPartNumber(), "CHIP");
    EXPECT_EQ(part.getType(), "ELECTRICAL");
    EXPECT_EQ(part.getHeight(), 5.0);
}

TEST_P(XFLBodies, AreDiesOnTopOfAComponent) {
    const auto bodies = readBodies(text());
    ASSERT_EQ(bodies.size(), 1u);
    EXPECT_EQ(drawn(bodies[0]), GetParam().points);
    EXPECT_EQ(bodies[0].getName(), "CHIP");
    EXPECT_EQ(bodies[0].getMaterial(), "");
    EXPECT_EQ(heights(bodies[0]), "0.5 5.5");
}

INSTANTIATE_TEST_SUITE_P(All, XFLBodies,
                         testing::Values(BodyCase{"R", "0,1 4,1 4,3 0,3"},
                                         BodyCase{"C", "0,2 4,2@180 0,2@180"},
                                         BodyCase{"D", "0,2 2,1 4,2 2,3"}, BodyCase{"X", ""},
                                         BodyCase{"r", ""}, BodyCase{"RR", ""}, BodyCase{"\"\"", ""}));

class XFLParts : public XFLReaderTest {};

TEST_F(XFLParts, ComeFromRowsOfSevenFields) {
    std::string row, rows;
    for (const char *word : {"P", "R", "0", "0", "1", "1"})
        rows += (row += std::string(row.empty() ? "" : " ") + word) + "\n";
    EXPECT_EQ(readBoard(section("part", "\"\"\n" + rows)).numComponents(), 0u);
    EXPECT_EQ(readBoard(section("part", rows + row + " 1\n")).numComponents(), 1u);
    EXPECT_EQ(readBodies(section("part", rows)).size(), 0u);
}

TEST_F(XFLParts, HaveBlocksThatAreNotRead) {
    const EDA::EDABoard &board =
        readBoard(section("part", "A R 0 0 1 1 1 {\nPIN R 0 0 1 1 1\n.end\n# }\n} X\n"
                                  "B R 0 0 1 1 1 { PIN }\n"
                                  "C R 0 0 1 1 {\nPIN R 0 0 1 1 1\n{ }\n"
                                  "D R 0 0 1 1 1\n"));
    ASSERT_EQ(board.numComponents(), 4u);
    EXPECT_EQ(board.beginComponents()[2].getName(), "C");
    EXPECT_EQ(board.beginComponents()[2].getHeight(), 0.0);
    EXPECT_EQ(board.beginComponents()[3].getName(), "D");
}

TEST_F(XFLParts, WithAnOpenBlockReachToTheEndOfTheFile) {
    EXPECT_EQ(readBoard(section("part", "A R 0 0 1 1 1 {\n") + stack).numLayers(), 0u);
    EXPECT_EQ(readBodies(section("part", "A R 0 0 1 1 1 {")).size(), 1u);
}

TEST_F(XFLParts, OfOneNameAndShapeAreOne) {
    EXPECT_EQ(readBoard(section("part", "A R 0 0 1 1 1\nA R 0 0 1 1 1\n")).numComponents(), 1u);
    const EDA::EDABoard &board = readBoard(section("part", "A R 0 0 1 1 1\nA R 0 0 1 1 2\n"));
    ASSERT_EQ(board.numComponents(), 2u);
    EXPECT_EQ(board.beginComponents()[1].getName(), "A-1");
}

TEST_F(XFLParts, OfAComponentStandAtTheBottomWithoutAStack) {
    EXPECT_EQ(heights(readBodies(section("part", "A R 0 0 1 1 3\n")).at(0)), "0 3");
}

class XFLPlacements : public XFLReaderTest {
protected:
    EDA::EDAComponentPlacement placed(const std::string &before, const std::string &row) {
        const EDA::EDABoard &board = readBoard(before + section("component", row + "\n"));
        if (board.numComponentPlacements() != 1) throw std::logic_error("not one placement");
        return *board.beginPlacements();
    }
    // Side and offset on a layer of a board with so many conductors and layers of 1.
    std::string mounting(int conductors, const std::string &layer) {
        const auto placement = placed(stackOf(conductors), "U1 CHIP 0 0 " + layer + " 0");
        return placement.getBoardSide() + ' ' + number(placement.getOffset());
    }
    double angle(const std::string &text) { return placed("", "U1 CHIP 0 0 1 " + text).getAngle(false); }
};

TEST_F(XFLPlacements, NameTheirPartAndTheirPlace) {
    const auto placement = placed(".scale 2\n", "U1 CHIP 10 -20 1 45");
    EXPECT_EQ(placement.getReferenceDesignator(), "U1");
    EXPECT_EQ(placement.getName(), "CHIP");
    EXPECT_EQ(placement.getPartNumber(), "CHIP");
    EXPECT_EQ(placement.getXLocation(), 5.0);
    EXPECT_EQ(placement.getYLocation(), -10.0);
    EXPECT_EQ(placement.getAngle(false), 45.0);
}

TEST_F(XFLPlacements, ComeFromRowsOfSixFields) {
    EXPECT_EQ(
        readBoard(section("component", "\"\"\nU\nU C\nU C 0\nU C 0 0\nU C 0 0 1\n")).numComponentPlacements(),
        0u);
    EXPECT_EQ(readBoard(section("component", "U C 0 0 1 0\nU C 0 0 1 0 more\n")).numComponentPlacements(),
              2u);
}

TEST_F(XFLPlacements, AreOnTheSideOfTheirHalfOfTheStack) {
    EXPECT_EQ(mounting(4, "1"), "TOP 0");
    EXPECT_EQ(mounting(4, "2"), "TOP -2");
    EXPECT_EQ(mounting(4, "3"), "BOTTOM -2");
    EXPECT_EQ(mounting(4, "4"), "BOTTOM 0");
}

TEST_F(XFLPlacements, OnTheMiddleLayerAreOnTheBottom) {
    EXPECT_EQ(mounting(3, "1"), "TOP 0");
    EXPECT_EQ(mounting(3, "2"), "BOTTOM -2");
    EXPECT_EQ(mounting(3, "3"), "BOTTOM 0");
    EXPECT_EQ(mounting(1, "1"), "BOTTOM 0");
}

TEST_F(XFLPlacements, IgnoreTheSignOfTheirLayer) {
    EXPECT_EQ(mounting(4, "-2"), "TOP -2");
    EXPECT_EQ(mounting(4, "-4"), "BOTTOM 0");
}

TEST_F(XFLPlacements, OnLayersThatAreNotThereHaveNoOffset) {
    EXPECT_EQ(mounting(4, "0"), "TOP 0");
    EXPECT_EQ(mounting(4, "x"), "TOP 0");
    EXPECT_EQ(mounting(4, "5"), "BOTTOM 0");
    EXPECT_EQ(mounting(4, "2147483647"), "BOTTOM 0");
    EXPECT_EQ(mounting(4, "-2147483648"), "BOTTOM 0");
    EXPECT_EQ(mounting(4, "2147483648"), "TOP 0"); // no int, so 0
    EXPECT_EQ(mounting(4, "9999999999999999999999"), "TOP 0");
}

TEST_F(XFLPlacements, OnABoardWithoutLayersAreOnTheBottom) {
    const auto placement = placed("", "U1 CHIP 0 0 1 0");
    EXPECT_EQ(placement.getBoardSide(), "BOTTOM");
    EXPECT_EQ(placement.getOffset(), 0.0);
    EXPECT_EQ(placed("", "U1 CHIP 0 0 0 0").getBoardSide(), "TOP");
}

TEST_F(XFLPlacements, WhereConductorsDoNotAlternateReadTheirOffsetsAllTheSame) {
    // Four conductors of 1 and nothing between them: the third face is taken for the second layer's.
    const auto placement =
        placed(".layer\nA 1 C m d\nB 1 C m d\nC 1 C m d\nD 1 C m d\n.end\n", "U P 0 0 2 0");
    EXPECT_EQ(placement.getOffset(), -2.0);
    EXPECT_EQ(placed(".layer\nA 1 C m d\nB 1 C m d\nC 1 C m d\nD 1 C m d\n.end\n", "U P 0 0 3 0").getOffset(),
              0.0);
}

TEST_F(XFLPlacements, HaveAnAngleThatIsNotNegative) {
    EXPECT_EQ(angle("-450"), 270.0);
    EXPECT_EQ(angle("-360"), 0.0);
    EXPECT_EQ(angle("-0.5"), 359.5);
    EXPECT_EQ(angle("720"), 720.0);
    EXPECT_EQ(angle("-inf"), 0.0);
    EXPECT_EQ(angle("nan"), 0.0);
    EXPECT_EQ(angle("x"), 0.0);
    for (const char *text : {"-1e13", "-1e19", "-1e300", "-3600.5", "-3600000.5"}) {
        EXPECT_GE(angle(text), 0.0) << text;
        EXPECT_LT(angle(text), 360.0) << text;
    }
}

TEST_F(XFLPlacements, HaveAnAngleWithoutAScale) {
    EXPECT_EQ(placed(".scale 100\n", "U P 0 0 1 90").getAngle(false), 90.0);
}

TEST_F(XFLPlacements, BeyondAllNumbersAreAtZero) {
    const auto placement = placed(".scale 1e-300\n", "U P 1e300 -1e300 1 0");
    EXPECT_EQ(placement.getXLocation(), 0.0);
    EXPECT_EQ(placement.getYLocation(), 0.0);
}

TEST_F(XFLPlacements, OfAComponentAreBesideItsOwn) {
    const EDA::EDABoard &board =
        readWell(true, stackOf(4) + section("component", "U1 CHIP 1 2 2 0\nU2 CHIP 1 2 0 0\n"));
    ASSERT_EQ(board.numComponentPlacements(), 3u);
    const auto placements = board.beginPlacements();
    EXPECT_EQ(placements[0].getReferenceDesignator(), "U1");
    EXPECT_EQ(placements[0].getBoardSide(), "BOTTOM"); // no layers on the board
    EXPECT_EQ(placements[0].getOffset(), 3.0);         // of a board without a thickness
    EXPECT_EQ(placements[1].getBoardSide(), "TOP");
    EXPECT_EQ(placements[2].getName(), "design");
    EXPECT_EQ(board.findComponent(placements[0]), nullptr);
}

class XFLViaKinds : public XFLReaderTest {
protected:
    // The vias that the rows make of a via V.
    std::vector<EDA::EDAVia> vias(const std::string &rows) {
        const EDA::EDABoard &board =
            readBoard(stack + section("shape", "1 circle 4\n2 circle 6\n3 rectangle 4 4\n") +
                      section("via", rows) + net("via 1 2 V 0 0\n"));
        return {board.beginVias(), board.endVias()};
    }
};

TEST_F(XFLViaKinds, ComeFromRowsOfFiveFields) {
    EXPECT_TRUE(vias("\"\"\nV\nV a\nV a b\nV a b 1\n").empty());
    EXPECT_EQ(vias("V a b 1 0\n").size(), 1u);
}

TEST_F(XFLViaKinds, OfFiveFieldsHaveNoPlating) {
    const auto made = vias("V a b 1 9\n");
    EXPECT_EQ(made[0].getPlatingThickness(), 0.0);
    EXPECT_EQ(made[0].getDiameter(), 4.0);
    EXPECT_FALSE(made[0].isPlated());
    EXPECT_EQ(made[0].getPlatingStyle(), "");
}

TEST_F(XFLViaKinds, OfOneNameReplaceEachOther) {
    EXPECT_EQ(vias("V a b 1 0 0.5\nV a b 2 0\n")[0].getDiameter(), 6.0);
    EXPECT_TRUE(vias("V a b 1 0\nV a b 3 0\n").empty());
}

TEST_F(XFLViaKinds, HaveNamesWithCase) { EXPECT_TRUE(vias("v a b 1 0\n").empty()); }

} // namespace
