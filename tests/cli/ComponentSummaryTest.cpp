// What the summary of an import tells about the parts.
#include "host/EntityModel/EntityEditor.h"
#include "JsonText.h"
#include "PartDesign.h"
#include "PartSummary.h"

#include <gmock/gmock.h>

namespace {

using namespace TestSupport;
using testing::ContainsRegex;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class ToolParts : public testing::Test {
protected:
    ToolResult import(const PartDesign &design, const std::vector<std::string> &more = {}) const {
        std::vector<std::string> arguments{"import", design.write(folder), "-o", folder.path("m.json")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const ToolResult result = runTool(arguments);
        EXPECT_EQ(result.status, 0) << result;
        return result;
    }

    // The member "parts" of the report.
    rapidjson::Document parts(const PartDesign &design, std::vector<std::string> more = {}) const {
        more.emplace_back("--json");
        rapidjson::Document report = parseJson(import(design, more).out);
        rapidjson::Document result;
        result.CopyFrom(report["parts"], result.GetAllocator());
        return result;
    }

    TempFolder folder;
};

int countOf(const rapidjson::Value &parts, const char *member) { return parts[member]["count"].GetInt(); }
std::vector<std::string> namesOf(const rapidjson::Value &parts, const char *member) {
    return textsOf(parts[member]["first"]);
}
double watts(const rapidjson::Value &parts, const char *sum) {
    return parts["powerInWatts"][sum].GetDouble();
}

rapidjson::Document controllerReport() {
    const TempFolder folder;
    const ToolResult result =
        runTool({"import", EDA_EXAMPLES "/controller/controller.emn", "-o", folder.path("m.json"), "--json"});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_EQ(result.err, "");
    return parseJson(result.out);
}

// Placed parts of the example and their operating power in milliwatts, read off its two files by hand.
constexpr struct {
    int placed;
    double milliwatts;
} controllerPower[] = {
    {3, 2400}, // TO220_V
    {1, 1450}, // BGA256_17
    {2, 900},  // D2PAK
    {3, 210},  // DIODE_SMB
    {2, 120},  // ELCO_D16
    {1, 150},  // FUSE_5X20
    {2, 260},  // IND_12X12
    {1, 180},  // IND_TOROID_D13
    {3, 20},   // LED_0805
    {1, 12},   // OPTO_DIP4
    {1, 380},  // QFP100_14
    {10, 1},   // R0603
    {8, 90},   // R1206
    {2, 700},  // R2512
    {2, 400},  // RELAY_16A
    {1, 310},  // SOIC16W
    {3, 45},   // SOIC8
    {1, 520},  // SOT223
    {4, 15},   // SOT23; a fifth is not placed
    {1, 700},  // XFMR_EE13
};

TEST(ControllerParts, TotalPowerIsThatOfItsFiles) {
    double sum = 0.0;
    for (const auto &row : controllerPower)
        sum += row.placed * row.milliwatts * 1e-3;
    EXPECT_NEAR(sum, 17.277, 1e-12);
    const rapidjson::Document report = controllerReport();
    const rapidjson::Value &parts = report["parts"];
    EXPECT_NEAR(watts(parts, "inModel"), sum, 1e-9);
    EXPECT_NEAR(watts(parts, "inDesign"), sum, 1e-9);
    EXPECT_EQ(watts(parts, "leftOut"), 0.0);
    EXPECT_EQ(countOf(parts, "otherPower"), 0);
}

TEST(ControllerParts, AllButTheUnplacedOneAreImportedByTheirDesignators) {
    const rapidjson::Document report = controllerReport();
    const rapidjson::Value &parts = report["parts"];
    EXPECT_EQ(parts["placements"].GetInt(), 86);
    EXPECT_THAT(namesOf(parts, "notPlaced"), ElementsAre("X1"));
    const rapidjson::Value &imported = parts["imported"];
    EXPECT_EQ(importedAs(parts, "Resistor"), 20);
    EXPECT_EQ(importedAs(parts, "Capacitor"), 24);
    EXPECT_EQ(importedAs(parts, "Inductor"), 3);
    int sum = 0;
    for (auto type = imported.MemberBegin(); type != imported.MemberEnd(); ++type)
        sum += type->value.GetInt();
    EXPECT_EQ(sum, 85);
    EXPECT_EQ(
        countOf(parts, "withoutDefinition") + countOf(parts, "withoutShape") + countOf(parts, "notMade"), 0);
    EXPECT_EQ(countOf(parts, "withoutHeight"), 0);
    EXPECT_EQ(countOf(parts, "withoutMaterial"), 0);
}

TEST_F(ToolParts, SummaryForPeopleNamesThem) {
    PartDesign design;
    design.define("BIG", "POWER_OPR 1500")
        .place("BIG", "U1")
        .place("BIG", "U2")
        .place("BIG", "U3", "UNPLACED");
    const ToolResult result = import(design.place("NONE", "U4"));
    EXPECT_THAT(result.out, ContainsRegex("\nParts:\n  Placements +4\n  Imported +2\n    Component +2\n"));
    EXPECT_THAT(result.out, ContainsRegex("  Not placed +1: 'U3'\n"));
    EXPECT_THAT(result.out, ContainsRegex("  Without definition +1: 'U4 \\(NONE PN\\)'\n"));
    EXPECT_THAT(result.out, ContainsRegex("  Power in the model +3 W\n"));
    EXPECT_THAT(result.out, ContainsRegex("  Power in the design +3 W, POWER_OPR of the placed parts\n"));
    EXPECT_THAT(result.out, Not(HasSubstr("Filtered")));
    EXPECT_EQ(result.err, "");
}

TEST_F(ToolParts, OfABoardWithoutPlacementsHasNoSection) {
    EXPECT_THAT(import(PartDesign()).out, Not(HasSubstr("Parts:")));
    EXPECT_EQ(parts(PartDesign())["placements"].GetInt(), 0);
}

TEST_F(ToolParts, OnlyTheFirstFewAreNamed) {
    PartDesign design;
    for (int part = 1; part <= 9; ++part)
        design.place("NONE", "U" + std::to_string(part));
    EXPECT_THAT(import(design).out,
                ContainsRegex("Without definition +9: .*'U5 \\(NONE PN\\)', \\.\\.\\.\n"));
    const rapidjson::Document report = parts(design);
    EXPECT_EQ(countOf(report, "withoutDefinition"), 9);
    EXPECT_EQ(namesOf(report, "withoutDefinition").size(), 5u);
}

TEST_F(ToolParts, ComponentsWithoutShapeAreNamed) {
    PartDesign design;
    design.defineAs(".ELECTRICAL\nFLAT PN MM 1\nPROP POWER_OPR 250\n.END_ELECTRICAL\n").place("FLAT", "U1");
    const rapidjson::Document report = parts(design);
    EXPECT_THAT(namesOf(report, "withoutShape"), ElementsAre("U1"));
    EXPECT_DOUBLE_EQ(watts(report, "leftOut"), 0.25);
    EXPECT_DOUBLE_EQ(watts(report, "inDesign"), 0.25);
    EXPECT_EQ(watts(report, "inModel"), 0.0);
}

TEST_F(ToolParts, FilteredOnesStayAndTheirPowerIsApart) {
    PartDesign design;
    design.define("LOW", "POWER_OPR 100", 0.5).define("HIGH", "POWER_OPR 300", 5.0);
    design.place("LOW", "U1").place("HIGH", "U2");
    const std::vector<std::string> filter{"--option", "Filter On Height=Yes", "--option", "Min Height=1 mm"};
    const rapidjson::Document report = parts(design, filter);
    EXPECT_THAT(namesOf(report, "filteredKept"), ElementsAre("U1"));
    EXPECT_EQ(importedAs(report, "Component"), 1);
    EXPECT_DOUBLE_EQ(watts(report, "filtered"), 0.1);
    EXPECT_DOUBLE_EQ(watts(report, "inModel"), 0.3);
    EXPECT_THAT(import(design, filter).out, ContainsRegex("Filtered, kept and marked +1: 'U1'\n"));
}

TEST_F(ToolParts, FilteredOnesOfASubstrateAreLeftOut) {
    PartDesign design;
    design.define("LOW", "POWER_OPR 100", 0.5).define("HIGH", "POWER_OPR 300", 5.0);
    design.place("LOW", "D1").place("HIGH", "D2");
    const rapidjson::Document report = parts(
        design, {"--as", "Component", "--option", "Filter On Height=Yes", "--option", "Min Height=1 mm"});
    EXPECT_THAT(namesOf(report, "filteredOut"), ElementsAre("D1"));
    EXPECT_EQ(importedAs(report, "Solid Obstruction"), 1);
    EXPECT_DOUBLE_EQ(watts(report, "leftOut"), 0.1);
    EXPECT_DOUBLE_EQ(watts(report, "inModel"), 0.3);
}

TEST_F(ToolParts, MissingHeightsAndPowersAreNamed) {
    PartDesign design;
    design.define("FLAT", "POWER_OPR 10", 0.0).define("COLD").place("FLAT", "U1").place("COLD", "U2");
    const rapidjson::Document report = parts(design);
    EXPECT_THAT(namesOf(report, "withoutHeight"), ElementsAre("U1"));
    EXPECT_THAT(namesOf(report, "withoutPower"), ElementsAre("U2"));
    EXPECT_EQ(report["withDefaultMaterial"].GetInt(), 2);
}

TEST_F(ToolParts, DesignatorsOfSeveralPlacementsAreNamedAndEachIsImported) {
    PartDesign design;
    design.define("A", "POWER_OPR 1000").define("B", "RESISTANCE 5\nPROP POWER_OPR 2000");
    design.place("B", "U1").place("A", "U1").place("A", "U2").place("A", "U1");
    const rapidjson::Document report = parts(design);
    EXPECT_THAT(namesOf(report, "duplicateDesignators"), ElementsAre("U1 (3 times)"));
    EXPECT_EQ(importedAs(report, "Component"), 3);
    EXPECT_EQ(importedAs(report, "Resistor"), 1);
    EXPECT_DOUBLE_EQ(watts(report, "inModel"), 5.0);
    EXPECT_EQ(countOf(report, "otherPower"), 0);
}

TEST_F(ToolParts, UtilisationOfTheMaximumGivesTheOperatingPower) {
    PartDesign design;
    design.define("A", "POWER_MAX 4000\nPROP POWER_OPR 1000").place("A", "U1");
    const rapidjson::Document report = parts(design);
    EXPECT_NEAR(watts(report, "inModel"), 1.0, 1e-12);
    EXPECT_EQ(countOf(report, "otherPower"), 0);
}

TEST_F(ToolParts, PowerUnlikeThatOfTheDesignIsNamed) {
    PartDesign design;
    design.define("A", "POWER_MAX 0\nPROP POWER_OPR 1000").place("A", "U1");
    const rapidjson::Document report = parts(design);
    EXPECT_THAT(namesOf(report, "otherPower"), ElementsAre("U1"));
    EXPECT_EQ(watts(report, "inModel"), 0.0);
    EXPECT_DOUBLE_EQ(watts(report, "inDesign"), 1.0);
    EXPECT_THAT(import(design).out, ContainsRegex("Power unlike POWER_OPR +1: 'U1'\n"));
}

TEST_F(ToolParts, PartsInChipSocketsAreCountedWithTheirPower) {
    PartDesign design;
    design.define("SOCKET", "", 2.0, 20, 20).define("CHIP", "POWER_OPR 500", 1.0, 5, 5);
    design.place("SOCKET", "XU1").place("CHIP", "U1");
    const rapidjson::Document report = parts(design);
    EXPECT_EQ(importedAs(report, "Chip Socket"), 1);
    EXPECT_EQ(importedAs(report, "Component"), 1);
    EXPECT_EQ(report["inSockets"].GetInt(), 1);
    EXPECT_DOUBLE_EQ(watts(report, "inModel"), 0.5);
    EXPECT_THAT(import(design).out, ContainsRegex("In chip sockets +1\n"));
}

TEST_F(ToolParts, AnImportOverAModelCountsItsOwnPartsOnly) {
    PartDesign design;
    design.define("A", "POWER_OPR 1000").place("A", "U1");
    parts(design);
    const rapidjson::Document report = parts(design, {"--into", folder.path("m.json")});
    EXPECT_EQ(importedAs(report, "Component"), 1);
    EXPECT_DOUBLE_EQ(watts(report, "inModel"), 1.0);
}

TEST_F(ToolParts, PropertiesThatAreNoNumbersAreWarnings) {
    PartDesign design;
    design.define("A", "POWER_OPR hot\nPROP THETA_JC 1,5\nPROP TOLERANCE wide").place("A", "U1");
    const ToolResult result = import(design, {"--json"});
    EXPECT_THAT(result.err,
                HasSubstr("warning: component 'A': POWER_OPR 'hot' is no number of mW, so it is left out\n"));
    EXPECT_THAT(result.err,
                HasSubstr("component 'A': THETA_JC '1,5' is no number of C/W, so it is left out\n"));
    EXPECT_THAT(result.err, Not(HasSubstr("TOLERANCE")));
    EXPECT_THAT(parseJson(result.out)["messages"].GetString(), HasSubstr("POWER_OPR 'hot'"));
}

TEST_F(ToolParts, EveryQuantityIsChecked) {
    for (const char *property : {"POWER_OPR", "POWER_MAX", "THETA_JB", "THETA_JC", "THERM_COND", "RESISTANCE",
                                 "CAPACITANCE", "INDUCTANCE"}) {
        PartDesign bad;
        bad.define("A", std::string(property) + " many").place("A", "U1");
        EXPECT_THAT(import(bad).err, HasSubstr(std::string(property) + " 'many' is no number of "));
        PartDesign good;
        good.define("A", std::string(property) + " 2.5e-1").place("A", "U1");
        EXPECT_EQ(import(good).err, "") << property;
    }
}

TEST_F(ToolParts, ManyBadPropertiesGiveAFewWarningsAndACount) {
    PartDesign design;
    for (int part = 0; part < 50; ++part)
        design.define("P" + std::to_string(part), "POWER_OPR x\x1b[31m");
    const ToolResult result = import(design);
    EXPECT_THAT(result.err, HasSubstr("... and 40 more properties that are no numbers"));
    EXPECT_EQ(result.err.find('\x1b'), std::string::npos);
}

TEST(PartSummary, EveryPlacementCountsOnce) {
    const TempFolder folder;
    PartDesign design;
    design.define("A").defineAs(".ELECTRICAL\nFLAT PN MM 1\n.END_ELECTRICAL\n");
    design.place("A", "U1")
        .place("FLAT", "U2")
        .place("NONE", "U3")
        .place("A", "U4", "UNPLACED")
        .place("A", "U1");
    const ToolResult result =
        runTool({"import", design.write(folder), "-o", folder.path("m.json"), "--json"});
    const rapidjson::Document report = parseJson(result.out);
    const rapidjson::Value &parts = report["parts"];
    int sum = importedAs(parts, "Component");
    for (const char *member : {"filteredKept", "filteredOut", "notPlaced", "withoutDefinition",
                               "withoutShape", "leftOutByLibrary", "notMade", "notReached"}) {
        sum += countOf(parts, member);
    }
    EXPECT_EQ(sum, parts["placements"].GetInt());
}

// Without an import there is nothing in the model, and the summary tells why.
class NothingImported : public testing::Test {
protected:
    void SetUp() override {
        EDA::EDAComponent part("ELECTRICAL");
        part.setName("A");
        for (const double x : {0.0, 1.0})
            part.addPoint(0, x, 0.0, 0.0);
        part.addPoint(0, 1.0, 1.0, 0.0);
        part.addProperty("POWER_OPR", "100");
        board.addComponent(part, true);
        EDA::EDAComponentPlacement placement;
        placement.setName("A");
        placement.setReferenceDesignator("U1");
        board.addComponentPlacement(placement);
    }
    EDATool::PartSummary summary(bool wasCancelled) const {
        return EDATool::summarizeParts({board, nullptr, 1, nullptr, wasCancelled});
    }
    EDA::EDABoard board;
};

TEST_F(NothingImported, OfACancelledImportWasNotReached) {
    EXPECT_EQ(summary(true).notReached.count, 1u);
    EXPECT_EQ(summary(true).notMade.count, 0u);
}

TEST_F(NothingImported, OfAWholeImportCouldNotBeMade) {
    EXPECT_THAT(summary(false).notMade.names, ElementsAre("U1"));
    EXPECT_DOUBLE_EQ(summary(false).power.leftOut, 0.1);
}

} // namespace
