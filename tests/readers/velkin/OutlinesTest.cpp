// The board's edge, shapes from records, and outlines whose holes are cut in.
#include "VelkinBench.h"

using namespace VelkinTest;

namespace {

class VelkinOutlines : public VelkinBench {
protected:
    EDA::EDAOutline &edge() { return board().getOutline(); }
    EDA::EDAOutline &cutOut(int index) { return edge().beginInternalOutlines()[index]; }

    // The first trace of a layer of one element.
    const EDA::EDAOutline &trace() { return board().getNthLayer(0).beginTraces()->getOutline(); }
    bool convertTrace(const std::string &points) {
        return convert(("layer A type=0\nsolid S " + points).c_str());
    }
    const EDA::EDAOutline &inner(int index) { return trace().beginInternalOutlines()[index]; }

    // An outline by shapes, each of which gives its points by itself.
    static QvDbWrap::outlineData shapeOf(const QvDbWrap::Shape &shape) { return {&shape, {}}; }
};

QvDbWrap::GeomObj object(std::vector<QvDbWrap::_mFPOINT> points) {
    return QvDbWrap::GeomObj(std::move(points));
}

QvDbWrap::Shape shape(std::vector<QvDbWrap::GeomObj> objects) {
    using namespace QvDbWrap;
    return Shape(ShapeElemCont({ShapeElem(GeomObjCont(std::move(objects)))}));
}

// A square of 10 with a square hole of 2, joined by a slit.
const char *const slitSquare = "0,0 10,0 10,10 0,10 0,5 4,5 4,6 6,6 6,4 4,4 4,5 0,5";

} // namespace

TEST_F(VelkinOutlines, TheFirstPieceIsTheEdgeAndTheOthersAreCutOuts) {
    EXPECT_TRUE(convert("edge 0,0 9,0 9,9 0,9\nedge 1,1 2,1 2,2\nedge kind=0 4,4 6,7"));
    EXPECT_EQ(edge().numPoints(), 4u);
    EXPECT_FALSE(edge().isHole());
    ASSERT_EQ(edge().numInternalOutlines(), 2);
    EXPECT_EQ(cutOut(0).numPoints(), 3u);
    EXPECT_TRUE(cutOut(0).isHole());
    EXPECT_EQ(cutOut(1).getArea(), 6.0);
    EXPECT_TRUE(cutOut(1).isHole());
}

TEST_F(VelkinOutlines, PiecesOfOneRecordAreNumberedOnLikeThoseOfSeveral) {
    script().layout = layoutOf("edge 0,0 9,0 9,9 0,9\nedge 1,1 2,1 2,2\nedge 4,4 6,4 6,7");
    auto &outlines = script().layout.outlines;
    outlines[0].elements.push_back(outlines[1].elements[0]);
    outlines.erase(outlines.begin() + 1);
    EXPECT_TRUE(readDesign("board.brd"));
    EXPECT_EQ(edge().numInternalOutlines(), 2);
}

TEST_F(VelkinOutlines, TheRoleOfTheLastPieceIsThatOfTheWholeEdge) {
    EXPECT_TRUE(convert("edge 0,0 9,0 9,9 0,9\nedge role=1 1,1 2,1 2,2"));
    EXPECT_TRUE(edge().isHole());
    EXPECT_TRUE(convert("edge role=1 0,0 9,0 9,9 0,9\nedge 1,1 2,1 2,2"));
    EXPECT_FALSE(edge().isHole());
}

TEST_F(VelkinOutlines, ABoxHasItsCornersInAFixedOrder) {
    EXPECT_TRUE(convert("edge kind=0 1,2 3,5"));
    EXPECT_EQ(edge().getPoints(false), (EDA::EDAOutline::PointList{{1, 2}, {1, 5}, {3, 5}, {3, 2}}));
}

TEST_F(VelkinOutlines, ABoxOfAnotherNumberOfPointsIsEmpty) {
    for (const char *points : {"", "1,2", "1,2 3,4 5,6"}) {
        EXPECT_TRUE(convert((std::string("layer A type=0\nsolid S kind=0 ") + points).c_str()));
        EXPECT_TRUE(trace().empty()) << points;
    }
}

TEST_F(VelkinOutlines, CirclesAndUnknownKindsAreEmptyOutsideVias) {
    for (const char *kind : {"2", "3", "-1"}) {
        EXPECT_TRUE(
            convert((std::string("layer A type=0\nsolid S radius=1 0,0 1,0 1,1 kind=") + kind).c_str()));
        EXPECT_TRUE(trace().empty()) << kind;
    }
}

