// Board outline, keepouts, areas for routes and for placement, notes.
#include "readers/IDFTestSupport.h"

namespace {

using namespace IDFTest;

using IDFBoardOutline = IDFReaderTest;
using IDFKeepout = IDFReaderTest;
using IDFRouteOutline = IDFReaderTest;
using IDFPlaceOutline = IDFReaderTest;
using IDFNotes = IDFReaderTest;

const std::string square = "0 0 0 0\n0 4 0 0\n0 4 4 0\n0 0 4 0\n0 0 0 0\n";
const std::vector<StoredPoint> openSquare = {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}};
const std::string component = ".ELECTRICAL\nQFP P1 MM 1.5\n.END_ELECTRICAL\n";

std::string section(const std::string &name, const std::string &rows) {
    return "." + name + "\n" + rows + ".END_" + name + "\n";
}

TEST_F(IDFBoardOutline, ClosingPointIsRemoved) {
    readWell(boardHeader + section("BOARD_OUTLINE", "1.6\n" + square));
    EXPECT_EQ(board().getThickness(), 1.6);
    EXPECT_EQ(stored(board().getOutline()), openSquare);
}

TEST_F(IDFBoardOutline, HoleBecomesAnInternalOutline) {
    readWell(boardHeader + section("BOARD_OUTLINE", "1.6\n" + square + "1 1 1 0\n1 2 1 360\n"));
    ASSERT_EQ(board().getOutline().numInternalOutlines(), 1);
    const EDA::EDAOutline &hole = *board().getOutline().beginInternalOutlines();
    EXPECT_TRUE(hole.isHole());
    EXPECT_EQ(stored(hole), (std::vector<StoredPoint>{{1, 1, 0}, {2, 1, 360}}));
    EXPECT_FALSE(board().getOutline().isHole());
}

TEST_F(IDFBoardOutline, ArcsKeepTheirAngle) {
    readWell(boardHeader + section("BOARD_OUTLINE", "1.6\n0 0 0 0\n0 4 0 -90.5\n0 4 4 180\n"));
    EXPECT_EQ(stored(board().getOutline()),
              (std::vector<StoredPoint>{{0, 0, 0}, {4, 0, -90.5}, {4, 4, 180}}));
}

TEST_F(IDFBoardOutline, ArcsAreCutEveryTenDegrees) {
    readWell(boardHeader + section("BOARD_OUTLINE", "1.6\n0 0 0 0\n0 400 0 360\n"));
    EXPECT_EQ(board().getOutline().getPoints(true).size(), 36u);
}

TEST_F(IDFBoardOutline, RowsOfAnotherSizeAreSkipped) {
    readWell(boardHeader + section("BOARD_OUTLINE", "1.6\n0 0 0 0\n0 9 9\n0 4 0 0\n0 9 9 9 9\n0 4 4 0\n"));
    EXPECT_EQ(stored(board().getOutline()), (std::vector<StoredPoint>{{0, 0, 0}, {4, 0, 0}, {4, 4, 0}}));
}

TEST_F(IDFBoardOutline, NegativeIndexDropsThePoint) {
    readWell(boardHeader + section("BOARD_OUTLINE", "1.6\n" + square + "-1 7 7 0\n-2147483648 7 7 0\n"));
    EXPECT_EQ(stored(board().getOutline()), openSquare);
    EXPECT_EQ(board().getOutline().numInternalOutlines(), 0);
}

TEST_F(IDFBoardOutline, IndexPastTheEndMakesOneOutlineAPoint) {
    readWell(boardHeader +
             section("BOARD_OUTLINE", "1.6\n" + square + "5 1 1 0\n5 2 1 0\n2147483647 2 2 0\n"));
    EXPECT_EQ(board().getOutline().numInternalOutlines(), 3);
}

