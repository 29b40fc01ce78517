// What one read of an XFL file takes in at most.
#include "readers/XFLTestSupport.h"

namespace {

using namespace XFLTest;

class XFLLimits : public XFLReaderTest {
protected:
    // Reads a text under the limits, with the message.
    const EDA::EDABoard &readLimited(bool componentMode, const std::string &text,
                                     const std::string &message) {
        reader = std::make_unique<EDA::XFLReader>(componentMode, limits);
        EXPECT_TRUE(reader->readFile(folder.write("limits.xfl", text)));
        EXPECT_EQ(reader->getError(), message);
        return reader->getBoard();
    }
    EDA::XFLReaderLimits limits;
};

TEST_F(XFLLimits, LeaveOutPointsBeyondAndKeepTheOthers) {
    limits.points = 6;
    const EDA::EDABoard &board =
        readLimited(false, stack + net("square 1 2 0 0\npolygon 1 0 0 1 0 1 1\nsquare 1 2 0 0\n"),
                    "More than 6 outline points: the others are left out.");
    const auto made = traces(board, 1);
    ASSERT_EQ(made.size(), 3u);
    EXPECT_EQ(made[0].getOutline().numPoints(), 4u);
    EXPECT_EQ(drawn(made[1].getOutline()), "0,0 1,0");
    EXPECT_TRUE(made[2].getOutline().empty());
}

TEST_F(XFLLimits, CountAnArcAsThePointsThatItIsCutInto) {
    limits.points = 38;
    const EDA::EDABoard &board = readLimited(false, stack + net("circle 1 2 0 0\n"),
                                             "More than 38 outline points: the others are left out.");
    EXPECT_EQ(traces(board, 1).at(0).getOutline().numPoints(), 2u);
    limits.points = 39;
    readLimited(false, stack + net("circle 1 2 0 0\n"), "");
    limits.points = 38;
    readLimited(false, stack + net("composite 1 0 0 arc 2 0 1 0\n"), "");
    limits.points = 37;
    readLimited(false, stack + net("composite 1 0 0 arc 2 0 1 0 3 3\n"),
                "More than 37 outline points: the others are left out.");
}

TEST_F(XFLLimits, CountPointsThatRepeatEachOther) {
    limits.points = 5;
    readLimited(false,
                stack + section("shape", "1 polygon 0 0 0 0 0 0\n") +
                    net("shape 1 1 0 0 0\nshape 1 1 0 0 0\n"),
                "More than 5 outline points: the others are left out.");
}

TEST_F(XFLLimits, HoldForEachReadByItself) {
    limits.points = 4;
    const std::string path = folder.write("twice.xfl", stack + net("square 1 2 0 0\n"));
    EDA::XFLReader fresh(false, limits);
    EXPECT_TRUE(fresh.readFile(path));
    EXPECT_TRUE(fresh.readFile(path));
    EXPECT_EQ(fresh.getError(), "");
}

TEST_F(XFLLimits, HoldForThickLinesToo) {
    limits.points = 5;
    const EDA::EDABoard &board = readLimited(true, stack + net("path 1 1 0 0 4 0\n"),
                                             "More than 5 outline points: the others are left out.");
    EXPECT_EQ(board.beginComponents()->getOutline().beginInternalOutlines()->numPoints(), 3u);
}

TEST_F(XFLLimits, LeaveOutParametersBeyond) {
    limits.parameters = 5;
    const EDA::EDABoard &board =
        readLimited(false, stack + net("polygon 1 0 0 1 0 1 1\npolygon 1 0 0 1 0 1 1\n"),
                    "More than 5 shape parameters: the others are left out.");
    EXPECT_EQ(drawn(traces(board, 1).at(0).getOutline()), "0,0 1,0");
    EXPECT_TRUE(traces(board, 1).at(1).getOutline().empty());
}

TEST_F(XFLLimits, LeaveOutItemsOfEveryKindBeyond) {
    const std::string message = "More than 2 items: the others are left out.";
    limits.items = 2;
    const std::string layers = ".layer\nA 1 C m d\nB 1 D m d\n.end\n";
    EXPECT_EQ(readLimited(false, layers + net("square 1 1 0 0\n"), message).getNthLayer(0).numTraces(), 0u);
    EXPECT_EQ(readLimited(false, layers + ".layer\nC 1 C m d\n.end\n", message).numLayers(), 1u);
    EXPECT_EQ(readLimited(false, section("part", "A R 0 0 1 1 1\nB R 0 0 1 1 1\nC R 0 0 1 1 1\n"), message)
                  .numComponents(),
              2u);
    EXPECT_EQ(readLimited(false, section("component", "A B 0 0 1 0\nA B 0 0 1 0\nA B 0 0 1 0\n"), message)
                  .numComponentPlacements(),
              2u);
    readLimited(false, section("shape", "1 a b\n2 a b\n3 a b\n"), message);
    readLimited(false, section("via", "1 a b 0 0\n2 a b 0 0\n3 a b 0 0\n"), message);
    EXPECT_EQ(readLimited(true, layers + ".board_geom\nsquare 1 1\n", message)
                  .beginComponents()
                  ->getOutline()
                  .numInternalOutlines(),
              0);
}

TEST_F(XFLLimits, LeaveOutBodiesOfLayersBeyond) {
    limits.bodyLayers = 4;
    const EDA::EDABoard &board =
        readLimited(true, stack + ".board_geom\nsquare 1 1\n.board_geom\nsquare 1 1\n",
                    "More than 4 body layers: the others are left out.");
    EXPECT_EQ(board.beginComponents()->getOutline().numInternalOutlines(), 4);
}

TEST_F(XFLLimits, LeaveOutLongNamesThatManyItemsShare) {
    limits.sharedText = 100;
    const std::string longName(124, 'n'), shortName(64, 'n');
    const EDA::EDABoard &board =
        readLimited(false,
                    stack + section("route", longName + "\nsquare 1 1 0 0\nsquare 1 1 0 0\n}\n" + shortName +
                                                 "\nsquare 1 1 0 0\n}\n"),
                    "More than 100 bytes of shared names: the others are left out.");
    const auto made = traces(board, 1);
    ASSERT_EQ(made.size(), 3u);
    EXPECT_EQ(made[0].getName(), longName);
    EXPECT_EQ(made[1].getName(), "");
    EXPECT_EQ(made[2].getName(), shortName);
}

TEST_F(XFLLimits, AreToldOnALineEach) {
    limits.points = 2;
    limits.items = 4;
    readLimited(false, stack + net("square 1 1 0 0\nsquare 1 1 0 0\n"),
                "More than 2 outline points: the others are left out.\n"
                "More than 4 items: the others are left out.");
}

TEST_F(XFLLimits, OfRowsMakeAFileUnreadable) {
    std::string row(".route\nN\npolygon 1");
    for (int i = 0; i < 4000001; ++i)
        row += " 1";
    EDA::XFLReader fresh(false);
    EXPECT_FALSE(fresh.readFile(folder.write("row.xfl", stack + row)));
    EXPECT_EQ(fresh.getError(), "");
}

} // namespace
