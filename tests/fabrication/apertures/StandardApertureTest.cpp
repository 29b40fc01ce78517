// Shapes of the standard templates.
#include "ShapeSupport.h"

using namespace ShapeTests;

namespace {

// The note that goes with a definition of which nothing can be made.
std::string refusal(std::string_view letter, std::vector<double> const &modifiers) {
    Notes notes;
    Shape const shape = ApertureMaker(1.0, notes).standard(letter, modifiers, 7);
    EXPECT_TRUE(shape.isNothing());
    if (notes.list().size() != 1) return "";
    EXPECT_EQ(notes.list()[0].kind, NoteKind::LeftOut);
    EXPECT_EQ(notes.list()[0].line, 7U);
    return notes.list()[0].what;
}

} // namespace

TEST(StandardAperture, ACircleIsADiscOfItsDiameter) {
    Shape const shape = standard("C", {0.5});
    EXPECT_EQ(shape.kind, Shape::Kind::Circle);
    EXPECT_EQ(shape.width, 0.5);
}

TEST(StandardAperture, LengthsAreInTheUnitOfTheFile) {
    Notes notes;
    Shape const shape = ApertureMaker(25.4, notes).standard("R", {0.5, 1.0}, 1);
    EXPECT_EQ(shape.kind, Shape::Kind::Rectangle);
    EXPECT_DOUBLE_EQ(shape.width, 12.7);
    EXPECT_DOUBLE_EQ(shape.height, 25.4);
}

TEST(StandardAperture, VerticesAndRotationsHaveNoUnit) {
    Notes notes;
    Shape const shape = ApertureMaker(25.4, notes).standard("P", {1.0, 4, 45}, 1);
    EXPECT_NEAR(areaOf(shape), 25.4 * 25.4 / 2, 1e-9);
    EXPECT_TRUE(covers(shape, 8.9, 8.9));
}

TEST(StandardAperture, AnObroundKeepsItsKind) {
    EXPECT_EQ(standard("O", {2, 1}).kind, Shape::Kind::Obround);
    EXPECT_NEAR(areaOf(standard("O", {2, 1})), 1 + pi / 4, 0.01);
    EXPECT_NEAR(areaOf(standard("O", {1, 3})), 2 + pi / 4, 0.01);
}

TEST(StandardAperture, AnObroundAsWideAsHighIsADisc) {
    EXPECT_EQ(standard("O", {2, 2}).kind, Shape::Kind::Circle);
}

TEST(StandardAperture, APolygonHasItsFirstVertexOnTheAxisOfItsRotation) {
    Shape const shape = standard("P", {2, 3, 90});
    ASSERT_EQ(shape.kind, Shape::Kind::Pieces);
    ASSERT_EQ(shape.pieces.size(), 1U);
    EXPECT_EQ(shape.pieces[0].outer.size(), 3U);
    EXPECT_TRUE(covers(shape, 0, 0.99));
    EXPECT_FALSE(covers(shape, 0.9, 0));
}

TEST(StandardAperture, ARoundHoleIsCutOut) {
    Shape const shape = standard("C", {2, 1});
    EXPECT_EQ(shape.kind, Shape::Kind::Pieces);
    EXPECT_FALSE(covers(shape, 0, 0));
    EXPECT_TRUE(covers(shape, 0.75, 0));
    EXPECT_NEAR(areaOf(shape), pi * 0.75, 0.03);
}

TEST(StandardAperture, TwoHoleModifiersAreARectangle) {
    Shape const shape = standard("R", {4, 4, 2, 1});
    EXPECT_NEAR(areaOf(shape), 14.0, 1e-9);
    EXPECT_FALSE(covers(shape, 0.9, 0.4));
    EXPECT_TRUE(covers(shape, 0.4, 0.9));
}

TEST(StandardAperture, AHoleOfAPolygonComesAfterItsRotation) {
    EXPECT_NEAR(areaOf(standard("P", {2, 4, 0, 0.5})), 2.0 - pi / 16, 0.01);
    EXPECT_FALSE(covers(standard("P", {2, 4, 0, 0.5}), 0, 0));
}

TEST(StandardAperture, AHoleOfNoSizeIsNone) { EXPECT_EQ(standard("C", {2, 0}).kind, Shape::Kind::Circle); }

TEST(StandardAperture, AHoleThatLeavesNothingIsTold) {
    EXPECT_EQ(refusal("C", {1, 2}), "apertures of which their hole leaves nothing");
}

TEST(StandardAperture, MissingModifiersAreTold) {
    EXPECT_EQ(refusal("C", {}), "apertures with missing or impossible modifiers");
    EXPECT_EQ(refusal("R", {1}), "apertures with missing or impossible modifiers");
    EXPECT_EQ(refusal("P", {1}), "apertures with missing or impossible modifiers");
}

TEST(StandardAperture, ImpossibleModifiersAreTold) {
    EXPECT_EQ(refusal("C", {-1}), "apertures with missing or impossible modifiers");
    EXPECT_EQ(refusal("C", {std::nan("")}), "apertures with missing or impossible modifiers");
    EXPECT_EQ(refusal("O", {1e300, 1}), "apertures with missing or impossible modifiers");
    EXPECT_EQ(refusal("P", {1, 4, 0, -1}), "apertures with missing or impossible modifiers");
}

TEST(StandardAperture, UnknownTemplatesAreTold) {
    EXPECT_EQ(refusal("T", {1}), "apertures of an unknown template");
    EXPECT_EQ(refusal("", {1}), "apertures of an unknown template");
}

TEST(StandardAperture, PolygonsHaveThreeToTenThousandVertices) {
    for (double const count : {2.0, 10001.0, 1e9, -3.0, 1e300}) {
        EXPECT_EQ(refusal("P", {1, count}), "polygon apertures with an impossible number of vertices");
    }
    EXPECT_EQ(standard("P", {1, 10000}).pieces[0].outer.size(), 10000U);
}

TEST(StandardAperture, ACircleOfNoSizeStaysACircle) {
    EXPECT_EQ(standard("C", {0}).kind, Shape::Kind::Circle);
    EXPECT_TRUE(piecesOf(standard("C", {0})).empty());
}

TEST(CurveEdges, SmallDiscsHaveThirtyTwo) { EXPECT_EQ(piecesOf(standard("C", {0.01}))[0].outer.size(), 32U); }

TEST(CurveEdges, LargeDiscsStayWithinTheTolerance) {
    Ring const ring = piecesOf(standard("C", {100}))[0].outer;
    double const sagitta = 50.0 * (1.0 - std::cos(pi / static_cast<double>(ring.size())));
    EXPECT_LE(sagitta, chordTolerance);
    EXPECT_GT(sagitta, 0.8 * chordTolerance);
}

TEST(CurveEdges, HugeDiscsAreBounded) { EXPECT_EQ(piecesOf(standard("C", {1e6}))[0].outer.size(), 2000U); }