TEST_F(IDFBoardOutline, Record2NeedsOneEntry) {
    readBadly(boardHeader + section("BOARD_OUTLINE", "1.6 x\n"),
              "IDF Board Outline record 2 has incorrect number of entries: <1.6 x>");
    readBadly(headerOfVersion("7") + section("BOARD_OUTLINE", "0 0 0 0\n"),
              "IDF Board Outline record 2 has incorrect number of entries: <0 0 0 0>");
}

TEST_F(IDFBoardOutline, NothingBehindTheSectionNameEndsTheRead) {
    readWell(boardHeader + ".BOARD_OUTLINE\n");
    EXPECT_TRUE(board().getOutline().empty());
}

TEST_F(IDFBoardOutline, EmptySectionLeavesThicknessAndOutline) {
    readWell(boardHeader + ".BOARD_OUTLINE\n.end_board_outline\n" + component);
    EXPECT_EQ(board().getThickness(), 0.0);
    EXPECT_TRUE(board().getOutline().empty());
    EXPECT_EQ(board().numComponents(), 1u);
}

TEST_F(IDFBoardOutline, WithoutItsEndTakesAllThatFollows) {
    readWell(boardHeader + ".BOARD_OUTLINE\n1.6\n" + square + ".ELECTRICAL\nQFP MM 1.5\n.END_ELECTRICAL\n");
    EXPECT_EQ(stored(board().getOutline()), openSquare);
    EXPECT_EQ(board().numComponents(), 0u);
}

TEST_F(IDFBoardOutline, NumbersThatCannotBeReadAreZero) {
    readWell(boardHeader + section("BOARD_OUTLINE", "thick\nx 1 y 0\n0 1e400 nan inf\n0 3mm 0x10 -1e-3\n"));
    EXPECT_EQ(board().getThickness(), 0.0);
    EXPECT_EQ(stored(board().getOutline()), (std::vector<StoredPoint>{{1, 0, 0}, {0, 0, 0}, {3, 16, -1e-3}}));
}

TEST_F(IDFBoardOutline, SecondSectionAddsToTheOutline) {
    readWell(boardHeader + section("BOARD_OUTLINE", "1\n0 0 0 0\n0 4 0 0\n0 4 4 0\n") +
             section("BOARD_OUTLINE", "2\n0 0 4 0\n0 0 0 0\n"));
    EXPECT_EQ(board().getThickness(), 2.0);
    EXPECT_EQ(stored(board().getOutline()), openSquare);
}

TEST(IDFBoardOutlineLimit, OutlineIsCleanedOnceAtTheEndAfterTooManySections) {
    EDA::IDFReaderLimits limits;
    limits.boardCleanUpWork = 5;
    EDA::IDFReader reader(limits);
    const TestSupport::TempFolder folder;
    const std::string sections = section("BOARD_OUTLINE", "1\n0 0 0 0\n0 4 0 0\n0 4 4 0\n") +
                                 section("BOARD_OUTLINE", "1\n0 0 4 0\n") + section("BOARD_OUTLINE", "1\n") +
                                 section("BOARD_OUTLINE", "1\n0 0 2 0\n") +
                                 section("BOARD_OUTLINE", "1\n0 0 0 0\n");
    EXPECT_TRUE(reader.readFile(folder.write("many.emn", boardHeader + sections)));
    EXPECT_EQ(stored(reader.getBoard().getOutline()), openSquare);
    EXPECT_EQ(reader.getError(), "");
}

TEST_F(IDFKeepout, ViaKeepoutBeginsWithItsFirstPoint) {
    readWell(boardHeader + section("VIA_KEEPOUT", square + "1 1 1 0\n1 2 1 360\n"));
    ASSERT_EQ(board().numKeepouts(), 1u);
    const EDA::EDAKeepout &keepout = *board().beginKeepouts();
    EXPECT_EQ(keepout.getType(), "VIA_KEEPOUT");
    EXPECT_EQ(keepout.getBoardSide(), "");
    EXPECT_EQ(keepout.getHeight(), 0.0);
    EXPECT_EQ(stored(keepout.getOutline()), openSquare);
    EXPECT_EQ(keepout.getOutline().numInternalOutlines(), 1);
}

