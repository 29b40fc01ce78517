// Shapes of macros: primitives, exposure, variables.
#include "ShapeSupport.h"

#include "fabrication/Limits.h"

using namespace ShapeTests;

namespace {

// The only note of a macro.
std::string noteOf(std::vector<std::string> const &statements, Shape *shape = nullptr) {
    Notes notes;
    Shape const made = ApertureMaker(1.0, notes).fromMacro({"M", statements}, {}, 7);
    if (shape != nullptr) *shape = made;
    if (notes.list().size() != 1) return "";
    EXPECT_EQ(notes.list()[0].kind, NoteKind::LeftOut);
    EXPECT_EQ(notes.list()[0].line, 7U);
    return notes.list()[0].what;
}

std::string const badModifiers = "macro primitives with impossible modifiers";

} // namespace

TEST(Macro, KeepsItsName) { EXPECT_EQ(macro({"1,1,1,0,0"}).name, "M"); }

TEST(Macro, LengthsAreInTheUnitOfTheFileAndAnglesAreNot) {
    Notes notes;
    Shape const shape = ApertureMaker(25.4, notes).fromMacro({"M", {"21,1,2,1,0,0,90"}}, {}, 1);
    EXPECT_NEAR(areaOf(shape), 2 * 25.4 * 25.4, 1e-9);
    EXPECT_TRUE(covers(shape, 0, 25));
    EXPECT_FALSE(covers(shape, 25, 0));
}

TEST(Macro, ACircleLiesWhereItSays) {
    Shape const shape = macro({"1,1,2,3,4"});
    EXPECT_NEAR(areaOf(shape), pi, 0.03);
    EXPECT_TRUE(covers(shape, 3, 4.9));
}

TEST(Macro, ACircleIsTurnedAboutTheOrigin) { EXPECT_TRUE(covers(macro({"1,1,1,3,0,90"}), 0, 3)); }

TEST(Macro, NegativeRotationsTurnClockwise) { EXPECT_TRUE(covers(macro({"1,1,1,3,0,-90"}), 0, -3)); }

TEST(Macro, AVectorLineHasSquareEndsWithoutCaps) {
    for (auto const *code : {"2", "20"}) {
        Shape const shape = macro({std::string(code) + ",1,0.5,0,0,3,4,0"});
        EXPECT_NEAR(areaOf(shape), 2.5, 1e-9);
        EXPECT_TRUE(covers(shape, 1.5, 2));
        EXPECT_FALSE(covers(shape, 3.1, 4.1));
    }
}

TEST(Macro, ACentreLineIsTurnedAboutTheOriginNotItsCentre) {
    Shape const shape = macro({"21,1,2,1,5,0,90"});
    EXPECT_TRUE(covers(shape, 0, 5));
    EXPECT_TRUE(covers(shape, 0.4, 5.9));
    EXPECT_FALSE(covers(shape, 0.9, 5));
}

TEST(Macro, ALowerLeftLineStartsAtItsCorner) {
    Shape const shape = macro({"22,1,2,1,3,4,0"});
    EXPECT_NEAR(areaOf(shape), 2.0, 1e-12);
    EXPECT_TRUE(covers(shape, 4.9, 4.9));
    EXPECT_FALSE(covers(shape, 2.9, 4.5));
}

TEST(Macro, AnOutlineHasOnePointMoreThanItSays) {
    EXPECT_NEAR(areaOf(macro({"4,1,4,0,0,2,0,2,3,0,3,0,0,0"})), 6.0, 1e-12);
}

TEST(Macro, AnOutlineMayHaveExpressions) {
    EXPECT_NEAR(areaOf(macro({"4,1,$1-1,0,0,$2x2,0,$2x2,3,0,3,0,0,$3"}, {5, 1, 0})), 6.0, 1e-12);
}

TEST(Macro, AnOutlineIsTurnedByItsLastModifier) {
    EXPECT_TRUE(covers(macro({"4,1,3,0,0,2,0,2,1,0,0,180"}), -1.5, -0.5));
}

TEST(Macro, AnOutlineWithoutItsLastPointIsTakenAsFarAsItGoes) {
    EXPECT_NEAR(areaOf(macro({"4,1,4,0,0,2,0,2,3,0,3,0"})), 6.0, 1e-12);
}

TEST(Macro, AnOutlineThatRunsClockwiseIsAsSolid) {
    Shape const shape = macro({"4,1,4,0,0,0,3,2,3,2,0,0,0,0"});
    EXPECT_NEAR(areaOf(shape), 6.0, 1e-12);
}

