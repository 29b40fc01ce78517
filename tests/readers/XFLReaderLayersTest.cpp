// The layers and the edge of an XFL file, as a board and as a component.
#include "readers/XFLTestSupport.h"

namespace {

using namespace XFLTest;

class XFLLayers : public XFLReaderTest {};
class XFLEdge : public XFLReaderTest {};

TEST_F(XFLLayers, AreTheConductorsOfTheStack) {
    const EDA::EDABoard &board = readBoard(stack);
    ASSERT_EQ(board.numLayers(), 2u);
    EXPECT_EQ(board.getNthLayer(0).getName(), "TOP");
    EXPECT_EQ(board.getNthLayer(1).getName(), "BOTTOM");
    EXPECT_TRUE(board.getNthLayer(0).isConductor());
    EXPECT_EQ(board.getNthLayer(1).getThickness(), 1.0);
    EXPECT_EQ(board.getThickness(), 4.0);
}

TEST_F(XFLLayers, HaveTheOffsetOfTheirLowerFace) {
    const EDA::EDABoard &board = readBoard(stack);
    EXPECT_EQ(board.getNthLayer(0).getTopOffset(), 1.0);
    EXPECT_EQ(board.getNthLayer(1).getTopOffset(), 4.0);
}

TEST_F(XFLLayers, OfDielectricsAloneAreNoneButHaveAThickness) {
    const EDA::EDABoard &board = readBoard(".layer\nA 1 D m d\nB 2 D m d\n.end\n");
    EXPECT_EQ(board.numLayers(), 0u);
    EXPECT_EQ(board.getThickness(), 3.0);
}

TEST_F(XFLLayers, AreDielectricsByExactlyOneLetter) {
    EXPECT_EQ(readBoard(".layer\nA 1 d m d\nB 1 DIEL m d\nC 1 \"\" m d\nD 1 D m d\n.end\n").numLayers(), 3u);
}

TEST_F(XFLLayers, ComeFromRowsOfFiveFields) {
    const EDA::EDABoard &board =
        readBoard(".layer\n\"\"\nA\nB 1\nC 1 C\nD 1 C m\nE 1 C m d\nF 1 C m d more\n.end\n");
    ASSERT_EQ(board.numLayers(), 2u);
    EXPECT_EQ(board.getNthLayer(0).getName(), "E");
    EXPECT_EQ(board.getNthLayer(1).getTopOffset(), 2.0);
    EXPECT_EQ(board.getThickness(), 2.0);
}

TEST_F(XFLLayers, WithoutAnEndReachToTheEndOfTheFile) {
    const EDA::EDABoard &board = readBoard(".layer\nA 1 C m d\n.route\n");
    EXPECT_EQ(board.numLayers(), 1u);
    EXPECT_EQ(board.getThickness(), 1.0);
    EXPECT_EQ(readBoard(".layer\n").getThickness(), 0.0);
}

TEST_F(XFLLayers, OfASecondListBeginAtTheTopAgain) {
    const EDA::EDABoard &board = readBoard(stack + ".layer\nX 7 C m d\n.end\n");
    ASSERT_EQ(board.numLayers(), 3u);
    EXPECT_EQ(board.getNthLayer(2).getTopOffset(), 7.0);
    EXPECT_EQ(board.getThickness(), 7.0);
    const auto bodies = readBodies(stack + stack + ".board_geom\nsquare 4 4\n");
    ASSERT_EQ(bodies.size(), 7u); // a pair of offsets lies between the lists
    EXPECT_EQ(bodies[6].getName(), "");
    EXPECT_EQ(bodies[6].getMaterial(), "");
}

TEST_F(XFLEdge, IsTheOutlineOfTheBoard) {
    const EDA::EDABoard &board = readBoard(".scale 10\n.board_geom\nrectangle 40 20\n");
    EXPECT_EQ(drawn(board.getOutline()), "-2,-1 2,-1 2,1 -2,1");
    EXPECT_EQ(board.getOutline().numInternalOutlines(), 0);
}

TEST_F(XFLEdge, MayHaveABlockOfRows) {
    const EDA::EDABoard &board = readBoard(".board_geom\npolygon {\n0 0\n# no\n4 0\n4 4 }\n" + stack);
    EXPECT_EQ(drawn(board.getOutline()), "0,0 4,0 4,4");
    EXPECT_EQ(board.numLayers(), 2u);
}

TEST_F(XFLEdge, HasNoEndRowOfItsOwn) {
    EXPECT_EQ(readBoard(".board_geom\nsquare 4 4\n.end\n" + stack).numLayers(), 2u);
    EXPECT_EQ(readBoard(".board_geom\nsquare 4 4\n" + stack).numLayers(), 2u);
}

TEST_F(XFLEdge, AtTheEndOfTheFileIsNone) {
    EXPECT_TRUE(readBoard(stack + ".board_geom").getOutline().empty());
    EXPECT_TRUE(readBoard(stack + ".board_geom\n# only this\n").getOutline().empty());
    EXPECT_EQ(readBodies(stack + ".board_geom").size(), 0u);
}

TEST_F(XFLEdge, TakesAVoidBehindAnEdgeAsACutOut) {
    const EDA::EDABoard &board = readBoard(".board_geom\nsquare 8 8\n.board_geom\nvoid_square 2 2\n"
                                           ".board_geom\nvoid_polygon 3 3 4 3 4 4\n");
    EXPECT_EQ(drawn(board.getOutline()), "-4,-4 4,-4 4,4 -4,4");
    ASSERT_EQ(board.getOutline().numInternalOutlines(), 2);
    EXPECT_EQ(drawn(board.getOutline().beginInternalOutlines()[0]), "-1,-1 1,-1 1,1 -1,1");
    EXPECT_TRUE(board.getOutline().beginInternalOutlines()[0].isHole());
    EXPECT_EQ(drawn(board.getOutline().beginInternalOutlines()[1]), "3,3 4,3 4,4");
}

TEST_F(XFLEdge, TakesAVoidWithoutAnEdgeAsTheEdge) {
    EXPECT_EQ(drawn(readBoard(".board_geom\nvoid_square 2 2\n").getOutline()), "-1,-1 1,-1 1,1 -1,1");
}

TEST_F(XFLEdge, IsABodyForEachLayerOfAComponent) {
    const auto bodies = readBodies(stack + ".board_geom\nsquare 4 4\n");
    ASSERT_EQ(bodies.size(), 3u);
    for (const EDA::EDAOutline &body : bodies)
        EXPECT_EQ(drawn(body), "-2,-2 2,-2 2,2 -2,2");
    EXPECT_EQ(bodies[0].getName(), "TOP");
    EXPECT_EQ(bodies[0].getMaterial(), "CU");
    EXPECT_EQ(heights(bodies[0]), "3 4");
    EXPECT_EQ(bodies[1].getName(), "CORE");
    EXPECT_EQ(bodies[1].getMaterial(), "FR4");
    EXPECT_EQ(heights(bodies[1]), "1 3");
    EXPECT_EQ(bodies[2].getName(), "BOTTOM");
    EXPECT_EQ(bodies[2].getMaterial(), "CU3");
    EXPECT_EQ(heights(bodies[2]), "0 1");
    EXPECT_FALSE(bodies[0].isHole());
}

TEST_F(XFLEdge, OfAComponentStandsBehindItsLayers) {
    EXPECT_EQ(readBodies(".board_geom\nsquare 4 4\n" + stack).size(), 0u);
}

// Where the void of a square of 2 at the place lies after this edge.
class XFLCorner : public XFLReaderTest {
protected:
    std::string voidBehind(const std::string &edge) {
        const auto bodies = readBodies(stack + edge + net("square 1 8 0 0\nvoid_square 1 2 0 0\n"));
        return drawn(bodies.back().beginInternalOutlines()[0]);
    }
};

TEST_F(XFLCorner, IsTheLowestXAndTheHighestY) {
    EXPECT_EQ(voidBehind(".board_geom\npolygon 10 20 50 20 50 30 10 30\n"), "9,29 11,29 11,31 9,31");
    EXPECT_EQ(voidBehind(".board_geom\npolygon -50 -40 -30 -40 -30 -20\n"),
              "-51,-21 -49,-21 -49,-19 -51,-19");
}

TEST_F(XFLCorner, IsThatOfTheArcsAsTheyAreCut) {
    // Half a circle about the origin, of which no corner is the lowest.
    EXPECT_EQ(voidBehind(".board_geom\ncomposite 0 -5 arc 0 5 0 0\n"), "-6,4 -4,4 -4,6 -6,6");
}

TEST_F(XFLCorner, IsTheOriginWithoutAnEdgeOfPoints) {
    const std::string atOrigin = "-1,-1 1,-1 1,1 -1,1";
    EXPECT_EQ(voidBehind(""), atOrigin);
    EXPECT_EQ(voidBehind(".board_geom\nnothing 1 2\n"), atOrigin);
    EXPECT_EQ(voidBehind(".board_geom\npolygon\n"), atOrigin);
}

TEST_F(XFLCorner, StaysWhereAnEdgeHasNoPlace) {
    // Lengths beyond all numbers.
    EXPECT_EQ(voidBehind(".scale 1e-300\n.board_geom\npolygon 1e300 1e300 -1e300 1e300\n.scale 1\n"),
              "-1,-1 1,-1 1,1 -1,1");
}

TEST_F(XFLCorner, IsNotThatOfABoard) {
    const EDA::EDABoard &board = readBoard(stack + ".board_geom\npolygon 10 20 50 20 50 30\n" +
                                           net("square 1 8 0 0\nvoid_square 1 2 0 0\n"));
    EXPECT_EQ(drawn(traces(board, 1)[0].getOutline().beginInternalOutlines()[0]), "-1,-1 1,-1 1,1 -1,1");
}

} // namespace
