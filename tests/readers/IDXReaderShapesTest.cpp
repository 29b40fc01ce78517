// Shapes of an IDX document: polylines, arcs, circles, composite curves, and the transforms of elements.
#include "readers/IDXTestSupport.h"

namespace {

using namespace IDXTest;
using testing::ElementsAre;

class IDXShapes : public IDXReaderTest {
protected:
    // The outline of a component with one element of these curves.
    std::vector<StoredPoint> outlineOf(const std::string &definitions, const std::vector<std::string> &curves,
                                       const std::string &more = "") {
        EDA::IDXReader fresh;
        EXPECT_TRUE(fresh.readFile(folder.write(
            "shape.idx", document(definitions + curveSet("CS", curves) + shapeElement("E", "CS", more) +
                                  part("P", "AssemblyComponent", {"E"})))));
        error = fresh.getError();
        EXPECT_EQ(fresh.getBoard().numComponents(), 1u);
        return stored(fresh.getBoard().beginComponents()->getOutline());
    }
    std::string error;
};

const std::string ell = polyLine("ELL", "0,0 4,0 4,1 1,3"); // the same from no other side

std::string arc(const std::string &id, const char *from, const char *to, const char *angle) {
    return withId("Arc", id,
                  element("StartPoint", from) + element("EndPoint", to) + value("IncludeAngle", angle));
}

std::string composite(const std::string &id, const std::vector<std::string> &curves) {
    return withId("CompositeCurve", id, references("Curve", curves));
}

TEST_F(IDXShapes, APolylineIsItsPoints) {
    EXPECT_THAT(outlineOf(ell, {"ELL"}), ElementsAre(At(0, 0), At(4, 0), At(4, 1), At(1, 3)));
}

TEST_F(IDXShapes, APointThatIsNotThereIsTheOrigin) {
    EXPECT_THAT(
        outlineOf(point("A", 1, 1) + withId("PolyLine", "L", element("Point", "A") + element("Point", "B")),
                  {"L"}),
        ElementsAre(At(1, 1), At(0, 0)));
}

TEST_F(IDXShapes, AnArcIsItsStartAndItsEndWithTheAngle) {
    EXPECT_THAT(outlineOf(point("A", 1, 0) + point("B", 0, 1) + arc("R", "A", "B", "90"), {"R"}),
                ElementsAre(At(1, 0), At(0, 1, 90.0)));
}

TEST_F(IDXShapes, ACircleIsTwoHalves) {
    EXPECT_THAT(outlineOf(circle("C", 5, 7, 4), {"C"}),
                ElementsAre(At(3, 7), At(7, 7, 180.0), At(3, 7, 180.0)));
    EXPECT_THAT(outlineOf(circle("C", 5, 7, 4, "CenterPoint"), {"C"}),
                ElementsAre(At(3, 7), At(7, 7, 180.0), At(3, 7, 180.0)));
}

TEST_F(IDXShapes, ACircleOfNoSizeIsNothing) {
    EXPECT_THAT(outlineOf(circle("C", 5, 7, 1e-9), {"C"}), testing::IsEmpty());
    EXPECT_THAT(outlineOf(circle("C", 5, 7, -4), {"C"}), testing::IsEmpty());
    EXPECT_EQ(error, "");
}

TEST_F(IDXShapes, CurvesOfAnElementFollowEachOther) {
    EXPECT_THAT(
        outlineOf(polyLine("L", "0,0 1,0") + point("B", 1, 2) + point("C", 0, 2) + arc("R", "B", "C", "-90"),
                  {"L", "R"}),
        ElementsAre(At(0, 0), At(1, 0), At(1, 2), At(0, 2, -90.0)));
}

TEST_F(IDXShapes, WhereArcsMeetTwoPointsStandAtOnePlace) {
    EXPECT_THAT(outlineOf(point("A", 1, 0) + point("B", 0, 1) + point("C", -1, 0) + arc("R", "A", "B", "90") +
                              arc("S", "B", "C", "90"),
                          {"R", "S"}),
                ElementsAre(At(1, 0), At(0, 1, 90.0), At(0, 1), At(-1, 0, 90.0)));
}

TEST_F(IDXShapes, OfOneIdThePolylineCountsBeforeTheArcAndTheCircle) {
    EXPECT_THAT(outlineOf(polyLine("X", "0,0 1,0") + circle("X", 5, 5, 2), {"X"}),
                ElementsAre(At(0, 0), At(1, 0)));
    EXPECT_THAT(outlineOf(point("A", 1, 0) + arc("X", "A", "A", "9") + circle("X", 5, 5, 2), {"X"}),
                ElementsAre(At(1, 0), At(1, 0, 9.0)));
    EXPECT_THAT(outlineOf(circle("X", 5, 5, 2) + composite("X", {"X"}), {"X"}), testing::SizeIs(3));
}

TEST_F(IDXShapes, CompositeCurvesNest) {
    EXPECT_THAT(outlineOf(polyLine("L", "0,0 1,0") + polyLine("M", "1,1 0,1") + composite("IN", {"M"}) +
                              composite("OUT", {"L", "IN"}),
                          {"OUT"}),
                ElementsAre(At(0, 0), At(1, 0), At(1, 1), At(0, 1)));
    EXPECT_EQ(error, "");
}

TEST_F(IDXShapes, CurvesThatAreNotThereAreReported) {
    EXPECT_THAT(outlineOf(polyLine("L", "0,0 1,0") + composite("C", {"GONE", "L"}), {"C", "LOST"}),
                ElementsAre(At(0, 0), At(1, 0)));
    EXPECT_EQ(error, "Failed to find curve element GONE\nFailed to find curve element LOST\n");
}

TEST_F(IDXShapes, ACurveThatContainsItselfCountsAsNotFound) {
    EXPECT_THAT(outlineOf(composite("A", {"A", "L"}) + polyLine("L", "0,0 1,0"), {"A"}),
                ElementsAre(At(0, 0), At(1, 0)));
    EXPECT_EQ(error, "Failed to find curve element A\n");
    outlineOf(composite("A", {"B"}) + composite("B", {"C"}) + composite("C", {"A"}), {"A"});
    EXPECT_EQ(error, "Failed to find curve element A\n");
}

TEST_F(IDXShapes, ACurveMayComeBackBesideItself) {
    outlineOf(composite("A", {"B", "B"}) + composite("B", {"L"}) + polyLine("L", "0,0 1,0"), {"A", "B"});
    EXPECT_EQ(error, "");
}

TEST_F(IDXShapes, CompositeCurvesNestUpTo64Levels) {
    std::string chain = polyLine("C0", "0,0 1,0");
    for (int i = 1; i <= 65; ++i)
        chain += composite("C" + std::to_string(i), {"C" + std::to_string(i - 1)});
    EXPECT_THAT(outlineOf(chain, {"C64"}), testing::SizeIs(2));
    EXPECT_EQ(error, "");
    EXPECT_THAT(outlineOf(chain, {"C65"}), testing::IsEmpty());
    EXPECT_EQ(error, "Failed to find curve element C1\n");
}

TEST_F(IDXShapes, ATreeThatDoublesAtEachLevelIsCutOffWithOneMessage) {
    std::string tree = circle("C0", 0, 0, 0);
    for (int i = 1; i <= 40; ++i) {
        const std::string below = "C" + std::to_string(i - 1);
        tree += composite("C" + std::to_string(i), {below, below});
    }
    outlineOf(tree, {"C40"});
    EXPECT_THAT(error, testing::MatchesRegex("Failed to find curve element C[0-9]+\n"));
}

// Transforms of elements, of which the part is the same from no other side. Places are worked out by hand.

TEST_F(IDXShapes, AnElementIsShifted) {
    EXPECT_THAT(outlineOf(ell, {"ELL"}, turned(1, 0, 0, 1, 10, 20)),
                ElementsAre(At(10, 20), At(14, 20), At(14, 21), At(11, 23)));
}

TEST_F(IDXShapes, AnElementIsTurned) {
    EXPECT_THAT(outlineOf(ell, {"ELL"}, turned(0, -1, 1, 0, 10, 20)),
                ElementsAre(At(10, 20), At(10, 24), At(9, 24), At(7, 21)));
    const double c = std::sqrt(3.0) / 2, s = 0.5; // 30 degrees
    EXPECT_THAT(outlineOf(ell, {"ELL"}, turned(c, -s, s, c, 0, 0)),
                ElementsAre(At(0, 0), At(4 * c, 2), At(4 * c - 0.5, 2 + c), At(c - 1.5, 0.5 + 3 * c)));
}

TEST_F(IDXShapes, AMirroringElementIsMirroredOnceMoreAboutTheYAxis) {
    // Mirrored in X by the file and back again by the reader: only the shift is left.
    EXPECT_THAT(outlineOf(ell, {"ELL"}, turned(-1, 0, 0, 1, 10, 20)),
                ElementsAre(At(10, 20), At(14, 20), At(14, 21), At(11, 23)));
    // Mirrored in Y by the file: with the mirror in X it is half a turn.
    EXPECT_THAT(outlineOf(ell, {"ELL"}, turned(1, 0, 0, -1, 10, 20)),
                ElementsAre(At(10, 20), At(6, 20), At(6, 19), At(9, 17)));
}

TEST_F(IDXShapes, AMirroredAndTurnedElementKeepsTheTurn) {
    // x' = y, y' = x, then x negated: (-y, x), a quarter turn.
    EXPECT_THAT(outlineOf(ell, {"ELL"}, turned(0, 1, 1, 0, 10, 20)),
                ElementsAre(At(10, 20), At(10, 24), At(9, 24), At(7, 21)));
}

TEST_F(IDXShapes, AMirrorLeavesTheAnglesOfArcs) {
    const std::string quarter = point("A", 1, 0) + point("B", 0, 1) + arc("R", "A", "B", "90");
    EXPECT_THAT(outlineOf(quarter, {"R"}, turned(1, 0, 0, -1, 0, 0)),
                ElementsAre(At(-1, 0), At(0, -1, 90.0)));
    EXPECT_THAT(outlineOf(circle("C", 3, 0, 2), {"C"}, turned(0, -1, 1, 0, 0, 0)),
                ElementsAre(At(0, 2), At(0, 4, 180.0), At(0, 2, 180.0)));
}

TEST_F(IDXShapes, APlaceThatIsNotFiniteIsZero) {
    EXPECT_THAT(outlineOf(polyLine("L", "1e300,1 2,2"), {"L"}, turned(1e300, 0, 0, 1, 0, 0)),
                ElementsAre(At(0, 1), At(2e300, 2)));
}

TEST_F(IDXShapes, EachElementHasATransformOfItsOwn) {
    readWell(polygon("A", "0,0 4,0 4,1", 0, 0, turned(1, 0, 0, 1, 1, 1)) +
             polygon("B", "0,0 4,0 4,1", 0, 0, turned(0, -1, 1, 0, 0, 0)) +
             part("P", "AssemblyComponent", {"A", "B"}));
    EXPECT_THAT(stored(component().getOutline()), ElementsAre(At(1, 1), At(5, 1), At(5, 2)));
    EXPECT_THAT(stored(component().getOutline().beginInternalOutlines()[0]),
                ElementsAre(At(0, 0), At(0, 4), At(-1, 4)));
}

TEST_F(IDXShapes, AnElementWithoutItsCurvesIsEmpty) {
    readWell(shapeElement("E", "NONE") + part("P", "AssemblyComponent", {"E", "GONE"}));
    EXPECT_TRUE(component().getOutline().empty());
    EXPECT_EQ(component().getOutline().numInternalOutlines(), 1);
}

} // namespace