TEST_F(IDFKeepout, PlaceKeepoutGivesSideAndHeight) {
    readWell(boardHeader + section("PLACE_KEEPOUT", "TOP 12.5\n" + square) +
             section("PLACE_KEEPOUT", "BOTH 3 MCAD\n" + square));
    ASSERT_EQ(board().numKeepouts(), 2u);
    EXPECT_EQ(board().beginKeepouts()->getType(), "PLACE_KEEPOUT");
    EXPECT_EQ(board().beginKeepouts()->getBoardSide(), "TOP");
    EXPECT_EQ(board().beginKeepouts()->getHeight(), 12.5);
    EXPECT_EQ(stored(board().beginKeepouts()->getOutline()), openSquare);
    EXPECT_TRUE((board().beginKeepouts() + 1)->isOnBoardBothSides());
    EXPECT_EQ((board().beginKeepouts() + 1)->getHeight(), 3.0);
}

TEST_F(IDFKeepout, Record2OfVersion3HasTwoOrThreeEntries) {
    readBadly(boardHeader + section("PLACE_KEEPOUT", "TOP\n"),
              "IDF Component Keepout record 2 has incorrect number of entries: <TOP>");
    readBadly(boardHeader + section("PLACE_KEEPOUT", "TOP 1 2 3\n"),
              "IDF Component Keepout record 2 has incorrect number of entries: <TOP 1 2 3>");
    EXPECT_EQ(board().numKeepouts(), 0u);
}

TEST_F(IDFKeepout, Record2OfVersion2HasThreeEntries) {
    readWell(boardHeader2 + section("PLACE_KEEPOUT", "TOP 250 0\n" + square));
    readBadly(boardHeader2 + section("PLACE_KEEPOUT", "TOP 250\n" + square),
              "IDF Component Keepout record 2 has incorrect number of entries: <TOP 250>");
    EXPECT_EQ(board().numKeepouts(), 1u);
}

TEST_F(IDFKeepout, Record2OfAnotherVersionIsNotChecked) {
    readWell(headerOfVersion("7") + section("PLACE_KEEPOUT", "TOP\n" + square) +
             section("PLACE_KEEPOUT", "BOTTOM 2 3 4 5\n" + square) + ".PLACE_KEEPOUT\n.END_PLACE_KEEPOUT\n" +
             component);
    ASSERT_EQ(board().numKeepouts(), 3u);
    EXPECT_EQ(board().beginKeepouts()->getHeight(), 0.0);
    EXPECT_EQ((board().beginKeepouts() + 1)->getHeight(), 2.0);
    EXPECT_EQ((board().beginKeepouts() + 2)->getBoardSide(), "");
    EXPECT_EQ(board().numComponents(), 1u);
}

TEST_F(IDFKeepout, EmptyPlaceKeepoutLacksItsRecord2) {
    readBadly(boardHeader + ".PLACE_KEEPOUT\n.END_PLACE_KEEPOUT\n",
              "IDF Component Keepout record 2 has incorrect number of entries: <.END_PLACE_KEEPOUT>");
}

TEST_F(IDFKeepout, NothingBehindPlaceKeepoutAddsNone) {
    readWell(boardHeader + ".PLACE_KEEPOUT MCAD\n");
    EXPECT_EQ(board().numKeepouts(), 0u);
}

TEST_F(IDFKeepout, WithoutItsEndIsStillAdded) {
    readWell(boardHeader + ".VIA_KEEPOUT\n" + square);
    EXPECT_EQ(board().numKeepouts(), 1u);
}

TEST_F(IDFKeepout, EqualKeepoutsAreAllKept) {
    readWell(boardHeader + section("VIA_KEEPOUT", square) + section("VIA_KEEPOUT", square));
    EXPECT_EQ(board().numKeepouts(), 2u);
}

