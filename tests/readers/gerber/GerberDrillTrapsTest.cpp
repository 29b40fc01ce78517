// Tools, repeats and comments of drill files where the result is not what one would guess.
#include "GerberTestSupport.h"

using namespace TestSupport;

namespace {

struct DrillBench : GerberBench {
    DrillBench() { reader.setViaNumberFormat(3, 3); }
};

std::vector<EDA::EDAVia> drilled(const std::string &statements) {
    DrillBench bench;
    EXPECT_TRUE(bench.readDrills(statements));
    EXPECT_EQ(bench.reader.getError(), "");
    return bench.vias();
}

EDA::EDAVia drilledOne(const std::string &statements) {
    const auto vias = drilled(statements);
    EXPECT_EQ(vias.size(), 1U);
    return vias.empty() ? EDA::EDAVia() : vias[0];
}

std::string spanOf(const EDA::EDAVia &via) {
    std::string start, end;
    via.getLayers(start, end);
    return start + " to " + end;
}

} // namespace

TEST(GerberDrillTraps, ARepeatMayGoAlongBothAxes) {
    const EDA::EDAVia via = drilledOne("T1C0.5\nT1\nX001000Y002000\nR2X1Y1\n");
    ASSERT_EQ(via.numInstances(), 2U);
    EXPECT_DOUBLE_EQ(via.getInstanceXCentre(0), 1.001);
    EXPECT_DOUBLE_EQ(via.getInstanceYCentre(0), 2.001);
    EXPECT_DOUBLE_EQ(via.getInstanceXCentre(1), 1.002);
    EXPECT_DOUBLE_EQ(via.getInstanceYCentre(1), 2.002);
}

TEST(GerberDrillTraps, ARepeatMayGoBack) {
    EXPECT_EQ(drilledOne("T1C0.5\nT1\nX005000Y002000\nR2X-001000\n").getInstanceXCentre(1), 3.0);
}

TEST(GerberDrillTraps, ACountThatIsNoNumberRepeatsNothing) {
    // The count ends at the X, wherever the Y stands.
    EXPECT_EQ(drilledOne("T1C0.5\nT1\nX001000Y002000\nR2Y1X1\n").numInstances(), 0U);
    EXPECT_EQ(drilledOne("T1C0.5\nT1\nX001000Y002000\nRX1\n").numInstances(), 0U);
}

TEST(GerberDrillTraps, ARepeatWithoutOffsetDrillsInOnePlace) {
    const EDA::EDAVia via = drilledOne("T1C0.5\nT1\nX001000Y002000\nR2\n");
    ASSERT_EQ(via.numInstances(), 2U);
    EXPECT_EQ(via.getInstanceXCentre(1), 1.0);
}

TEST(GerberDrillTraps, OneToolWithOtherLayersIsAnotherDefinition) {
    TempFolder folder;
    const auto file = [&](const char *name) {
        return QString::fromStdString(
            folder.write(name, "M48\nMETRIC,TZ\nT1C0.5\n%\nT1\nX10000Y20000\nM30\n"));
    };
    EDA::GerberReader reader;
    reader.setLayerArrangement({}, {file("a.drl"), file("b.drl"), file("c.drl")},
                               {{0, "top"}, {1, "top"}, {2, "top"}},
                               {{0, "in"}, {1, "bottom"}, {2, "bottom"}});
    EXPECT_TRUE(reader.readFiles(nullptr));
    const std::vector<EDA::EDAVia> vias(reader.getBoard().beginVias(), reader.getBoard().endVias());
    ASSERT_EQ(vias.size(), 2U);
    EXPECT_EQ(spanOf(vias[0]), "top to in");
    EXPECT_EQ(spanOf(vias[1]), "top to bottom");
    EXPECT_EQ(vias[0].numInstances(), 0U);
    EXPECT_EQ(vias[1].numInstances(), 1U);
}

TEST(GerberDrillTraps, APlatedHoleIsAnotherDefinitionThanOneThatIsNot) {
    EXPECT_EQ(
        drilled(";Holesize 1. = 0.5 PLATED\nX001000Y002000\n;Holesize 1. = 0.5 NON_PLATED\nX003000\n").size(),
        2U);
}

TEST(GerberDrillTraps, AToolsCommentSelectsTheFirstToolWhicheverItTells) {
    EXPECT_EQ(drilledOne("T1C0.5\nT2C0.8\nT2\n;Holesize 2. = 0.9 PLATED\nX001000Y002000\n").getDiameter(),
              0.5);
}

TEST(GerberDrillTraps, TheNumberOfAToolsCommentIsCut) {
    EXPECT_EQ(drilledOne(";Holesize 1.9 = 0.7\nX001000Y002000\n").getDiameter(), 0.7);
}