TEST(Macro, APolygonIsTurnedOnceAboutTheOrigin) {
    Shape const shape = macro({"5,1,3,4,0,2,90"});
    EXPECT_NEAR(areaOf(shape), 3 * std::sqrt(3.0) / 4, 1e-9);
    EXPECT_TRUE(covers(shape, 0, 4.98));
    EXPECT_FALSE(covers(shape, 0, 3.4));
}

TEST(Macro, AMoireHasItsRingsAndCrossAtItsCentre) {
    // Rings of 10 to 8 and 6 to 4 mm, and a disc of 2 mm that has no room for a hole.
    Shape const shape = macro({"6,3,0.5,10,1,1,9,0.2,12,0"});
    EXPECT_TRUE(covers(shape, 3 + 4.5 * 0.7, 0.5 + 4.5 * 0.7));
    EXPECT_FALSE(covers(shape, 3 + 3.5 * 0.7, 0.5 + 3.5 * 0.7));
    EXPECT_TRUE(covers(shape, 3 + 2.5 * 0.7, 0.5 + 2.5 * 0.7));
    EXPECT_TRUE(covers(shape, 3 + 0.5, 0.5 + 0.5));
    EXPECT_TRUE(covers(shape, 8.9, 0.55));
    EXPECT_TRUE(covers(shape, 3.05, 6.4));
    EXPECT_FALSE(covers(shape, 3.5, 6.4));
}

TEST(Macro, AMoireHasNoMoreRingsThanItSays) {
    Shape const shape = macro({"6,0,0,10,1,1,1,0,0,0"});
    EXPECT_NEAR(areaOf(shape), pi * (25 - 16), 0.2);
}

TEST(Macro, AThermalIsARingWithFourGapsOfFullWidth) {
    Shape const shape = macro({"7,1,2.5,4,2,0.5,0"});
    EXPECT_EQ(shape.pieces.size(), 4U);
    EXPECT_FALSE(covers(shape, 1.24, 4));
    EXPECT_TRUE(covers(shape, 1.26, 4));
    EXPECT_FALSE(covers(shape, 1, 2.5));
    EXPECT_NEAR(areaOf(shape), pi * 3 - 4 * 0.5 * 1.0, 0.06);
}

TEST(Macro, AThermalIsTurnedAboutTheOrigin) {
    Shape const shape = macro({"7,0,5,4,2,0.5,45"});
    double const across = 5.0 / std::sqrt(2.0);
    EXPECT_TRUE(covers(shape, -across, across + 1.5));
    EXPECT_FALSE(covers(shape, -across + 1.0, across + 1.0));
}

TEST(Macro, OverlappingPrimitivesAreOneSolid) {
    Shape const shape = macro({"21,1,4,1,0,0,0", "21,1,1,4,0,0,0"});
    EXPECT_EQ(shape.pieces.size(), 1U);
    EXPECT_NEAR(areaOf(shape), 7.0, 1e-9);
}

TEST(Macro, PrimitivesApartAreSolidsOfTheirOwn) {
    EXPECT_EQ(macro({"1,1,1,0,0", "1,1,1,2,0"}).pieces.size(), 2U);
}

TEST(Macro, ExposureOffErasesWhatCameBefore) {
    Shape const shape = macro({"21,1,4,4,0,0,0", "21,0,2,2,0,0,0"});
    EXPECT_NEAR(areaOf(shape), 12.0, 1e-9);
    ASSERT_EQ(shape.pieces.size(), 1U);
    EXPECT_EQ(shape.pieces[0].holes.size(), 1U);
    EXPECT_LT(signedArea(shape.pieces[0].holes[0]), 0.0);
}

TEST(Macro, WhatComesAfterExposureOffIsPaintedOverIt) {
    EXPECT_NEAR(areaOf(macro({"21,1,4,4,0,0,0", "21,0,2,2,0,0,0", "21,1,1,1,0,0,0"})), 13.0, 1e-9);
    EXPECT_NEAR(areaOf(macro({"21,0,2,2,0,0,0", "21,1,4,4,0,0,0"})), 16.0, 1e-9);
}

TEST(Macro, ExposureMayBeAnExpression) {
    EXPECT_NEAR(areaOf(macro({"21,1,4,4,0,0,0", "21,$1-1,2,2,0,0,0"}, {1})), 12.0, 1e-9);
}

TEST(Macro, ExposureTwoIsTheOtherOne) {
    EXPECT_NEAR(areaOf(macro({"21,2,4,4,0,0,0", "21,2,2,2,0,0,0", "21,2,1,1,0,0,0"})), 13.0, 1e-9);
}