TEST_F(IDFKeepout, RouteKeepoutIsNoSectionOfThisReader) {
    readWell(boardHeader + section("ROUTE_KEEPOUT", "ALL\n" + square));
    EXPECT_EQ(board().numKeepouts(), 0u);
}

TEST_F(IDFRouteOutline, Version3SkipsRecord2) {
    readWell(boardHeader + section("ROUTE_OUTLINE", "ALL\n" + square));
    ASSERT_EQ(board().numRouteOutlines(), 1u);
    EXPECT_EQ(stored(*board().beginRouteOutlines()), openSquare);
}

TEST_F(IDFRouteOutline, HigherIndexIsACutOut) {
    readWell(boardHeader + section("ROUTE_OUTLINE", "ALL\n" + square + "1 1 1 0\n1 2 1 360\n") +
             section("PLACE_OUTLINE", "TOP 9\n" + square + "1 1 1 0\n1 2 1 360\n"));
    ASSERT_EQ(board().beginRouteOutlines()->numInternalOutlines(), 1);
    EXPECT_TRUE(board().beginRouteOutlines()->beginInternalOutlines()->isHole());
    EXPECT_EQ(board().beginPlacementOutlines()->numInternalOutlines(), 1);
}

TEST_F(IDFRouteOutline, Record2MayBeMissing) {
    readWell(boardHeader + section("ROUTE_OUTLINE", square));
    ASSERT_EQ(board().numRouteOutlines(), 1u);
    EXPECT_EQ(stored(*board().beginRouteOutlines()), openSquare);
}

TEST_F(IDFRouteOutline, Record2OfVersion3HasOneEntry) {
    readBadly(boardHeader + section("ROUTE_OUTLINE", "ALL 1\n" + square),
              "IDF Route Outline record 2 has incorrect number of entries: <ALL 1>");
    EXPECT_EQ(board().numRouteOutlines(), 0u);
}

TEST_F(IDFRouteOutline, OtherVersionsHaveNoRecord2) {
    readWell(boardHeader2 + section("ROUTE_OUTLINE", "ALL 1\n" + square));
    ASSERT_EQ(board().numRouteOutlines(), 1u);
    EXPECT_EQ(stored(*board().beginRouteOutlines()), openSquare);
}

TEST_F(IDFRouteOutline, EmptySectionGivesAnEmptyOutline) {
    readWell(boardHeader + ".ROUTE_OUTLINE\n.END_ROUTE_OUTLINE\n" + component);
    ASSERT_EQ(board().numRouteOutlines(), 1u);
    EXPECT_TRUE(board().beginRouteOutlines()->empty());
    EXPECT_EQ(board().numComponents(), 1u);
}

TEST_F(IDFRouteOutline, NothingBehindTheSectionNameAddsNone) {
    readWell(boardHeader + ".ROUTE_OUTLINE ECAD\n");
    EXPECT_EQ(board().numRouteOutlines(), 0u);
}

TEST_F(IDFPlaceOutline, Version3SkipsRecord2) {
    readWell(boardHeader + section("PLACE_OUTLINE", "TOP 25\n" + square) + section("PLACE_OUTLINE", square));
    ASSERT_EQ(board().numPlacementOutlines(), 2u);
    EXPECT_EQ(stored(*board().beginPlacementOutlines()), openSquare);
    EXPECT_EQ(stored(*(board().beginPlacementOutlines() + 1)), openSquare);
}

TEST_F(IDFPlaceOutline, Record2OfVersion3HasTwoEntries) {
    readBadly(boardHeader + section("PLACE_OUTLINE", "TOP\n" + square),
              "IDF Placement Outline record 2 has incorrect number of entries: <TOP>");
    readBadly(boardHeader + section("PLACE_OUTLINE", ""),
              "IDF Placement Outline record 2 has incorrect number of entries: <.END_PLACE_OUTLINE>");
}

