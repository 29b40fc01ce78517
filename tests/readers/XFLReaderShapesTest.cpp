// Every shape of an XFL file: its points, in both modes, and how shapes are written.
#include "readers/XFLTestSupport.h"

#include <cmath>

namespace {

using namespace XFLTest;

struct ShapeCase {
    const char *name;
    const char *shape; // type and parameters, for a place at 10,20
    const char *points;
};

void PrintTo(const ShapeCase &shapeCase, std::ostream *stream) { *stream << shapeCase.name; }

const ShapeCase shapeCases[] = {
    {"Rectangle", "rectangle 4 2", "8,19 12,19 12,21 8,21"},
    {"RectangleOfMore", "rectangle 4 2 9 9 9", "8,19 12,19 12,21 8,21"},
    {"RectangleOfOne", "rectangle 4", ""},
    {"Square", "square 4 0", "8,18 12,18 12,22 8,22"},
    {"SquareOfOne", "square 4", ""},
    {"Circle", "circle 4", "8,18 12,22@180 8,18@180"},
    {"CircleOfMore", "circle 4 1 1", "8,18 12,22@180 8,18@180"},
    {"Oblong", "oblong 2 6", "7,19 13,19 13,21 7,21"},
    {"OblongOfOne", "oblong 2", ""},
    {"Bullet", "bullet 2 6", "7,19 12,19 12,21@180 7,21"},
    {"BulletOfOne", "bullet 2", ""},
    {"Finger", "finger 2 6", "8,19 12,19 12,21@180 8,21 8,19@180"},
    {"FingerOfOne", "finger 2", ""},
    {"Polygon", "polygon 0 0 3 0 3 1", "10,20 13,20 13,21"},
    {"PolygonOfAnOddNumber", "polygon 0 0 3 0 3", "10,20 13,20"},
    {"PolygonOfOneNumber", "polygon 5", ""},
    {"Points", "composite 0 0 3 0 3 1", "10,20 13,20 13,21"},
    {"ClockwiseArc", "composite 0 0 arc 2 0 1 0", "10,20 12,20>11,20"},
    {"AnticlockwiseArc", "composite 0 0 rarc 2 0 1 0", "10,20 12,20<11,20"},
    {"ArcOfThreePoints", "composite 0 0 arc3 2 0 7 8 3 3", "10,20 12,20 13,23"},
    {"ArcWithoutACentre", "composite 0 0 1 1 arc 2 0 1", "10,20 11,21"},
    {"ArcOfThreePointsCutShort", "composite 0 0 1 1 arc3 2 0 1", "10,20 11,21"},
    {"ArcOfNothing", "composite 0 0 arc", "10,20"},
    {"PointWithoutY", "composite 0 0 3", "10,20"},
    {"UnknownWordAsAPlace", "composite 0 0 wave 2 4 1", "10,20 10,22 14,21"},
    {"WordAsANumber", "composite 0 arc 3 1", "10,20 13,21"},
    {"WordsInCapitals", "composite 0 0 ARC 2 4 1", "10,20 10,22 14,21"},
    {"Path", "path 0 0 rarc 2 0 1 0 3 3", "10,20 12,20<11,20 13,23"},
    {"VoidRectangle", "void_rectangle 4 2", "8,19 12,19 12,21 8,21"},
    {"VoidSquare", "void_square 4 0", "8,18 12,18 12,22 8,22"},
    {"VoidCircle", "void_circle 4", "8,18 12,22@180 8,18@180"},
    {"VoidOblong", "void_oblong 2 6", "7,19 13,19 13,21 7,21"},
    {"VoidBullet", "void_bullet 2 6", "7,19 12,19 12,21@180 7,21"},
    {"VoidFinger", "void_finger 2 6", "8,19 12,19 12,21@180 8,21 8,19@180"},
    {"VoidPolygon", "void_polygon 0 0 3 0 3 1", "10,20 13,20 13,21"},
    {"VoidComposite", "void_composite 0 0 arc 2 0 1 0", "10,20 12,20>11,20"},
    {"VoidPath", "void_path 0 0 1 1 2 0", ""},
    {"Diamond", "diamond 4 2", ""},
    {"Annular", "annular 4 2", ""},
    {"InCapitals", "RECTANGLE 4 2", ""},
    {"Unknown", "triangle 1 2 3 4 5 6", ""},
    {"NoNumber", "rectangle wide high", "10,20"},
    {"Negative", "rectangle -4 2", "12,19 8,19 8,21 12,21"},
    {"NumbersWithUnits", "rectangle 4mm 2mm", "8,19 12,19 12,21 8,21"},
    {"RepeatedPoints", "polygon 0 0 0 0 3 0 3 0 0 0", "10,20 13,20 10,20"},
};

class XFLShapes : public XFLReaderTest, public testing::WithParamInterface<ShapeCase> {
protected:
    static std::string text(const std::string &shape) {
        return stack + section("shape", "1 " + shape + "\n2 square 1 1\n") + net("shape 1 1 10 20 0\n");
    }
};

TEST_P(XFLShapes, AreTheirPointsOnABoard) {
    const auto made = traces(readBoard(text(GetParam().shape)), 1);
    ASSERT_EQ(made.size(), 1u);
    EXPECT_EQ(drawn(made[0].getOutline()), GetParam().points);
    EXPECT_EQ(made[0].getOutline().numInternalOutlines(), 0);
    EXPECT_FALSE(made[0].isDefinedAsRoute());
}

TEST_P(XFLShapes, AreTheirPointsInAComponent) {
    const auto bodies = readBodies(text(GetParam().shape));
    ASSERT_EQ(bodies.size(), 1u);
    EXPECT_EQ(drawn(bodies[0]), GetParam().points);
    EXPECT_FALSE(bodies[0].isHole());
}

TEST_P(XFLShapes, AreDividedByTheScale) {
    const std::string scaled = ".scale 0.5\n" + text(GetParam().shape);
    EDA::EDAOutline expected = traces(readBoard(text(GetParam().shape)), 1)[0].getOutline();
    EDA::EDAOutline twice;
    for (auto at = expected.beginPoints(); at != expected.endPoints(); ++at)
        if (at->centered)
            twice.addPoint(0, 2 * at->x, 2 * at->y, 2 * at->centreX, 2 * at->centreY, at->clockwise);
        else
            twice.addPoint(0, 2 * at->x, 2 * at->y, at->angle);
    EXPECT_EQ(drawn(traces(readBoard(scaled), 1)[0].getOutline()), drawn(twice));
}

// The same numbers in a block of several rows.
TEST_P(XFLShapes, MayBeWrittenInABlock) {
    std::istringstream words(GetParam().shape);
    std::string block, word;
    words >> word;
    block = word + " {\n";
    while (words >> word)
        block += "# }\n" + word + "\n";
    const auto made = traces(readBoard(text(block + "}")), 1);
    ASSERT_EQ(made.size(), 1u);
    EXPECT_EQ(drawn(made[0].getOutline()), GetParam().points);
}

INSTANTIATE_TEST_SUITE_P(All, XFLShapes, testing::ValuesIn(shapeCases),
                         [](const auto &test) { return std::string(test.param.name); });

// How the table of shapes is written.
class XFLShapeTable : public XFLReaderTest {
protected:
    // The points of the shape 7.
    std::string shape7(const std::string &rows) {
        const EDA::EDABoard &board = readBoard(stack + section("shape", rows) + net("shape 1 7 0 0 0\n"));
        return drawn(traces(board, 1).at(0).getOutline());
    }
};

TEST_F(XFLShapeTable, MayHaveItsPointsOnTheRowsThatFollow) {
    EXPECT_EQ(shape7("7 polygon {\n0 0 1 0\n1 1\n}\n"), "0,0 1,0 1,1");
}

TEST_F(XFLShapeTable, TakesFieldsAroundABlockAsParametersToo) {
    EXPECT_EQ(shape7("7 polygon 0 0 { 1 0 } 1 1\n"), "0,0 1,0 1,1");
    EXPECT_EQ(shape7("7 polygon 0 0 {\n1 0\n} 1 1\n8 square 1 1\n"), "0,0 1,0 1,1");
}

TEST_F(XFLShapeTable, ClosesABlockAtTheFirstBrace) {
    EXPECT_EQ(shape7("7 polygon { { 0 0\n{ 1 0\n1 1 }\n8 square 1 1\n}\n"), "0,0 1,0 1,1");
}

TEST_F(XFLShapeTable, KnowsBracesOnlyByThemselves) {
    EXPECT_EQ(shape7("7 polygon {0 1 {\n2} 3\n}\n"), "0,1 2,3");
}

TEST_F(XFLShapeTable, TakesAnEndRowInABlockAsParameters) {
    EXPECT_EQ(shape7("7 polygon {\n0 0\n.end 4\n}\n"), "0,0 0,4");
}

TEST_F(XFLShapeTable, KeepsTheLastShapeOfANumber) {
    EXPECT_EQ(shape7("7 square 2 0\n7 square 4 0\n"), "-2,-2 2,-2 2,2 -2,2");
    EXPECT_EQ(shape7("7 square 2 0\n7 nothing 0\n"), "");
}

TEST_F(XFLShapeTable, PassesOverRowsOfFewerThanThreeFields) {
    EXPECT_EQ(shape7("7\n7 square\n\"\"\n"), "");
    EXPECT_EQ(shape7("7 square 4 0\n7 circle\n"), "-2,-2 2,-2 2,2 -2,2");
}

TEST_F(XFLShapeTable, ReadsItsNumbersAsFarAsTheyAreOnes) {
    EXPECT_EQ(shape7("7.9 square 4 0\n"), "-2,-2 2,-2 2,2 -2,2");
    EXPECT_EQ(shape7("+7x square 4 0\n"), "-2,-2 2,-2 2,2 -2,2");
}

TEST_F(XFLShapeTable, TakesNumbersThatAreNoneOrTooLargeAsZero) {
    for (const char *id :
         {"x", "2147483648", "-2147483649", "99999999999999999999999", "4294967303", "\"\""}) {
        EXPECT_EQ(shape7(std::string(id) + " square 4 0\n"), "") << id;
        const EDA::EDABoard &board =
            readBoard(stack + section("shape", std::string(id) + " square 4 0\n") + net("shape 1 0 0 0 0\n"));
        EXPECT_EQ(traces(board, 1).at(0).getOutline().numPoints(), 4u) << id;
    }
}

TEST_F(XFLShapeTable, TakesNegativeNumbers) {
    const EDA::EDABoard &board =
        readBoard(stack + section("shape", "-2147483648 square 4 0\n") + net("shape 1 -2147483648 0 0 0\n"));
    EXPECT_EQ(traces(board, 1).at(0).getOutline().numPoints(), 4u);
}

TEST_F(XFLShapeTable, TurnsAShapeAboutItsPlace) {
    const EDA::EDABoard &board = readBoard(
        ".scale 2\n" + stack + section("shape", "1 polygon 0 0 4 0 4 2\n") + net("shape 1 1 20 40 90\n"));
    EXPECT_EQ(drawn(traces(board, 1)[0].getOutline()), "10,20 10,22 9,22");
}

TEST_F(XFLShapeTable, TurnsNoCentresOfArcs) {
    const EDA::EDABoard &board =
        readBoard(stack + section("shape", "1 composite 0 0 arc 2 0 1 0\n") + net("shape 1 1 0 0 180\n"));
    EXPECT_EQ(drawn(traces(board, 1)[0].getOutline()), "0,0 -2,0>1,0");
}

TEST_F(XFLShapeTable, HasMirrorsThatPlayNoPart) {
    for (const char *mirror : {"", " N", " Y", " MX"}) {
        const EDA::EDABoard &board = readBoard(stack + section("shape", "1 polygon 0 0 4 0 4 2\n") +
                                               net(std::string("shape 1 1 0 0 0") + mirror + "\n"));
        EXPECT_EQ(drawn(traces(board, 1)[0].getOutline()), "0,0 4,0 4,2") << mirror;
    }
}

TEST_F(XFLShapeTable, DrawsACircleLargerThanItIs) {
    const EDA::EDABoard &board =
        readBoard(stack + section("shape", "1 circle 2\n") + net("shape 1 1 5 5 0\n") +
                  section("route", "NET\nshape 1 1 5 5 0\n}\n"));
    const EDA::EDAOutline circle = traces(board, 1)[0].getOutline();
    double x = 0.0, y = 0.0, diameter = 0.0;
    ASSERT_TRUE(circle.isCylinder(x, y, diameter, 8, 1e-5));
    EXPECT_NEAR(x, 5.0, 1e-9);
    EXPECT_NEAR(y, 5.0, 1e-9);
    EXPECT_NEAR(diameter, 2.0 * std::sqrt(2.0), 1e-9);
}

} // namespace