TEST(Macro, ErasedInTwoItIsTwoSolids) {
    EXPECT_EQ(macro({"21,1,4,1,0,0,0", "21,0,1,2,0,0,0"}).pieces.size(), 2U);
}

TEST(Macro, WithExposureOffAloneItIsNothing) { EXPECT_TRUE(macro({"1,0,1,0,0"}).isNothing()); }

TEST(Macro, VariablesAreDefinedOnTheWay) {
    EXPECT_NEAR(areaOf(macro({"$3=$1x2", "$4 = $3 + $2", "21,1,$4,1,0,0,0"}, {1.5, 1})), 4.0, 1e-9);
}

TEST(Macro, VariablesMayChangeOnTheWay) {
    EXPECT_NEAR(areaOf(macro({"$1=$1x2", "21,1,$1,1,0,0,0", "$1=$1x2", "22,1,$1,1,10,0,0"}, {1})), 6.0, 1e-9);
}

TEST(Macro, MissingParametersAreZero) { EXPECT_EQ(macro({"21,1,1+$1,1+$2,0,0,0"}, {1}).pieces.size(), 1U); }

TEST(Macro, CommentsDoNotCount) {
    EXPECT_NEAR(areaOf(macro({"0 a comment, with 1,1,9,0,0", "0", "0,more", "0no blank", "21,1,2,1,0,0,0"})),
                2.0, 1e-9);
}

TEST(Macro, MissingModifiersAtTheEndAreZero) { EXPECT_NEAR(areaOf(macro({"21,1,2,1"})), 2.0, 1e-9); }

TEST(Macro, BlanksAndEmptyStatementsDoNotCount) {
    EXPECT_NEAR(areaOf(macro({"", "  21, 1, 2 ,1, 0,0, 0 ", " "})), 2.0, 1e-9);
}

TEST(Macro, OperatorsThatStandAloneJoinTheirNeighbours) {
    EXPECT_NEAR(areaOf(macro({"21,1,$1,x,2,1,0,0,0"}, {3})), 6.0, 1e-9);
}

TEST(Macro, UnknownPrimitivesAreTold) {
    Shape shape;
    EXPECT_EQ(noteOf({"21,1,2,1,0,0,0", "3,1,1,1"}, &shape), "macro primitives of an unknown kind");
    EXPECT_NEAR(areaOf(shape), 2.0, 1e-9);
}

TEST(Macro, WhatCannotBeEvaluatedIsTold) {
    std::string const what = "macro statements with expressions that cannot be evaluated";
    EXPECT_EQ(noteOf({"21,1,2/0,1,0,0,0"}), what);
    EXPECT_EQ(noteOf({"21,1,two,1,0,0,0"}), what);
    EXPECT_EQ(noteOf({"$1"}), what);
    EXPECT_EQ(noteOf({"$x=1"}), what);
    EXPECT_EQ(noteOf({"$99999999999999999999=1"}), what);
}

TEST(Macro, ImpossibleModifiersAreTold) {
    for (auto const *statement :
         {"1,1,-1,0,0", "1,1,1,99999999,0", "5,1,2,0,0,1,0", "5,1,1000000000,0,0,1,0", "5,1,10001,0,0,1,0",
          "4,1,10001,0,0,1,0,1,1,0,0,0", "4,1,0,0,0,0", "7,0,0,1,2,0.1,0", "6,0,0,10,1,1,1001,0,0,0"}) {
        EXPECT_EQ(noteOf({statement}), badModifiers) << statement;
    }
}

TEST(Macro, TenThousandVerticesAreTaken) {
    EXPECT_EQ(macro({"5,1,10000,0,0,1,0"}).pieces[0].outer.size(), 10000U);
}

TEST(Macro, StepsOfOneApertureAreLimited) {
    std::string sum = "0";
    for (int i = 0; i < 10000; ++i)
        sum += "+1";
    std::vector<std::string> statements(12, "$1=" + sum);
    EXPECT_EQ(noteOf(statements), "macro statements with expressions that cannot be evaluated");
}

TEST(Macro, WhatAllMacrosMayCostIsLimited) {
    Notes notes;
    ApertureMaker maker(1.0, notes);
    Macro const large{"M", std::vector<std::string>(100, "5,1,10000,0,0,1,0")};
    std::size_t count = 0;
    while (count < 100 && !notes.has(NoteKind::LeftOut)) {
        maker.fromMacro(large, {}, 1);
        ++count;
    }
    EXPECT_LT(count, 100U);
}