TEST_F(IDFPlaceOutline, OtherVersionsHaveNoRecord2) {
    readWell(boardHeader2 + section("PLACE_OUTLINE", square) + section("PLACE_OUTLINE", ""));
    ASSERT_EQ(board().numPlacementOutlines(), 2u);
    EXPECT_EQ(stored(*board().beginPlacementOutlines()), openSquare);
}

TEST_F(IDFPlaceOutline, NothingBehindTheSectionNameAddsNone) {
    readWell(boardHeader + ".PLACE_OUTLINE\n");
    EXPECT_EQ(board().numPlacementOutlines(), 0u);
}

TEST_F(IDFNotes, AreSteppedOver) {
    readWell(boardHeader + ".NOTES\n1 2 3 4 \"a note\"\n.ELECTRICAL\nnot a part\n.end_notes\n" + component);
    EXPECT_EQ(board().numComponents(), 1u);
}

TEST_F(IDFNotes, WithoutTheirEndTakeAllThatFollows) {
    readWell(boardHeader + ".NOTES\n1 2 3 4 x\n" + component);
    EXPECT_EQ(board().numComponents(), 0u);
}

EDA::IDFReaderLimits limitOf(std::size_t points) {
    EDA::IDFReaderLimits limits;
    limits.points = points;
    return limits;
}

TEST(IDFPointLimit, LaterPointsAreLeftOutWithOneLine) {
    EDA::IDFReader reader(limitOf(4));
    const TestSupport::TempFolder folder;
    const std::string text =
        boardHeader + section("BOARD_OUTLINE", "1.6\n" + square) + section("VIA_KEEPOUT", square);
    EXPECT_TRUE(reader.readFile(folder.write("b.emn", text)));
    EXPECT_EQ(reader.getError(), "More than 4 outline points: the others are left out.");
    EXPECT_EQ(stored(reader.getBoard().getOutline()), openSquare);
    EXPECT_TRUE(reader.getBoard().beginKeepouts()->getOutline().empty());
}

TEST(IDFPointLimit, ArcCountsAsItsPoints) {
    const std::string circle = section("VIA_KEEPOUT", "0 1 1 0\n0 2 1 360\n");
    const TestSupport::TempFolder folder;
    EDA::IDFReader enough(limitOf(38)), tooFew(limitOf(37));
    EXPECT_TRUE(enough.readFile(folder.write("b.emn", boardHeader + circle)));
    EXPECT_EQ(enough.getError(), "");
    EXPECT_TRUE(tooFew.readFile(folder.path("b.emn")));
    EXPECT_EQ(tooFew.getError(), "More than 37 outline points: the others are left out.");
}

TEST(IDFPointLimit, HoldsForEachRead) {
    EDA::IDFReader reader(limitOf(5));
    const TestSupport::TempFolder folder;
    const std::string file = folder.write("b.emn", boardHeader + section("VIA_KEEPOUT", square));
    EXPECT_TRUE(reader.readFile(file));
    EXPECT_TRUE(reader.readFile(file));
    EXPECT_EQ(reader.getError(), "");
    EXPECT_EQ(stored((reader.getBoard().beginKeepouts() + 1)->getOutline()), openSquare);
}

TEST(IDFPointLimit, OtherFailuresStandBelowItsLine) {
    EDA::IDFReader reader(limitOf(1));
    const TestSupport::TempFolder folder;
    EXPECT_FALSE(reader.readFile(folder.write("b.emn", section("VIA_KEEPOUT", square))));
    EXPECT_EQ(reader.getError(),
              "More than 1 outline points: the others are left out.\nMissing IDF file header!");
}

TEST(IDFPointLimit, IsFarAboveRealDesigns) { EXPECT_EQ(EDA::IDFReaderLimits().points, 50'000'000u); }

} // namespace