TEST_F(VelkinOutlines, PointsThatAddNothingToTheShapeAreRemoved) {
    EXPECT_TRUE(convertTrace("0,0 1,0 2,0 4,0 4,3 4,5 4,3 0,3 0,0"));
    EXPECT_EQ(trace().numPoints(), 4u);
}

TEST_F(VelkinOutlines, ShapesGiveTheEdgePointByPoint) {
    const QvDbWrap::Shape board_shape =
        shape({object({{0, 0}, {9, 0}, {9, 9}, {0, 9}}), object({{1, 1}, {2, 1}, {2, 2}})});
    const QvDbWrap::Shape more = shape({object({{4, 4}, {5, 4}, {6, 4}, {6, 6}})});
    script().layout = {};
    script().layout.outlines = {shapeOf(board_shape), shapeOf(more)};
    EXPECT_TRUE(readDesign("board.brd"));
    EXPECT_EQ(edge().numPoints(), 4u);
    ASSERT_EQ(edge().numInternalOutlines(), 2);
    EXPECT_EQ(cutOut(0).numPoints(), 3u);
    // Cleaned behind the last piece.
    EXPECT_EQ(cutOut(1).numPoints(), 3u);
}

TEST_F(VelkinOutlines, AShapeCountsInPlaceOfTheElementsBesideIt) {
    const QvDbWrap::Shape triangle = shape({object({{0, 0}, {9, 0}, {9, 9}})});
    script().layout = layoutOf("edge 0,0 5,0 5,5 0,5");
    script().layout.outlines[0].shape = &triangle;
    EXPECT_TRUE(readDesign("board.brd"));
    EXPECT_EQ(edge().numPoints(), 3u);
}

TEST_F(VelkinOutlines, ShapesAndElementsMayBeMixed) {
    const QvDbWrap::Shape square = shape({object({{0, 0}, {9, 0}, {9, 9}, {0, 9}, {0, 5}})});
    script().layout = layoutOf("edge 1,1 2,1 2,2\nedge 4,4 6,4 6,7");
    script().layout.outlines.insert(script().layout.outlines.begin(), shapeOf(square));
    EXPECT_TRUE(readDesign("board.brd"));
    EXPECT_EQ(edge().numPoints(), 4u);
    EXPECT_EQ(edge().numInternalOutlines(), 2);
}

TEST_F(VelkinOutlines, AnEmptyShapeIsNoPiece) {
    const QvDbWrap::Shape nothing;
    script().layout = layoutOf("edge 0,0 5,0 5,5 0,5");
    script().layout.outlines.insert(script().layout.outlines.begin(), shapeOf(nothing));
    EXPECT_TRUE(readDesign("board.brd"));
    EXPECT_EQ(edge().numPoints(), 4u);
}

TEST_F(VelkinOutlines, PiecesWithoutPointsLeaveNoGapInTheOthers) {
    EXPECT_TRUE(convert("edge 0,0 9,0 9,9 0,9\nedge\nedge kind=0 1,1\nedge kind=5 1,1 2,2\nedge 1,1 2,1 2,2\n"
                        "edge 4,4 6,4 6,7"));
    ASSERT_EQ(edge().numInternalOutlines(), 2);
    EXPECT_EQ(cutOut(0).numPoints(), 3u);
    EXPECT_EQ(cutOut(1).numPoints(), 3u);
}

TEST_F(VelkinOutlines, PiecesWithoutPointsAreNoData) {
    EXPECT_FALSE(convert("edge\nedge kind=0 1,1 2,2 3,3\nedge kind=7 1,1"));
    EXPECT_EQ(error(), "No data read from the file.");
    EXPECT_FALSE(convert(""));
    const QvDbWrap::Shape pointless = shape({object({}), object({})});
    script().layout.outlines = {shapeOf(pointless)};
    EXPECT_FALSE(readDesign("board.brd"));
}

TEST_F(VelkinOutlines, APieceBehindOneWithoutPointsIsStillNoEdge) {
    EXPECT_TRUE(convert("edge\nedge 0,0 9,0 9,9 0,9"));
    EXPECT_TRUE(edge().empty());
    ASSERT_EQ(edge().numInternalOutlines(), 1);
    EXPECT_EQ(cutOut(0).numPoints(), 4u);
}

