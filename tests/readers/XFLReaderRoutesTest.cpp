// The nets of an XFL file: every keyword, in both modes.
#include "readers/XFLTestSupport.h"

namespace {

using namespace XFLTest;

// What a row makes on layer 2 of the stack, in a net of its own, beside a square on each layer.
struct RouteCase {
    const char *name;
    const char *row;
    const char *points;     // of the item; "none": no item
    const char *bodyPoints; // the same in a component; null: as on a board
};

void PrintTo(const RouteCase &route, std::ostream *stream) { *stream << route.name; }

const RouteCase routeCases[] = {
    {"Shape", "shape 2 1 10 20 0 N", "8,19 12,19 12,21 8,21", nullptr},
    {"ShapeTurned", "shape 2 1 10 20 90 N", "11,18 11,22 9,22 9,18", nullptr},
    {"ShapeWithoutARotation", "shape 2 1 10 20", "8,19 12,19 12,21 8,21", nullptr},
    {"ShapeWithoutAPlace", "shape 2 1", "-2,-1 2,-1 2,1 -2,1", nullptr},
    {"ShapeUnknown", "shape 2 99 10 20 0 N", "", nullptr},
    {"ShapeWithoutANumber", "shape 2", "", nullptr},
    {"Polygon", "polygon 2 0 0 3 0 3 1", "0,0 3,0 3,1", nullptr},
    {"PolygonInABlock", "polygon 2 {\n0 0 3 0\n3 1\n}", "0,0 3,0 3,1", nullptr},
    {"PolygonOfNothing", "polygon 2", "", nullptr},
    {"Composite", "composite 2 0 0 arc 2 0 1 0 3 3", "0,0 2,0>1,0 3,3", nullptr},
    {"Rectangle", "rectangle 2 4 2 10 20", "8,19 12,19 12,21 8,21", nullptr},
    {"RectangleInABlock", "rectangle 2 4 {\n2 10\n20 }", "8,19 12,19 12,21 8,21", nullptr},
    {"RectangleOfItsPlaceAlone", "rectangle 2 10 20", "5,10 15,10 15,30 5,30", nullptr},
    {"RectangleOfOneNumber", "rectangle 2 10", "", nullptr},
    {"Square", "square 2 4 10 20", "8,18 12,18 12,22 8,22", nullptr},
    {"SquareOfOneNumber", "square 2 4", "", nullptr},
    {"Circle", "circle 2 4 10 20", "8,18 12,22@180 8,18@180", nullptr},
    {"CircleOfOneNumber", "circle 2 4", "-2,-2 2,2@180 -2,-2@180", nullptr},
    {"Diamond", "diamond 2 4 2 10 20", "", nullptr},
    {"Annular", "annular 2 4 2 10 20", "", nullptr},
    {"Path", "path 2 0.5 0 0 4 0", "0,0 4,0", "0,-0.25 4,-0.25 4,0.25 0,0.25"},
    {"PathInABlock", "path 2 1 {\n0 0\n4 0\n}", "0,0 4,0", "0,-0.5 4,-0.5 4,0.5 0,0.5"},
    {"PathWithoutAWidth", "path 2 0 0 0 4 0", "0,0 4,0", ""},
    {"PathOfANegativeWidth", "path 2 -1 0 0 4 0", "0,0 4,0", ""},
    {"PathOfOnePoint", "path 2 1 3 3", "3,3", ""},
    {"PathOfOnePlace", "path 2 1 3 3 3 3", "3,3", ""},
    {"PathOfNothing", "path 2 1", "", ""},
    {"PathOfALayerAlone", "path 2", "", ""},
    {"BondWire", "bondwire 2 4 10 20", "none", nullptr},
    {"BondWireInABlock", "bondwire 2 {\nsquare 2 1 1 1\n}", "none", nullptr},
    {"Unknown", "triangle 2 4 10 20", "none", nullptr},
    {"UnknownInABlock", "triangle { 2 {\n4 10 }", "none", nullptr},
    {"InCapitals", "SQUARE 2 4 10 20", "none", nullptr},
    {"Oblong", "oblong 2 2 6 10 20", "none", nullptr},
    {"Bullet", "bullet 2 2 6 10 20", "none", nullptr},
    {"Finger", "finger 2 2 6 10 20", "none", nullptr},
    {"BraceThatOpens", "{", "none", nullptr},
    {"EmptyField", "\"\" 2 4 10 20", "none", nullptr},
    {"Via", "via 1 2 V 10 20", "none", nullptr}, // no such kind
};

const std::string shapes =
    section("shape", "1 rectangle 4 2\n2 circle 4 0\n3 rectangle 4 4\n4 circle {\n}\n");

class XFLRouteRows : public XFLReaderTest, public testing::WithParamInterface<RouteCase> {
protected:
    static std::string text(const std::string &scale = "") {
        return scale + stack + shapes +
               section("route", std::string("A\n") + GetParam().row + "\n}\nB {\nsquare 1 1 0 0\n}\n");
    }
    static bool isNone() { return std::string(GetParam().points) == "none"; }
    static std::size_t numItems() { return isNone() ? 0 : 1; }
};

TEST_P(XFLRouteRows, BecomeTracesOfABoard) {
    const EDA::EDABoard &board = readBoard(text());
    const auto made = traces(board, 2);
    ASSERT_EQ(made.size(), numItems());
    EXPECT_EQ(traces(board, 1).at(0).getName(), "B"); // the row has left the net as it was
    EXPECT_EQ(board.numVias(1), 0u);
    if (isNone()) return;
    const bool isPath = std::string(GetParam().row).compare(0, 4, "path") == 0;
    EXPECT_EQ(drawn(made[0].getOutline()), GetParam().points);
    EXPECT_EQ(made[0].getName(), "A");
    EXPECT_EQ(made[0].isDefinedAsRoute(), isPath);
    EXPECT_EQ(board.getNthLayer(1).numNets(), 0u);
}

TEST_P(XFLRouteRows, BecomeBodiesOfAComponent) {
    const auto bodies = readBodies(text());
    ASSERT_EQ(bodies.size(), numItems() + 1);
    EXPECT_EQ(bodies.back().getName(), "B");
    EXPECT_EQ(heights(bodies.back()), "3 4");
    EXPECT_EQ(bodies.back().getMaterial(), "CU");
    if (isNone()) return;
    EXPECT_EQ(drawn(bodies[0]), GetParam().bodyPoints ? GetParam().bodyPoints : GetParam().points);
    EXPECT_EQ(bodies[0].getName(), "A");
    EXPECT_EQ(heights(bodies[0]), "0 1");
    EXPECT_EQ(bodies[0].getMaterial(), "CU3");
    EXPECT_FALSE(bodies[0].isHole());
}

TEST_P(XFLRouteRows, OnLayersThatAreNotThereAreLeftOut) {
    for (const char *layer : {"0", "-1", "-2", "3", "4", "x", "2147483647", "-2147483648", "99999999999"}) {
        std::string row = GetParam().row;
        const std::size_t at = row.find(" 2");
        if (at == std::string::npos) return;
        row.replace(at + 1, 1, layer);
        const std::string design =
            stack + shapes + section("route", "A\n" + row + "\n}\nB\nsquare 2 1 0 0\n}\n");
        const EDA::EDABoard &board = readBoard(design);
        EXPECT_EQ(board.getNthLayer(0).numTraces(), 0u) << row;
        EXPECT_EQ(board.getNthLayer(1).numTraces(), 1u) << row;
        EXPECT_EQ(readBodies(design).size(), 1u) << row;
    }
}

INSTANTIATE_TEST_SUITE_P(All, XFLRouteRows, testing::ValuesIn(routeCases),
                         [](const auto &test) { return std::string(test.param.name); });

class XFLNets : public XFLReaderTest {
protected:
    std::string names(const std::string &rows) {
        std::string all;
        for (const EDA::EDATrace &trace : traces(readBoard(stack + section("route", rows)), 1))
            all += "<" + trace.getName() + ">";
        return all;
    }
};

const std::string dot = "square 1 1 0 0\n";

TEST_F(XFLNets, BeginWithTheirNames) {
    EXPECT_EQ(names("A\n" + dot + "}\nB {\n" + dot + dot + "}\nC\n{\n" + dot + "}\n"), "<A><B><B><C>");
}

TEST_F(XFLNets, MayHaveTheNameOfAKeyword) {
    EXPECT_EQ(names("path\n" + dot + "}\n}\n" + dot + "}\n"), "<path><}>");
}

TEST_F(XFLNets, WithoutAFieldHaveNoName) {
    EXPECT_EQ(names("\"\"\n" + dot + "}\nB\n" + dot + "}\n"), "<><B>");
}

TEST_F(XFLNets, EndWithTheSection) { EXPECT_EQ(names("A\n" + dot + ".end\n.route\nB\n" + dot), "<A><B>"); }

TEST_F(XFLNets, EndOutsideANetWithTheSection) {
    const EDA::EDABoard &board = readBoard(stack + ".route\nA\n" + dot + "}\n.end\n.unit mm\n");
    EXPECT_EQ(board.getUnits(), "mm");
    EXPECT_EQ(readBoard(stack + ".route\n.end\n.unit mm\n").getUnits(), "mm");
    EXPECT_EQ(readBoard(stack + ".route\nA\n.end {\n.unit mm\n").getUnits(), "mm");
}

TEST_F(XFLNets, KeepABondWireToItself) {
    EXPECT_EQ(names("A\nbondwire 1 2 {\n0 0\n}\n" + dot + "bondwire x\n" + dot + "}\n"), "<A><A>");
}

TEST_F(XFLNets, SkipABlockUpToTheRowOfItsEnd) {
    EXPECT_EQ(names("A\nwave {\n" + dot + "{ x\ny } {\n" + dot + "}\nB\n" + dot + "}\n"), "<A><B>");
}

TEST_F(XFLNets, DoNotReadABlockBehindAVia) {
    // Only shapes and unknown words have blocks: here the brace ends the net.
    EXPECT_EQ(names("A\nvia 1 2 V 0 0 {\n" + dot + "}\nB\n" + dot + "}\n"), "<A><B>");
}

// Voids of every kind in a square of 8, and where they lie.
struct VoidCase {
    const char *name;
    const char *row;
    const char *points; // at 0,0
};

void PrintTo(const VoidCase &voidCase, std::ostream *stream) { *stream << voidCase.name; }

class XFLVoids : public XFLReaderTest, public testing::WithParamInterface<VoidCase> {};

TEST_P(XFLVoids, AreHolesInTheLastShapeOfTheLayer) {
    const EDA::EDABoard &board = readBoard(stack + net("square 1 9 9 9\nsquare 1 8 0 0\npath 1 1 0 0 1 0\n"
                                                       "square 2 8 0 0\n" +
                                                       std::string(GetParam().row) + "\n"));
    const auto made = traces(board, 1);
    ASSERT_EQ(made.size(), 3u);
    EXPECT_EQ(made[0].getOutline().numInternalOutlines(), 0);
    EXPECT_EQ(made[2].getOutline().numInternalOutlines(), 0);
    ASSERT_EQ(made[1].getOutline().numInternalOutlines(), 1);
    EXPECT_EQ(drawn(made[1].getOutline().beginInternalOutlines()[0]), GetParam().points);
    EXPECT_TRUE(made[1].getOutline().beginInternalOutlines()[0].isHole());
    EXPECT_EQ(traces(board, 2)[0].getOutline().numInternalOutlines(), 0);
}

TEST_P(XFLVoids, AreHolesInTheLastBodyOfAComponent) {
    const std::string text =
        stack + net("square 1 8 0 0\nsquare 2 8 0 0\n" + std::string(GetParam().row) + "\n");
    const auto bodies = readBodies(text);
    ASSERT_EQ(bodies.size(), 2u);
    EXPECT_EQ(bodies[0].numInternalOutlines(), 0);
    ASSERT_EQ(bodies[1].numInternalOutlines(), 1);
    EXPECT_EQ(drawn(bodies[1].beginInternalOutlines()[0]), GetParam().points);
    EXPECT_TRUE(bodies[1].beginInternalOutlines()[0].isHole());
}

TEST_P(XFLVoids, CountFromTheCornerOfAComponent) {
    const auto atOrigin = readBodies(stack + net("square 1 8 0 0\n" + std::string(GetParam().row) + "\n"));
    const auto moved = readBodies(stack + ".board_geom\nrectangle 40 20\n" +
                                  net("square 1 8 0 0\n" + std::string(GetParam().row) + "\n"));
    EDA::EDAOutline expected = atOrigin.back().beginInternalOutlines()[0];
    expected.moveBy(-20.0, 10.0);
    EXPECT_EQ(drawn(moved.back().beginInternalOutlines()[0]), drawn(expected));
}

TEST_P(XFLVoids, WithNothingToCutAreLeftOut) {
    const std::string text = stack + net(std::string(GetParam().row) + "\npath 1 1 0 0 4 0\n");
    EXPECT_EQ(traces(readBoard(text), 1).at(0).getOutline().numInternalOutlines(), 0);
    EXPECT_EQ(readBodies(text).at(0).numInternalOutlines(), 0);
    const EDA::EDABoard &board =
        readBoard(stack + net("path 1 1 0 0 4 0\n" + std::string(GetParam().row) + "\n"));
    EXPECT_EQ(traces(board, 1).at(0).getOutline().numInternalOutlines(), 0);
}

TEST_P(XFLVoids, OnLayersThatAreNotThereAreLeftOut) {
    for (const char *layer : {"0", "-1", "3", "x", "99999999999"}) {
        std::string row = GetParam().row;
        row.replace(row.find(" 1") + 1, 1, layer);
        const std::string text = stack + net("square 1 8 0 0\n" + row + "\n");
        EXPECT_EQ(traces(readBoard(text), 1).at(0).getOutline().numInternalOutlines(), 0) << row;
        EXPECT_EQ(readBodies(text).at(0).numInternalOutlines(), 0) << row;
    }
}

const VoidCase voidCases[] = {
    {"Polygon", "void_polygon 1 0 0 3 0 3 1", "0,0 3,0 3,1"},
    {"PolygonInABlock", "void_polygon 1 {\n0 0\n3 0\n3 1\n}", "0,0 3,0 3,1"},
    {"Composite", "void_composite 1 0 0 rarc 2 0 1 0", "0,0 2,0<1,0"},
    {"Rectangle", "void_rectangle 1 4 2 10 20", "8,19 12,19 12,21 8,21"},
    {"Square", "void_square 1 4 10 20", "8,18 12,18 12,22 8,22"},
    {"Circle", "void_circle 1 4 10 20", "8,18 12,22@180 8,18@180"},
    {"CircleOfOneNumber", "void_circle 1 4", "-2,-2 2,2@180 -2,-2@180"},
    {"Diamond", "void_diamond 1 4 2 10 20", ""},
    {"Annular", "void_annular 1 4 2 10 20", ""},
};

INSTANTIATE_TEST_SUITE_P(All, XFLVoids, testing::ValuesIn(voidCases),
                         [](const auto &test) { return std::string(test.param.name); });

class XFLPaths : public XFLReaderTest {};

TEST_F(XFLPaths, HaveAWidthInTheScale) {
    const EDA::EDABoard &board = readBoard(".scale 10\n" + stack + net("path 1 5 0 0 40 0\n"));
    const auto made = traces(board, 1);
    EXPECT_EQ(made[0].getRouteWidth(), 0.5);
    EXPECT_EQ(drawn(made[0].getOutline()), "0,0 4,0");
}

TEST_F(XFLPaths, WithoutAWidthAreRoutesToo) {
    const auto made = traces(readBoard(stack + net("path 1 0 0 0 4 0\n")), 1);
    EXPECT_TRUE(made[0].isDefinedAsRoute());
    EXPECT_EQ(made[0].getRouteWidth(), 0.0);
}

TEST_F(XFLPaths, WithArcsBecomeStraightBodies) {
    const auto bodies = readBodies(stack + net("path 1 1 0 0 rarc 10 0 5 0\n"));
    ASSERT_EQ(bodies.size(), 1u);
    EXPECT_GT(bodies[0].numPoints(), 30u);
    for (auto at = bodies[0].beginPoints(); at != bodies[0].endPoints(); ++at)
        EXPECT_FALSE(at->isArc());
    EXPECT_NEAR(bodies[0].getArea(), 3.14159265 * 5.0, 0.2);
}

TEST_F(XFLPaths, MayHaveVoidsAsBodies) {
    const auto bodies = readBodies(stack + net("path 1 4 0 0 10 0\nvoid_square 1 1 5 0\n"));
    EXPECT_EQ(bodies.at(0).numInternalOutlines(), 1);
}

class XFLVias : public XFLReaderTest {
protected:
    static std::string text(const std::string &kinds, const std::string &rows) {
        return stack + shapes + section("via", kinds) + net(rows);
    }
};

TEST_F(XFLVias, AreHolesBetweenTheirLayers) {
    const EDA::EDABoard &board = readBoard(text("V a b 2 0\n", "via 1 2 V 10 20\n"));
    ASSERT_EQ(board.numVias(0), 1u);
    const EDA::EDAVia &via = *board.beginVias();
    EXPECT_EQ(via.getName(), "V");
    EXPECT_EQ(via.getHoleType(), "PIN");
    EXPECT_TRUE(via.isPin());
    EXPECT_EQ(via.getXCentre(), 10.0);
    EXPECT_EQ(via.getYCentre(), 20.0);
    EXPECT_EQ(via.getDiameter(), 4.0);
    EXPECT_FALSE(via.isPlated());
    double low = 0.0, high = 0.0;
    via.getZDimensions(low, high);
    EXPECT_EQ(low, 1.0);
    EXPECT_EQ(high, 3.0);
}

TEST_F(XFLVias, AreDiscsOfAComponent) {
    const auto bodies = readBodies(text("V a b 2 0 0.5\n", "via 1 2 V 10 20\n"));
    ASSERT_EQ(bodies.size(), 1u);
    EXPECT_EQ(bodies[0].getName(), "V");
    EXPECT_EQ(drawn(bodies[0]), "7.5,17.5 12.5,22.5@180 7.5,17.5@180");
    EXPECT_EQ(heights(bodies[0]), "1 3");
    EXPECT_EQ(bodies[0].getMaterial(), "CU3");
}

TEST_F(XFLVias, GrowByAPlatingWithoutTheScale) {
    const EDA::EDABoard &board =
        readBoard(".scale 1000\n" + text("V a b 2 0 0.02\n", "via 1 2 V 1000 2000\n"));
    ASSERT_EQ(board.numVias(0), 1u);
    EXPECT_DOUBLE_EQ(board.beginVias()->getDiameter(), 0.004 + 0.04);
    EXPECT_EQ(board.beginVias()->getPlatingThickness(), 0.02);
    EXPECT_EQ(board.beginVias()->getPlatingStyle(), "Plated");
    EXPECT_EQ(board.beginVias()->getXCentre(), 1.0);
}

TEST_F(XFLVias, OfAPlatingThatIsTooThinHaveNone) {
    for (const char *plating : {"1e-6", "0", "-1", "x"}) {
        const EDA::EDABoard &board =
            readBoard(text(std::string("V a b 2 0 ") + plating + "\n", "via 1 2 V 0 0\n"));
        ASSERT_EQ(board.numVias(0), 1u);
        EXPECT_EQ(board.beginVias()->getDiameter(), 4.0) << plating;
        EXPECT_FALSE(board.beginVias()->isPlated()) << plating;
        EXPECT_EQ(board.beginVias()->getPlatingThickness(), 0.0) << plating;
    }
}

TEST_F(XFLVias, OfOneKindAreInstancesOfTheFirst) {
    const EDA::EDABoard &board =
        readBoard(text("V a b 2 0\nW a b 2 0\n", "via 1 2 V 0 0\nvia 1 2 V 5 6\nvia 2 1 W 7 8\n"));
    ASSERT_EQ(board.numVias(0), 1u);
    ASSERT_EQ(board.beginVias()->numInstances(), 2u);
    EXPECT_EQ(board.beginVias()->getInstanceXCentre(0), 5.0);
    EXPECT_EQ(board.beginVias()->getInstanceYCentre(0), 6.0);
    EXPECT_EQ(board.beginVias()->getInstanceName(0), "V");
    EXPECT_EQ(board.beginVias()->getInstanceName(1), "W");
}

TEST_F(XFLVias, OfOtherSizesAndPlatingsAreViasOfTheirOwn) {
    const EDA::EDABoard &board =
        readBoard(section("shape", "9 circle 5 0\n") + text("V a b 2 0\nW a b 9 0\nP a b 2 0 0.5\n",
                                                            "via 1 2 V 0 0\nvia 1 2 W 1 0\nvia 1 2 P 2 0\n"));
    ASSERT_EQ(board.numVias(0), 3u);
    EXPECT_EQ(board.beginVias()[2].getDiameter(), 5.0); // the size of W, but plated
}

TEST_F(XFLVias, OfAShapeThatIsNoCircleAreNone) {
    for (const char *shape : {"3", "99", "x"}) {
        const std::string design = text(std::string("V a b ") + shape + " 0\n", "via 1 2 V 0 0\n");
        EXPECT_EQ(readBoard(design).numVias(0), 0u);
        EXPECT_EQ(readBodies(design).size(), 0u);
    }
}

TEST_F(XFLVias, OfACircleWithoutANumberHaveNoSize) {
    EXPECT_EQ(readBoard(text("V a b 4 0\n", "via 1 2 V 0 0\n")).beginVias()->getDiameter(), 0.0);
}

// The name must not come to stand for a kind of shape 0.
TEST_F(XFLVias, OfAnUnknownKindAreNoneAndMakeNone) {
    const std::string design =
        stack + section("shape", "0 circle 4 0\n") + net("via 1 2 V 0 0\nvia 1 2 V 0 0\n");
    EXPECT_EQ(readBoard(design).numVias(1), 0u);
    EXPECT_TRUE(reader->readFile(folder.write("again.xfl", net("via 1 2 V 0 0\nvia\nvia 1\nvia 1 2\n"))));
    EXPECT_EQ(reader->getBoard().numVias(1), 0u);
    EXPECT_EQ(readBodies(design).size(), 0u);
}

TEST_F(XFLVias, OnLayersThatAreNotThereAreNone) {
    for (const char *span :
         {"0 2", "1 0", "-1 2", "1 3", "3 3", "x 2", "1 99999999999", "2147483647 2147483647"}) {
        const std::string design = text("V a b 2 0\n", std::string("via ") + span + " V 0 0\n");
        EXPECT_EQ(readBoard(design).numVias(0), 0u) << span;
        EXPECT_EQ(readBodies(design).size(), 0u) << span;
    }
}

TEST_F(XFLVias, OnLayersWithoutFacesAreNone) {
    // Three conductors with nothing between them: the file counts on dielectrics.
    const std::string conductors = ".layer\nA 1 C m d\nB 1 C m d\nC 1 C m d\n.end\n";
    const EDA::EDABoard &board = readBoard(conductors + shapes + section("via", "V a b 2 0\n") +
                                           net("via 1 2 V 0 0\nvia 1 3 V 0 0\nsquare 3 1 0 0\n"));
    EXPECT_EQ(board.numVias(1), 1u);
    EXPECT_EQ(board.getNthLayer(2).numTraces(), 1u);
}

TEST_F(XFLVias, MayLieOnOneLayer) {
    const EDA::EDABoard &board = readBoard(text("V a b 2 0\n", "via 1 1 V 0 0\n"));
    double low = 0.0, high = 0.0;
    board.beginVias()->getZDimensions(low, high);
    EXPECT_EQ(low, 4.0);
    EXPECT_EQ(high, 3.0);
}

} // namespace
