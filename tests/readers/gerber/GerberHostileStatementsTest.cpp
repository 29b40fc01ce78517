// Hostile statements and drill files, each with the result that it has to give.
#include "GerberHostileSupport.h"

using namespace TestSupport;
using EDA::GerberLimits;

TEST(GerberHostileStatements, ARedefinedApertureInUseDrawsOnAsItWas) {
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer("D10*\n" + repeated("%ADD10R,4X4*%\n%ADD10*%\n", 100) +
                                "X0Y0D03*\nD10*\nX0Y0D03*\n"));
    ASSERT_EQ(bench.traces().size(), 1U);
    expectBox(bench.traces()[0].getOutline(), -0.5, -0.5, 0.5, 0.5, 0.01);
}

TEST(GerberHostileStatements, ListsWithoutEntriesDoNoHarm) {
    for (const char *statement : {"%TF*%",
                                  "%TF.*%",
                                  "%TF.Part*%",
                                  "%TA*%",
                                  "%TA.AperFunction*%",
                                  "%TA.AperFunction,*%",
                                  "%FS*%",
                                  "%FSLAX*%",
                                  "%FSLAXY*%",
                                  "%MO*%",
                                  "%AD*%",
                                  "%ADD*%",
                                  "%ADD10*%",
                                  "%AM*%",
                                  "%LP*%",
                                  "%SR*%",
                                  "%*%",
                                  "%%",
                                  "D*",
                                  "G54*",
                                  "G36*\nG37*",
                                  "G37*",
                                  "X*",
                                  "Y*",
                                  "XYIJ*",
                                  "G01X*",
                                  "G02I*",
                                  "G03*",
                                  "M*",
                                  "*"}) {
        SCOPED_TRACE(statement);
        GerberBench bench;
        EXPECT_TRUE(bench.readLayer(std::string(statement) + "\nD11*\nX0Y0D03*\n"));
        expectFinite(bench.board());
    }
}

TEST(GerberHostileDrills, RepeatsOfBillionsDrillNothing) {
    GerberBench bench;
    EXPECT_TRUE(bench.readDrills("X0Y0\nR1000000000X100\nR-1000000000X100\n"));
    EXPECT_EQ(bench.board().numVias(1), 1U);
    EXPECT_EQ(bench.reader.getError(), "Unhandled statement: R1000000000X100\n");
}

TEST(GerberHostileDrills, ManyRepeatsEndAtTheLimitOfObjects) {
    const Clock clock;
    GerberLimits limits;
    limits.objects = 5000;
    GerberBench bench(limits);
    EXPECT_TRUE(bench.readDrills(repeated("R1000X100\n", 100'000)));
    EXPECT_EQ(bench.board().numVias(1), 5000U);
    EXPECT_NE(bench.reader.getError(), "");
}

TEST(GerberHostileDrills, CommentsWithoutTheirWordsDoNoHarm) {
    for (const char *comment :
         {";", "; ", ";Holesize", ";Holesize 1.", ";Holesize 1. =", ";T Holesize", ";T99999999999 Holesize",
          ";x Holesize", ";Holesize nan = inf PLATED", ";Holesize 1e300 = 1e300"}) {
        SCOPED_TRACE(comment);
        GerberBench bench;
        EXPECT_TRUE(bench.readDrills(std::string(comment) + "\nX1000Y1000\n"));
        EXPECT_EQ(bench.board().numVias(1), 1U);
        expectFinite(bench.board());
    }
}

TEST(GerberHostileDrills, AHoleOfAToolThatNobodyDefinedHasNoSize) {
    GerberBench bench;
    EXPECT_TRUE(bench.readDrills("T77\nX1000Y1000\n"));
    ASSERT_EQ(bench.vias().size(), 1U);
    EXPECT_EQ(bench.vias()[0].getDiameter(), 0.0);
}
