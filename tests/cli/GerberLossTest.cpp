// What Gerber and drill files say that is passed over: each kind is told once, with line and number.
#include "GerberFiles.h"
#include "GerberLosses.h"
#include "support/RunTool.h"

#include <gmock/gmock.h>

#include <random>

namespace {

using namespace EDATool;
using namespace TestSupport;
using testing::HasSubstr;

const GerberLoss *findLoss(const GerberFacts &facts, const std::string &text) {
    for (const GerberLoss &loss : facts.losses) {
        if (loss.what.find(text) != std::string::npos) return &loss;
    }
    return nullptr;
}

// One kind of loss is found, with this line and number, and no other.
void expectLoss(const std::string &file, const std::string &text, std::size_t line, std::size_t count) {
    const GerberFacts facts = lookThroughGerber(file);
    const GerberLoss *const loss = findLoss(facts, text);
    ASSERT_NE(loss, nullptr) << text << "\n" << file;
    EXPECT_EQ(loss->line, line) << file;
    EXPECT_EQ(loss->count, count) << file;
    EXPECT_EQ(facts.losses.size(), 1u) << file;
    EXPECT_FALSE(loss->meaning.empty());
}

void expectNone(const std::string &file) {
    const GerberFacts facts = lookThroughGerber(file);
    EXPECT_TRUE(facts.losses.empty()) << facts.losses.front().what << "\n" << file;
}

TEST(GerberLosses, PlainFilesHaveNone) {
    expectNone(gerberLayer(threeSquares()));
    expectNone(drillFile("T01\nX010000Y020000\n"));
    expectNone(std::string());
}

TEST(GerberLosses, AnArcCodeOfAnEarlierLineIsLostAfterAQuadrantMode) {
    const std::string arcs = "D10*\nG75*\nX0Y0D02*\nG02*\nX01Y01I01J0D01*\nX02Y02I01J0D01*\n";
    expectLoss(gerberLayer(arcs), "G02 or G03 from an earlier line", 10, 2);
    expectNone(gerberLayer("D10*\nG75*\nX0Y0D02*\nG02X01Y01I01J0D01*\nG01X0Y0D01*\n"));
    expectNone(gerberLayer("D10*\nX0Y0D02*\nG02*\nX01Y01I01J0D01*\n"));
}

TEST(GerberLosses, DrawingAfterAPolarityChangeWithoutAnApertureIsLost) {
    expectLoss(gerberLayer("D10*\nX0Y0D03*\n%LPC*%\nX01Y0D03*\nX0Y0D02*\nX02Y0D01*\n"), "change of polarity",
               9, 2);
    expectNone(gerberLayer("D10*\nX0Y0D03*\n%LPC*%\nD11*\nX01Y0D03*\n"));
    expectNone(gerberLayer("D10*\n%LPC*%\nG36*\nX0Y0D02*\nX01Y0D01*\nG37*\n"));
}

TEST(GerberLosses, TransformsOfTheImageAreLost) {
    const auto expectTransform = [](const std::string &statement, const std::string &text) {
        expectLoss(gerberLayer(threeSquares(), statement + "\n"), text, 4, 1);
    };
    expectTransform("%MIA1B0*%", "%MI");
    expectTransform("%OFA0B1.5*%", "%OF");
    expectTransform("%SFA2B1*%", "%SF");
    expectTransform("%IR90*%", "%IR");
    expectTransform("%ASAYBX*%", "%AS");
    expectTransform("%IPNEG*%", "%IPNEG");
    expectNone(gerberLayer(threeSquares(),
                           "%MIA0B0*%\n%OFA0.0000B0.0000*%\n%SFA1.0B1.0*%\n%IR0*%\n%ASAXBY*%\n%IPPOS*%\n"));
}

TEST(GerberLosses, IncrementalCoordinatesAreLost) {
    expectLoss(gerberLayer("G91*\n" + threeSquares()), "incremental", 6, 1);
    expectLoss("%FSLIX24Y24*%\n%MOMM*%\nD10*\nX0Y0D03*\n", "incremental", 1, 1);
    expectLoss(drillFile("G91\nT01\nX01Y01\n"), "incremental", 5, 1);
    expectLoss(drillFile("T01\nX01Y01\n", "ICI,ON\nMETRIC,TZ\nT01C0.8\n"), "incremental", 2, 1);
}

TEST(GerberLosses, UnitCodesAgainstTheUnitsAreLost) {
    expectLoss(gerberLayer("G70*\n" + threeSquares()), "against the units of %MO", 6, 1);
    expectNone(gerberLayer("G71*\n" + threeSquares()));
    expectLoss("%FSLAX24Y24*%\nG71*\nD10*\n", "without %MO", 2, 1);
}

TEST(GerberLosses, SignsAndPointsInCoordinatesAreLost) {
    expectLoss(drillFile("T01\nX1.5Y01\nX0.5Y.5\n"), "decimal point", 6, 2);
    expectLoss(drillFile("T01\nX+0100Y01\n"), "plus sign", 6, 1);
    expectLoss(gerberLayer("D10*\nX+0100Y0D03*\n"), "plus sign", 7, 1);
}

TEST(GerberLosses, SlotsAndRoutesAreLost) {
    expectLoss(drillFile("T01\nX01Y01G85X02Y01\n"), "slots", 6, 1);
    expectLoss(drillFile("T01\nG00X01Y01\nM15\nG01X02Y01\nM16\n"), "routes", 6, 3);
}

TEST(GerberLosses, HolesWithoutASizeAreLost) {
    expectLoss(drillFile("T02\nX01Y01\nX02Y01\n"), "tool without a size", 6, 2);
    expectLoss(drillFile("X01Y01\n"), "before the first tool", 5, 1);
    expectNone("M48\nMETRIC\n;Holesize 1 = 0.3 PLATED\n%\nX01Y01\n");
}

TEST(GerberLosses, ASecondUnitsStatementLosesTheZeros) {
    expectLoss(drillFile("M71\nT01\nX01Y01\n", "METRIC,LZ\nT01C0.8\n"), "doesn't repeat LZ", 5, 1);
    expectNone(drillFile("M71\nT01\nX01Y01\n"));
}

TEST(GerberLosses, ALonePercentSwallowsADrillHeader) {
    EXPECT_NE(findLoss(lookThroughGerber("%\nT01C0.5\nT01\nX01Y01\n%\nX02Y02\n"), "line of its own"),
              nullptr);
    expectNone("%\n" + drillFile("T01\nX01Y01\n"));
    expectNone("%\nFSLAX24Y24*\nMOMM*\n%\nD10*\nX0Y0D03*\n");
}

TEST(GerberLosses, TurnedPartsOfMacrosAreToldOf) {
    const auto macro = [](const std::string &primitive) {
        return gerberLayer("%AMA*\n" + primitive + "*%\n");
    };
    expectLoss(macro("5,1,8,0,0,1.08X$1,22.5"), "turned polygons", 6, 1);
    expectNone(macro("5,1,8,0,0,1.08X$1,0"));
    expectLoss(macro("7,0,0,4,2,0.5,45"), "turned moires and thermals", 6, 1);
    expectLoss(macro("6,0,0,5,0.5,0.5,2,0.1,6,$1"), "turned moires and thermals", 6, 1);
    expectLoss(macro("7,0,0.5,4,2,0.5,0"), "fractional y", 6, 1);
    expectNone(macro("7,0.5,0.0,4,2,0.5,0"));
}

TEST(GerberLosses, LinesAreCountedWhateverEndsThem) {
    for (const char *end : {"\n", "\r\n", "\r"}) {
        const std::string e = end;
        expectLoss("M48" + e + e + "METRIC,TZ" + e + "T01C1" + e + "%" + e + "T01" + e + "X1.5Y1" + e,
                   "decimal", 7, 1);
    }
}

TEST(GerberLosses, FactsOfTheHeaderAreFound) {
    const GerberFacts layer =
        lookThroughGerber("G04 Layer_Physical_Order=2*\n%TF.FileFunction,Copper,L2,Inr*%\n"
                          "%MOIN*%\n%LNGND*%\n");
    EXPECT_TRUE(layer.isGerberText);
    EXPECT_FALSE(layer.isDrill);
    EXPECT_EQ(layer.units, "in");
    EXPECT_EQ(layer.physicalOrder, 2);
    EXPECT_THAT(layer.names, testing::ElementsAre("GND"));
    EXPECT_THAT(layer.fileFunction, testing::ElementsAre("Copper", "L2", "Inr"));
    const GerberFacts drill = lookThroughGerber("M48\n; FORMAT={3:3/ absolute / metric}\nMETRIC,LZ\n");
    EXPECT_TRUE(drill.isDrill);
    EXPECT_TRUE(drill.hasFormat);
    EXPECT_EQ(drill.integerDigits * 10 + drill.decimalDigits, 33);
    EXPECT_EQ(lookThroughGerber("M48\nMETRIC,TZ,0000.00\n").integerDigits, 4);
}

// Any bytes: nothing must crash or hang; the sanitized build watches.
TEST(GerberLosses, AnyTextIsLookedThrough) {
    std::mt19937 random(5);
    const std::string letters = "%%**XYDGTMRIJ0123+-.,;\n\n\r =AFSLPC48\x80\xc3";
    for (int round = 0; round < 3000; ++round) {
        std::string text;
        for (unsigned length = random() % 120; length > 0; --length)
            text += letters[random() % letters.size()];
        for (const GerberLoss &loss : lookThroughGerber(text).losses) {
            EXPECT_GE(loss.line, 1u);
            EXPECT_GE(loss.count, 1u);
        }
    }
    for (const char *text : {"%", "%%", "%\n%", "T", "%TF.FileFunction", "%TF.FileFunction,*%", "G", "D", ";",
                             "M48\n;Holesize", "M48\nT\nR\nX", "%MO", "%OF", "G04 #@! TF.FileFunction,"})
        lookThroughGerber(text);
}

TEST(GerberLosses, AreWarningsOfTheTool) {
    const TempFolder folder;
    const std::string file = folder.write("h.drl", drillFile("T01\nX1.5Y01\nX2.5Y01\n"));
    EXPECT_THAT(runTool({"info", "--as-is", file}).err,
                HasSubstr("h.drl': line 6: coordinates with a decimal point, 2 places: "));
}

} // namespace