TEST_F(VelkinOutlines, AHoleCutInByASlitIsFound) {
    EXPECT_TRUE(convertTrace(slitSquare));
    EXPECT_EQ(trace().getArea(), 100.0);
    EXPECT_EQ(trace().numPoints(), 4u);
    ASSERT_EQ(trace().numInternalOutlines(), 1);
    EXPECT_TRUE(inner(0).isHole());
    EXPECT_EQ(inner(0).getArea(), 4.0);
    EXPECT_EQ(inner(0).numPoints(), 4u);
}

TEST_F(VelkinOutlines, AHoleCutIntoTheEdgeIsACutOut) {
    EXPECT_TRUE(convert((std::string("edge ") + slitSquare).c_str()));
    EXPECT_EQ(edge().numPoints(), 4u);
    ASSERT_EQ(edge().numInternalOutlines(), 1);
    EXPECT_EQ(cutOut(0).getArea(), 4.0);
}

TEST_F(VelkinOutlines, HolesOnASlitKeepNameAndMaterialOfTheConductor) {
    EXPECT_TRUE(convert((std::string("layer A type=0 cu=copper\nsolid S ") + slitSquare).c_str()));
    EXPECT_EQ(trace().getMaterial(), "copper");
    EXPECT_EQ(board().getNthLayer(0).beginTraces()->getName(), "S");
}

TEST_F(VelkinOutlines, SeveralHolesOnSlitsAreFound) {
    EXPECT_TRUE(
        convertTrace("0,0 20,0 20,10 0,10 0,5 4,5 4,6 6,6 6,4 4,4 4,5 0,5 0,3 10,3 10,2 12,2 12,3 10,3 0,3"));
    EXPECT_EQ(trace().getArea(), 200.0);
    EXPECT_EQ(trace().numInternalOutlines(), 2);
}

TEST_F(VelkinOutlines, AHoleThatTouchesTheEdgeInAPointIsFoundWithoutThatPoint) {
    // A diamond that hangs on the lower edge at 5,0.
    EXPECT_TRUE(convertTrace("0,0 5,0 4,1 5,2 6,1 5,0 10,0 10,10 0,10"));
    EXPECT_EQ(trace().getArea(), 100.0);
    ASSERT_EQ(trace().numInternalOutlines(), 1);
    EXPECT_TRUE(inner(0).isHole());
    EXPECT_EQ(inner(0).getArea(), 1.0);
}

TEST_F(VelkinOutlines, ATouchingHoleIsFoundAlsoBesideOneOnASlit) {
    EXPECT_TRUE(convertTrace("0,0 5,0 4,1 5,2 6,1 5,0 10,0 10,10 0,10 0,5 4,5 4,6 6,6 6,4 4,4 4,5 0,5"));
    EXPECT_EQ(trace().getArea(), 100.0);
    ASSERT_EQ(trace().numInternalOutlines(), 2);
    EXPECT_EQ(inner(0).getArea(), 4.0);
    EXPECT_EQ(inner(1).getArea(), 1.0);
}

TEST_F(VelkinOutlines, PiecesOfOneOutlineBecomeIslands) {
    // Two squares joined by a line that is walked both ways; the second has a hole on a slit.
    EXPECT_TRUE(
        convertTrace("0,0 10,0 10,5 20,5 20,0 30,0 30,10 20,10 20,7 22,7 22,8 24,8 24,6 22,6 22,7 20,7 "
                     "20,5 10,5 10,10 0,10"));
    EXPECT_EQ(trace().getArea(), 100.0);
    ASSERT_EQ(trace().numInternalOutlines(), 1);
    EXPECT_FALSE(inner(0).isHole());
    EXPECT_EQ(inner(0).getArea(), 100.0);
    ASSERT_EQ(inner(0).numInternalOutlines(), 1);
    EXPECT_TRUE(inner(0).beginInternalOutlines()->isHole());
    EXPECT_EQ(inner(0).beginInternalOutlines()->getArea(), 4.0);
}

TEST_F(VelkinOutlines, AnOutlineWithoutAreaStandsAsItIs) {
    EXPECT_TRUE(convertTrace("0,0 1,0 2,0 1,0"));
    EXPECT_EQ(trace().numPoints(), 4u);
}

TEST_F(VelkinOutlines, AFigureOfEightBecomesTwoPieces) {
    EXPECT_TRUE(convertTrace("5,5 10,0 10,10 5,5 0,10 0,0 2,2 5,5"));
    ASSERT_EQ(trace().numInternalOutlines(), 1);
    EXPECT_EQ(trace().getArea() + inner(0).getArea(), 50.0);
}