TEST(GerberDrillTraps, TheWordsOfAToolsCommentHaveNoCase) {
    const EDA::EDAVia via = drilledOne(";HOLESIZE 1. = 0.7 Plated\nX001000Y002000\n");
    EXPECT_EQ(via.getDiameter(), 0.7);
    EXPECT_TRUE(via.isPlated());
}

TEST(GerberDrillTraps, AToolsCommentWithoutSizeKeepsTheSizeAndTakesThePlating) {
    const EDA::EDAVia via = drilledOne("T1C0.5\n;Holesize 1. = 0 PLATED\nX001000Y002000\n");
    EXPECT_EQ(via.getDiameter(), 0.5);
    EXPECT_TRUE(via.isPlated());
}

TEST(GerberDrillTraps, OtherCommentsSelectNoTool) {
    EXPECT_EQ(drilledOne("T1C0.5\n;a comment PLATED\nX001000Y002000\n").getDiameter(), 0.35);
}

TEST(GerberDrillTraps, TheDefaultDiameterIsTheSameInInches) {
    DrillBench bench;
    EXPECT_TRUE(bench.read("M48\nINCH,TZ\nX001000Y002000\n", "a.drl"));
    ASSERT_EQ(bench.vias().size(), 1U);
    EXPECT_EQ(bench.vias()[0].getDiameter(), 0.35);
}

TEST(GerberDrillTraps, ASlotIsOneWrongHole) {
    // The digits of both ends run together: no geometry of a slot is kept.
    const EDA::EDAVia via = drilledOne("T1C0.5\nT1\nX001000Y002000G85X003000Y004000\n");
    EXPECT_EQ(via.numInstances(), 0U);
    EXPECT_EQ(via.getXCentre(), 1000003.0);
    EXPECT_EQ(via.getYCentre(), 0.0);
}

TEST(GerberDrillTraps, BlocksAndTheEndAreSilent) {
    EXPECT_TRUE(
        drilled("%\n%LPC*%\nG81\nG80\nG90\nG04 words\nM30\nM02\nVER,1\nFMAT,2\nICI,OFF\nATC,ON\n").empty());
}

TEST(GerberDrillTraps, AHeaderMakesEveryLineOneStatement) {
    DrillBench bench;
    EXPECT_TRUE(bench.readDrills("T1C0.5\nT1\nX001000Y002000*X003000Y004000*\n"));
    ASSERT_EQ(bench.vias().size(), 1U);
    EXPECT_EQ(bench.vias()[0].numInstances(), 0U);
}

TEST(GerberDrillTraps, DrillModeEndsWithItsFile) {
    DrillBench bench;
    EXPECT_TRUE(bench.readDrills("T1C0.5\nT1\nX001000Y002000\n"));
    EXPECT_TRUE(bench.readLayer("D10*\nX0Y0D03*\n"));
    EXPECT_EQ(bench.traces().size(), 1U);
    EXPECT_TRUE(bench.readDrills("T1\nX001000Y002000\n"));
    ASSERT_EQ(bench.vias().size(), 2U);
    EXPECT_EQ(bench.vias()[1].getDiameter(), 0.0); // the tools of the first file are gone
}

TEST(GerberDrillTraps, ThePointOfTheFileBeforeIsWhereADrillFileStarts) {
    DrillBench bench;
    EXPECT_TRUE(bench.readDrills("X001000Y002000\n"));
    EXPECT_TRUE(bench.readDrills("X005000\n"));
    ASSERT_EQ(bench.vias().size(), 1U);
    EXPECT_EQ(bench.vias()[0].getInstanceYCentre(0), 2.0);
}

TEST(GerberDrillTraps, TheNumberFormatOutlastsAFile) {
    DrillBench bench;
    EXPECT_TRUE(bench.readDrills("X001000Y002000\n"));
    EXPECT_TRUE(bench.readDrills("X001000Y002000\n"));
    ASSERT_EQ(bench.vias().size(), 1U);
    EXPECT_EQ(bench.vias()[0].getInstanceXCentre(0), 1.0);
}

TEST(GerberDrillTraps, AReadOfOneFileForgetsTheLayersOfTheSet) {
    TempFolder folder;
    const std::string path = folder.write("a.drl", "M48\nT1C0.5\nT1\nX10000Y20000\n");
    EDA::GerberReader reader;
    reader.setLayerArrangement({}, {QString::fromStdString(path)}, {{0, "top"}}, {{0, "bottom"}});
    EXPECT_TRUE(reader.readFiles(nullptr));
    EXPECT_TRUE(reader.readFile(path));
    const std::vector<EDA::EDAVia> vias(reader.getBoard().beginVias(), reader.getBoard().endVias());
    ASSERT_EQ(vias.size(), 2U);
    EXPECT_EQ(spanOf(vias[1]), " to ");
}
